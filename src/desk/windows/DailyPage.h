#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"

#include <vector>

class QCheckBox;
class QSpinBox;

namespace velmora {

class DateBox;

// The page of the daily task lists, the occupant and the directory report, and the day they are run for.
class DailyPage : public DeskPage {
    Q_OBJECT

public:
    explicit DailyPage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;
    // Writes today and the next working day into the captions of the day options.
    void ShowDays(Date today);

private:
    QWidget* MakeDayFrame();
    QWidget* MakeTaskFrame();
    QWidget* MakeActivityFrame();
    // Runs the list, or the report, that the page asks for.
    void RunDaily(DailyVariant variant);
    void RunOccupancies(OccupancyList list);
    void Command1_Click();
    void Command2_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void dtcOtherDate_Change();

    DeskHost& host_;
    std::optional<Date> shownToday_;
    OptionGroup optDay;
    DateBox* dtcOtherDate;
    // Its text is Label12, the number of days.
    QSpinBox* UpDown1;
    // In the order of their table.
    std::vector<QCheckBox*> checks_;
};

} // namespace velmora
