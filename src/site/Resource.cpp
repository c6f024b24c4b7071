#include "site/Resource.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

// Qt's macro declares a function and so cannot stand in a namespace. It keeps the resources of a static library in the
// program.
static void RegisterResources() {
    Q_INIT_RESOURCE(velmora_share);
}

namespace velmora {

QByteArray ReadResourceBytes(const QString& path) {
    RegisterResources();
    QFile file(QStringLiteral(":/velmora/") + path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::logic_error("not compiled into the program: " + path.toStdString());
    }
    return file.readAll();
}

QString ReadResource(const QString& path) {
    return QString::fromUtf8(ReadResourceBytes(path));
}

QStringList ResourceNames(const QString& folder) {
    RegisterResources();
    return QDir(QStringLiteral(":/velmora/") + folder).entryList(QDir::Files, QDir::Name);
}

} // namespace velmora
