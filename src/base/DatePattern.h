#pragma once

#include "base/DateTime.h"

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <vector>

namespace velmora {

// A date or time pattern of the toolkit's kind ("M/d/yyyy", "h:mm Ap", "dddd, MMMM d, yyyy"), taken apart once for one
// locale, so that writing a date is cheap enough for every row of a report. Writes what QLocale::toString writes, with
// every blank a plain blank. Understands the letters d, M, y (as a 4-digit year), h, H, m, s and a; others are text.
class DatePattern {
public:
    // Holds a date text without asking for memory.
    using Buffer = QVarLengthArray<QChar, 64>;

    DatePattern(QStringView pattern, const QLocale& locale);
    void Append(Buffer& out, const DateTimeFields& fields) const;

private:
    // What stands for one run of letters: the toolkit's texts for every value that it can have.
    struct Item {
        int (*valueOf)(const DateTimeFields&) = nullptr;
        QStringList texts;
    };

    void AddText(const QString& text);
    // Handles the run of one letter at `pattern[0]`; returns how many characters it took.
    qsizetype AddLetters(QStringView pattern, const QLocale& locale, bool halfDays);

    std::vector<Item> items_;
};

} // namespace velmora
