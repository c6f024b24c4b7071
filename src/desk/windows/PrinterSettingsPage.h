#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"
#include "reports/Requests.h"

namespace velmora {

class PrinterControlBox;

// The page of the settings that reports are made with.
class PrinterSettingsPage : public DeskPage {
    Q_OBJECT

public:
    explicit PrinterSettingsPage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;
    // How reports are delivered that are run with these settings.
    static Delivery DeliveryOf(const DeskState& state);

private:
    void cmdOptions_Click();

    DeskHost& host_;
    PrinterControlBox* PrinterControl1;
    OptionGroup optOrientation;
};

} // namespace velmora
