#pragma once

#include "base/DateTime.h"

#include <QLocale>
#include <QString>
#include <QStringList>

#include <vector>

namespace velmora {

// A date or time pattern of the toolkit's kind ("M/d/yyyy", "h:mm Ap", "dddd, MMMM d, yyyy"), taken apart once for one
// locale, so that writing a date is cheap enough for every row of a report. Writes what QLocale::toString writes, with
// every blank a plain blank. Understands the letters d, M, y (as a 4-digit year), h, H, m, s and a; others are text.
class DatePattern {
public:
    DatePattern(QStringView pattern, const QLocale& locale);
    void Append(QString& out, const DateTimeFields& fields) const;

private:
    enum class Part { Text, Day, Month, Year, Hour, HourOfHalfDay, Minute, Second, DayName, MonthName, HalfDay };
    struct Item {
        Part part = Part::Text;
        // The least number of digits.
        int width = 0;
        // The text itself, or the names to choose from.
        QStringList texts;
    };

    void AddText(QStringView text);
    void AddPart(Part part, int width, QStringList texts = {});
    // Handles the run of one letter at `pattern[0]`; returns how many characters it took.
    qsizetype AddLetters(QStringView pattern, const QLocale& locale, bool halfDays);
    void AppendNumber(QString& out, int number, int width) const;
    static int NumberOf(Part part, const DateTimeFields& fields);

    std::vector<Item> items_;
    // The locale's digit 0; the others follow it in Unicode.
    QString zero_;
};

} // namespace velmora
