#include "desk/windows/PrinterSettingsPage.h"

#include "desk/windows/PrinterControlBox.h"
#include "print/PrintStyles.h"
#include "print/windows/frmPrintOptions.h"

#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

PrinterSettingsPage::PrinterSettingsPage(DeskHost& host)
    : host_(host), PrinterControl1(new PrinterControlBox(host.TheProgram().services())),
      optOrientation(this, u"optOrientation"_s, {{1, u"&Portrait"_s}, {2, u"&Landscape"_s}}) {
    PrinterControl1->setObjectName(u"PrinterControl1"_s);
    QVBoxLayout* column = NewPageColumn(this);
    const Frame settings = NewFrame(u"Shape1"_s, u"Printer"_s);
    auto* control = new QHBoxLayout;
    control->addWidget(PrinterControl1);
    control->addStretch();
    settings.column->addLayout(control);
    const Frame paper = NewFrame(u"Shape2"_s, u"Orientation"_s);
    for (QAbstractButton* option : optOrientation.Buttons()) {
        paper.column->addWidget(option);
    }
    auto* options = NewControl<QPushButton>(u"cmdOptions"_s, u"&Options"_s);
    options->setAccessibleDescription(u"Leader style and print styles"_s);
    column->addWidget(settings.box);
    column->addWidget(paper.box);
    column->addWidget(NewHint(u"Label10"_s, u"These settings affect the Daily Reports, Exception Reports, and Usage "
                                            "Reports.  The CR Reports  output is controlled by the CR preview "
                                            "window."_s));
    column->addStretch();
    column->addLayout(NewButtonRow({options}));
    connect(options, &QPushButton::clicked, this, &PrinterSettingsPage::cmdOptions_Click);
}

void PrinterSettingsPage::Store(DeskState& state) const {
    state.PrinterControl1 = PrinterControl1->Settings();
    state.optOrientation = optOrientation.Chosen() == 2 ? Orientation::Landscape : Orientation::Portrait;
}

void PrinterSettingsPage::Load(const DeskState& state) {
    PrinterControl1->SetSettings(state.PrinterControl1);
    optOrientation.Choose(static_cast<int>(state.optOrientation));
}

Delivery PrinterSettingsPage::DeliveryOf(const DeskState& state) {
    const PrinterControl& control = state.PrinterControl1;
    return {.target = static_cast<DeliveryTarget>(control.Destination),
            .printer = control.PrinterName,
            .font = control.PrinterFont,
            .orientation = state.optOrientation,
            .continuous = control.Continuous};
}

void PrinterSettingsPage::cmdOptions_Click() {
    print::frmPrintOptions(host_.TheProgram().services(), host_.Database(), window()).exec();
}

} // namespace velmora
