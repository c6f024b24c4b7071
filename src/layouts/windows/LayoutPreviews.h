#pragma once

#include "engine/Database.h"
#include "layouts/LayoutOutput.h"
#include "print/windows/WindowPreviews.h"
#include "reports/ReportRun.h"
#include "reports/Requests.h"

namespace velmora::layouts {

// Runs report layouts at a desk: each document opens in a preview window of its own, which prints and saves it. Neither
// the desk's print job nor its printer settings are touched.
class LayoutPreviews {
public:
    // Program and output outlive the object, and the object outlives its windows.
    LayoutPreviews(const Program& program, print::PageOutput& output);

    // As RunCrystalReport.
    void Run(const LayoutRequest& request, const ReportRun& run, engine::Database& database);

private:
    const Program& program_;
    OrientedPrinter portraitPrinter_;
    OrientedPrinter landscapePrinter_;
    print::WindowPreviews portrait_;
    print::WindowPreviews landscape_;
    PreviewOutput output_;
};

} // namespace velmora::layouts
