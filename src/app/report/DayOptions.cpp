#include "app/report/DayOptions.h"

#include "app/report/OptionValues.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

void DayOptions::AddTo(OptionTable& table) {
    table.AddValue(u"--day"_s, [this](const QString& value) { day_ = value; });
    table.AddValue(u"--date"_s, [this](const QString& value) { date_ = DayValue(u"--date"_s, value); });
    table.AddValue(u"--days"_s, [this](const QString& value) {
        bool isNumber = false;
        days_ = value.toInt(&isNumber);
        if (!isNumber || *days_ < 1) {
            throw BadUsage{u"--days takes a number of at least 1, not \"%1\""_s.arg(value)};
        }
    });
}

DaySelection DayOptions::Resolve() const {
    if (day_.isEmpty()) {
        throw BadUsage{u"--day next, --day current or --day other is missing"_s};
    }
    if (day_ == u"next" || day_ == u"current") {
        if (date_ || days_) {
            throw BadUsage{u"--date and --days belong to --day other"_s};
        }
        return {.choice = day_ == u"next" ? DayChoice::NextWorkingDay : DayChoice::CurrentDay};
    }
    if (day_ != u"other") {
        throw BadUsage{u"--day is next, current or other, not \"%1\""_s.arg(day_)};
    }
    if (!date_) {
        throw BadUsage{u"--day other needs --date YYYY-MM-DD"_s};
    }
    const int number = days_.value_or(1);
    const Date lastOfAll = *MakeDate(9999, 12, 31);
    if (*date_ > lastOfAll - std::chrono::days(number)) {
        throw BadUsage{u"%1 days from that date on go beyond the year 9999"_s.arg(number)};
    }
    return {DayChoice::OtherDay, date_, number};
}

} // namespace velmora::report
