#include "demo/EventNames.h"

#include "demo/WordFile.h"

#include <stdexcept>

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
        numbers_.insert(type, static_cast<int>(types_.size()));
        std::vector<QStringList>& patterns = types_.emplace_back();
        for (const QString& pattern : events.Entries(type)) {
            patterns.push_back(Expand(pattern, subjects));
        }
    }
}

int EventNames::TypeNumber(const QString& eventType) const {
    const auto found = numbers_.constFind(eventType);
    if (found == numbers_.constEnd()) {
        throw std::logic_error("no event names for " + eventType.toStdString());
    }
    return *found;
}

QString EventNames::Next(int typeNumber, Date day, Random& random) const {
    const std::vector<QStringList>& patterns = types_[static_cast<size_t>(typeNumber)];
    const QStringList& names = patterns[static_cast<size_t>(random.Below(static_cast<int>(patterns.size())))];
    const QString& name = names[random.Below(static_cast<int>(names.size()))];
    if (!name.endsWith(Month)) {
        return name;
    }
    return name.chopped(Month.size()) + months_[Fields(StartOfDay(day)).month - 1];
}

} // namespace velmora::demo
