// The preview window, by its real controls.
#include "tests/support/Fakes.h"

#include "base/windows/CenterForm.h"
#include "platform/pages/PdfFile.h"
#include "print/windows/PageView.h"
#include "print/windows/frmPrintPreview.h"
#include "tests/print_windows/PreviewReports.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace velmora::print {
namespace {

using namespace Qt::StringLiterals;

class PreviewTest : public ::testing::Test {
protected:
    frmPrintPreview& Show(pages::Document document, QSize size = {1000, 600}) {
        window_ = std::make_unique<frmPrintPreview>(fakes_.program.services(), printer_,
                                                    PreviewReport{std::move(document), {}});
        window_->setWindowState(Qt::WindowNoState);
        window_->resize(size);
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        return *window_;
    }

    template <typename T>
    T& Get(const char* name) {
        T* found = window_->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    void Click(const char* key) { QTest::mouseClick(&Get<QToolButton>(key), Qt::LeftButton); }
    void Run(const char* command) { Get<QAction>(command).trigger(); }
    void Resize(int width, int height) {
        window_->resize(width, height);
        QApplication::processEvents();
    }
    QString Status() { return Get<QLabel>("Picture1").text(); }
    QWidget& Surface() { return Get<QWidget>("picPage"); }
    PageView& View() { return *window_->findChild<PageView*>(); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&View(), key, modifiers);
    }
    // "First Previous Next Last" as far as they are enabled.
    QString Enabled() {
        QStringList enabled;
        for (const char* key : {"First", "Previous", "Next", "Last"}) {
            if (Get<QToolButton>(key).isEnabled()) {
                enabled.append(QString::fromLatin1(key));
            }
        }
        return enabled.join(u' ');
    }

