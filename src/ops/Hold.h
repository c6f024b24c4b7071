#pragma once

#include <QString>

#include <optional>

namespace velmora {

// Why this program must not work on the shared database now: the database file is not there, or an administrator has
// placed a hold file in the data directory. The notice as users read it; none when nothing stands in the way.
std::optional<QString> HoldNotice();

} // namespace velmora
