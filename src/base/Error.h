#pragma once

#include <QString>

#include <exception>

namespace velmora {

// A failure as an error report shows it: a number that users and scripts know, a sentence a person understands, and
// the name of the part of the program that it came from. `detail` is what only the log keeps, such as an SQL text.
class Error : public std::exception {
public:
    Error(int number, QString description, QString source, QString detail = {})
        : number_(number), description_(std::move(description)), source_(std::move(source)), detail_(std::move(detail)),
          bytes_(description_.toUtf8()) {}

    int Number() const { return number_; }
    const QString& Description() const { return description_; }
    const QString& Source() const { return source_; }
    const QString& Detail() const { return detail_; }
    const char* what() const noexcept override { return bytes_.constData(); }

private:
    int number_;
    QString description_;
    QString source_;
    QString detail_;
    QByteArray bytes_;
};

// Failures outside the record engine, by the numbers that users of the program's family know.
enum class ErrorNumber {
    InvalidCall = 5,
    TypeMismatch = 13,
    FileNotFound = 53,
    DiskFull = 61,
    FileAccess = 75,
    PathNotFound = 76,
    Unavailable = 429,
};

inline Error ProgramError(ErrorNumber number, QString description) {
    return Error(static_cast<int>(number), std::move(description), QStringLiteral("Velmora"));
}

// The error that is being handled, whatever its type; call it only inside a catch block.
Error CurrentError();

// Thrown to end the program with an exit code. No Error and no std::exception, so that nothing that handles failures
// holds it up: only the programs themselves catch it.
struct StopProgram {
    int exitCode = 0;
};

} // namespace velmora
