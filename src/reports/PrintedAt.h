#pragma once

#include "base/Program.h"

namespace velmora {

// The third line of a report's title: the translated caption, the moment at which it is printed, and the phrase that
// names its days, with its leading blank: "Printed at 3/5/2026 2:15 PM for 3/5/2026".
QString PrintedAt(const Program& program, const QString& caption, const QString& days);

} // namespace velmora
