#include "reports/ReportDays.h"

#include "base/Error.h"
#include "reports/DayCaptions.h"

namespace velmora {

using namespace Qt::StringLiterals;
using std::chrono::days;

ReportDays DailyReportDays(const DaySelection& selection, Date today, const LocaleText& locale) {
    if (selection.choice == DayChoice::OtherDay) {
        if (!selection.otherDate) {
            throw ProgramError(ErrorNumber::TypeMismatch, u"The box for the other day holds no date"_s);
        }
        const Date start = *selection.otherDate;
        const Date end = start + days(selection.number);
        return {start, end, u" for "_s + locale.ShortDate(start) + u" Through "_s + locale.ShortDate(end - days(1))};
    }
    const bool current = selection.choice == DayChoice::CurrentDay;
    const Date start = current ? today : today + days(1);
    // A run in the afternoon covers the days to the end of the next working one.
    const Date last = current ? today : NextWorkingDay(today);
    QString phrase = u" for "_s + locale.ShortDate(start);
    if (last != start) {
        phrase += u" to "_s + locale.ShortDate(last);
    }
    return {start, last + days(1), phrase};
}

ReportDays OccupancyDays(const DaySelection& selection, Date today, const LocaleText& locale) {
    if (selection.choice == DayChoice::OtherDay) {
        return DailyReportDays(selection, today, locale);
    }
    return OneReportDay(selection.choice == DayChoice::NextWorkingDay ? NextWorkingDay(today) : today, locale);
}

ReportDays OneReportDay(const std::optional<Date>& date, const LocaleText& locale) {
    if (!date) {
        throw ProgramError(ErrorNumber::TypeMismatch, u"The box for the report date holds no date"_s);
    }
    return {*date, *date + days(1), u" for "_s + locale.ShortDate(*date)};
}

} // namespace velmora
