#include "reports/ReportDays.h"

#include "base/Error.h"
#include "base/Translate.h"

namespace velmora {

using namespace Qt::StringLiterals;
using std::chrono::days;

Date NextWorkingDay(Date today) {
    constexpr int friday = 6;
    constexpr int saturday = 7;
    const int weekday = Weekday(today);
    return today + std::chrono::days(weekday == friday ? 3 : weekday == saturday ? 2 : 1);
}

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

DayCaptions DayCaptions::On(Date today, const LocaleText& locale) {
    const auto caption = [&](Date day, const QString& when) {
        return locale.LongDate(day) + u" ("_s + Translate(when) + u")"_s;
    };
    return {caption(NextWorkingDay(today), u"Reports run in the afternoon for the next day"_s),
            caption(today, u"Reports run in the morning of the current day"_s)};
}

} // namespace velmora
