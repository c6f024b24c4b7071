#include "data/Helpers.h"

#include "data/NativePath.h"

#include <QFile>
#include <QFileInfo>
#include <QStringBuilder>
#include <QStringDecoder>

#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

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
    const QStringView digits = QStringView(text).trimmed();
    // Whole lists of names get their keys: a look at the beginning spares most of them the reading of a number.
    if (digits.isEmpty() || digits[0].isLetter()) {
        return text;
    }
    bool isNumber = false;
    const double number = digits.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? u'<' + text + u'>' : text;
}

QString SqlText(const QString& text) {
    return text.contains(u'"') ? u'"' % QString(text).replace(u'"', u"\"\""_s) % u'"' : u'"' % text % u'"';
}

QString PersonCondition(const QString& lastName, const QString& firstName) {
    return u"LastName = "_s % SqlText(lastName) % u" and FirstName = "_s % SqlText(firstName);
}

QString SqlDate(Date day) {
    const DateTimeFields fields = Fields(StartOfDay(day));
    return QString::asprintf("#%02d/%02d/%04d#", fields.month, fields.day, fields.year);
}

QString SqlDateTime(DateTime moment) {
    const DateTimeFields fields = Fields(moment);
    return QString::asprintf("#%02d/%02d/%04d %02d:%02d:%02d#", fields.month, fields.day, fields.year, fields.hour,
                             fields.minute, fields.second);
}

} // namespace velmora
