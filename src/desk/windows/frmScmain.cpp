#include "desk/windows/frmScmain.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/DateBox.h"
#include "base/windows/TranslateForm.h"
#include "data/Configuration.h"
#include "data/LookupLists.h"
#include "data/NativePath.h"
#include "desk/windows/PrinterControlBox.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"
#include "ops/SharedDatabase.h"
#include "ops/windows/frmHelp.h"
#include "reports/ReportFrame.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTimer>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int holdInterval = 60000;

// A tab of the main window, English, and what makes its page.
struct MainTab {
    QString caption;
    QString key;
    QString toolTip;
    DeskPage* (*makePage)(DeskHost& host);
};

constexpr int tasksTab = 1;

std::array<MainTab, 7> MainTabs() {
    return {{{u"Daily Reports"_s, u"Daily"_s, u"Daily Reports"_s, &NewDailyPage},
             {u"View Tasks"_s, u"View"_s, u"View Daily Tasks"_s, &NewTasksPage},
             {u"CR Reports"_s, u"Crystal"_s, u"Crystal Reports"_s, &NewLayoutPage},
             {u"Quick Status"_s, u"Status"_s, u"Quick Status Viewing"_s, &NewStatusPage},
             {u"Exception"_s, u"Exception"_s, u"Exception Reports"_s, &NewExceptionPage},
             {u"Usage"_s, u"Usage"_s, u"Usage Reports"_s, &NewUsagePage},
             {u"Printer"_s, u"Printer"_s, u"Printer Settings"_s, &NewPrinterSettingsPage}}};
}

// How reports are delivered that are run with the settings of the printer page.
Delivery DeliveryOf(const DeskState& state) {
    const PrinterControl& control = state.PrinterControl1;
    return {.target = static_cast<DeliveryTarget>(control.Destination),
            .printer = control.PrinterName,
            .font = control.PrinterFont,
            .orientation = state.optOrientation,
            .continuous = control.Continuous};
}

QLineEdit* NewNumber(const QString& name, const QString& accessibleName) {
    auto* box = new QLineEdit;
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setReadOnly(true);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(u"00000000000"_s) + spacing::large);
    return box;
}

} // namespace

frmScmain::frmScmain(DeskParts parts)
    : parts_(std::move(parts)), TabStrip1(new QTabBar), stack_(new QStackedWidget),
      cmdClose(NewControl<QPushButton>(u"cmdClose"_s, u"&Close"_s)), lblStatus(NewControl<QLabel>(u"lblStatus"_s, {})),
      pbStatus(new QProgressBar), Timer1(new QTimer(this)), lblAsset(NewNumber(u"lblAsset"_s, u"Asset number"_s)),
      lblID(NewNumber(u"lblID"_s, u"Reservation number"_s)) {
    setObjectName(u"frmScmain"_s);
    setWindowTitle(u"Service Administration"_s);
    TabStrip1->setObjectName(u"TabStrip1"_s);
    TabStrip1->setAccessibleName(u"Pages"_s);
    TabStrip1->setExpanding(false);
    TabStrip1->setDrawBase(true);
    for (const MainTab& tab : MainTabs()) {
        const int index = TabStrip1->addTab(tab.caption);
        TabStrip1->setTabData(index, tab.key);
        TabStrip1->setTabToolTip(index, tab.toolTip);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::normal, spacing::normal, spacing::normal, 0);
    column->setSpacing(0);
    column->addWidget(TabStrip1);
    column->addWidget(stack_, 1);
    column->addLayout(MakeFooter());
    AddTabKeys();
    TranslateForm(*this);
    connect(TabStrip1, &QTabBar::currentChanged, this, &frmScmain::TabStrip1_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmScmain::cmdClose_Click);
    connect(Timer1, &QTimer::timeout, this, &frmScmain::Timer1_Timer);
}

frmScmain::~frmScmain() = default;

DeskPage& frmScmain::Page(int index) {
    DeskPage*& page = pages_.at(static_cast<size_t>(index));
    if (page == nullptr) {
        page = MainTabs().at(static_cast<size_t>(index)).makePage(*this);
        page->setObjectName(u"Page"_s + QString::number(index));
        TranslateForm(*page);
        page->Load();
        stack_->addWidget(NewPageView(page));
        // What is below the pages comes behind all of them.
        setTabOrder(previousInFocusChain(), lblAsset);
        setTabOrder(lblAsset, lblID);
        setTabOrder(lblID, cmdClose);
        GrowTo(*page);
    }
    return *page;
}

