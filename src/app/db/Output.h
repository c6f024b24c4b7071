#pragma once

#include <QByteArray>
#include <QString>

namespace velmora::db {

// Standard output, written in large pieces. A write that fails throws Error: a full disk, a reader that went away.
class Output {
public:
    Output() = default;

    void Add(QByteArrayView bytes) {
        buffer_.append(bytes);
        if (buffer_.size() >= FlushSize) {
            Flush();
        }
    }
    void Add(char byte) { Add(QByteArrayView(&byte, 1)); }
    void Add(const QString& text) { Add(QByteArrayView(text.toUtf8())); }

    // Writes what is left; to be called at the end, since only then all failures are known.
    void Flush();

private:
    static constexpr qsizetype FlushSize = 1 << 16;

    QByteArray buffer_;
};

} // namespace velmora::db
