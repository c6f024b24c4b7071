#include "base/windows/DateBox.h"
#include "desk/windows/DeskPage.h"
#include "layouts/LayoutChoice.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

std::vector<OptionCaption> Captions() {
    std::vector<OptionCaption> captions;
    for (const layouts::LayoutChoice& choice : layouts::LayoutChoices()) {
        captions.emplace_back(choice.index, choice.caption.toString());
    }
    return captions;
}

// The page of the pre-designed report layouts.
class LayoutPage : public DeskPage {
public:
    explicit LayoutPage(DeskHost& host);

private:
    QWidget* MakeRangeFrame();
    QWidget* MakeReportFrame();
    void ReportStart_Change();
    void ReportEnd_Change();
    void optReport_Click(int index);
    void Command3_Click();

    OptionGroup optReport;
    DateBox* ReportStart;
    DateBox* ReportEnd;
    QCheckBox* chkConference;
    QCheckBox* chkReportCompleted;
    QPushButton* Command3;
};

LayoutPage::LayoutPage(DeskHost& host)
    : DeskPage(host), optReport(this, u"optReport"_s, Captions()),
      ReportStart(NewDate(u"ReportStart"_s, host.State().ReportStart)),
      ReportEnd(NewDate(u"ReportEnd"_s, host.State().ReportEnd)),
      chkConference(NewCheck(u"chkConference"_s, u"E&xclude Conf. Rooms"_s, host.State().chkConference)),
      chkReportCompleted(NewCheck(u"chkReportCompleted"_s, u"&Uncompleted Only"_s, host.State().chkReportCompleted)),
      Command3(NewControl<QPushButton>(u"Command3"_s, u"&Run Report"_s)) {
    Keep([this] { Host().State().SelectedLayout = static_cast<qint16>(std::max(0, optReport.Chosen())); },
         [this] {
             optReport.Choose(Host().State().SelectedLayout);
             if (Host().State().SelectedLayout != 0) {
                 optReport_Click(Host().State().SelectedLayout);
             }
         });
    QVBoxLayout* column = NewPageColumn(this);
    column->addWidget(MakeReportFrame());
    column->addWidget(MakeRangeFrame());
    Command3->setDefault(true);
    Command3->setEnabled(false);
    column->addStretch();
    column->addLayout(NewButtonRow({Command3}));
    connect(Command3, &QPushButton::clicked, this, &LayoutPage::Command3_Click);
    connect(ReportStart, &DateBox::Change, this, &LayoutPage::ReportStart_Change);
    connect(ReportEnd, &DateBox::Change, this, &LayoutPage::ReportEnd_Change);
    connect(optReport.Group(), &QButtonGroup::idClicked, this, &LayoutPage::optReport_Click);
}

QWidget* LayoutPage::MakeReportFrame() {
    const Frame frame = NewFrame(u"Frame5"_s, u"Report"_s);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    constexpr int rows = 4;
    int place = 0;
    for (QAbstractButton* option : optReport.Buttons()) {
        grid->addWidget(option, place % rows, place / rows);
        ++place;
    }
    grid->setColumnStretch(1, 1);
    frame.column->addLayout(grid);
    return frame.box;
}

QWidget* LayoutPage::MakeRangeFrame() {
    const Frame frame = NewFrame(u"Frame4"_s, u"Date Range"_s);
    auto* dates = new QHBoxLayout;
    dates->setSpacing(spacing::large);
    dates->addLayout(Captioned(NewControl<QLabel>(u"Label2"_s, u"&Start (including)"_s), ReportStart));
    dates->addLayout(Captioned(NewControl<QLabel>(u"Label3"_s, u"&End (not including)"_s), ReportEnd));
    dates->addStretch();
    frame.column->addLayout(dates);
    auto* checks = new QHBoxLayout;
    checks->setSpacing(2 * spacing::large);
    checks->addWidget(chkConference);
    checks->addWidget(chkReportCompleted);
    checks->addStretch();
    // The rows below stay where they are when a layout has no such box.
    QSizePolicy policy = chkReportCompleted->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    chkReportCompleted->setSizePolicy(policy);
    frame.column->addLayout(checks);
    return frame.box;
}

void LayoutPage::ReportStart_Change() {
    const auto start = ReportStart->Value();
    if (start && ReportEnd->Value() && DaysBetween(*start, *ReportEnd->Value()) < 1) {
        ReportEnd->SetValue(*start + std::chrono::days(1));
    }
}

void LayoutPage::ReportEnd_Change() {
    const auto end = ReportEnd->Value();
    if (end && ReportStart->Value() && DaysBetween(*ReportStart->Value(), *end) < 1) {
        ReportStart->SetValue(*end - std::chrono::days(1));
    }
}

void LayoutPage::optReport_Click(int index) {
    const auto view = layouts::ShowReportSelection(static_cast<qint16>(index), optReport.Button(index)->isChecked());
    if (!view) {
        return;
    }
    Host().State().SelectedLayout = static_cast<qint16>(index);
    const QChar letter = view->completedCaption.startsWith(u'U') ? u'u' : u'n';
    chkReportCompleted->setText(WithMnemonic(view->completedCaption, letter));
    chkReportCompleted->setVisible(view->showCompleted);
    Command3->setEnabled(true);
}

void LayoutPage::Command3_Click() {
    if (Host().StorePages()) {
        const DeskState& state = Host().State();
        Host().RunReport(LayoutRequest{.layout = state.SelectedLayout,
                                       .start = state.ReportStart,
                                       .end = state.ReportEnd,
                                       .excludeConferenceRooms = state.chkConference,
                                       .completionFilter = state.chkReportCompleted});
    }
}

} // namespace

DeskPage* NewLayoutPage(DeskHost& host) {
    return new LayoutPage(host);
}

} // namespace velmora
