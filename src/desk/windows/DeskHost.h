#pragma once

#include "base/Program.h"
#include "desk/windows/DeskState.h"
#include "engine/Database.h"
#include "reports/Requests.h"

class QString;

namespace velmora {

// What a page asks of the window that it stands in. It outlives the page.
class DeskHost {
public:
    virtual ~DeskHost() = default;
    virtual Program& TheProgram() = 0;
    // As the controls said when they were stored last.
    virtual DeskState& State() = 0;
    // Open before the first page is shown.
    virtual engine::Database& Database() = 0;
    // Has every page store its controls into the state. False when a date box of this page holds no date but something
    // else; the box then has the focus and says why.
    virtual bool StorePages() = 0;
    // Runs a report, to the destination of the printer page as it was stored last, a layout to the preview.
    virtual void RunReport(const ReportRequest& request) = 0;
    // Opens the notes of a reservation and returns when their window is gone.
    virtual void OpenNotes(qint32 reservation) = 0;
    // Shows the asset's and the reservation's number outside the pages; empty texts for none.
    virtual void ShowNumbers(const QString& asset, const QString& reservation) = 0;
};

} // namespace velmora
