#include "base/windows/DateBox.h"
#include "base/windows/Glyph.h"
#include "desk/windows/DeskPage.h"
#include "tasks/Tasks.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>

#include <array>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// How soon a desk that is only looked at shows what another desk did; one look-up by key each time.
constexpr int refreshInterval = 5000;

// A text of the reservation shown: its control, the number and text of its caption, and its place in the grid.
struct Detail {
    QString TaskDetails::*text;
    const char16_t* name;
    int captionIndex;
    const char16_t* caption;
    int row;
    int column;
};

constexpr std::array details = {
    Detail{&TaskDetails::lblAssetName, u"lblAssetName", 8, u"Location", 0, 0},
    Detail{&TaskDetails::lblEvent, u"lblEvent", 5, u"Event Type", 0, 2},
    Detail{&TaskDetails::lblEnd, u"lblEnd", 4, u"Duration", 1, 0},
    Detail{&TaskDetails::lblAttendees, u"lblAttendees", 6, u"Attendees", 1, 2},
    Detail{&TaskDetails::lblLastName, u"lblLastName", 0, u"Last Name", 2, 0},
    Detail{&TaskDetails::lblFirstName, u"lblFirstName", 1, u"First Name", 2, 2},
    Detail{&TaskDetails::lblOrganization, u"lblOrganization", 2, u"Organization", 3, 0},
};

// The page on which staff step through the reservations that need a task and tick each one done.
class TasksPage : public DeskPage, public TaskView {
public:
    explicit TasksPage(DeskHost& host);
    // Selects anew.
    void Chosen() override { ShowTasks(); }
    // Shows what another desk changed meanwhile.
    void Refresh() override;

private:
    QWidget* MakeSelectionFrame();
    QWidget* MakeDateRange();
    QWidget* MakeTaskFrame();
    QLayout* MakeDetails();
    QLayout* MakeNavigation();
    // A button that goes to another reservation, by itself or by its key.
    QPushButton* NewStep(const QString& name, const QString& caption, Glyph glyph, const QString& toolTip,
                         QKeyCombination key, void (TasksPage::*go)());
    void tmrRefresh_Timer();

    void ShowTask(const ShownTask& task) override;
    void HideTask(const QString& text) override;
    void ShowNotice(const QString& text);

    void ShowTasks();
    void cmdShowTasks_Click() { ShowTasks(); }
    void optViewType_Click() { ShowTasks(); }
    void chkCompleted_Click() { ShowTasks(); }
    void chkConferenceView_Click() { ShowTasks(); }
    void cmdFirst_Click() { TheTasks().First(); }
    void cmdPrev_Click() { TheTasks().Previous(); }
    void cmdNext_Click() { TheTasks().Next(); }
    void cmdLast_Click() { TheTasks().Last(); }
    void cmdNotes_Click();
    void Tick(TaskKind task);
    void ToggleTick();

    // The database is opened after the page is made.
    Tasks& TheTasks();

    std::unique_ptr<Tasks> tasks_;
    OptionGroup optViewType;
    QGroupBox* frEvent = nullptr;
    // By TaskKind: chkSLockStart, chkSLockEnd, chkTLockStart, chkTLockEnd.
    std::array<QCheckBox*, allTasks.size()> ticks_{};
    QPushButton* cmdFirst = nullptr;
    QPushButton* cmdPrev = nullptr;
    QPushButton* cmdNext = nullptr;
    QPushButton* cmdLast = nullptr;
    QPushButton* cmdNotes;
    QLabel* lblPlace;
    QLabel* lblNothing;
    QLabel* lblNotice;
    QLabel* picNotice;
    // In the order of their table.
    std::array<QLabel*, details.size()> details_{};
    std::optional<TaskKind> tickable_;
};

TasksPage::TasksPage(DeskHost& host)
    : DeskPage(host),
      optViewType(
          NewOptions(u"optViewType"_s,
                     {{0, u"Move &In"_s}, {1, u"Mo&ve Out"_s}, {2, u"Ph&one Connect"_s}, {3, u"Phone &Disconnect"_s}},
                     host.State().ViewType)),
      cmdNotes(NewControl<QPushButton>(u"cmdNotes"_s, u"Note&s"_s)), lblPlace(NewControl<QLabel>(u"lblPlace"_s, {})),
      lblNothing(NewHint(u"lblNothing"_s, {})), lblNotice(NewControl<QLabel>(u"lblNotice"_s, {})),
      picNotice(new QLabel) {
    QVBoxLayout* column = NewPageColumn(this);
    column->addWidget(MakeSelectionFrame());
    column->addWidget(MakeTaskFrame());
    column->addWidget(lblNothing);
    column->addStretch();
    frEvent->hide();
    lblNothing->hide();
    auto* tick = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(tick, &QShortcut::activated, this, &TasksPage::ToggleTick);
    auto* tmrRefresh = new QTimer(this);
    tmrRefresh->setObjectName(u"tmrRefresh"_s);
    connect(tmrRefresh, &QTimer::timeout, this, &TasksPage::tmrRefresh_Timer);
    tmrRefresh->start(refreshInterval);
}