void frmScmain::GrowTo(const DeskPage& page) {
    if (isMaximized() || isFullScreen()) {
        return;
    }
    const QMargins margins = layout()->contentsMargins();
    const int around = layout()->totalMinimumSize().height() - stack_->minimumSizeHint().height();
    const QSize whole = page.minimumSizeHint() + QSize(margins.left() + margins.right(), around);
    resize(size().expandedTo(whole.boundedTo(screen()->availableSize())));
}

void frmScmain::ShowPage(DeskPage& page) {
    stack_->setCurrentWidget(page.parentWidget()->parentWidget());
}

void frmScmain::AddTabKeys() {
    for (int i = 0; i < TabStrip1->count(); ++i) {
        auto* key = new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), this);
        connect(key, &QShortcut::activated, this, [this, i] { TabStrip1->setCurrentIndex(i); });
    }
    const auto step = [this](QKeyCombination key, int by) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        connect(shortcut, &QShortcut::activated, this, [this, by] {
            TabStrip1->setCurrentIndex((TabStrip1->currentIndex() + by + TabStrip1->count()) % TabStrip1->count());
        });
    };
    step(Qt::CTRL | Qt::Key_PageDown, 1);
    step(Qt::CTRL | Qt::Key_PageUp, -1);
    step(Qt::CTRL | Qt::Key_Tab, 1);
    step(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
}

QLayout* frmScmain::MakeFooter() {
    pbStatus->setObjectName(u"pbStatus"_s);
    pbStatus->setAccessibleName(u"Progress"_s);
    pbStatus->setRange(0, 100);
    pbStatus->setTextVisible(false);
    constexpr int barWidth = 240;
    pbStatus->setFixedWidth(barWidth);
    numbers_ = new QWidget;
    auto* numbers = new QHBoxLayout(numbers_);
    numbers->setContentsMargins(0, 0, 0, 0);
    numbers->setSpacing(spacing::normal);
    numbers->addWidget(NewControl<QLabel>(u"lblAssetCaption"_s, u"Asset"_s));
    numbers->addWidget(lblAsset);
    numbers->addSpacing(spacing::normal);
    numbers->addWidget(NewControl<QLabel>(u"lblIDCaption"_s, u"Reservation"_s));
    numbers->addWidget(lblID);
    numbers_->hide();
    lblStatus->hide();
    pbStatus->hide();
    cmdClose->setAutoDefault(false);
    QHBoxLayout* footer = NewButtonRow({cmdClose});
    footer->setContentsMargins(spacing::large, spacing::normal, spacing::large, spacing::large);
    footer->insertWidget(0, numbers_);
    footer->insertWidget(1, lblStatus);
    footer->insertWidget(2, pbStatus);
    return footer;
}

DeskPage& frmScmain::CurrentPage() {
    return Page(TabStrip1->currentIndex());
}

bool frmScmain::ShowsTasks() const {
    return pages_[tasksTab] != nullptr && pages_[tasksTab]->isVisibleTo(stack_);
}

QString frmScmain::CurrentPageKey() const {
    return TabStrip1->tabData(TabStrip1->currentIndex()).toString();
}

engine::Database& frmScmain::Database() {
    return OpenedDatabase();
}

void frmScmain::Form_Load() {
    Steps steps(services().errors, u"Service Administration"_s, u"Load"_s, QString());
    const BusyPointer busy(services().eventLoop);
    steps.Step(u"Setting Dates"_s, [this] { SetStartState(); });
    parts_.program.Part<HelpFile>().path = NativePath(HelpDirectory() + u"\\VelmoraEX.HLP"_s);
    OpenSharedDatabase();
    LoadLookupLists(OpenedDatabase());
    constexpr QSize designed(960, 640);
    resize(size().expandedTo(designed.boundedTo(screen()->availableSize())));
    CenterForm(*this);
    Timer1->start(holdInterval);
}

void frmScmain::SetStartState() {
    const Date today = services().clock.Today();
    const Date tomorrow = today + std::chrono::days(1);
    state_.ReportStart = today;
    state_.ReportEnd = tomorrow;
    state_.DateRange1 = {today, tomorrow};
    state_.dtcOtherDate = today;
    state_.dtcException = today;
    state_.dtcUsage = today;
    state_.optOrientation = services().printers.CurrentOrientation();
    state_.PrinterControl1 = PrinterControlBox::Stored(services().userSettings);
    ShowPage(CurrentPage());
    CurrentPage().Refresh();
    // Notes that are printed before any report go where reports go.
    parts_.job.SetOutputTarget(state_.PrinterControl1.Destination);
    parts_.job.SetPreviewMode(state_.PrinterControl1.ShowPreview);
}

