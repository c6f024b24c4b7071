#pragma once

#include "base/services/Clock.h"
#include "base/services/Log.h"

namespace velmora {

// A log in a file of the user's own. Every line carries the date and time in storage form. When the file passes
// `limit` bytes it is kept once as "<path>.1" and begun anew, so the two together stay below twice the limit and a
// little. Several programs may write to it at once.
class LogFile : public Log {
public:
    static constexpr qint64 defaultLimit = 512LL * 1024;

    LogFile(QString path, const Clock& clock, qint64 limit = defaultLimit)
        : path_(std::move(path)), clock_(clock), limit_(limit) {}

    void Write(const QString& entry) noexcept override;

    // Where this user's log belongs by the desktop's conventions (XDG Base Directory: the state directory).
    static QString DefaultPath();

private:
    void Append(const QString& entry);

    QString path_;
    const Clock& clock_;
    qint64 limit_;
};

} // namespace velmora
