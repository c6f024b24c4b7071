#include "base/Value.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace velmora {

namespace {

template <typename... F>
struct Overloaded : F... {
    using F::operator()...;
};
template <typename... F>
Overloaded(F...) -> Overloaded<F...>;

qint64 RoundedHalfToEven(double number) {
    if (std::isnan(number)) {
        return 0;
    }
    constexpr double limit = 9.2233720368547748e18;
    if (number >= limit) {
        return std::numeric_limits<qint64>::max();
    }
    if (number <= -limit) {
        return std::numeric_limits<qint64>::min();
    }
    return static_cast<qint64>(std::nearbyint(number));
}

} // namespace

QString NumberText(double number) {
    constexpr double exactWhole = 1e15;
    if (std::isfinite(number) && std::floor(number) == number && std::abs(number) < exactWhole) {
        return QString::number(static_cast<qint64>(number));
    }
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

bool Value::ToBool() const {
    return std::visit(Overloaded{[](bool yes) { return yes; }, [](qint64 number) { return number != 0; },
                                 [](double number) { return number != 0; }, [](const auto&) { return false; }},
                      data_);
}

qint64 Value::ToInteger() const {
    return std::visit(Overloaded{[](bool yes) { return qint64{yes ? -1 : 0}; }, [](qint64 number) { return number; },
                                 [](double number) { return RoundedHalfToEven(number); },
                                 [](const QString& text) { return RoundedHalfToEven(text.trimmed().toDouble()); },
                                 [](const auto&) { return qint64{0}; }},
                      data_);
}

double Value::ToReal() const {
    return std::visit(
        Overloaded{[](bool yes) { return yes ? -1.0 : 0.0; }, [](qint64 number) { return static_cast<double>(number); },
                   [](double number) { return number; }, [](const QString& text) { return text.trimmed().toDouble(); },
                   [](const auto&) { return 0.0; }},
        data_);
}

QString Value::ToText() const {
    return std::visit(Overloaded{[](std::monostate) { return QString(); },
                                 [](bool yes) { return yes ? QStringLiteral("True") : QStringLiteral("False"); },
                                 [](qint64 number) { return QString::number(number); },
                                 [](double number) { return NumberText(number); },
                                 [](const QString& text) { return text; },
                                 [](DateTime moment) { return StorageText(moment); }},
                      data_);
}

std::optional<DateTime> Value::ToDateTime() const {
    if (const auto* moment = std::get_if<DateTime>(&data_)) {
        return *moment;
    }
    if (const auto* text = std::get_if<QString>(&data_)) {
        return ParseStorageText(*text);
    }
    return std::nullopt;
}

void Value::AssignText(QStringView text) {
    if (auto* held = std::get_if<QString>(&data_); held && held->isDetached()) {
        held->resize(0);
        held->append(text);
    } else {
        data_ = text.toString();
    }
}

} // namespace velmora
