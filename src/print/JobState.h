#pragma once

#include "print/PrintStyles.h"
#include "print/RecordForm.h"

#include <QByteArray>

#include <optional>

namespace velmora::print {

// Where a report goes. The numbers are those of the printer settings' destination.
enum class Target : qint16 { Printer = 0, Preview = 1, Mail = 2, TextFile = 3, HtmlFile = 4 };

// What decides where and how a report is written before it begins.
struct TargetChoice {
    Target OutputTarget = Target::Printer;
    // Drawing goes to preview pages.
    bool PreviewMode = false;
    // EnsureRoom never breaks the page.
    bool SuppressPageBreaks = false;
};

// The state of the open report, shared by the job and its writer. Positions are twips from the left edge.
struct JobState : TargetChoice {
    // What targets without pages have written so far, UTF-8.
    QByteArray ReportText;
    // Of label and value lines on pages: 0 none, 1 boxes, 2 lines; any other number counts as none.
    qint16 LeaderStyle = 0;
    // Where the columns of tables begin behind the first one, and those of labels and values; never fewer than four.
    std::vector<int> TabStops = {0, 0, 0, 0};
    int TabStop1() const { return TabStops[0]; }
    int TabStop2() const { return TabStops[1]; }
    int TabStop3() const { return TabStops[2]; }
    int TabStop4() const { return TabStops[3]; }
    // The next label and value line stands at tab stops 3 and 4 instead of 1 and 2.
    bool RightPair = false;
    AttributeTable attributes;
    // Of a document that has pages of its own form; the others have the printer's.
    std::optional<PageForm> pageForm;
};

} // namespace velmora::print
