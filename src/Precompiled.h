// Headers that nearly every source uses. Sources still name what they include.
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>
