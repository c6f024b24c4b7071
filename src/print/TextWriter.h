#pragma once

#include "print/JobState.h"
#include "print/ReportFile.h"
#include "print/ReportWriter.h"

#include <memory>

namespace velmora::print {

// A writer whose target has no pages: it accumulates ReportText, and whatever concerns pages alone does nothing.
class PagelessWriter : public ReportWriter {
public:
    // `width` is the printer's page width, which serves only as the measure of the tab stops. All of it outlives the
    // writer.
    PagelessWriter(JobState& state, int width, DocumentSink& sink) : state_(state), width_(width), sink_(sink) {}

    int DeviceWidth() const override { return width_; }
    void Deliver() override {
        if (state_.OutputTarget == Target::Mail) {
            sink_.SendMail(ReportText());
        } else {
            const bool html = state_.OutputTarget == Target::HtmlFile;
            sink_.SaveFile(ReportText(), html ? ReportFileKind::Html : ReportFileKind::PlainText);
        }
    }

protected:
    QByteArray& ReportText() { return state_.ReportText; }
    void Append(Text text) { AppendUtf8(ReportText(), text); }

private:
    JobState& state_;
    int width_;
    DocumentSink& sink_;
};

// Plain text for files and mail: columns are separated by TABs, lines end with carriage return and line feed, and
// nothing is wrapped or aligned. Rows of a report begin with a TAB, rows of records do not.
class TextWriter : public PagelessWriter {
public:
    using PagelessWriter::PagelessWriter;

    void PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) override;
    void PrintReportTitle(Text title, Text subtitle, Text secondLine) override;
    void PrintSectionHeading(Text text, int x) override;
    void PrintParagraph(Text text) override;
    void PrintPairs(std::span<const LabelValue> pairs, PairWidth width) override;
    void PrintTableRow(std::span<const Text> cells, RowStyle style) override;
    void BeginRecords(const RecordForm& form) override;
    void BeginGroup(size_t level, const QString& heading) override;
    void PrintRecord(const Record& record) override;
    void EndGroup(size_t level, const QString& footer) override;
    void EndRecords(const QString& closing) override;

private:
    void AppendRule(char mark = '-');
    void AppendLine(Text text);
    // With a TAB before it, the first of a row too.
    void AppendCell(Text cell);
    void AppendItems(const Record& record);

    RecordForm form_;
    bool hasRecords_ = false;
};

// HTML markup between the site's own two wrapper files, "htmlpre.txt" and "htmlpost.txt" of the data directory.
// Consecutive rows share one table, which ends where anything else begins; a table still open at the end of the report
// stays so. Tables of records stand on lines of their own and are always closed.
std::unique_ptr<ReportWriter> MakeHtmlWriter(JobState& state, int width, DocumentSink& sink);

} // namespace velmora::print
