#pragma once

#include "base/Program.h"
#include "desk/windows/DeskState.h"
#include "desk/windows/PageParts.h"
#include "engine/Database.h"

#include <functional>
#include <vector>

class QCheckBox;

namespace velmora {

class DateBox;

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

// One page of the main window: a set of controls, each made together with the field of the desk's state that keeps
// what it says.
class DeskPage : public QWidget {
    Q_OBJECT

public:
    explicit DeskPage(DeskHost& host) : host_(host) {}
    // Writes what the controls say into the state.
    void Store() const;
    // Sets the controls to what the state says; no handler runs.
    void Load() const;
    // The page was chosen on the tab strip and is on view now.
    virtual void Chosen() {}
    // Its window was come back to: shows what changed meanwhile.
    virtual void Refresh() {}

protected:
    DeskHost& Host() const { return host_; }
    const Services& services() const { return host_.TheProgram().services(); }

    // These make a control whose field of the state is `kept`.
    QCheckBox* NewCheck(const QString& name, const QString& caption, bool& kept);
    DateBox* NewDate(const QString& name, std::optional<Date>& kept);
    OptionGroup NewOptions(const QString& name, const std::vector<OptionCaption>& captions, qint16& kept);
    // For a control of another kind: what Store and Load do with it.
    void Keep(std::function<void()> store, std::function<void()> load);

private:
    struct KeptControl {
        std::function<void()> store;
        std::function<void()> load;
    };

    DeskHost& host_;
    std::vector<KeptControl> kept_;
};

// The pages of the window, in the order of their tabs.
DeskPage* NewDailyPage(DeskHost& host);
DeskPage* NewTasksPage(DeskHost& host);
DeskPage* NewLayoutPage(DeskHost& host);
DeskPage* NewStatusPage(DeskHost& host);
DeskPage* NewExceptionPage(DeskHost& host);
DeskPage* NewUsagePage(DeskHost& host);
DeskPage* NewPrinterSettingsPage(DeskHost& host);

} // namespace velmora