QWidget* TasksPage::MakeDateRange() {
    DateRange& range = Host().State().DateRange1;
    auto* DateRange1 = new QWidget;
    DateRange1->setObjectName(u"DateRange1"_s);
    auto* row = new QHBoxLayout(DateRange1);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing::large);
    row->addLayout(
        Captioned(NewControl<QLabel>(u"lblStartDate"_s, u"St&art"_s), NewDate(u"StartDate"_s, range.StartDate)));
    row->addLayout(Captioned(NewControl<QLabel>(u"lblEndDate"_s, u"&Before"_s), NewDate(u"EndDate"_s, range.EndDate)));
    return DateRange1;
}

QWidget* TasksPage::MakeSelectionFrame() {
    auto* both = new QWidget;
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing::large);
    const Frame kind = NewFrame(u"Frame2"_s, u"Task"_s);
    for (QAbstractButton* option : optViewType.Buttons()) {
        kind.column->addWidget(option);
    }
    kind.column->addStretch();
    const Frame range = NewFrame(u"Frame3"_s, u"Date Range"_s);
    auto* cmdShowTasks = NewControl<QPushButton>(u"cmdShowTasks"_s, u"Sho&w Tasks"_s);
    cmdShowTasks->setDefault(true);
    auto* dates = new QHBoxLayout;
    dates->addWidget(MakeDateRange());
    dates->addStretch();
    range.column->addLayout(dates);
    auto* chkCompleted = NewCheck(u"chkCompleted"_s, u"&Uncompleted Only"_s, Host().State().chkCompleted);
    auto* chkConferenceView =
        NewCheck(u"chkConferenceView"_s, u"&Exclude Conf. Rooms"_s, Host().State().chkConferenceView);
    auto* checks = new QHBoxLayout;
    checks->setSpacing(2 * spacing::large);
    checks->addWidget(chkCompleted);
    checks->addWidget(chkConferenceView);
    checks->addStretch();
    range.column->addLayout(checks);
    range.column->addStretch();
    range.column->addLayout(NewButtonRow({cmdShowTasks}));
    row->addWidget(kind.box);
    row->addWidget(range.box, 1);
    connect(cmdShowTasks, &QPushButton::clicked, this, &TasksPage::cmdShowTasks_Click);
    connect(chkCompleted, &QCheckBox::clicked, this, &TasksPage::chkCompleted_Click);
    connect(chkConferenceView, &QCheckBox::clicked, this, &TasksPage::chkConferenceView_Click);
    connect(optViewType.Group(), &QButtonGroup::idClicked, this, &TasksPage::optViewType_Click);
    return both;
}

QLayout* TasksPage::MakeDetails() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    for (size_t i = 0; i < details.size(); ++i) {
        const Detail& detail = details[i];
        const QString caption = QString::fromUtf16(detail.caption);
        auto* value = NewControl<QLabel>(QString::fromUtf16(detail.name), {});
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setWordWrap(true);
        value->setAccessibleName(caption);
        QFont font = value->font();
        font.setBold(true);
        value->setFont(font);
        auto* label = NewControl<QLabel>(u"Label9"_s + QString::number(detail.captionIndex), caption);
        grid->addWidget(label, detail.row, detail.column, Qt::AlignTop);
        grid->addWidget(value, detail.row, detail.column + 1, Qt::AlignTop);
        details_[i] = value;
    }
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    return grid;
}

QWidget* TasksPage::MakeTaskFrame() {
    const Frame frame = NewFrame(u"frEvent"_s, {});
    frEvent = frame.box;
    auto* notice = new QHBoxLayout;
    notice->setSpacing(spacing::normal);
    picNotice->setPixmap(GlyphIcon(Glyph::Warning).pixmap(spacing::large));
    lblNotice->setWordWrap(true);
    notice->addWidget(picNotice, 0, Qt::AlignTop);
    notice->addWidget(lblNotice, 1);
    frame.column->addLayout(MakeDetails());
    frame.column->addLayout(notice);

    auto* boxes = new QHBoxLayout;
    boxes->setSpacing(2 * spacing::large);
    const QString captions[] = {u"&Move In"_s, u"Move Ou&t"_s, u"P&hone Connect"_s, u"&Phone Disconnect"_s};
    for (const TaskKind task : allTasks) {
        const auto index = static_cast<size_t>(task);
        ticks_[index] = NewControl<QCheckBox>(u"chk"_s + TaskField(task), captions[index]);
        boxes->addWidget(ticks_[index]);
        connect(ticks_[index], &QCheckBox::clicked, this, [this, task] { Tick(task); });
    }
    boxes->addStretch();
    boxes->addWidget(cmdNotes);
    frame.column->addSpacing(spacing::normal);
    frame.column->addLayout(boxes);
    frame.column->addLayout(MakeNavigation());
    connect(cmdNotes, &QPushButton::clicked, this, &TasksPage::cmdNotes_Click);
    return frame.box;
}

