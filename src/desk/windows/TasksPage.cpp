#include "desk/windows/TasksPage.h"

#include "base/windows/Glyph.h"
#include "desk/windows/DateRangeBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// How soon a desk that is only looked at shows what another desk did; one look-up by key each time.
constexpr int refreshInterval = 5000;

QPushButton* NewStep(const QString& name, const QString& caption, Glyph glyph, const QString& toolTip) {
    auto* button = NewControl<QPushButton>(name, caption);
    button->setIcon(GlyphIcon(glyph));
    button->setToolTip(toolTip);
    return button;
}

} // namespace

TasksPage::TasksPage(DeskHost& host)
    : host_(host),
      optViewType(this, u"optViewType"_s,
                  {{0, u"Move &In"_s}, {1, u"Mo&ve Out"_s}, {2, u"Ph&one Connect"_s}, {3, u"Phone &Disconnect"_s}}),
      DateRange1(new DateRangeBox(host.TheProgram().services())),
      cmdShowTasks(NewControl<QPushButton>(u"cmdShowTasks"_s, u"Sho&w Tasks"_s)),
      chkConferenceView(NewControl<QCheckBox>(u"chkConferenceView"_s, u"&Exclude Conf. Rooms"_s)),
      chkCompleted(NewControl<QCheckBox>(u"chkCompleted"_s, u"&Uncompleted Only"_s)),
      cmdFirst(NewStep(u"cmdFirst"_s, u"&First"_s, Glyph::First, u"First reservation (Alt+Home)"_s)),
      cmdPrev(NewStep(u"cmdPrev"_s, u"P&rev."_s, Glyph::Previous, u"Previous reservation (Alt+Page Up)"_s)),
      cmdNext(NewStep(u"cmdNext"_s, u"&Next"_s, Glyph::Next, u"Next reservation (Alt+Page Down)"_s)),
      cmdLast(NewStep(u"cmdLast"_s, u"&Last"_s, Glyph::Last, u"Last reservation (Alt+End)"_s)),
      cmdNotes(NewControl<QPushButton>(u"cmdNotes"_s, u"Note&s"_s)), lblPlace(NewControl<QLabel>(u"lblPlace"_s, {})),
      lblNothing(NewHint(u"lblNothing"_s, {})), lblNotice(NewControl<QLabel>(u"lblNotice"_s, {})),
      picNotice(new QLabel), lblLastName(NewValue(u"lblLastName"_s)), lblFirstName(NewValue(u"lblFirstName"_s)),
      lblOrganization(NewValue(u"lblOrganization"_s)), lblEnd(NewValue(u"lblEnd"_s)), lblEvent(NewValue(u"lblEvent"_s)),
      lblAttendees(NewValue(u"lblAttendees"_s)), lblAssetName(NewValue(u"lblAssetName"_s)),
      tmrRefresh(new QTimer(this)) {
    QVBoxLayout* column = NewPageColumn(this);
    column->addWidget(MakeSelectionFrame());
    column->addWidget(MakeTaskFrame());
    column->addWidget(lblNothing);
    column->addStretch();
    frEvent->hide();
    lblNothing->hide();
    AddKeys();
    tmrRefresh->setObjectName(u"tmrRefresh"_s);
    connect(tmrRefresh, &QTimer::timeout, this, &TasksPage::tmrRefresh_Timer);
    tmrRefresh->start(refreshInterval);
}

TasksPage::~TasksPage() = default;

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
    DateRange1->setObjectName(u"DateRange1"_s);
    cmdShowTasks->setDefault(true);
    auto* dates = new QHBoxLayout;
    dates->addWidget(DateRange1);
    dates->addStretch();
    range.column->addLayout(dates);
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

