#pragma once

#include "base/DateTime.h"
#include "base/services/Printers.h"
#include "reports/ReportContext.h"
#include "reports/Requests.h"
#include "tasks/TaskQuery.h"

#include <QString>

#include <optional>

namespace velmora {

// The printer settings of the main window.
struct PrinterControl {
    // The output target by its number: 1 preview, 2 mail, 3 text file, 4 HTML file, anything else the printer.
    qint16 Destination = 0;
    // A report begins at once, with page breaks suppressed, and chooses neither printer nor font nor orientation.
    bool Continuous = false;
    bool ShowPreview = false;
    // Family name of the font for reports.
    QString PrinterFont;
    // Device name of the printer to use.
    QString PrinterName;
};

// What the controls of the main window say, by the controls' names. Handlers store the controls here before they call
// a routine and load them from here afterwards. With them what the running report and the task
// view share with the window.
struct DeskState : ReportRun, TaskChoices {
    // The daily report's kind and day: 0 starts, 1 ends, 8 combined; 2 more for the current day, 4 more for another
    // day.
    qint16 ReportDayMode = 0;
    // Quick status list: 0 persons, 1 locations.
    qint16 StatusType = 0;

    // What the check boxes of the daily page ask of the daily lists, and of the occupants and the directory.
    DailyRequest daily;
    OccupancyRequest activity;

    // The report-day option chosen: 0 next working day, 1 current day, 2 other day; -1 none.
    qint16 optDay = 0;
    // The first day of the other-day choice; none while the box holds no date.
    std::optional<Date> dtcOtherDate;
    // Number of days of the other-day choice.
    int Label12 = 1;

    // Layout page: from the start up to, and not including, the end.
    std::optional<Date> ReportStart;
    std::optional<Date> ReportEnd;
    bool chkConference = false;
    bool chkReportCompleted = false;
    // The index of the layout option clicked last; 0 before the first click.
    qint16 SelectedLayout = 0;

    // Exception page: 0 space type, 1 to 3 first to third area, 4 not checked-in; -1 none.
    qint16 optException = 0;
    std::optional<Date> dtcException;

    // Usage page: 0 locations, 1 to 3 persons by first to third area; -1 none.
    qint16 OptUsage = 0;
    bool chkUsageDetail = false;
    std::optional<Date> dtcUsage;

    // Printer page.
    Orientation optOrientation = Orientation::Portrait;
    PrinterControl PrinterControl1;
};

} // namespace velmora
