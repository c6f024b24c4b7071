#pragma once

#include <QString>

#include <vector>

namespace velmora {

// A tab of the main window; English.
struct MainTab {
    QString caption;
    QString key;
    QString toolTip;
};

// In their order; tab n shows page n.
std::vector<MainTab> MainTabs();

} // namespace velmora
