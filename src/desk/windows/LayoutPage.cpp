#include "desk/windows/LayoutPage.h"

#include "base/windows/DateBox.h"
#include "layouts/LayoutChoice.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

std::vector<std::pair<int, QString>> Captions() {
    std::vector<std::pair<int, QString>> captions;
    for (const layouts::LayoutChoice& choice : layouts::LayoutChoices()) {
        captions.emplace_back(choice.index, choice.caption.toString());
    }
    return captions;
}

} // namespace

LayoutPage::LayoutPage(DeskHost& host)
    : host_(host), optReport(this, u"optReport"_s, Captions()), ReportStart(NewDateBox(host, u"ReportStart"_s)),
      ReportEnd(NewDateBox(host, u"ReportEnd"_s)),
      chkConference(NewControl<QCheckBox>(u"chkConference"_s, u"E&xclude Conf. Rooms"_s)),
      chkReportCompleted(NewControl<QCheckBox>(u"chkReportCompleted"_s, u"&Uncompleted Only"_s)),
      Command3(NewControl<QPushButton>(u"Command3"_s, u"&Run Report"_s)) {
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

void LayoutPage::Store(DeskState& state) const {
    state.ReportStart = ReportStart->Value();
    state.ReportEnd = ReportEnd->Value();
    state.chkConference = chkConference->isChecked();
    state.chkReportCompleted = chkReportCompleted->isChecked();
    state.SelectedLayout = static_cast<qint16>(std::max(0, optReport.Chosen()));
}

void LayoutPage::Load(const DeskState& state) {
    const QSignalBlocker quietStart(ReportStart);
    const QSignalBlocker quietEnd(ReportEnd);
    ReportStart->SetValue(state.ReportStart);
    ReportEnd->SetValue(state.ReportEnd);
    chkConference->setChecked(state.chkConference);
    chkReportCompleted->setChecked(state.chkReportCompleted);
    optReport.Choose(state.SelectedLayout);
    if (state.SelectedLayout != 0) {
        optReport_Click(state.SelectedLayout);
    }
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
    host_.State().SelectedLayout = static_cast<qint16>(index);
    const QChar letter = view->completedCaption.startsWith(u'U') ? u'u' : u'n';
    chkReportCompleted->setText(WithMnemonic(view->completedCaption, letter));
    chkReportCompleted->setVisible(view->showCompleted);
    Command3->setEnabled(true);
}

void LayoutPage::Command3_Click() {
    if (host_.StorePages()) {
        const DeskState& state = host_.State();
        host_.RunReport(LayoutRequest{.layout = state.SelectedLayout,
                                      .start = state.ReportStart,
                                      .end = state.ReportEnd,
                                      .excludeConferenceRooms = state.chkConference,
                                      .completionFilter = state.chkReportCompleted});
    }
}

} // namespace velmora
