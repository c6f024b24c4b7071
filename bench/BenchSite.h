#pragma once

#include <QString>

namespace velmora::bench {

inline constexpr int benchPersons = 10'000;
inline constexpr int benchReservations = 50'000;

// The names of person number `index`, different for every person.
QString LastNameOf(int index);
QString FirstNameOf(int index);

// Makes a site's database at `path`: 300 assets, the persons and the reservations.
void MakeBenchSite(const QString& path);

} // namespace velmora::bench
