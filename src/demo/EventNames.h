#pragma once

#include "base/DateTime.h"
#include "demo/Random.h"

#include <QString>
#include <QStringList>

#include <map>
#include <vector>

namespace velmora::demo {

// What people call their reservations, by event type.
class EventNames {
public:
    EventNames();

    // A name for one more event of the type, which takes place on `day`. Throws std::out_of_range for a type without
    // names.
    QString Next(const QString& eventType, Date day, Random& random) const;

private:
    // By type: for each pattern of the word lists, every name that it can make.
    std::map<QString, std::vector<QStringList>> types_;
    QStringList months_;
};

} // namespace velmora::demo
