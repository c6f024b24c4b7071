#include "platform/ProfileFile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

namespace velmora {

namespace {

struct Location {
    // Index of the entry's line, or -1; of the line behind the section's last entry, or -1 without the section.
    qsizetype line = -1;
    qsizetype sectionEnd = -1;
};

QString Decoded(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    if (decoder.hasError()) {
        text = QString::fromLatin1(bytes);
    }
    if (text.startsWith(QChar(QChar::ByteOrderMark))) {
        text.remove(0, 1);
    }
    return text;
}

bool SameName(QStringView left, const QString& right) {
    return left.trimmed().compare(QStringView(right).trimmed(), Qt::CaseInsensitive) == 0;
}

// The section's name when the line opens one.
std::optional<QString> SectionOf(const QByteArray& line) {
    const QString text = Decoded(line).trimmed();
    const qsizetype end = text.indexOf(u']');
    if (!text.startsWith(u'[') || end < 0) {
        return std::nullopt;
    }
    return text.mid(1, end - 1);
}

struct Entry {
    QString key;
    QString value;
};

std::optional<Entry> EntryOf(const QByteArray& line) {
    const QString text = Decoded(line);
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 0 || text.trimmed().startsWith(u';')) {
        return std::nullopt;
    }
    return Entry{text.left(equals).trimmed(), text.mid(equals + 1).trimmed()};
}

Location Locate(const QList<QByteArray>& lines, const QString& section, const QString& key) {
    Location location;
    bool inside = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (const auto name = SectionOf(lines[i])) {
            if (inside) {
                break;
            }
            inside = SameName(*name, section);
            if (inside) {
                location.sectionEnd = i + 1;
            }
        } else if (inside) {
            const auto entry = EntryOf(lines[i]);
            if (entry && SameName(entry->key, key)) {
                location.line = i;
                return location;
            }
            if (!lines[i].trimmed().isEmpty()) {
                location.sectionEnd = i + 1;
            }
        }
    }
    return location;
}

std::optional<QByteArray> Content(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll();
}

bool HasLineBreak(const QString& text) {
    return text.contains(u'\n') || text.contains(u'\r');
}

} // namespace

std::optional<QString> ProfileFile::Read(const QString& section, const QString& key) const {
    const auto content = Content(path_);
    if (!content) {
        return std::nullopt;
    }
    const QList<QByteArray> lines = content->split('\n');
    const Location location = Locate(lines, section, key);
    if (location.line < 0) {
        return std::nullopt;
    }
    QString value = EntryOf(lines[location.line])->value;
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

bool ProfileFile::Write(const QString& section, const QString& key, const QString& value) const {
    if (HasLineBreak(section) || HasLineBreak(key) || HasLineBreak(value)) {
        return false;
    }
    const auto content = Content(path_);
    if (!content && QFile::exists(path_)) {
        return false;
    }
    const QByteArray bytes = content.value_or(QByteArray());
    const QByteArray lineEnd = bytes.contains("\r\n") || bytes.isEmpty() ? "\r\n" : "\n";
    const QByteArray carriageReturn = lineEnd.size() == 2 ? "\r" : "";
    // New text is written in the file's own encoding where it has one.
    QStringDecoder decoder(QStringDecoder::Utf8);
    [[maybe_unused]] const QString decoded = decoder(bytes);
    const QString text = key + u'=' + value;
    const QByteArray entry = (decoder.hasError() ? text.toLatin1() : text.toUtf8()) + carriageReturn;

    QList<QByteArray> lines = bytes.isEmpty() ? QList<QByteArray>{QByteArray()} : bytes.split('\n');
    const Location location = Locate(lines, section, key);
    if (location.line >= 0) {
        lines[location.line] = entry;
    } else if (location.sectionEnd >= 0) {
        // The section's last line may be the file's last one, without a line end.
        QByteArray& last = lines[location.sectionEnd - 1];
        if (location.sectionEnd == lines.size()) {
            last += carriageReturn;
            lines.append(QByteArray());
        }
        lines.insert(location.sectionEnd, entry);
    } else {
        if (!lines.back().isEmpty()) {
            lines.back() += carriageReturn;
            lines.append(QByteArray());
        }
        const QString heading = u'[' + section + u']';
        lines.insert(lines.size() - 1, (decoder.hasError() ? heading.toLatin1() : heading.toUtf8()) + carriageReturn);
        lines.insert(lines.size() - 1, entry);
    }
    QSaveFile file(path_);
    const QByteArray result = lines.join('\n');
    return file.open(QIODevice::WriteOnly) && file.write(result) == result.size() && file.commit();
}

} // namespace velmora
