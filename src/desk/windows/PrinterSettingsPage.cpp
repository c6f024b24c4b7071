#include "desk/windows/DeskPage.h"
#include "desk/windows/PrinterControlBox.h"
#include "print/windows/frmPrintOptions.h"

#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// The page of the settings that reports are made with.
class PrinterSettingsPage : public DeskPage {
public:
    explicit PrinterSettingsPage(DeskHost& host);

private:
    void cmdOptions_Click();
};

PrinterSettingsPage::PrinterSettingsPage(DeskHost& host) : DeskPage(host) {
    DeskState& state = host.State();
    auto* PrinterControl1 = new PrinterControlBox(services());
    PrinterControl1->setObjectName(u"PrinterControl1"_s);
    const OptionGroup optOrientation(this, u"optOrientation"_s, {{1, u"&Portrait"_s}, {2, u"&Landscape"_s}});
    Keep([=, &state] { state.PrinterControl1 = PrinterControl1->Settings(); },
         [=, &state] { PrinterControl1->SetSettings(state.PrinterControl1); });
    Keep(
        [=, &state] {
            state.optOrientation = optOrientation.Chosen() == 2 ? Orientation::Landscape : Orientation::Portrait;
        },
        [=, &state] { optOrientation.Choose(static_cast<int>(state.optOrientation)); });
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

void PrinterSettingsPage::cmdOptions_Click() {
    print::frmPrintOptions(services(), Host().Database(), window()).exec();
}

} // namespace

DeskPage* NewPrinterSettingsPage(DeskHost& host) {
    return new PrinterSettingsPage(host);
}

} // namespace velmora
