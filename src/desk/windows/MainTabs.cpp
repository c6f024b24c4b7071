#include "desk/windows/MainTabs.h"

namespace velmora {

using namespace Qt::StringLiterals;

std::vector<MainTab> MainTabs() {
    return {{u"Daily Reports"_s, u"Daily"_s, u"Daily Reports"_s},
            {u"View Tasks"_s, u"View"_s, u"View Daily Tasks"_s},
            {u"CR Reports"_s, u"Crystal"_s, u"Crystal Reports"_s},
            {u"Quick Status"_s, u"Status"_s, u"Quick Status Viewing"_s},
            {u"Exception"_s, u"Exception"_s, u"Exception Reports"_s},
            {u"Usage"_s, u"Usage"_s, u"Usage Reports"_s},
            {u"Printer"_s, u"Printer"_s, u"Printer Settings"_s}};
}

} // namespace velmora
