#pragma once

#include <QStringList>

#include <vector>

// The project's folders as the tests were built from, without a slash at the end.
namespace velmora {

// Schema, stored queries and what else the program ships.
QString ShareFolder();
// The tests' own files.
QString TestDataFolder();

// A file of the tests, by its name below their folder. One that cannot be read throws std::runtime_error.
QByteArray TestBytes(const QString& name);
QString TestText(const QString& name);
// Its lines as fields, without empty lines and those that begin with "#".
std::vector<QStringList> TestRows(const QString& name, QChar separator = QLatin1Char('\t'));

} // namespace velmora
