#include "reports/DayCaptions.h"

#include "base/Translate.h"

namespace velmora {

using namespace Qt::StringLiterals;

Date NextWorkingDay(Date today) {
    constexpr int friday = 6;
    constexpr int saturday = 7;
    const int weekday = Weekday(today);
    return today + std::chrono::days(weekday == friday ? 3 : weekday == saturday ? 2 : 1);
}

DayCaptions DayCaptions::On(Date today, const LocaleText& locale) {
    const auto caption = [&](Date day, const QString& when) {
        return locale.LongDate(day) + u" ("_s + Translate(when) + u")"_s;
    };
    return {caption(NextWorkingDay(today), u"Reports run in the afternoon for the next day"_s),
            caption(today, u"Reports run in the morning of the current day"_s)};
}

} // namespace velmora
