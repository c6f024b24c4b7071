#pragma once

#include "print/RecordForm.h"

#include <QAnyStringView>

#include <array>
#include <optional>
#include <span>

namespace velmora::print {

// Text as the layout operations take it: a view of UTF-8 as the store keeps it, or of UTF-16. It is not kept beyond
// the call.
using Text = QAnyStringView;

// Appends the text as well-formed UTF-8; what is not well formed becomes replacement characters.
inline void AppendUtf8(QByteArray& out, Text text) {
    // What the store keeps is UTF-8 nearly always: it is not converted to and fro.
    text.visit([&out](auto view) {
        if constexpr (std::is_same_v<decltype(view), QUtf8StringView>) {
            if (view.isValidUtf8()) {
                out.append(view.data(), view.size());
                return;
            }
        }
        if constexpr (std::is_same_v<decltype(view), QStringView>) {
            out += view.toUtf8();
        } else {
            out += view.toString().toUtf8();
        }
    });
}

// How the cells of a table row stand on pages.
enum class RowStyle {
    // The first at the left edge, each other one at its tab stop, wrapped before the next one. The last one ends at the
    // right edge where it would run over it. Not bold.
    Wrapped,
    // As above, but from the first tab stop on; the last always ends at the right edge.
    Indented,
    // Each cell ends at its tab stop, where the next one begins: one line high, what does not fit or stands behind a
    // line end is cut. Targets without pages write the whole texts.
    Cut,
    // The same in bold letters.
    CutHeading
};

struct LabelValue {
    Text label;
    Text value;
    // Without one the label's own style counts, as the table of print attributes has it.
    std::optional<qint16> style = {};
};

enum class PairWidth { Narrow, Wide };

// One document on its way to one kind of target: each operation, written or drawn as that target has it. It is opened
// with Begin, laid out, closed with Finish and handed over with Deliver. An operation that a target has nothing for
// does nothing; so a plain ReportWriter stands where no report is open.
//
// Positions and widths are twips, vertical amounts printer dots; only pages heed them. Every text is a value to show,
// never markup.
class ReportWriter {
public:
    ReportWriter() = default;
    virtual ~ReportWriter() = default;
    ReportWriter(const ReportWriter&) = delete;
    ReportWriter& operator=(const ReportWriter&) = delete;

    // Full width of the surface that the tab stops divide.
    virtual int DeviceWidth() const { return 0; }
    // Width of a text in the current font, its widest line's when it has several; 0 where text has no width.
    virtual int TextWidth(Text) const { return 0; }

    virtual void Begin() {}
    // Writes what stands behind the document's last line.
    virtual void Finish() {}
    // Hands the finished document to its destination. May be repeated after a failure.
    virtual void Deliver() {}

    virtual void NewPage() {}
    // Breaks the page when that many lines no longer fit below the print position.
    virtual void EnsureRoom(qint16 /*lines*/) {}
    virtual void AddVerticalSpace(qint16 /*dots*/) {}
    virtual void PrintRule(qint16 /*width*/, qint16 /*spaceAbove*/, qint16 /*spaceBelow*/) {}

    virtual void PrintReportTitle(Text /*title*/, Text /*subtitle*/, Text /*secondLine*/) {}
    virtual void PrintSectionHeading(Text /*text*/, int /*x*/) {}
    // Nothing at all for an empty text.
    virtual void PrintParagraph(Text /*text*/) {}

    // One pair or two on one line. Each label and value takes one column of tab stops, or two where it is wide.
    virtual void PrintPairs(std::span<const LabelValue> /*pairs*/, PairWidth /*width*/) {}
    void PrintLabelValue(Text label, Text value, std::optional<qint16> style = {}) {
        PrintPairs(std::array{LabelValue{label, value, style}}, PairWidth::Narrow);
    }
    void PrintWideLabelValue(Text label, Text value, std::optional<qint16> style = {}) {
        PrintPairs(std::array{LabelValue{label, value, style}}, PairWidth::Wide);
    }
    // The style is the second pair's.
    void PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16> style = {}) {
        PrintPairs(std::array{LabelValue{label1, value1}, LabelValue{label2, value2, style}}, PairWidth::Narrow);
    }

    // Any number of cells, of which there are at most as many as tab stops, and one more in a wrapped row.
    virtual void PrintTableRow(std::span<const Text> /*cells*/, RowStyle /*style*/) {}

    // Records in groups, with a title and a closing line: a document of its own, from BeginRecords to EndRecords.
    virtual void BeginRecords(const RecordForm& /*form*/) {}
    // `level` counts from the outermost group; groups below it have ended.
    virtual void BeginGroup(size_t /*level*/, const QString& /*heading*/) {}
    virtual void PrintRecord(const Record& /*record*/) {}
    // `footer` may be empty.
    virtual void EndGroup(size_t /*level*/, const QString& /*footer*/) {}
    // `closing` stands below all records, and may be empty.
    virtual void EndRecords(const QString& /*closing*/) {}
};

} // namespace velmora::print