    fakes::TestProgram fakes_;
    FakePagePrinter printer_;
    std::unique_ptr<frmPrintPreview> window_;
};

TEST_F(PreviewTest, ToolbarHasItsEightButtons) {
    Show(DailyList(1));
    QStringList found;
    for (const QAction* action : Get<QToolBar>("Toolbar1").actions()) {
        found.append(action->isSeparator() ? u"-"_s : action->objectName() + u": "_s + action->toolTip());
        EXPECT_TRUE(action->isSeparator() || !action->icon().isNull());
    }
    EXPECT_EQ(found, (QStringList{u"First: First Page"_s, u"Previous: Previous Page"_s, u"-"_s, u"Next: Next Page"_s,
                                  u"Last: Last Page"_s, u"-"_s, u"PrintPage: Print the Current Page"_s,
                                  u"Print: Print All Pages"_s}));
    EXPECT_EQ(window_->windowTitle(), u"Print Preview");
    EXPECT_EQ(Status(), u"Page 1 of 1");
    EXPECT_EQ(Enabled(), u"");
}

TEST_F(PreviewTest, PagesThroughAReport) {
    Show(DailyList(3));
    struct Click {
        const char* key;
        const char* status;
        const char* enabled;
    };
    for (const auto& [key, status, enabled] :
         {Click{"Previous", "Page 1 of 3", "Next Last"}, Click{"Next", "Page 2 of 3", "First Previous Next Last"},
          Click{"Next", "Page 3 of 3", "First Previous"}, Click{"Next", "Page 3 of 3", "First Previous"},
          Click{"Previous", "Page 2 of 3", "First Previous Next Last"}, Click{"First", "Page 1 of 3", "Next Last"},
          Click{"Last", "Page 3 of 3", "First Previous"}}) {
        PreviewTest::Click(key);
        EXPECT_EQ(Status(), QString::fromLatin1(status)) << key;
        EXPECT_EQ(Enabled(), QString::fromLatin1(enabled)) << key;
    }
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(window_.get(), &activated);
    EXPECT_EQ(Status(), u"Page 1 of 3") << "becoming active goes back to the beginning";
}

// Equal as display lists: what is printed is what is shown.
void ExpectSamePage(const pages::Document& printed, size_t index, const pages::Document& shown, size_t shownIndex) {
    EXPECT_EQ(printed.pages[index].Items().size(), shown.pages[shownIndex].Items().size());
    EXPECT_EQ(pages::PdfBytes({u"x"_s, printed.fonts, {printed.pages[index]}}).size(),
              pages::PdfBytes({u"x"_s, shown.fonts, {shown.pages[shownIndex]}}).size());
    EXPECT_EQ(printed.pages[index].PlainText(), shown.pages[shownIndex].PlainText());
    EXPECT_EQ(printed.pages[index].Placed(), pages::Placement());
}

TEST_F(PreviewTest, PrintsOnePageOrAllAsOneDocument) {
    const pages::Document report = DailyList(3);
    Show(report);
    Click("Next");
    printer_.cancelled = true;
    Click("Print");
    EXPECT_EQ(Get<QLabel>("lblNotice").text(), QString()) << "nothing was printed";
    printer_.cancelled = false;
    Click("PrintPage");
    EXPECT_EQ(Get<QLabel>("lblNotice").text(), u"Page 2 went to the printer");
    Click("Print");
    ASSERT_EQ(printer_.printed.size(), 2U);
    ASSERT_EQ(printer_.printed[0].pages.size(), 1U);
    ExpectSamePage(printer_.printed[0], 0, report, 1);
    ASSERT_EQ(printer_.printed[1].pages.size(), 3U);
    for (size_t page = 0; page < 3; ++page) {
        ExpectSamePage(printer_.printed[1], page, report, page);
    }
    EXPECT_EQ(Status(), u"Page 2 of 3");
    EXPECT_EQ(fakes_.eventLoop.pointers[2], Pointer::Hourglass);

    printer_.failures = 2;
    fakes_.errors.answers = {Answer::Retry, Answer::Ignore};
    Click("Print");
    ASSERT_EQ(fakes_.errors.reports.size(), 2U);
    EXPECT_EQ(fakes_.errors.reports[0].place.task, u"Print All Pages"_s);
    EXPECT_EQ(fakes_.errors.reports[0].error.Description(), u"the queue is gone");
    EXPECT_EQ(printer_.printed.size(), 2U);
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
}

TEST_F(PreviewTest, AGrownPageIsPrintedOverSeveralSheets) {
    Show(GrownPage(40));
    Click("PrintPage");
    ASSERT_EQ(printer_.printed.size(), 1U);
    EXPECT_GT(printer_.printed[0].pages.size(), 3U);
    EXPECT_GT(Get<QScrollBar>("VScroll1").maximum(), 4 * 1056 - 600);
}

TEST_F(PreviewTest, ScrollBarsAreThereWhereThePageIsLarger) {
    Show(DailyList(1), {1000, 600});
    EXPECT_FALSE(Get<QScrollBar>("HScroll1").isVisible());
    EXPECT_TRUE(Get<QScrollBar>("VScroll1").isVisible());
    Get<QScrollBar>("VScroll1").setValue(200);
    Resize(500, 500);
    EXPECT_TRUE(Get<QScrollBar>("HScroll1").isVisible());
    EXPECT_EQ(Get<QScrollBar>("VScroll1").value(), 0) << "a new size begins at the corner";
    Get<QScrollBar>("VScroll1").setValue(Get<QScrollBar>("VScroll1").maximum());
    Get<QScrollBar>("HScroll1").setValue(Get<QScrollBar>("HScroll1").maximum());
    EXPECT_LE(View().PaperRect().bottom(), Surface().height()) << "the page's end can be reached";
    EXPECT_LE(View().PaperRect().right(), Surface().width());
    Resize(1400, 1200);
    EXPECT_FALSE(Get<QScrollBar>("HScroll1").isVisible());
    EXPECT_FALSE(Get<QScrollBar>("VScroll1").isVisible());
    EXPECT_EQ(Get<QScrollBar>("VScroll1").maximum(), 0);
}

TEST_F(PreviewTest, KeysAndWheelCrossPages) {
    Show(DailyList(3));
    QScrollBar& bar = Get<QScrollBar>("VScroll1");
    Key(Qt::Key_PageDown);
    EXPECT_GT(bar.value(), 0);
    Key(Qt::Key_End);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Status(), u"Page 2 of 3");
    EXPECT_EQ(bar.value(), 0);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(Status(), u"Page 1 of 3");
    EXPECT_EQ(bar.value(), bar.maximum()) << "going back shows the end of the page before";
    const auto turn = [&](int angle) {
        QWheelEvent event({10, 10}, Surface().mapToGlobal(QPointF(10, 10)), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Surface(), &event);
    };
    turn(-40);
    turn(-40);
    EXPECT_EQ(Status(), u"Page 1 of 3") << "a page is not left by a touch";
    turn(-40);
    EXPECT_EQ(Status(), u"Page 2 of 3");
    turn(120);
    EXPECT_EQ(Status(), u"Page 1 of 3");
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(Status(), u"Page 3 of 3");
    Key(Qt::Key_End);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Status(), u"Page 3 of 3");
}

