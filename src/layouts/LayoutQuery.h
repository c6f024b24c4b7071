#pragma once

#include "layouts/file/Layout.h"
#include "layouts/formula/Condition.h"

namespace velmora::layouts {

// The query of a layout's records: its fields in the order of the FieldList, and behind them what makes each group.
struct LayoutQuery {
    QueryText parameters;
    QString statement;
    // Column of the first group's key.
    int firstGroup = 0;
};

// `selection` is the formula of the run; the layout's own one applies too.
LayoutQuery RecordQuery(const Layout& layout, const Formula& selection);

// The query of the records below one record, whose field the parameter `detailKey` holds.
inline constexpr QStringView detailKey = u"LayoutDetailKey";
LayoutQuery DetailQuery(const LayoutDetails& details);

} // namespace velmora::layouts
