#include "app/report/OptionValues.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

QString NotEmpty(const QString& option, const QString& value) {
    if (value.isEmpty()) {
        throw BadUsage{u"%1 needs a value that is not empty"_s.arg(option)};
    }
    return value;
}

Date DayValue(const QString& option, const QString& value) {
    constexpr qsizetype sizeOfDay = 10;
    const auto moment = value.size() == sizeOfDay ? ParseStorageText(value) : std::nullopt;
    if (!moment) {
        throw BadUsage{u"%1 takes a day as YYYY-MM-DD, not \"%2\""_s.arg(option, value)};
    }
    return DateOf(*moment);
}

Date ReportDate(const QString& option, const QString& value) {
    const Date day = DayValue(option, value);
    if (day == *MakeDate(9999, 12, 31)) {
        throw BadUsage{u"%1 %2 is the last day of all: a report needs the one after it, too"_s.arg(option, value)};
    }
    return day;
}

} // namespace velmora::report
