#include "data/ReservationTime.h"

namespace velmora {

QString EndPhrase(const LocaleText& locale, DateTime end) {
    if (Fields(end).hour == 0) {
        return QStringLiteral(" Through ") + locale.GeneralDate(end - std::chrono::days(1));
    }
    return QStringLiteral(" Until ") + locale.GeneralDate(end);
}

QString ReservationTimeText(const LocaleText& locale, DateTime start, DateTime end, bool permanent) {
    const QString from = locale.GeneralDate(start);
    if (permanent) {
        return from + QStringLiteral(" - Permanent");
    }
    if (MinutesBetween(start, end) == 0) {
        return from + QStringLiteral(" - No Duration");
    }
    if (DaysBetween(start, end) == 0) {
        return from + QStringLiteral(" - ") + locale.MediumTime(end);
    }
    return from + EndPhrase(locale, end);
}

} // namespace velmora
