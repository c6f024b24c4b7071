#pragma once

#include <QString>

namespace velmora::layouts {

// Runs report layouts. What is set stays set for later runs.
class ReportControl {
public:
    virtual ~ReportControl() = default;
    // Which records the report is about, in the formula language of the layouts.
    virtual void SetSelectionFormula(const QString& formula) = 0;
    // The layout file's full path.
    virtual void SetReportFile(const QString& path) = 0;
    // Opens the layout, applies the formula, reads the database and shows or delivers the document. Throws Error.
    virtual void Run() = 0;
};

} // namespace velmora::layouts
