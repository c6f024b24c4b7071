#include "demo/EventNames.h"

#include "demo/WordFile.h"

namespace velmora::demo {

namespace {

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

} // namespace

EventNames::EventNames() {
    const WordFile events = WordFile::Load(QStringLiteral("events.txt"));
    const WordFile subjects = WordFile::Load(QStringLiteral("subjects.txt"));
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

} // namespace velmora::demo
