#include "data/Helpers.h"

#include "data/NativePath.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <cmath>

namespace velmora {

QString AddBackslash(const QString& path) {
    return path.endsWith(u'\\') ? path : path + u'\\';
}

bool FileExists(const QString& path) {
    return QFileInfo(NativePath(path)).isFile();
}

QByteArray ReadFileBytes(const QString& path) {
    QFile file(NativePath(path));
    return FileExists(path) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ReadFileText(const QString& path) {
    const QByteArray bytes = ReadFileBytes(path);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

QString AssetKey(const Value& value) {
    const QString text = value.ToText();
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? u'<' + text + u'>' : text;
}

QString SqlText(const QString& text) {
    if (!text.contains(u'"')) {
        return u'"' + text + u'"';
    }
    QString quoted = text;
    quoted.replace(u'"', QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

QString SqlDate(Date day) {
    const DateTimeFields fields = Fields(StartOfDay(day));
    const auto padded = [](int number, int width) { return QString::number(number).rightJustified(width, u'0'); };
    return u'#' + padded(fields.month, 2) + u'/' + padded(fields.day, 2) + u'/' + padded(fields.year, 4) + u'#';
}

} // namespace velmora
