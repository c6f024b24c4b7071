#include "print/PrintOptions.h"

#include "base/Value.h"

#include <limits>

namespace velmora::print {

using namespace Qt::StringLiterals;

qint16 LoadLeaderStyle(const UserSettings& settings) {
    const auto stored = settings.Read(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s);
    const qint64 style = Value(stored.value_or(QString())).ToInteger();
    const bool fits = style >= std::numeric_limits<qint16>::min() && style <= std::numeric_limits<qint16>::max();
    return fits ? static_cast<qint16>(style) : qint16{0};
}

void SaveLeaderStyle(UserSettings& settings, qint16 style) {
    settings.Write(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s, QString::number(style));
}

} // namespace velmora::print
