#pragma once

#include "engine/Database.h"
#include "layouts/ReportControl.h"
#include "print/PrintServices.h"

namespace velmora::layouts {

// Runs layout files on a database. No text of a formula or layout reaches the database unread: names are looked up
// among its tables and fields, and values are parameters.
//
// Each run writes a document of its own: reports that the program prints at the same time, their settings and their
// print job are left alone. Pages are of the current printer's paper, in the orientation of the layout whatever the
// printer's is set to.
class LayoutRunner : public ReportControl {
public:
    // All of it outlives the runner. An orientation counts in place of the layouts'.
    LayoutRunner(print::PrintServices services, engine::Database& database, print::Target target,
                 std::optional<Orientation> orientation = {})
        : services_(std::move(services)), database_(database), target_(target), orientation_(orientation) {}

    void SetSelectionFormula(const QString& formula) override { formula_ = formula; }
    void SetReportFile(const QString& path) override { path_ = path; }
    void Run() override;

private:
    print::PrintServices services_;
    engine::Database& database_;
    print::Target target_;
    std::optional<Orientation> orientation_;
    QString formula_;
    QString path_;
};

} // namespace velmora::layouts
