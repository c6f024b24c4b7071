#include "tests/support/Folders.h"

#include <QFile>

#include <stdexcept>

namespace velmora {

QString ShareFolder() {
    return QStringLiteral(VELMORA_SHARE);
}

QString TestDataFolder() {
    return QStringLiteral(VELMORA_TEST_DATA);
}

QByteArray TestBytes(const QString& name) {
    QFile file(TestDataFolder() + QLatin1Char('/') + name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + name.toStdString());
    }
    return file.readAll();
}

QString TestText(const QString& name) {
    return QString::fromUtf8(TestBytes(name));
}

std::vector<QStringList> TestRows(const QString& name, QChar separator) {
    std::vector<QStringList> rows;
    for (const QString& line : TestText(name).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (!line.startsWith(QLatin1Char('#'))) {
            rows.push_back(line.split(separator));
        }
    }
    return rows;
}

} // namespace velmora
