#pragma once

#include "base/services/UserSettings.h"

namespace velmora::print {

// The leader style that the user chose for label and value lines: 0 none, 1 boxes, 2 lines. What is stored but is no
// 16-bit number counts as 0.
qint16 LoadLeaderStyle(const UserSettings& settings);
void SaveLeaderStyle(UserSettings& settings, qint16 style);

} // namespace velmora::print