QPushButton* TasksPage::NewStep(const QString& name, const QString& caption, Glyph glyph, const QString& toolTip,
                                QKeyCombination key, void (TasksPage::*go)()) {
    auto* button = NewControl<QPushButton>(name, caption);
    button->setIcon(GlyphIcon(glyph));
    button->setToolTip(toolTip);
    connect(button, &QPushButton::clicked, this, go);
    auto* shortcut = new QShortcut(QKeySequence(key), this);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    return button;
}

QLayout* TasksPage::MakeNavigation() {
    cmdFirst = NewStep(u"cmdFirst"_s, u"&First"_s, Glyph::First, u"First reservation (Alt+Home)"_s,
                       Qt::ALT | Qt::Key_Home, &TasksPage::cmdFirst_Click);
    cmdPrev = NewStep(u"cmdPrev"_s, u"P&rev."_s, Glyph::Previous, u"Previous reservation (Alt+Page Up)"_s,
                      Qt::ALT | Qt::Key_PageUp, &TasksPage::cmdPrev_Click);
    cmdNext = NewStep(u"cmdNext"_s, u"&Next"_s, Glyph::Next, u"Next reservation (Alt+Page Down)"_s,
                      Qt::ALT | Qt::Key_PageDown, &TasksPage::cmdNext_Click);
    cmdLast = NewStep(u"cmdLast"_s, u"&Last"_s, Glyph::Last, u"Last reservation (Alt+End)"_s, Qt::ALT | Qt::Key_End,
                      &TasksPage::cmdLast_Click);
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    for (QPushButton* button : {cmdFirst, cmdPrev, cmdNext, cmdLast}) {
        row->addWidget(button);
    }
    row->addSpacing(spacing::normal);
    row->addWidget(lblPlace);
    row->addStretch();
    return row;
}

Tasks& TasksPage::TheTasks() {
    if (tasks_ == nullptr) {
        tasks_ = std::make_unique<Tasks>(Host().TheProgram(), Host().State(), Host().Database(), *this);
    }
    return *tasks_;
}

void TasksPage::ShowTask(const ShownTask& task) {
    frEvent->setTitle(QString(task.details.frEvent).replace(u'&', u"&&"_s));
    for (size_t i = 0; i < details.size(); ++i) {
        details_[i]->setText(task.details.*details[i].text);
    }
    tickable_ = task.tickable;
    for (const TaskKind kind : allTasks) {
        const auto index = static_cast<size_t>(kind);
        ticks_[index]->setChecked(task.details.Done(kind));
        ticks_[index]->setEnabled(task.tickable == kind);
        ticks_[index]->setToolTip(task.tickable == kind ? u"Ctrl+Enter"_s : QString());
    }
    cmdFirst->setEnabled(task.hasPrevious);
    cmdPrev->setEnabled(task.hasPrevious);
    cmdNext->setEnabled(task.hasNext);
    cmdLast->setEnabled(task.hasNext);
    cmdNotes->setEnabled(task.tickable.has_value());
    lblPlace->setText(task.place);
    ShowNotice(task.notice);
    lblNothing->hide();
    frEvent->show();
    Host().ShowNumbers(task.details.lblAsset, task.details.lblID);
}

void TasksPage::ShowNotice(const QString& text) {
    lblNotice->setText(text);
    lblNotice->setVisible(!text.isEmpty());
    picNotice->setVisible(!text.isEmpty());
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, WarningColour(palette()));
    lblNotice->setPalette(colours);
}

void TasksPage::HideTask(const QString& text) {
    tickable_.reset();
    frEvent->hide();
    lblNothing->setText(text);
    lblNothing->setVisible(!text.isEmpty());
    Host().ShowNumbers({}, {});
}

void TasksPage::ShowTasks() {
    if (Host().StorePages()) {
        TheTasks().ShowTasks();
    }
}

void TasksPage::Refresh() {
    if (isVisible() && tasks_ != nullptr) {
        tasks_->Refresh();
    }
}

void TasksPage::tmrRefresh_Timer() {
    // A question that is open may be about the reservation shown.
    if (QApplication::activeModalWidget() == nullptr) {
        Refresh();
    }
}

void TasksPage::cmdNotes_Click() {
    if (const auto reservation = TheTasks().ShownReservation()) {
        Host().OpenNotes(*reservation);
        TheTasks().Refresh();
    }
}

void TasksPage::Tick(TaskKind task) {
    TheTasks().StoreTick(task, ticks_[static_cast<size_t>(task)]->isChecked());
}

void TasksPage::ToggleTick() {
    if (tickable_ && frEvent->isVisible()) {
        ticks_[static_cast<size_t>(*tickable_)]->click();
    }
}

} // namespace

DeskPage* NewTasksPage(DeskHost& host) {
    return new TasksPage(host);
}

} // namespace velmora
