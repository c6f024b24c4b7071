#pragma once

#include "base/LocaleText.h"
#include "reports/Gather.h"
#include "reports/ReportContext.h"

namespace velmora {

// Who is where and when: a row of the occupants, the directory and the exceptions. Texts are UTF-8; those that a report
// has no column for stay empty.
struct OccupancyRow {
    qint32 asset = 0;
    QUtf8StringView location;
    QUtf8StringView lastName;
    QUtf8StringView firstName;
    std::optional<DateTime> start;
    std::optional<DateTime> end;
    bool permanent = false;
    // False for a location without an occupant, of which nothing but the name is known.
    bool occupied = true;
    QUtf8StringView eventType;
    QUtf8StringView organization;
    QUtf8StringView phone;
    QUtf8StringView extension;
    // False for an occupant without a record of the person.
    bool hasPhone = true;
    // The space type or area that is assigned to a person outside of it.
    QUtf8StringView assigned;

    // Reads `start` and `end`.
    void ReadPeriod(const engine::Recordset& record);
};

using OccupancyRows = Gathered<OccupancyRow>;

// A column of a table: its caption in English, and the text of a row's cell in UTF-8.
struct OccupancyColumn {
    const char* caption;
    QByteArray (*cell)(const OccupancyRow& row, const LocaleText& locale);
};

// The columns that the tables share. The period is as ReservationTimeText has it, empty when a date is missing.
QByteArray LocationCell(const OccupancyRow& row, const LocaleText& locale);
QByteArray PersonCell(const OccupancyRow& row, const LocaleText& locale);
QByteArray OrganizationCell(const OccupancyRow& row, const LocaleText& locale);
QByteArray PeriodCell(const OccupancyRow& row, const LocaleText& locale);

// Prints the header row and the rows in the report that is open, and shows the progress of it. Each column takes a
// share of the page's width in proportion to its widest text. A first cell that says the same as the one above it is
// left out; the others have a rule above them.
void PrintTable(ReportContext& context, std::span<const OccupancyColumn> columns,
                const std::vector<OccupancyRow>& rows);

} // namespace velmora
