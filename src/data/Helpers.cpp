#include "data/Helpers.h"

#include "data/NativePath.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <cmath>

namespace velmora {

namespace {

QString Padded(int number, int width) {
    return QString::number(number).rightJustified(width, u'0');
}

QString DateDigits(const DateTimeFields& fields) {
    return Padded(fields.month, 2) + u'/' + Padded(fields.day, 2) + u'/' + Padded(fields.year, 4);
}

} // namespace

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
    if (digits.isEmpty() || !(digits[0].isDigit() || QStringView(u"+-.").contains(digits[0]))) {
        return text;
    }
    bool isNumber = false;
    const double number = digits.toDouble(&isNumber);
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

QString PersonCondition(const QString& lastName, const QString& firstName) {
    return QStringLiteral("LastName = ") + SqlText(lastName) + QStringLiteral(" and FirstName = ") + SqlText(firstName);
}

QString SqlDate(Date day) {
    return u'#' + DateDigits(Fields(StartOfDay(day))) + u'#';
}

QString SqlDateTime(DateTime moment) {
    const DateTimeFields fields = Fields(moment);
    return u'#' + DateDigits(fields) + u' ' + Padded(fields.hour, 2) + u':' + Padded(fields.minute, 2) + u':' +
           Padded(fields.second, 2) + u'#';
}

} // namespace velmora
