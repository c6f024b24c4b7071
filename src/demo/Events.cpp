#include "demo/Events.h"

#include "demo/Calendar.h"
#include "demo/WordFile.h"

#include <algorithm>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

constexpr QLatin1String Month("{month}");

// Puts every word of a "{section}" into its place, one section after the other. The month stays open.
QStringList Expand(const QString& pattern, const WordFile& subjects) {
    const qsizetype open = pattern.indexOf(u'{');
    if (open < 0 || pattern.contains(Month)) {
        return {pattern};
    }
    const qsizetype close = pattern.indexOf(u'}', open);
    QStringList names;
    for (const QString& word : subjects.Entries(pattern.mid(open + 1, close - open - 1))) {
        names += Expand(pattern.left(open) + word + pattern.mid(close + 1), subjects);
    }
    return names;
}

DateTime At(Date day, int quarter) {
    return StartOfDay(day) + minutes(quarter * 15);
}

// Most begin on the hour, before ten or after lunch; a few in the evening.
int OfficeHoursStart(Random& random) {
    static constexpr int hours[] = {8,  8,  8,  9,  9,  9,  9,  9,  10, 10, 10, 10, 11, 11, 11,
                                    12, 13, 13, 13, 14, 14, 14, 14, 15, 15, 15, 16, 16, 17, 18};
    const int hour = random.Pick(hours);
    const int quarter = random.Below(100);
    return hour * 4 + (quarter < 60 ? 0 : quarter < 88 ? 2 : quarter < 94 ? 1 : 3);
}

int MorningStart(Random& random) {
    return 8 * 4 + 2 * random.Below(3);
}

// An end on the same day, at ten in the evening at the latest.
EventTimes SameDay(Date day, int start, int quarters) {
    return {start, At(day, std::min(start + quarters, 22 * 4))};
}

// From the morning for some days in a row (1: the same day), to an hour of the last one or through it.
EventTimes ManyDays(Date day, int count, Random& random) {
    static constexpr int ends[] = {12, 16, 16, 17, 17, 17, 18, 24};
    const Date last = count == 1 ? day : WorkingDayFrom(day + days(count - 1));
    return {MorningStart(random), At(last, 4 * random.Pick(ends))};
}

EventTimes Meeting(Date day, Random& random) {
    static constexpr int quarters[] = {2, 2, 2, 2, 3, 3, 4, 4, 4, 4, 4, 4, 4, 6, 6, 6, 8, 8, 12};
    return SameDay(day, OfficeHoursStart(random), random.Pick(quarters));
}

EventTimes HalfDay(Date day, Random& random) {
    switch (random.Below(4)) {
    case 0:
        return SameDay(day, MorningStart(random), 14);
    case 1:
        return SameDay(day, 13 * 4, 14 + 2 * random.Below(3));
    default:
        return random.Percent(12) ? ManyDays(day, 2, random) : SameDay(day, MorningStart(random) + 2, 32);
    }
}

EventTimes BigEvent(Date day, Random& random) {
    if (random.Percent(15)) {
        return ManyDays(day, random.Between(2, 3), random);
    }
    const int start = random.Percent(60) ? MorningStart(random) + 4 : 16 * 4 + 2 * random.Below(4);
    return random.Percent(35) ? EventTimes{start, At(day, quartersOfDay)} : SameDay(day, start, 20 + random.Below(16));
}

} // namespace

EventNames::EventNames() {
    const WordFile events(QStringLiteral("events.txt"));
    const WordFile subjects(QStringLiteral("subjects.txt"));
    months_ = subjects.Entries(QStringLiteral("month"));
    for (const QString& type : events.Sections()) {
        std::vector<QStringList>& patterns = types_[type];
        for (const QString& pattern : events.Entries(type)) {
            patterns.push_back(Expand(pattern, subjects));
        }
    }
}

QString EventNames::Next(const QString& eventType, Date day, Random& random) const {
    const QStringList& names = random.Pick(types_.at(eventType));
    const QString& name = random.Pick(names);
    if (!name.endsWith(Month)) {
        return name;
    }
    return name.chopped(Month.size()) + months_[Fields(StartOfDay(day)).month - 1];
}

EventTimes DrawTimes(Span span, Date day, Random& random) {
    switch (span) {
    case Span::Meeting:
        return Meeting(day, random);
    case Span::Interview:
        return SameDay(day, std::min(OfficeHoursStart(random), 16 * 4), 3 + random.Below(4));
    case Span::HalfDay:
        return HalfDay(day, random);
    case Span::Course:
        return random.Percent(70) ? SameDay(day, MorningStart(random), 16 + 4 * random.Below(5))
                                  : ManyDays(day, random.Between(2, 5), random);
    case Span::BigEvent:
        return BigEvent(day, random);
    case Span::Visit:
        return SameDay(day, std::min(OfficeHoursStart(random), 15 * 4), 4 + 2 * random.Below(7));
    case Span::Laboratory:
        return random.Percent(60) ? SameDay(day, MorningStart(random), 8 + 4 * random.Below(7))
                                  : ManyDays(day, random.Between(2, 15), random);
    case Span::DeskDays:
        return random.Percent(75) ? SameDay(day, MorningStart(random), 32 + 2 * random.Below(4))
                                  : ManyDays(day, random.Between(2, 10), random);
    case Span::Loan:
        return random.Percent(70) ? SameDay(day, OfficeHoursStart(random), 4 + 4 * random.Below(7))
                                  : ManyDays(day, random.Between(2, 6), random);
    case Span::Weeks:
        return ManyDays(day, random.Between(5, 55), random);
    case Span::Closure:
        return {0, StartOfDay(day) + days(random.Between(1, 9))};
    }
    return Meeting(day, random);
}

} // namespace velmora::demo
