#include "base/windows/DateBox.h"
#include "desk/windows/DeskPage.h"
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

// A check box of the page, and the field of the request that it stands for.
template <typename Request>
struct Check {
    bool Request::*field;
    const char16_t* name;
    const char16_t* caption;
};

constexpr Check<DailyRequest> dailyChecks[] = {
    {&DailyRequest::brief, u"chkBrief", u"Br&ief Format"},
    {&DailyRequest::includeNotes, u"chkIncludeNotes", u"Include No&tes"},
    {&DailyRequest::includePhone, u"chkIncludePhone", u"Include &Phone Information"},
    {&DailyRequest::onePage, u"chkOnePage", u"One pa&ge per Reservation"},
    {&DailyRequest::excludeCompletedMoves, u"chkCompletedMoves", u"Exclude Completed Mo&ves"},
    {&DailyRequest::excludeCompletedPhones, u"chkCompletedPhones", u"Exclude Completed P&hones"},
    {&DailyRequest::excludeConferenceRooms, u"chkConferenceDaily", u"E&xclude Conference Rooms"},
};
constexpr Check<OccupancyRequest> activityChecks[] = {
    {&OccupancyRequest::nonPermanent, u"chkNonPermanent", u"Non-Permanent On&ly"},
    {&OccupancyRequest::includeUnreserved, u"chkIncludeEmpty", u"Include &Unreserved"},
};

// Another day has a date and a number; the other choices know theirs.
DaySelection DaysOf(DayChoice choice, const DeskState& state) {
    return choice == DayChoice::OtherDay ? DaySelection{choice, state.dtcOtherDate, state.Label12}
                                         : DaySelection{.choice = choice};
}

// The page of the daily task lists, the occupant and the directory report, and the day they are run for.
class DailyPage : public DeskPage {
public:
    explicit DailyPage(DeskHost& host);
    // Writes today and the next working day into the captions of the day options.
    void Refresh() override;

private:
    QWidget* MakeDayFrame();
    QWidget* MakeTaskFrame();
    QWidget* MakeActivityFrame();
    template <typename Request>
    QCheckBox* NewRequestCheck(const Check<Request>& check, Request& request) {
        return NewCheck(QString::fromUtf16(check.name), QString::fromUtf16(check.caption), request.*check.field);
    }
    QPushButton* NewRunButton(const QString& name, const QString& caption, void (DailyPage::*run)());

    // Runs the list, or the report, that the page asks for.
    void RunDaily(DailyVariant variant);
    void RunOccupancies(OccupancyList list);
    void Command1_Click() { RunOccupancies(OccupancyList::Occupants); }
    void Command2_Click() { RunDaily(DailyVariant::Combined); }
    void Command4_Click() { RunOccupancies(OccupancyList::Directory); }
    void Command5_Click() { RunDaily(DailyVariant::Starts); }
    void Command6_Click() { RunDaily(DailyVariant::Ends); }
    // Who sets another day or its length means that day.
    void dtcOtherDate_Change() { optDay.Choose(static_cast<int>(DayChoice::OtherDay)); }

    std::optional<Date> shownToday_;
    OptionGroup optDay;
};

DailyPage::DailyPage(DeskHost& host)
    : DeskPage(host), optDay(NewOptions(u"optDay"_s, {{0, {}}, {1, {}}, {2, {}}}, host.State().optDay)) {
    QVBoxLayout* column = NewPageColumn(this);
    column->addWidget(MakeDayFrame());
    column->addWidget(MakeTaskFrame());
    column->addWidget(MakeActivityFrame());
    column->addStretch();
}

