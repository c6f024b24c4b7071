#pragma once

#include <QString>

#include <optional>

namespace velmora {

// Why this program must not work on the shared database now: the database file is not there, or an administrator has
// placed a hold file in the data directory. The notice as users read it; none when nothing stands in the way.
std::optional<QString> HoldNotice();

// Ends the program in order when the shared database has vanished, when an administrator has placed a hold, or when the
// configured logoff minute has come; returns otherwise. The first two are shown in the progress window for a little
// more than ten seconds; the last is announced there, with a beep, in the five minutes before. Call it once a minute.
// On the way the database gives up its read locks and forgets what it had cached.
void CheckHold();

} // namespace velmora
