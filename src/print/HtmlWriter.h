#pragma once

#include "print/PagelessWriter.h"

namespace velmora::print {

// HTML markup between the site's own two wrapper files, "htmlpre.txt" and "htmlpost.txt" of the data directory.
// Consecutive rows share one table, which ends where anything else begins; a table still open at the end of the report
// stays so. Tables of records stand on lines of their own and are always closed.
class HtmlWriter : public PagelessWriter {
public:
    using PagelessWriter::PagelessWriter;

    void Begin() override;
    void Finish() override;
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
    // Both look at the end of the text alone, letter case ignored, so that a wrapper file may open a table too.
    void OpenHtmlTable();
    void CloseHtmlTable();
    bool EndsWith(QByteArrayView tag);

    void Append(const char* markup) { ReportText().append(markup); }
    void AppendElement(const char* open, Text text, const char* close);
    // The same with the line ends of the text kept.
    void AppendLines(const QByteArray& open, const QString& text, const char* close);
    // Nothing for an empty text.
    void AppendBlock(const char* open, const QString& text, const char* close);
    void OpenRecords();
    void CloseRecords();
    void AppendCell(const RecordColumn& column, const RecordCell& cell);
    void AppendItem(const RecordItem& item, const QString& value);
    void AppendDetails(const QStringList& lines);

    RecordForm form_;
    bool tableIsOpen_ = false;
    // No record stands on the page yet that the next one would be printed on.
    bool isPageStart_ = true;
};

} // namespace velmora::print
