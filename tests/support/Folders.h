#pragma once

#include <QString>

// The project's folders as the tests were built from, without a slash at the end.
namespace velmora {

// Schema, stored queries and what else the program ships.
QString ShareFolder();
// The tests' own files.
QString TestDataFolder();

} // namespace velmora
