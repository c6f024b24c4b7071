#include "desk/DailyMode.h"

#include "base/Error.h"
#include "desk/DayCaptions.h"

namespace velmora {

using namespace Qt::StringLiterals;
using std::chrono::days;

DailyMode DailyMode::Decode(qint16 reportDayMode) {
    for (const DailyVariant variant : {DailyVariant::Starts, DailyVariant::Ends, DailyVariant::Combined}) {
        for (const DayChoice day : {DayChoice::NextWorkingDay, DayChoice::CurrentDay, DayChoice::OtherDay}) {
            const DailyMode mode{variant, day};
            if (mode.Code() == reportDayMode) {
                return mode;
            }
        }
    }
    throw ProgramError(ErrorNumber::InvalidCall, u"There is no daily report of the kind %1"_s.arg(reportDayMode));
}

qint16 DailyMode::Code() const {
    constexpr int combined = 8;
    const int kind = variant == DailyVariant::Combined ? combined : static_cast<int>(variant);
    return static_cast<qint16>(kind + 2 * static_cast<int>(day));
}

QString DailyMode::Title() const {
    switch (variant) {
    case DailyVariant::Starts:
        return u"Reservation Starts"_s;
    case DailyVariant::Ends:
        return u"Reservation Ends"_s;
    case DailyVariant::Combined:
        break;
    }
    return u"Reservation Starts and Ends"_s;
}

QString DailyMode::QueryName() const {
    switch (variant) {
    case DailyVariant::Starts:
        return u"QReport3"_s;
    case DailyVariant::Ends:
        return u"QReport4"_s;
    case DailyVariant::Combined:
        break;
    }
    return u"QReport5"_s;
}

namespace {

// The days that a run in the afternoon covers: to the end of the next working day.
int DaysToNextWorkingDay(Date today) {
    return static_cast<int>((NextWorkingDay(today) - today).count());
}

} // namespace

ReportDays DailyReportDays(DayChoice choice, Date today, const DeskState& state, const LocaleText& locale) {
    if (choice == DayChoice::OtherDay) {
        if (!state.dtcOtherDate) {
            throw ProgramError(ErrorNumber::TypeMismatch, u"The box for the other day holds no date"_s);
        }
        const Date start = *state.dtcOtherDate;
        const Date end = start + days(state.Label12);
        return {start, end, u" for "_s + locale.ShortDate(start) + u" Through "_s + locale.ShortDate(end - days(1))};
    }
    const bool current = choice == DayChoice::CurrentDay;
    const Date start = current ? today : today + days(1);
    const Date end = start + days(current ? 1 : DaysToNextWorkingDay(today));
    const Date last = end - days(1);
    QString phrase = u" for "_s + locale.ShortDate(start);
    if (last != start) {
        phrase += u" to "_s + locale.ShortDate(last);
    }
    return {start, end, phrase};
}

} // namespace velmora
