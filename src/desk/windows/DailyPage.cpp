#include "desk/windows/DailyPage.h"

#include "base/windows/DateBox.h"
#include "reports/ReportDays.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostDays = 366;

// A check box of the page: what the state keeps of it, and what it asks of the daily lists or of the other reports.
struct Check {
    bool DeskState::*kept;
    bool DailyRequest::*daily;
    bool OccupancyRequest::*activity;
    const char16_t* name;
    const char16_t* caption;
};

constexpr Check checks[] = {
    {&DeskState::chkBrief, &DailyRequest::brief, nullptr, u"chkBrief", u"Br&ief Format"},
    {&DeskState::chkIncludeNotes, &DailyRequest::includeNotes, nullptr, u"chkIncludeNotes", u"Include No&tes"},
    {&DeskState::chkIncludePhone, &DailyRequest::includePhone, nullptr, u"chkIncludePhone",
     u"Include &Phone Information"},
    {&DeskState::chkOnePage, &DailyRequest::onePage, nullptr, u"chkOnePage", u"One pa&ge per Reservation"},
    {&DeskState::chkCompletedMoves, &DailyRequest::excludeCompletedMoves, nullptr, u"chkCompletedMoves",
     u"Exclude Completed Mo&ves"},
    {&DeskState::chkCompletedPhones, &DailyRequest::excludeCompletedPhones, nullptr, u"chkCompletedPhones",
     u"Exclude Completed P&hones"},
    {&DeskState::chkConferenceDaily, &DailyRequest::excludeConferenceRooms, nullptr, u"chkConferenceDaily",
     u"E&xclude Conference Rooms"},
    {&DeskState::chkNonPermanent, nullptr, &OccupancyRequest::nonPermanent, u"chkNonPermanent", u"Non-Permanent On&ly"},
    {&DeskState::chkIncludeEmpty, nullptr, &OccupancyRequest::includeUnreserved, u"chkIncludeEmpty",
     u"Include &Unreserved"},
};

qint16 ReportDayModeOf(DailyVariant variant, qint16 optDay) {
    constexpr int combined = 8;
    const int kind = variant == DailyVariant::Combined ? combined : static_cast<int>(variant);
    return static_cast<qint16>(kind + 2 * std::clamp<int>(optDay, 0, 2));
}

// Another day has a date and a number; the other choices know theirs.
DaySelection DaysOf(DayChoice choice, const DeskState& state) {
    return choice == DayChoice::OtherDay ? DaySelection{choice, state.dtcOtherDate, state.Label12}
                                         : DaySelection{.choice = choice};
}

// The report that a ReportDayMode stands for, with the options of the page.
DailyRequest DailyRequestOf(const DeskState& state, const QString& startupArgument) {
    constexpr int combined = 8;
    const int mode = state.ReportDayMode;
    const auto variant = mode >= combined ? DailyVariant::Combined : static_cast<DailyVariant>(mode % 2);
    DailyRequest request{.variant = variant,
                         .days = DaysOf(static_cast<DayChoice>(mode % combined / 2), state),
                         .startupArgument = startupArgument};
    for (const Check& check : checks) {
        if (check.daily != nullptr) {
            request.*check.daily = state.*check.kept;
        }
    }
    return request;
}

// No day option at all counts as the current day.
OccupancyRequest OccupancyRequestOf(OccupancyList list, const DeskState& state, const QString& startupArgument) {
    const auto day = state.optDay < 0 ? DayChoice::CurrentDay : static_cast<DayChoice>(state.optDay);
    OccupancyRequest request{.list = list, .days = DaysOf(day, state), .startupArgument = startupArgument};
    for (const Check& check : checks) {
        if (check.activity != nullptr) {
            request.*check.activity = state.*check.kept;
        }
    }
    return request;
}

} // namespace

DailyPage::DailyPage(DeskHost& host)
    : host_(host), optDay(this, u"optDay"_s, {{0, {}}, {1, {}}, {2, {}}}),
      dtcOtherDate(NewDateBox(host, u"dtcOtherDate"_s)), UpDown1(new QSpinBox) {
    for (const Check& check : checks) {
        checks_.push_back(NewControl<QCheckBox>(QString::fromUtf16(check.name), QString::fromUtf16(check.caption)));
    }
    QVBoxLayout* column = NewPageColumn(this);
    column->addWidget(MakeDayFrame());
    column->addWidget(MakeTaskFrame());
    column->addWidget(MakeActivityFrame());
    column->addStretch();
    connect(dtcOtherDate, &DateBox::Change, this, &DailyPage::dtcOtherDate_Change);
    connect(UpDown1, &QSpinBox::valueChanged, this, &DailyPage::dtcOtherDate_Change);
}

QWidget* DailyPage::MakeDayFrame() {
    const Frame frame = NewFrame(u"Frame8"_s, u"Run Report For"_s);
    dtcOtherDate->setAccessibleName(u"Other day"_s);
    UpDown1->setObjectName(u"UpDown1"_s);
    UpDown1->setAccessibleName(u"Number of days"_s);
    UpDown1->setRange(1, mostDays);
    UpDown1->findChild<QLineEdit*>()->setObjectName(u"Label12"_s);
    auto* days = NewControl<QLabel>(u"Label13"_s, u"&Days"_s);
    days->setBuddy(UpDown1);
    auto* when = NewControl<QLabel>(u"Label11"_s, u"(Reports run for the morning of &any other day)"_s);
    when->setBuddy(dtcOtherDate);
    when->setWordWrap(true);
    optDay.Button(2)->setAccessibleName(u"Another day"_s);

    auto* other = new QHBoxLayout;
    other->setSpacing(spacing::normal);
    other->addWidget(optDay.Button(2));
    other->addWidget(dtcOtherDate);
    other->addWidget(UpDown1);
    other->addWidget(days);
    other->addWidget(when, 1);
    frame.column->addWidget(optDay.Button(0));
    frame.column->addWidget(optDay.Button(1));
    frame.column->addLayout(other);
    return frame.box;
}

