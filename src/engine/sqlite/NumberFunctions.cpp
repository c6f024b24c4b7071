#include "engine/sqlite/Functions.h"

#include <array>
#include <cmath>

namespace velmora::engine::sqlite {

namespace {

constexpr double wholeLimit = 9.2e18;

void RequireNumber(const Arguments& arguments, int index) {
    if (!arguments.IsNumber(index)) {
        FailKind(QStringLiteral("\"%1\" is no number.").arg(arguments.Text(index)));
    }
}

// As a whole number where there is one of that size.
void ReturnWhole(sqlite3_context* context, double number) {
    if (std::abs(number) < wholeLimit) {
        Return(context, static_cast<qint64>(number));
    } else {
        Return(context, number);
    }
}

void Number(sqlite3_context* context, const Arguments& arguments) {
    RequireNumber(arguments, 0);
    sqlite3_result_value(context, arguments[0]);
}

void Whole(sqlite3_context* context, const Arguments& arguments) {
    RequireNumber(arguments, 0);
    if (arguments.Kind(0) == SQLITE_INTEGER) {
        Return(context, arguments.Integer(0));
        return;
    }
    const double rounded = std::nearbyint(arguments.Real(0));
    if (!(std::abs(rounded) < wholeLimit)) {
        FailRange(QStringLiteral("%1 is too large for a whole number.").arg(NumberText(rounded)));
    }
    Return(context, static_cast<qint64>(rounded));
}

void Text(sqlite3_context* context, const Arguments& arguments) {
    if (arguments.Kind(0) == SQLITE_FLOAT) {
        Return(context, NumberText(arguments.Real(0)));
    } else {
        Return(context, arguments.Utf8(0));
    }
}

// The largest whole number that is not larger; of a date its midnight.
void Int(sqlite3_context* context, const Arguments& arguments) {
    if (arguments.IsText(0)) {
        Return(context, StartOfDay(DateOf(arguments.Moment(0))));
    } else if (arguments.Kind(0) == SQLITE_INTEGER) {
        Return(context, arguments.Integer(0));
    } else {
        ReturnWhole(context, std::floor(arguments.Real(0)));
    }
}

// Half to even.
void Round(sqlite3_context* context, const Arguments& arguments) {
    RequireNumber(arguments, 0);
    const qint64 places = arguments.Count() == 2 ? arguments.Integer(1) : 0;
    if (places < 0) {
        FailRange(QStringLiteral("Round cannot keep %1 decimal places.").arg(places));
    }
    if (arguments.Kind(0) == SQLITE_INTEGER) {
        Return(context, arguments.Integer(0));
        return;
    }
    const double number = arguments.Real(0);
    constexpr qint64 mostPlaces = 22; // powers of ten up to here are exact
    const double scale = std::pow(10.0, static_cast<double>(std::min(places, mostPlaces)));
    const double scaled = number * scale;
    constexpr double exactLimit = 9007199254740992.0; // beyond it every number is whole already
    if (!(std::abs(scaled) < exactLimit)) {
        Return(context, number);
        return;
    }
    // 2.345 is a half as it is written, although no binary number is exactly that.
    const double below = std::floor(std::abs(scaled));
    const bool half = (below + 0.5) / scale == std::abs(number);
    const double rounded = half ? below + std::fmod(below, 2) : std::round(std::abs(scaled));
    Return(context, std::copysign(rounded / scale, number));
}

constexpr std::array functions = std::to_array<ScalarFunction>({
    {"dialect_int", 1, Scalar<Int>},
    {"dialect_number", 1, Scalar<Number>},
    {"dialect_round", 1, Scalar<Round>},
    {"dialect_round", 2, Scalar<Round>},
    {"dialect_text", 1, Scalar<Text>},
    {"dialect_whole", 1, Scalar<Whole>},
});

} // namespace

std::span<const ScalarFunction> NumberFunctions() {
    return functions;
}

} // namespace velmora::engine::sqlite
