#include "base/DateTime.h"

namespace velmora {

namespace chrono = std::chrono;

std::optional<Date> MakeDate(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) {
        return std::nullopt;
    }
    const chrono::year_month_day date(chrono::year(year), chrono::month(static_cast<unsigned>(month)),
                                      chrono::day(static_cast<unsigned>(day)));
    if (!date.ok()) {
        return std::nullopt;
    }
    return Date(date);
}

std::optional<DateTime> MakeDateTime(const DateTimeFields& fields) {
    const auto date = MakeDate(fields.year, fields.month, fields.day);
    const auto inRange = [](int value, int limit) { return value >= 0 && value < limit; };
    if (!date || !inRange(fields.hour, 24) || !inRange(fields.minute, 60) || !inRange(fields.second, 60)) {
        return std::nullopt;
    }
    return StartOfDay(*date) + chrono::hours(fields.hour) + chrono::minutes(fields.minute) +
           chrono::seconds(fields.second);
}

DateTimeFields Fields(DateTime moment) {
    const Date day = DateOf(moment);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss time(moment - StartOfDay(day));
    DateTimeFields fields;
    fields.year = static_cast<int>(date.year());
    fields.month = static_cast<int>(static_cast<unsigned>(date.month()));
    fields.day = static_cast<int>(static_cast<unsigned>(date.day()));
    fields.hour = static_cast<int>(time.hours().count());
    fields.minute = static_cast<int>(time.minutes().count());
    fields.second = static_cast<int>(time.seconds().count());
    return fields;
}

int Weekday(Date day) {
    return static_cast<int>(chrono::weekday(day).c_encoding()) + 1;
}

qint64 MinutesBetween(DateTime from, DateTime to) {
    return (chrono::floor<chrono::minutes>(to) - chrono::floor<chrono::minutes>(from)).count();
}

qint64 DaysBetween(DateTime from, DateTime to) {
    return (DateOf(to) - DateOf(from)).count();
}

void WriteStorageText(DateTime moment, char (&buffer)[19]) {
    const DateTimeFields fields = Fields(moment);
    const auto put = [&buffer](int at, int width, int value) {
        for (int i = width - 1; i >= 0; --i) {
            buffer[at + i] = static_cast<char>('0' + value % 10);
            value /= 10;
        }
    };
    put(0, 4, fields.year);
    put(5, 2, fields.month);
    put(8, 2, fields.day);
    put(11, 2, fields.hour);
    put(14, 2, fields.minute);
    put(17, 2, fields.second);
    buffer[4] = buffer[7] = '-';
    buffer[10] = ' ';
    buffer[13] = buffer[16] = ':';
}

QString StorageText(DateTime moment) {
    char buffer[19];
    WriteStorageText(moment, buffer);
    return QString::fromLatin1(buffer, sizeof buffer);
}

namespace {

// Reads `width` digits at `at`; -1 when one of them is not a digit.
template <typename Char>
int Digits(const Char* text, qsizetype at, int width) {
    int value = 0;
    for (int i = 0; i < width; ++i) {
        const auto c = text[at + i];
        if (c < '0' || c > '9') {
            return -1;
        }
        value = value * 10 + static_cast<int>(c - '0');
    }
    return value;
}

template <typename Char>
std::optional<DateTime> ParseStorage(const Char* text, qsizetype size) {
    if ((size != 10 && size != 16 && size != 19) || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    DateTimeFields fields;
    fields.year = Digits(text, 0, 4);
    fields.month = Digits(text, 5, 2);
    fields.day = Digits(text, 8, 2);
    if (size > 10) {
        if ((text[10] != ' ' && text[10] != 'T') || text[13] != ':' || (size == 19 && text[16] != ':')) {
            return std::nullopt;
        }
        fields.hour = Digits(text, 11, 2);
        fields.minute = Digits(text, 14, 2);
        fields.second = size == 19 ? Digits(text, 17, 2) : 0;
    }
    return MakeDateTime(fields);
}

} // namespace

std::optional<DateTime> ParseStorageText(QStringView text) {
    return ParseStorage(text.utf16(), text.size());
}

std::optional<DateTime> ParseStorageText(const char* bytes, qsizetype size) {
    return ParseStorage(bytes, size);
}

} // namespace velmora
