#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// A text that is compiled into the program, by its path below share/ ("layouts/Setup.rpx"). Throws std::logic_error
// when there is none of that path.
QString ReadResource(const QString& path);

// The same, as stored.
QByteArray ReadResourceBytes(const QString& path);

// The names of the files in a folder below share/, in alphabetical order.
QStringList ResourceNames(const QString& folder);

} // namespace velmora
