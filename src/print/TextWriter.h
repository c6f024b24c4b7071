#pragma once

#include "print/PagelessWriter.h"

namespace velmora::print {

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

} // namespace velmora::print
