#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"

class QPushButton;

namespace velmora {

class DateBox;

// The page of the exception reports: which one, and for which day.
class ExceptionPage : public DeskPage {
    Q_OBJECT

public:
    explicit ExceptionPage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;

private:
    void cmdRunExceptions_Click();

    DeskHost& host_;
    OptionGroup optException;
    DateBox* dtcException;
    QPushButton* cmdRunExceptions;
};

} // namespace velmora
