#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "layouts/LayoutOutput.h"
#include "layouts/ReportControl.h"

namespace velmora::layouts {

// Runs layout files on a database. No text of a formula or layout reaches the database unread: names are looked up
// among its tables and fields, and values are parameters.
class LayoutRunner : public ReportControl {
public:
    // All of it outlives the runner.
    LayoutRunner(const Services& services, engine::Database& database, LayoutOutput& output)
        : services_(services), database_(database), output_(output) {}

    void SetSelectionFormula(const QString& formula) override { formula_ = formula; }
    void SetReportFile(const QString& path) override { path_ = path; }
    void Run() override;

private:
    const Services& services_;
    engine::Database& database_;
    LayoutOutput& output_;
    QString formula_;
    QString path_;
};

} // namespace velmora::layouts