QWidget* DailyPage::MakeTaskFrame() {
    const Frame frame =
        NewFrame(u"Frame7"_s, u"Reports based on reservations starting or ending on or during the day."_s);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    constexpr int rows = 4;
    int place = 0;
    for (size_t i = 0; i < checks_.size(); ++i) {
        if (checks[i].daily != nullptr) {
            grid->addWidget(checks_[i], place % rows, place / rows);
            ++place;
        }
    }
    grid->setColumnStretch(1, 1);
    frame.column->addLayout(grid);
    auto* starts = NewControl<QPushButton>(u"Command5"_s, u"&Starts"_s);
    auto* ends = NewControl<QPushButton>(u"Command6"_s, u"E&nds"_s);
    auto* combined = NewControl<QPushButton>(u"Command2"_s, u"Com&bined"_s);
    starts->setDefault(true);
    frame.column->addLayout(NewButtonRow({starts, ends, combined}));
    connect(starts, &QPushButton::clicked, this, &DailyPage::Command5_Click);
    connect(ends, &QPushButton::clicked, this, &DailyPage::Command6_Click);
    connect(combined, &QPushButton::clicked, this, &DailyPage::Command2_Click);
    return frame.box;
}

QWidget* DailyPage::MakeActivityFrame() {
    const Frame frame = NewFrame(u"Frame6"_s, u"Reports based on daily activity"_s);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * spacing::large);
    for (size_t i = 0; i < checks_.size(); ++i) {
        if (checks[i].activity != nullptr) {
            row->addWidget(checks_[i]);
        }
    }
    row->addStretch();
    frame.column->addLayout(row);
    auto* occupant = NewControl<QPushButton>(u"Command1"_s, u"&Occupant"_s);
    auto* directory = NewControl<QPushButton>(u"Command4"_s, u"Director&y"_s);
    QHBoxLayout* buttons = NewButtonRow({occupant, directory});
    auto* help =
        NewHint(u"Label4"_s,
                u"The occupant report is sorted by room name.   The directory report is sorted by person name.  "_s);
    buttons->insertWidget(0, help, 1);
    frame.column->addLayout(buttons);
    connect(occupant, &QPushButton::clicked, this, &DailyPage::Command1_Click);
    connect(directory, &QPushButton::clicked, this, &DailyPage::Command4_Click);
    return frame.box;
}

void DailyPage::Store(DeskState& state) const {
    state.optDay = static_cast<qint16>(optDay.Chosen());
    state.dtcOtherDate = dtcOtherDate->Value();
    state.Label12 = UpDown1->value();
    for (size_t i = 0; i < checks_.size(); ++i) {
        state.*checks[i].kept = checks_[i]->isChecked();
    }
}

void DailyPage::Load(const DeskState& state) {
    const QSignalBlocker quietDate(dtcOtherDate);
    const QSignalBlocker quietDays(UpDown1);
    optDay.Choose(state.optDay);
    dtcOtherDate->SetValue(state.dtcOtherDate);
    UpDown1->setValue(state.Label12);
    for (size_t i = 0; i < checks_.size(); ++i) {
        checks_[i]->setChecked(state.*checks[i].kept);
    }
}

void DailyPage::ShowDays(Date today) {
    if (shownToday_ == today) {
        return;
    }
    shownToday_ = today;
    const DayCaptions captions = DayCaptions::On(today, host_.TheProgram().services().localeText);
    const auto show = [this](int index, const QString& caption, QChar mnemonic) {
        optDay.Button(index)->setText(WithMnemonic(caption, mnemonic, caption.indexOf(u'(')));
    };
    show(0, captions.nextWorkingDay, u'f');
    show(1, captions.currentDay, u'm');
}

// Who sets another day or its length means that day.
void DailyPage::dtcOtherDate_Change() {
    optDay.Choose(2);
}

void DailyPage::RunDaily(DailyVariant variant) {
    if (host_.StorePages()) {
        DeskState& state = host_.State();
        state.ReportDayMode = ReportDayModeOf(variant, state.optDay);
        host_.RunReport(DailyRequestOf(state, host_.TheProgram().services().startupArgument));
    }
}

void DailyPage::RunOccupancies(OccupancyList list) {
    if (host_.StorePages()) {
        host_.RunReport(OccupancyRequestOf(list, host_.State(), host_.TheProgram().services().startupArgument));
    }
}

void DailyPage::Command1_Click() {
    RunOccupancies(OccupancyList::Occupants);
}

void DailyPage::Command2_Click() {
    RunDaily(DailyVariant::Combined);
}

void DailyPage::Command4_Click() {
    RunOccupancies(OccupancyList::Directory);
}

void DailyPage::Command5_Click() {
    RunDaily(DailyVariant::Starts);
}

void DailyPage::Command6_Click() {
    RunDaily(DailyVariant::Ends);
}

} // namespace velmora
