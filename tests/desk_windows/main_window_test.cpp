#include "base/windows/DateBox.h"
#include "desk/windows/DeskWindows.h"
#include "desk/windows/frmIntro.h"
#include "ops/windows/frmHelp.h"
#include "reports/ReportFrame.h"
#include "tests/desk_windows/DeskWindowFixture.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QProgressBar>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTextBrowser>
#include <QTimer>

namespace velmora {
namespace {

TEST_F(DeskWindowTest, TabsShowOnePageEach) {
    ASSERT_EQ(Child<QTabBar>(u"TabStrip1"_s).count(), 7);
    EXPECT_TRUE(Child(u"Page0"_s).isVisible());
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(window_.get(), static_cast<Qt::Key>(Qt::Key_1 + i), Qt::AltModifier);
        for (int page = 0; page < 7; ++page) {
            EXPECT_EQ(Child(u"Page"_s + QString::number(page)).isVisible(), page == i);
        }
    }
}

TEST_F(DeskWindowTest, EachButtonRunsItsListOfTheDayChosen) {
    const std::tuple<const char*, int, const char*> buttons[] = {{"Command5", 0, "\nReservation Starts\t"},
                                                                 {"Command6", 1, "\nReservation Ends\t"},
                                                                 {"Command2", 8, "\nReservation Starts and Ends\t"}};
    for (const auto& [button, base, title] : buttons) {
        for (int day = 0; day < 3; ++day) {
            Click(u"optDay"_s + QString::number(day));
            Click(QString::fromLatin1(button));
            EXPECT_EQ(window_->State().ReportDayMode, base + 2 * day);
            EXPECT_FALSE(window_->State().ReportRunning);
        }
        Click(u"optDay0"_s);
        Click(QString::fromLatin1(button));
        EXPECT_TRUE(delivery_.delivered.back().contains(title)) << delivery_.delivered.back().left(200).toStdString();
    }
    EXPECT_EQ(delivery_.delivered.size(), 12U);
    // The list is the one that the same settings print without a window.
    Click(u"chkBrief"_s);
    Click(u"Command5"_s);
    EXPECT_EQ(delivery_.delivered.back(), Print(DailyRequest{.brief = true}));
}

TEST_F(DeskWindowTest, TheRunningReportCanBeCancelled) {
    Click(u"Command5"_s);
    const QByteArray whole = delivery_.delivered.back();
    int round = 0;
    QString caption;
    bool barShown = false;
    fakes_.eventLoop.onEvents = [&] {
        ++round;
        if (round == 3) {
            caption = Caption(u"cmdClose"_s);
            barShown = Child(u"pbStatus"_s).isVisible() && Text(u"lblStatus"_s) == u"Preparing Report"_s;
            Click(u"cmdClose"_s);
        }
    };
    Click(u"Command5"_s);
    EXPECT_EQ(caption, u"Cancel Report"_s);
    EXPECT_TRUE(barShown);
    EXPECT_EQ(round, 3);
    // What was printed until then is delivered, and the window is idle.
    EXPECT_EQ(delivery_.delivered.size(), 2U);
    EXPECT_LT(delivery_.delivered.back().size(), whole.size());
    EXPECT_TRUE(delivery_.delivered.back().contains("Reservation Starts"));
    EXPECT_EQ(Caption(u"cmdClose"_s), u"Close"_s);
    EXPECT_FALSE(Child(u"pbStatus"_s).isVisible());
    EXPECT_TRUE(window_->isVisible());
}

TEST_F(DeskWindowTest, ProgressIsCappedAndHidden) {
    ShowReportProgress(*window_, u"Preparing Report"_s, 150);
    EXPECT_EQ(Child<QProgressBar>(u"pbStatus"_s).value(), 100);
    EXPECT_TRUE(Child(u"lblStatus"_s).isVisible());
    ShowReportProgress(*window_, {}, 20);
    EXPECT_FALSE(Child(u"lblStatus"_s).isVisible());
    EXPECT_FALSE(Child(u"pbStatus"_s).isVisible());
}

TEST_F(DeskWindowTest, PrinterChoicesAreKeptAndTakeEffectOnLeavingThePage) {
    fakes_.printers.names = {u"Floor 1"_s, u"Floor 2"_s};
    fakes_.printers.current = u"Floor 1"_s;
    Choose(u"Printer"_s);
    auto& printer = Child<QComboBox>(u"PrinterName"_s);
    EXPECT_EQ(printer.currentText(), u"Floor 1"_s);
    QTest::keyClick(&printer, Qt::Key_Down);
    auto& destination = Child<QComboBox>(u"Destination"_s);
    destination.setCurrentIndex(0);
    QTest::keyClick(&destination, Qt::Key_Down);
    Click(u"optOrientation2"_s);
    Choose(u"Daily"_s);
    EXPECT_EQ(fakes_.printers.current, u"Floor 2"_s);
    EXPECT_EQ(window_->State().PrinterControl1.Destination, 0);
    EXPECT_FALSE(window_->State().PrinterControl1.ShowPreview);
    EXPECT_EQ(window_->State().optOrientation, Orientation::Landscape);
    EXPECT_EQ(fakes_.userSettings.values[u"Velmora/Printer Settings/Printer"_s], u"Floor 2"_s);

    // The next start has the choices; a printer that is gone changes nothing and is told.
    window_.reset();
    fakes_.printers.names = {u"Floor 1"_s};
    fakes_.printers.current = u"Floor 1"_s;
    OpenDesk();
    EXPECT_EQ(window_->State().PrinterControl1.PrinterName, u"Floor 2"_s);
    Choose(u"Printer"_s);
    EXPECT_TRUE(Child(u"lblPrinter"_s).isVisible());
    Choose(u"Daily"_s);
    EXPECT_EQ(fakes_.printers.current, u"Floor 1"_s);
    // Without any choice kept, reports go to the preview.
    window_.reset();
    fakes_.userSettings.values.clear();
    OpenDesk();
    EXPECT_EQ(window_->State().PrinterControl1.Destination, 1);
    EXPECT_TRUE(window_->State().PrinterControl1.ShowPreview);
}

TEST_F(DeskWindowTest, EndsInOrderByItsButtonAndByItsFrame) {
    // Signal and event are given directly: the end of the program must not pass through frames of the toolkit that
    // hold something.
    EXPECT_THROW(Q_EMIT Child<QPushButton>(u"cmdClose"_s).clicked(), StopProgram);
    EXPECT_EQ(fakes_.windows.calls, QStringList{u"all"_s});
    EXPECT_EQ(fakes_.program.Part<SharedDatabase>().database, nullptr);
    QCloseEvent close;
    EXPECT_THROW(QApplication::sendEvent(window_.get(), &close), StopProgram);
}

TEST_F(DeskWindowTest, WindowsAreUnloadedLastOpenedFirst) {
    DeskWindows windows;
    QStringList closed;
    struct Window : QWidget {
        QStringList* closed = nullptr;
        void closeEvent(QCloseEvent* event) override {
            *closed += objectName();
            // One that will not go holds up nobody.
            event->setAccepted(objectName() != u"second"_s);
        }
    };
    std::array<Window, 3> opened;
    for (const auto& [index, name] :
         {std::pair(0U, u"first"_s), std::pair(1U, u"second"_s), std::pair(2U, u"third"_s)}) {
        opened[index].setObjectName(name);
        opened[index].closed = &closed;
        opened[index].show();
    }
    windows.UnloadAll();
    EXPECT_EQ(closed, (QStringList{u"third"_s, u"second"_s, u"first"_s}));
    EXPECT_FALSE(opened[1].isVisible());
}

TEST_F(DeskWindowTest, TheStartUpWindowLoadsAndShowsTheMainWindow) {
    QCoreApplication::setApplicationVersion(u"1.2.3"_s);
    frmIntro intro(fakes_.program);
    QStringList order;
    intro.Form_Load(
        [&] {
            order += u"load"_s;
            EXPECT_TRUE(intro.isVisible());
            EXPECT_EQ(intro.findChild<QLabel*>(u"lblVersion"_s)->text(), u"Version 1.2.3 - 32 Bit"_s);
            EXPECT_EQ(intro.findChild<QLabel*>(u"lblTitle"_s)->text(), u"Service Administration"_s);
            EXPECT_EQ(intro.findChild<QLabel*>(u"lblDatabase"_s)->text(),
                      u"Database "_s + folder_.filePath(u"Velmora.MDB"_s));
        },
        [&] {
            order += u"show"_s;
            EXPECT_FALSE(intro.isVisible());
        });
    EXPECT_EQ(order, (QStringList{u"load"_s, u"show"_s}));
    // A main window that could not be loaded is not shown.
    fakes_.errors.answers = {Answer::Ignore};
    EXPECT_THROW(intro.Form_Load([] { throw ProgramError(ErrorNumber::Unavailable, u"no list"_s); }, [] { FAIL(); }),
                 StopProgram);
    EXPECT_EQ(fakes_.errors.reports.at(0).place.module, u"Intro Form"_s);
    // A hold ends the program before anything is loaded.
    QFile hold(folder_.filePath(u"HOLD.TXT"_s));
    ASSERT_TRUE(hold.open(QIODevice::WriteOnly));
    hold.close();
    EXPECT_THROW(intro.Form_Load([] { FAIL(); }, [] { FAIL(); }), StopProgram);
}

TEST_F(DeskWindowTest, F1OpensTheHelpAtThePageInUse) {
    fakes_.program.Part<HelpFile>().path = ShareFolder() + u"/help/VelmoraEX.HLP"_s;
    const HelpKey key([this] { return window_->CurrentPageKey(); });
    Choose(u"Status"_s);
    QTest::keyClick(&Child(u"txtFind"_s), Qt::Key_F1);
    frmHelp* help = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        help = help == nullptr ? qobject_cast<frmHelp*>(window) : help;
    }
    ASSERT_NE(help, nullptr);
    auto* topics = help->findChild<QListWidget*>();
    EXPECT_EQ(topics->currentItem()->text(), u"Quick Status"_s);
    // The topic is at the top, also after the desktop gave the window another size.
    auto* text = help->findChild<QTextBrowser*>();
    const auto top = [text] {
        QTextCursor cursor = text->cursorForPosition(QPoint(8, 8));
        cursor.select(QTextCursor::BlockUnderCursor);
        return cursor.selectedText().trimmed();
    };
    EXPECT_EQ(top(), u"Quick Status"_s);
    help->resize(620, 420);
    QApplication::processEvents();
    EXPECT_EQ(top(), u"Quick Status"_s);
    // What is not found is told, and the reader stays in place.
    auto& find = *help->findChild<QLineEdit*>(u"txtFind"_s);
    QTest::keyClicks(&find, u"zzzz"_s);
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_EQ(help->findChild<QLabel*>(u"lblFound"_s)->text(), u"\"zzzz\" is not in the help."_s);
    QApplication::processEvents();
    EXPECT_EQ(top(), u"Quick Status"_s);
    find.setText(u"semicolons"_s);
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_FALSE(help->findChild<QLabel*>(u"lblFound"_s)->isVisible());
    EXPECT_EQ(text->textCursor().selectedText(), u"semicolons"_s);
    // Every page has its topic.
    QStringList keys;
    for (int i = 0; i < topics->count(); ++i) {
        keys += topics->item(i)->data(Qt::UserRole).toString();
    }
    const auto& tabs = Child<QTabBar>(u"TabStrip1"_s);
    for (int i = 0; i < tabs.count(); ++i) {
        EXPECT_TRUE(keys.contains(tabs.tabData(i).toString())) << i;
    }
    help->close();
    // A help file that is not there is named.
    fakes_.program.Part<HelpFile>().path = u"/nowhere/VelmoraEX.HLP"_s;
    fakes_.dialogs.answers = {Answer::Ok};
    QTest::keyClick(window_.get(), Qt::Key_F1);
    EXPECT_TRUE(fakes_.dialogs.messages.at(0).text.contains(u"/nowhere/VelmoraEX.HLP"_s));
}

} // namespace
} // namespace velmora
