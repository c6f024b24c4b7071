#pragma once

#include <QString>
#include <QStringView>

#include <chrono>
#include <optional>

namespace velmora {

// Wall-clock date and time as the clerk reads it off the wall, without a zone: a reservation at 02:30 on the
// night the clocks change stays at 02:30. Resolution one second; years 100 to 9999 (the store's range).
using DateTime = std::chrono::local_seconds;

// A calendar day of the same clock.
using Date = std::chrono::local_days;

// Fields of a DateTime taken apart. `month` 1 to 12, `day` 1 to 31, `hour` 0 to 23.
struct DateTimeFields {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// The date, or none when there is no such day (30 February) or the year is outside 100 to 9999.
std::optional<Date> MakeDate(int year, int month, int day);

// The date-time, or none when a field is out of its range.
std::optional<DateTime> MakeDateTime(const DateTimeFields& fields);

DateTimeFields Fields(DateTime moment);

inline Date DateOf(DateTime moment) {
    return std::chrono::floor<std::chrono::days>(moment);
}
inline DateTime StartOfDay(Date day) {
    return DateTime(day);
}

// Sunday 1 to Saturday 7.
int Weekday(Date day);

// Boundaries crossed from `from` to `to`, not elapsed time: 10:59:50 to 11:00:05 is one minute,
// 23:50 to 00:10 of the next day one day. Negative when `to` is earlier.
qint64 MinutesBetween(DateTime from, DateTime to);
qint64 DaysBetween(DateTime from, DateTime to);

// Storage form "YYYY-MM-DD HH:MM:SS", always with the time.
QString StorageText(DateTime moment);
// The same 19 characters as bytes, written to `buffer`.
void WriteStorageText(DateTime moment, char (&buffer)[19]);

// Reads "YYYY-MM-DD", "YYYY-MM-DD HH:MM" or "YYYY-MM-DD HH:MM:SS" (one blank or a T between); none for anything
// else and for a day or time that does not exist.
std::optional<DateTime> ParseStorageText(QStringView text);
std::optional<DateTime> ParseStorageText(const char* bytes, qsizetype size);

} // namespace velmora
