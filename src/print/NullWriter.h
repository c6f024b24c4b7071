#pragma once

#include "print/ReportWriter.h"

namespace velmora::print {

// Stands where no report is open: every operation does nothing.
class NullWriter : public ReportWriter {
public:
    int DeviceWidth() const override { return 0; }
    int TextWidth(Text) const override { return 0; }
    void Begin() override {}
    void Finish() override {}
    void Deliver() override {}
    void NewPage() override {}
    void EnsureRoom(qint16) override {}
    void AddVerticalSpace(qint16) override {}
    void PrintRule(qint16, qint16, qint16) override {}
    void PrintReportTitle(Text, Text, Text) override {}
    void PrintSectionHeading(Text, int) override {}
    void PrintParagraph(Text) override {}
    void PrintLabelValue(Text, Text, std::optional<qint16>) override {}
    void PrintWideLabelValue(Text, Text, std::optional<qint16>) override {}
    void PrintTwoLabelValues(Text, Text, Text, Text, std::optional<qint16>) override {}
    void PrintTableRow(std::span<const Text>, RowStyle) override {}
};

} // namespace velmora::print
