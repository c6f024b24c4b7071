#pragma once

#include "base/Value.h"
#include "engine/Catalog.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace velmora::engine::dialect {

// The kind that a PARAMETERS clause means by a word; none for a word it does not know.
std::optional<FieldType> TypeOfName(QStringView word);

// The kind of a result that is sometimes of one and sometimes of the other kind: kinds that do not mix become text.
FieldType CommonType(FieldType first, FieldType second);

// Whether values of the kinds compare with = and <. Unknown compares with everything, a yes/no with a number.
bool Comparable(FieldType first, FieldType second);

} // namespace velmora::engine::dialect