QWidget* DailyPage::MakeDayFrame() {
    const Frame frame = NewFrame(u"Frame8"_s, u"Run Report For"_s);
    auto* dtcOtherDate = NewDate(u"dtcOtherDate"_s, Host().State().dtcOtherDate);
    dtcOtherDate->setAccessibleName(u"Other day"_s);
    auto* UpDown1 = new QSpinBox;
    UpDown1->setObjectName(u"UpDown1"_s);
    UpDown1->setAccessibleName(u"Number of days"_s);
    UpDown1->setRange(1, mostDays);
    // Its text is the number of days.
    UpDown1->findChild<QLineEdit*>()->setObjectName(u"Label12"_s);
    int& number = Host().State().Label12;
    Keep([UpDown1, &number] { number = UpDown1->value(); },
         [UpDown1, &number] {
             const QSignalBlocker quiet(UpDown1);
             UpDown1->setValue(number);
         });
    auto* days = NewControl<QLabel>(u"Label13"_s, u"&Days"_s);
    days->setBuddy(UpDown1);
    auto* when = NewControl<QLabel>(u"Label11"_s, u"(Reports run for the morning of &any other day)"_s);
    when->setBuddy(dtcOtherDate);
    when->setWordWrap(true);
    optDay.Button(2)->setAccessibleName(u"Another day"_s);
    connect(dtcOtherDate, &DateBox::Change, this, &DailyPage::dtcOtherDate_Change);
    connect(UpDown1, &QSpinBox::valueChanged, this, &DailyPage::dtcOtherDate_Change);

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

QPushButton* DailyPage::NewRunButton(const QString& name, const QString& caption, void (DailyPage::*run)()) {
    auto* button = NewControl<QPushButton>(name, caption);
    connect(button, &QPushButton::clicked, this, run);
    return button;
}

QWidget* DailyPage::MakeTaskFrame() {
    const Frame frame =
        NewFrame(u"Frame7"_s, u"Reports based on reservations starting or ending on or during the day."_s);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    constexpr int rows = 4;
    int place = 0;
    for (const auto& check : dailyChecks) {
        grid->addWidget(NewRequestCheck(check, Host().State().daily), place % rows, place / rows);
        ++place;
    }
    grid->setColumnStretch(1, 1);
    frame.column->addLayout(grid);
    auto* starts = NewRunButton(u"Command5"_s, u"&Starts"_s, &DailyPage::Command5_Click);
    starts->setDefault(true);
    frame.column->addLayout(NewButtonRow({starts, NewRunButton(u"Command6"_s, u"E&nds"_s, &DailyPage::Command6_Click),
                                          NewRunButton(u"Command2"_s, u"Com&bined"_s, &DailyPage::Command2_Click)}));
    return frame.box;
}

QWidget* DailyPage::MakeActivityFrame() {
    const Frame frame = NewFrame(u"Frame6"_s, u"Reports based on daily activity"_s);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * spacing::large);
    for (const auto& check : activityChecks) {
        row->addWidget(NewRequestCheck(check, Host().State().activity));
    }
    row->addStretch();
    frame.column->addLayout(row);
    QHBoxLayout* buttons = NewButtonRow({NewRunButton(u"Command1"_s, u"&Occupant"_s, &DailyPage::Command1_Click),
                                         NewRunButton(u"Command4"_s, u"Director&y"_s, &DailyPage::Command4_Click)});
    auto* help =
        NewHint(u"Label4"_s,
                u"The occupant report is sorted by room name.   The directory report is sorted by person name.  "_s);
    buttons->insertWidget(0, help, 1);
    frame.column->addLayout(buttons);
    return frame.box;
}

void DailyPage::Refresh() {
    const Date today = services().clock.Today();
    if (shownToday_ == today) {
        return;
    }
    shownToday_ = today;
    const DayCaptions captions = DayCaptions::On(today, services().localeText);
    const auto show = [this](int index, const QString& caption, QChar mnemonic) {
        optDay.Button(index)->setText(WithMnemonic(caption, mnemonic, caption.indexOf(u'(')));
    };
    show(0, captions.nextWorkingDay, u'f');
    show(1, captions.currentDay, u'm');
}

void DailyPage::RunDaily(DailyVariant variant) {
    if (!Host().StorePages()) {
        return;
    }
    DeskState& state = Host().State();
    const int day = std::clamp<int>(state.optDay, 0, 2);
    constexpr int combined = 8;
    const int kind = variant == DailyVariant::Combined ? combined : static_cast<int>(variant);
    state.ReportDayMode = static_cast<qint16>(kind + 2 * day);
    DailyRequest request = state.daily;
    request.variant = variant;
    request.days = DaysOf(static_cast<DayChoice>(day), state);
    request.startupArgument = services().startupArgument;
    Host().RunReport(request);
}

void DailyPage::RunOccupancies(OccupancyList list) {
    if (!Host().StorePages()) {
        return;
    }
    const DeskState& state = Host().State();
    OccupancyRequest request = state.activity;
    request.list = list;
    // No day option at all counts as the current day.
    request.days = DaysOf(state.optDay < 0 ? DayChoice::CurrentDay : static_cast<DayChoice>(state.optDay), state);
    request.startupArgument = services().startupArgument;
    Host().RunReport(request);
}

} // namespace

DeskPage* NewDailyPage(DeskHost& host) {
    return new DailyPage(host);
}

} // namespace velmora
