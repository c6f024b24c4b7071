#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"

class QCheckBox;

namespace velmora {

class DateBox;

// The page of the pre-designed report layouts.
class LayoutPage : public DeskPage {
    Q_OBJECT

public:
    explicit LayoutPage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;

private:
    QWidget* MakeRangeFrame();
    QWidget* MakeReportFrame();
    void ReportStart_Change();
    void ReportEnd_Change();
    void optReport_Click(int index);
    void Command3_Click();

    DeskHost& host_;
    OptionGroup optReport;
    DateBox* ReportStart;
    DateBox* ReportEnd;
    QCheckBox* chkConference;
    QCheckBox* chkReportCompleted;
    QPushButton* Command3;
};

} // namespace velmora
