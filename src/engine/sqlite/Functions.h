#pragma once

#include "base/DateTime.h"
#include "base/Error.h"
#include "base/Value.h"

#include <QByteArray>
#include <QString>

#include <sqlite3.h>

#include <functional>
#include <new>
#include <optional>
#include <span>
#include <string_view>

struct sqlite3;

namespace velmora::engine::sqlite {

// Thrown inside of a function of the store; ends the statement with the sentence.
struct FunctionFailure {
    QString what;
    int code = SQLITE_ERROR;
};

[[noreturn]] inline void FailKind(const QString& what) {
    throw FunctionFailure{what, SQLITE_MISMATCH};
}
[[noreturn]] inline void FailRange(const QString& what) {
    throw FunctionFailure{what, SQLITE_ERROR};
}

// The arguments of one call.
class Arguments {
public:
    Arguments(int count, sqlite3_value** values) : count_(count), values_(values) {}

    int Count() const { return count_; }
    sqlite3_value* operator[](int index) const { return values_[index]; }
    int Kind(int index) const { return sqlite3_value_type(values_[index]); }
    bool AnyNull() const {
        for (int i = 0; i < count_; ++i) {
            if (Kind(i) == SQLITE_NULL) {
                return true;
            }
        }
        return false;
    }
    bool IsText(int index) const { return Kind(index) == SQLITE_TEXT; }
    bool IsNumber(int index) const { return Kind(index) == SQLITE_INTEGER || Kind(index) == SQLITE_FLOAT; }
    // The stored bytes of a text.
    std::string_view Utf8(int index) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values_[index]));
        if (!bytes) {
            throw std::bad_alloc();
        }
        return {bytes, static_cast<size_t>(sqlite3_value_bytes(values_[index]))};
    }
    QString Text(int index) const {
        const std::string_view bytes = Utf8(index);
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    qint64 Integer(int index) const { return sqlite3_value_int64(values_[index]); }
    double Real(int index) const { return sqlite3_value_double(values_[index]); }
    bool IsMoment(int index) const { return TryMoment(index).has_value(); }
    // Throws for what is not a date.
    DateTime Moment(int index) const {
        if (const auto moment = TryMoment(index)) {
            return *moment;
        }
        FailKind(QStringLiteral("\"%1\" is no date.").arg(IsNumber(index) ? NumberText(Real(index)) : Text(index)));
    }

private:
    std::optional<DateTime> TryMoment(int index) const {
        if (!IsText(index)) {
            return std::nullopt;
        }
        const std::string_view bytes = Utf8(index);
        return ParseStorageText(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }

    int count_;
    sqlite3_value** values_;
};

inline void Return(sqlite3_context* context, std::string_view utf8) {
    sqlite3_result_text64(context, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}
inline void Return(sqlite3_context* context, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    Return(context, std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
}
inline void Return(sqlite3_context* context, qint64 number) {
    sqlite3_result_int64(context, number);
}
inline void Return(sqlite3_context* context, double number) {
    sqlite3_result_double(context, number);
}
inline void Return(sqlite3_context* context, DateTime moment) {
    char buffer[19];
    WriteStorageText(moment, buffer);
    Return(context, std::string_view(buffer, sizeof buffer));
}

// Ends the call with the failure that is being handled; call it only inside a catch block.
inline void ReturnFailure(sqlite3_context* context) noexcept {
    try {
        throw;
    } catch (const FunctionFailure& failure) {
        const QByteArray text = failure.what.toUtf8();
        sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
        sqlite3_result_error_code(context, failure.code);
    } catch (const Error& error) {
        sqlite3_result_error(context, error.what(), -1);
    } catch (...) {
        sqlite3_result_error_nomem(context);
    }
}

using FunctionBody = void (*)(sqlite3_context*, const Arguments&);

// A function as the store calls it: an empty argument gives an empty result, no exception leaves it.
template <FunctionBody body>
void Scalar(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
    try {
        const Arguments arguments(count, values);
        if (!arguments.AnyNull()) {
            body(context, arguments);
        }
    } catch (...) {
        ReturnFailure(context);
    }
}

struct ScalarFunction {
    const char* name;
    int arguments; // -1: any number
    void (*call)(sqlite3_context*, int, sqlite3_value**);
};

// The functions of each file; all give the same result for the same arguments.
std::span<const ScalarFunction> TextFunctions();
std::span<const ScalarFunction> NumberFunctions();
std::span<const ScalarFunction> DateFunctions();
std::span<const ScalarFunction> FormatFunctions();

// What Date() and Now() read.
using NowSource = std::function<DateTime()>;

// Gives a connection the functions that compiled statements call: those of the dialect and the conversions between its
// kinds of values. Call it once per connection; a copy of `now` is kept until the connection closes. A function that is
// given a value of the wrong kind fails with SQLITE_MISMATCH, one out of its range with SQLITE_ERROR, each with a
// sentence for the user. Throws EngineError when the store refuses.
void RegisterFunctions(sqlite3* connection, const NowSource& now);

} // namespace velmora::engine::sqlite
