#include "platform/LogFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velmora {

QString LogFile::DefaultPath() {
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state)) {
        state = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return state + QStringLiteral("/velmora/velmora.log");
}

void LogFile::Write(const QString& entry) noexcept {
    try {
        Append(entry);
    } catch (const std::exception&) {
        // A failure to log must not hide the failure that was to be logged.
        return;
    }
}

void LogFile::Append(const QString& entry) {
    const QFileInfo info(path_);
    QDir().mkpath(info.path());
    if (info.size() >= limit_) {
        QFile::remove(path_ + QStringLiteral(".1"));
        QFile::rename(path_, path_ + QStringLiteral(".1"));
    }
    const QString stamp = StorageText(clock_.Now());
    QString lines;
    for (QString line : entry.split(u'\n')) {
        line.remove(u'\r');
        lines += stamp + u' ' + line + u'\n';
    }
    // An entry longer than the whole file may be is cut: the beginning says what failed.
    QByteArray bytes = lines.toUtf8();
    if (bytes.size() > limit_) {
        bytes.truncate(limit_ - 1);
        bytes += '\n';
    }
    QFile file(path_);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        file.write(bytes);
    }
}

} // namespace velmora
