#pragma once

#include "app/report/CommandLine.h"

namespace velmora::report {

// What the values of options mean. All throw BadUsage naming the option for a value that it does not take.

// The value of an option that names one of a few things.
template <typename T>
T OneOf(const QString& option, const QString& value, const std::vector<std::pair<QString, T>>& choices) {
    QStringList names;
    for (const auto& [name, meaning] : choices) {
        if (name == value) {
            return meaning;
        }
        names += name;
    }
    throw BadUsage{QStringLiteral("%1 is %2, not \"%3\"").arg(option, names.join(QStringLiteral(" or ")), value)};
}

QString NotEmpty(const QString& option, const QString& value);

// A day as YYYY-MM-DD.
Date DayValue(const QString& option, const QString& value);
// The same for the one day of a report, which needs a day after it.
Date ReportDate(const QString& option, const QString& value);

} // namespace velmora::report