QLabel* TasksPage::NewValue(const QString& name) {
    auto* label = NewControl<QLabel>(name, {});
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLayout* TasksPage::MakeDetails() {
    struct Line {
        int index;
        QString caption;
        QLabel* value;
        int row;
        int column;
    };
    const Line lines[] = {{8, u"Location"_s, lblAssetName, 0, 0},
                          {5, u"Event Type"_s, lblEvent, 0, 2},
                          {4, u"Duration"_s, lblEnd, 1, 0},
                          {6, u"Attendees"_s, lblAttendees, 1, 2},
                          {0, u"Last Name"_s, lblLastName, 2, 0},
                          {1, u"First Name"_s, lblFirstName, 2, 2},
                          {2, u"Organization"_s, lblOrganization, 3, 0}};
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    for (const Line& line : lines) {
        auto* caption = NewControl<QLabel>(u"Label9"_s + QString::number(line.index), line.caption);
        grid->addWidget(caption, line.row, line.column, Qt::AlignTop);
        grid->addWidget(line.value, line.row, line.column + 1, Qt::AlignTop);
        line.value->setAccessibleName(line.caption);
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

QLayout* TasksPage::MakeNavigation() {
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    for (QPushButton* button : {cmdFirst, cmdPrev, cmdNext, cmdLast}) {
        row->addWidget(button);
    }
    row->addSpacing(spacing::normal);
    row->addWidget(lblPlace);
    row->addStretch();
    connect(cmdFirst, &QPushButton::clicked, this, &TasksPage::cmdFirst_Click);
    connect(cmdPrev, &QPushButton::clicked, this, &TasksPage::cmdPrev_Click);
    connect(cmdNext, &QPushButton::clicked, this, &TasksPage::cmdNext_Click);
    connect(cmdLast, &QPushButton::clicked, this, &TasksPage::cmdLast_Click);
    return row;
}

void TasksPage::AddKeys() {
    const std::pair<QKeyCombination, QPushButton*> steps[] = {{Qt::ALT | Qt::Key_Home, cmdFirst},
                                                              {Qt::ALT | Qt::Key_PageUp, cmdPrev},
                                                              {Qt::ALT | Qt::Key_PageDown, cmdNext},
                                                              {Qt::ALT | Qt::Key_End, cmdLast}};
    for (const auto& [key, button] : steps) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    }
    auto* tick = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(tick, &QShortcut::activated, this, &TasksPage::ToggleTick);
}

void TasksPage::Store(DeskState& state) const {
    state.DateRange1 = DateRange1->Range();
    state.chkCompleted = chkCompleted->isChecked();
    state.chkConferenceView = chkConferenceView->isChecked();
    state.ViewType = static_cast<qint16>(optViewType.Chosen());
}

void TasksPage::Load(const DeskState& state) {
    DateRange1->SetRange(state.DateRange1);
    chkCompleted->setChecked(state.chkCompleted);
    chkConferenceView->setChecked(state.chkConferenceView);
    optViewType.Choose(state.ViewType);
}

Tasks& TasksPage::TheTasks() {
    if (tasks_ == nullptr) {
        tasks_ = std::make_unique<Tasks>(host_.TheProgram(), host_.State(), host_.Database(), *this);
    }
    return *tasks_;
}

void TasksPage::ShowTask(const ShownTask& task) {
    const TaskDetails& details = task.details;
    frEvent->setTitle(QString(details.frEvent).replace(u'&', u"&&"_s));
    lblLastName->setText(details.lblLastName);
    lblFirstName->setText(details.lblFirstName);
    lblOrganization->setText(details.lblOrganization);
    lblEnd->setText(details.lblEnd);
    lblEvent->setText(details.lblEvent);
    lblAttendees->setText(details.lblAttendees);
    lblAssetName->setText(details.lblAssetName);
    const bool done[] = {details.chkSLockStart, details.chkSLockEnd, details.chkTLockStart, details.chkTLockEnd};
    tickable_ = task.tickable;
    for (const TaskKind kind : allTasks) {
        const auto index = static_cast<size_t>(kind);
        ticks_[index]->setChecked(done[index]);
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
    host_.ShowNumbers(details.lblAsset, details.lblID);
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
    host_.ShowNumbers({}, {});
}

void TasksPage::Chosen() {
    ShowTasks();
}

void TasksPage::ShowTasks() {
    if (host_.StorePages()) {
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

void TasksPage::cmdShowTasks_Click() {
    ShowTasks();
}

void TasksPage::optViewType_Click(int) {
    ShowTasks();
}

void TasksPage::chkCompleted_Click() {
    ShowTasks();
}

void TasksPage::chkConferenceView_Click() {
    ShowTasks();
}

void TasksPage::cmdFirst_Click() {
    TheTasks().First();
}

void TasksPage::cmdPrev_Click() {
    TheTasks().Previous();
}

void TasksPage::cmdNext_Click() {
    TheTasks().Next();
}

void TasksPage::cmdLast_Click() {
    TheTasks().Last();
}

void TasksPage::cmdNotes_Click() {
    if (const auto reservation = TheTasks().ShownReservation()) {
        host_.OpenNotes(*reservation);
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

} // namespace velmora
