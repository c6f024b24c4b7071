#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"

class QCheckBox;
class QPushButton;

namespace velmora {

class DateBox;

// The page of the usage reports: the breakdown, with or without detail, and for which day.
class UsagePage : public DeskPage {
    Q_OBJECT

public:
    explicit UsagePage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;

private:
    void Command7_Click();

    DeskHost& host_;
    OptionGroup OptUsage;
    QCheckBox* chkUsageDetail;
    DateBox* dtcUsage;
    QPushButton* Command7;
};

} // namespace velmora