TEST_F(PreviewTest, ZoomsAndFits) {
    Show(DailyList(1));
    EXPECT_NEAR(View().PaperRect().width(), 12240 * Surface().logicalDpiX() / 1440.0, 1) << "true size at first";
    Key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(View().Zoom(), 1.25, 0.001);
    EXPECT_EQ(Get<QLabel>("lblZoom").text(), u"125 %");
    Key(Qt::Key_Minus, Qt::ControlModifier);
    Key(Qt::Key_1, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_LE(View().PaperRect().height(), Surface().height());
    EXPECT_FALSE(Get<QScrollBar>("VScroll1").isVisible());
    Key(Qt::Key_2, Qt::ControlModifier);
    EXPECT_LE(View().PaperRect().width(), Surface().width());
    EXPECT_GT(View().PaperRect().width(), Surface().width() - 60);
    Resize(700, 600);
    EXPECT_LE(View().PaperRect().width(), Surface().width()) << "the fit follows the window";
    for (int i = 0; i < 30; ++i) {
        Run("ZoomIn");
    }
    EXPECT_LE(View().Zoom(), 8);
}

TEST_F(PreviewTest, FindsMarksAndWraps) {
    Show(DailyList(3, 4));
    Get<QScrollBar>("VScroll1").setValue(150);
    Run("Find");
    QApplication::processEvents();
    EXPECT_EQ(Get<QScrollBar>("VScroll1").value(), 150) << "the page stays where it is";
    auto& field = Get<QLineEdit>("txtFind");
    QTest::keyClicks(&field, u"person 6"_s);
    EXPECT_EQ(Status(), u"Page 2 of 3");
    EXPECT_EQ(Get<QLabel>("lblCount").text(), u"1 of 1");
    const QImage marked = View().grab().toImage();
    int orange = 0;
    for (int y = 0; y < marked.height(); y += 2) {
        for (int x = 0; x < marked.width(); x += 2) {
            orange += marked.pixelColor(x, y) == QColor(0xff, 0xb3, 0x4d) ? 1 : 0;
        }
    }
    EXPECT_GT(orange, 50) << "the hit is marked and in view";
    field.clear();
    QTest::keyClicks(&field, u"555-01"_s);
    EXPECT_EQ(Get<QLabel>("lblCount").text(), u"1 of 12") << "the search began on the first page";
    QTest::keyClick(&field, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(Get<QLabel>("lblCount").text().startsWith(u"12 of 12")) << "it goes round";
    EXPECT_EQ(Status(), u"Page 3 of 3");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_TRUE(Get<QLabel>("lblCount").text().startsWith(u"1 of 12"));
    EXPECT_EQ(Status(), u"Page 1 of 3");
    QTest::keyClicks(&field, u"zz"_s);
    EXPECT_EQ(Get<QLabel>("lblCount").text(), u"Not found in this report");
    EXPECT_EQ(Status(), u"Page 1 of 3");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_FALSE(field.isVisible());
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(PreviewTest, GoesToAPageCopiesAndSaves) {
    const pages::Document report = DailyList(3);
    Show(report);
    Run("GoTo");
    QTest::keyClicks(QApplication::focusWidget(), u"3"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Status(), u"Page 3 of 3");
    Run("CopyText");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), report.pages[2].PlainText());

    const QTemporaryDir folder;
    fakes_.dialogs.saveAnswers = {SaveFileAnswer{folder.path(), u"list"_s}, std::nullopt,
                                  SaveFileAnswer{folder.filePath(u"missing"_s), u"list.pdf"_s}};
    Run("SavePdf");
    QFile file(folder.filePath(u"list.pdf"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF"));
    EXPECT_EQ(fakes_.dialogs.saveRequests[0].filter, u"PDF file (*.pdf)|*.pdf");
    Run("SavePdf");
    fakes_.errors.answers = {Answer::Ignore};
    Run("SavePdf");
    ASSERT_EQ(fakes_.errors.reports.size(), 1U);
    EXPECT_TRUE(fakes_.errors.reports[0].error.Description().contains(u"list.pdf"));
}

TEST_F(PreviewTest, ClickingAPageTellsItsIndexAndDraggingMovesIt) {
    Show(DailyList(2));
    Click("Next");
    fakes_.dialogs.answers = {Answer::Ok};
    const QPoint middle = Surface().rect().center();
    QTest::mouseClick(&Surface(), Qt::LeftButton, {}, middle);
    ASSERT_EQ(fakes_.dialogs.messages.size(), 1U);
    EXPECT_EQ(fakes_.dialogs.messages[0].text, u"1 Clicked");
    QTest::mouseClick(&Surface(), Qt::LeftButton, {}, QPoint(2, 50));
    EXPECT_EQ(fakes_.dialogs.messages.size(), 1U) << "beside the page";
    QTest::mousePress(&Surface(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(&Surface(), middle - QPoint(0, 100));
    QTest::mouseRelease(&Surface(), Qt::LeftButton, {}, middle - QPoint(0, 100));
    EXPECT_EQ(fakes_.dialogs.messages.size(), 1U);
}

TEST_F(PreviewTest, WindowsBelongToTheUserAndOutliveTheirReport) {
    WindowPreviews previews(fakes_.program.services(), printer_);
    previews.Open({DailyList(1), {}});
    previews.Open({DailyList(2), u"notice"_s});
    QWidgetList windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<frmPrintPreview*>(widget) != nullptr) {
            EXPECT_TRUE(widget->isVisible() && !widget->isModal() && widget->isMaximized());
            windows.append(widget);
        }
    }
    ASSERT_EQ(windows.size(), 2);
    for (QWidget* window : windows) {
        const QPointer<QWidget> shown(window);
        window->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(shown.isNull());
    }
}

TEST(CenterForm, CentresOrMaximises) {
    EXPECT_EQ(CentredPosition({301, 200}, {100, 50, 1000, 800}), QPoint(449, 350));
    EXPECT_EQ(CentredPosition({1000, 200}, {100, 50, 1000, 800}), std::nullopt);
    EXPECT_EQ(CentredPosition({300, 801}, {100, 50, 1000, 800}), std::nullopt);
}

} // namespace
} // namespace velmora::print
