#pragma once

#include "base/DateTime.h"

#include <QString>

#include <variant>

namespace velmora {

// What one field holds: empty (Null), yes/no, a whole number, a real number, text, or a date-time.
class Value {
public:
    Value() = default;
    Value(bool yes) : data_(yes) {}
    Value(int number) : data_(qint64{number}) {}
    Value(qint64 number) : data_(number) {}
    Value(double number) : data_(number) {}
    Value(QString text) : data_(std::move(text)) {}
    Value(QStringView text) : data_(text.toString()) {}
    Value(DateTime moment) : data_(moment) {}
    Value(const char*) = delete;

    bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }
    bool IsBool() const { return std::holds_alternative<bool>(data_); }
    bool IsInteger() const { return std::holds_alternative<qint64>(data_); }
    bool IsReal() const { return std::holds_alternative<double>(data_); }
    bool IsText() const { return std::holds_alternative<QString>(data_); }
    bool IsDateTime() const { return std::holds_alternative<DateTime>(data_); }

    // Conversions that never fail. What does not convert is the type's neutral value.
    // True for yes and for any number other than 0; false otherwise, empty included.
    bool ToBool() const;
    // A real number is rounded half to even, text is read as a decimal number, yes is -1; else 0.
    qint64 ToInteger() const;
    double ToReal() const;
    // The text itself; numbers in their shortest decimal form with a point; True or False; the storage form of a
    // date-time; empty as "".
    QString ToText() const;
    // The date-time itself or a text in storage form; none for anything else.
    std::optional<DateTime> ToDateTime() const;

    // Becomes that text; reuses the memory of a text that it holds already.
    void AssignText(QStringView text);

    // Same type and same value. Text compares letter by letter, case included.
    friend bool operator==(const Value&, const Value&) = default;

    const auto& Data() const { return data_; }

private:
    std::variant<std::monostate, bool, qint64, double, QString, DateTime> data_;
};

// The shortest decimal text that reads back as the same number; whole numbers without a point.
QString NumberText(double number);

} // namespace velmora
