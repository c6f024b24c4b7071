#pragma once

#include "base/DateTime.h"
#include "demo/Random.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::demo {

// What people call their reservations, by event type.
class EventNames {
public:
    EventNames();

    // The number by which Next knows an event type. Throws std::logic_error for a type without names.
    int TypeNumber(const QString& eventType) const;
    // A name for one more event of the type, which takes place on `day`.
    QString Next(int typeNumber, Date day, Random& random) const;

private:
    QHash<QString, int> numbers_;
    // By type: for each pattern of the word lists, every name that it can make.
    std::vector<std::vector<QStringList>> types_;
    QStringList months_;
};

} // namespace velmora::demo