bool frmScmain::StorePages() {
    if (DateBox* refused = FindRefusedDate(CurrentPage())) {
        refused->setFocus();
        refused->selectAll();
        services().eventLoop.Beep();
        return false;
    }
    StoreControls();
    return true;
}

void frmScmain::StoreControls() {
    for (const DeskPage* page : pages_) {
        if (page != nullptr) {
            page->Store();
        }
    }
}

void frmScmain::Guard(const QString& procedure, const std::function<void()>& work) {
    Steps(services().errors, u"Service Administration"_s, procedure, QString()).Step({}, work);
}

void frmScmain::RunReport(const ReportRequest& request) {
    Guard(u"Run Report"_s, [&] {
        // A layout opens in a window of its own, whatever the printer page says.
        const bool isLayout = std::holds_alternative<LayoutRequest>(request);
        const Delivery delivery = isLayout ? Delivery() : DeliveryOf(state_);
        ReportContext context{parts_.program, state_, delivery, *this, Database(), parts_.job};
        parts_.runReport(context, request);
    });
}

void frmScmain::OpenNotes(qint32 reservation) {
    if (parts_.openNotes) {
        Guard(u"Open Notes"_s, [&] { parts_.openNotes(reservation, this); });
    }
}

void frmScmain::ShowNumbers(const QString& asset, const QString& reservation) {
    lblAsset->setText(asset);
    lblID->setText(reservation);
    numbers_->setVisible(!reservation.isEmpty() && ShowsTasks() && !state_.ReportRunning);
}

void frmScmain::SetCloseCaption(const QString& caption) {
    cmdClose->setText(WithMnemonic(caption, u'c'));
}

void frmScmain::ShowProgress(const QString& text, int percent) {
    const bool sameText = lblStatus->text() == text && lblStatus->isVisibleTo(this);
    // A report shows its progress before each row; nobody sees more than fifty steps a second.
    constexpr qint64 blink = 20;
    if (sameText && (pbStatus->value() == percent || lastProgress_.elapsed() < blink)) {
        return;
    }
    lastProgress_.start();
    // Paints the bar at once.
    pbStatus->setValue(percent);
    if (sameText) {
        return;
    }
    numbers_->hide();
    lblStatus->setText(text);
    lblStatus->show();
    pbStatus->show();
    repaint();
}

void frmScmain::HideProgress() {
    lblStatus->hide();
    lblStatus->clear();
    pbStatus->hide();
    numbers_->setVisible(ShowsTasks() && !lblID->text().isEmpty());
    repaint();
}

bool frmScmain::event(QEvent* event) {
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate) {
        Form_Activate();
    }
    return done;
}

void frmScmain::Form_Activate() {
    for (DeskPage* page : pages_) {
        if (page != nullptr) {
            page->Refresh();
        }
    }
    ShowStatus(QString());
}

void frmScmain::closeEvent(QCloseEvent* event) {
    event->accept();
    if (!property("unloading").toBool()) {
        Form_QueryUnload();
    }
}

void frmScmain::Form_QueryUnload() {
    ExitProgram();
    throw StopProgram{0};
}

QPushButton* frmScmain::ReturnButton() {
    if (auto* focused = qobject_cast<QPushButton*>(focusWidget())) {
        return focused;
    }
    const auto buttons = CurrentPage().findChildren<QPushButton*>();
    const auto own = std::ranges::find_if(buttons, [](const QPushButton* button) {
        return button->isDefault() && button->isVisible() && button->isEnabled();
    });
    return own == buttons.end() ? nullptr : *own;
}

void frmScmain::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (QPushButton* button = ReturnButton()) {
            button->click();
            return;
        }
    }
    QWidget::keyPressEvent(event);
}

void frmScmain::ApplyPrinterSettings() {
    const PrinterControl& control = state_.PrinterControl1;
    parts_.job.SetPreviewMode(control.ShowPreview);
    SelectPrinter(services().printers, control.PrinterName);
    services().printers.SetFontName(control.PrinterFont);
}

void frmScmain::TabStrip1_Click() {
    StoreControls();
    Guard(u"Apply Printer Settings"_s, [this] { ApplyPrinterSettings(); });
    ShowTab();
}

void frmScmain::ShowTab() {
    ShowPage(CurrentPage());
    numbers_->setVisible(ShowsTasks() && !lblID->text().isEmpty() && !state_.ReportRunning);
    CurrentPage().Chosen();
}

void frmScmain::cmdClose_Click() {
    if (state_.ReportRunning) {
        state_.CancelRequested = true;
        return;
    }
    hide();
    ExitProgram();
    throw StopProgram{0};
}

void frmScmain::Timer1_Timer() {
    Guard(u"Timer"_s, [] { CheckHold(); });
}

} // namespace velmora
