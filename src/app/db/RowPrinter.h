#pragma once

#include "base/Error.h"
#include "engine/Recordset.h"

#include <QFile>

#include <unistd.h>

namespace velmora::db {

// Standard output, written in large pieces. A write that fails throws Error: a full disk, a reader that went away.
class Output {
public:
    void Add(const QByteArray& bytes) {
        constexpr qsizetype flushSize = 1 << 16;
        buffer_ += bytes;
        if (buffer_.size() >= flushSize) {
            Flush();
        }
    }
    void Add(const QString& text) { Add(text.toUtf8()); }

    // Writes what is left; to be called at the end, since only then all failures are known.
    void Flush() {
        const QByteArray bytes = std::exchange(buffer_, {});
        QFile out;
        if (!out.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
            out.write(bytes) != bytes.size()) {
            throw ProgramError(out.error() == QFileDevice::ResourceError ? ErrorNumber::DiskFull
                                                                         : ErrorNumber::FileAccess,
                               QStringLiteral("Cannot write to standard output: %1").arg(out.errorString()));
        }
    }

private:
    QByteArray buffer_;
};

// Prints a header line of the field names, "Table.Field" where two have one name, and every record from the current
// one on.
void PrintRows(engine::Recordset& rows, Output& output);

} // namespace velmora::db
