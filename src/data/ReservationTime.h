#pragma once

#include "base/LocaleText.h"

namespace velmora {

// A reservation's period in one line: "3/7/2026 9:00 AM - 5:30 PM", "... - Permanent", "... - No Duration",
// "... Through 3/9/2026" for an end in the hour after midnight, else "... Until 3/9/2026 8:00 AM".
QString ReservationTimeText(const LocaleText& locale, DateTime start, DateTime end, bool permanent);

// The end alone, with its leading blank: " Through ..." or " Until ...".
QString EndPhrase(const LocaleText& locale, DateTime end);

} // namespace velmora
