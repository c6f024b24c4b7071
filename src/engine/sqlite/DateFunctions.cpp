#include "engine/dialect/FunctionTable.h"
#include "engine/sqlite/Functions.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora::engine::sqlite {

namespace {

using dialect::Interval;

constexpr qint64 secondsPerDay = 86400;

[[noreturn]] void FailDateRange() {
    FailRange(QStringLiteral("The date would lie outside of the years 100 to 9999."));
}

// The moment, if it lies in the range of dates.
DateTime Checked(DateTime moment) {
    const DateTimeFields fields = Fields(moment);
    if (!MakeDateTime(fields)) {
        FailDateRange();
    }
    return moment;
}

DateTime PlusSeconds(DateTime moment, double seconds) {
    constexpr double limit = 4.0e11; // more than 10,000 years
    if (!(std::abs(seconds) < limit)) {
        FailDateRange();
    }
    return Checked(moment + std::chrono::seconds(std::llround(seconds)));
}

double DaysFrom(DateTime from, DateTime to) {
    return static_cast<double>((to - from).count()) / static_cast<double>(secondsPerDay);
}

void AddDays(sqlite3_context* context, const Arguments& arguments) {
    if (!arguments.IsNumber(1)) {
        FailKind(QStringLiteral("\"%1\" is no number of days.").arg(arguments.Text(1)));
    }
    Return(context, PlusSeconds(arguments.Moment(0), arguments.Real(1) * static_cast<double>(secondsPerDay)));
}

void DaysBetweenMoments(sqlite3_context* context, const Arguments& arguments) {
    Return(context, DaysFrom(arguments.Moment(1), arguments.Moment(0)));
}

// + and - of values whose kind only the row tells.
void ReturnSum(sqlite3_context* context, const Arguments& arguments, int sign) {
    if (arguments.Kind(0) == SQLITE_INTEGER && arguments.Kind(1) == SQLITE_INTEGER) {
        qint64 sum = 0;
        const bool over = sign > 0 ? __builtin_add_overflow(arguments.Integer(0), arguments.Integer(1), &sum)
                                   : __builtin_sub_overflow(arguments.Integer(0), arguments.Integer(1), &sum);
        if (!over) {
            Return(context, sum);
            return;
        }
    }
    Return(context, arguments.Real(0) + sign * arguments.Real(1));
}

void Add(sqlite3_context* context, const Arguments& arguments) {
    if (arguments.IsNumber(0) && arguments.IsNumber(1)) {
        ReturnSum(context, arguments, 1);
    } else if (arguments.IsText(0) && arguments.IsText(1)) {
        std::string joined(arguments.Utf8(0));
        joined += arguments.Utf8(1);
        Return(context, joined);
    } else {
        const int date = arguments.IsText(0) ? 0 : 1;
        if (!arguments.IsMoment(date)) {
            FailKind(QStringLiteral("\"%1\" and \"%2\" cannot be added (& joins texts).")
                         .arg(arguments.Text(0), arguments.Text(1)));
        }
        Return(context,
               PlusSeconds(arguments.Moment(date), arguments.Real(1 - date) * static_cast<double>(secondsPerDay)));
    }
}

void Subtract(sqlite3_context* context, const Arguments& arguments) {
    if (arguments.IsNumber(0) && arguments.IsNumber(1)) {
        ReturnSum(context, arguments, -1);
    } else if (arguments.IsMoment(0) && arguments.IsMoment(1)) {
        DaysBetweenMoments(context, arguments);
    } else if (arguments.IsMoment(0) && arguments.IsNumber(1)) {
        Return(context, PlusSeconds(arguments.Moment(0), -arguments.Real(1) * static_cast<double>(secondsPerDay)));
    } else {
        FailKind(QStringLiteral("\"%1\" cannot be subtracted from \"%2\".").arg(arguments.Text(1), arguments.Text(0)));
    }
}

Interval RequiredInterval(const QString& name) {
    const auto interval = dialect::IntervalOf(name);
    if (!interval) {
        FailRange(QStringLiteral("There is no interval \"%1\"; there are yyyy, q, m, ww, d, h, n and s.").arg(name));
    }
    return *interval;
}

// A day that the month does not have becomes its last one.
DateTime PlusMonths(DateTime moment, qint64 months) {
    const Date day = DateOf(moment);
    const std::chrono::year_month_day date(day);
    const qint64 index =
        (static_cast<int>(date.year()) * qint64{12}) + (static_cast<unsigned>(date.month()) - 1) + months;
    constexpr qint64 lastIndex = qint64{9999} * 12 + 11;
    constexpr qint64 firstIndex = qint64{100} * 12;
    if (index < firstIndex || index > lastIndex) {
        FailDateRange();
    }
    const std::chrono::year_month month(std::chrono::year(static_cast<int>(index / 12)),
                                        std::chrono::month(static_cast<unsigned>(index % 12) + 1));
    const std::chrono::day last = (month / std::chrono::last).day();
    return StartOfDay(Date(month / std::min(date.day(), last))) + (moment - StartOfDay(day));
}

void DateAdd(sqlite3_context* context, const Arguments& arguments) {
    const Interval interval = RequiredInterval(arguments.Text(0));
    if (!arguments.IsNumber(1)) {
        FailKind(QStringLiteral("\"%1\" is no number of intervals.").arg(arguments.Text(1)));
    }
    const double count = std::nearbyint(arguments.Real(1));
    const DateTime moment = arguments.Moment(2);
    constexpr double limit = 4.0e11;
    if (!(std::abs(count) < limit)) {
        FailDateRange();
    }
    const auto whole = static_cast<qint64>(count);
    switch (interval) {
    case Interval::Year:
        return Return(context, PlusMonths(moment, whole * 12));
    case Interval::Quarter:
        return Return(context, PlusMonths(moment, whole * 3));
    case Interval::Month:
        return Return(context, PlusMonths(moment, whole));
    case Interval::Week:
        return Return(context, PlusSeconds(moment, count * 7 * static_cast<double>(secondsPerDay)));
    case Interval::Day:
        return Return(context, PlusSeconds(moment, count * static_cast<double>(secondsPerDay)));
    case Interval::Hour:
        return Return(context, PlusSeconds(moment, count * 3600));
    case Interval::Minute:
        return Return(context, PlusSeconds(moment, count * 60));
    case Interval::Second:
        return Return(context, PlusSeconds(moment, count));
    }
}

// Sundays up to the day, counted from a fixed one.
qint64 Sundays(DateTime moment) {
    const qint64 days = DateOf(moment).time_since_epoch().count() + 4; // 1 January 1970 was a Thursday
    return days >= 0 ? days / 7 : -((6 - days) / 7);
}

// Boundaries crossed, not time elapsed.
void DateDiff(sqlite3_context* context, const Arguments& arguments) {
    const Interval interval = RequiredInterval(arguments.Text(0));
    const DateTime from = arguments.Moment(1);
    const DateTime to = arguments.Moment(2);
    const DateTimeFields first = Fields(from);
    const DateTimeFields second = Fields(to);
    const auto months = [](const DateTimeFields& fields) { return fields.year * 12 + fields.month - 1; };
    const auto hours = [](DateTime moment) {
        return std::chrono::floor<std::chrono::hours>(moment).time_since_epoch().count();
    };
    switch (interval) {
    case Interval::Year:
        return Return(context, qint64{second.year - first.year});
    case Interval::Quarter:
        return Return(context, qint64{months(second) / 3 - months(first) / 3});
    case Interval::Month:
        return Return(context, qint64{months(second) - months(first)});
    case Interval::Week:
        return Return(context, Sundays(to) - Sundays(from));
    case Interval::Day:
        return Return(context, DaysBetween(from, to));
    case Interval::Hour:
        return Return(context, qint64{hours(to) - hours(from)});
    case Interval::Minute:
        return Return(context, MinutesBetween(from, to));
    case Interval::Second:
        return Return(context, qint64{(to - from).count()});
    }
}

// A date in its storage form, always with the time.
void Moment(sqlite3_context* context, const Arguments& arguments) {
    Return(context, arguments.Moment(0));
}

constexpr std::array functions = std::to_array<ScalarFunction>({
    {"dialect_add", 2, Scalar<Add>},
    {"dialect_add_days", 2, Scalar<AddDays>},
    {"dialect_dateadd", 3, Scalar<DateAdd>},
    {"dialect_datediff", 3, Scalar<DateDiff>},
    {"dialect_days_between", 2, Scalar<DaysBetweenMoments>},
    {"dialect_moment", 1, Scalar<Moment>},
    {"dialect_subtract", 2, Scalar<Subtract>},
});

} // namespace

std::span<const ScalarFunction> DateFunctions() {
    return functions;
}

} // namespace velmora::engine::sqlite
