#include "print/PrintJob.h"
#include "print/windows/frmPrintPreview.h"
#include "tests/layouts/LayoutFixture.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>

namespace velmora::layouts {
namespace {

class LayoutWindowsTest : public LayoutFixture {
protected:
    LayoutWindowsTest() {
        fakes_.printers.font.family = u"Liberation Sans"_s;
        fakes_.printers.current = u"Lobby"_s;
        request_.start = MakeDate(2026, 3, 6);
        request_.end = MakeDate(2026, 3, 7);
        request_.layout = 2;
    }
    Q_DISABLE_COPY_MOVE(LayoutWindowsTest)
    ~LayoutWindowsTest() override {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            window->close();
        }
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void Launch() {
        RunCrystalReport(fakes_.program, request_, run_, *database_, [&](const QString& path, const QString& formula) {
            RunLayout({TheServices(), delivery_, {}, &windowPages_}, *database_, {print::Target::Preview}, path,
                      formula);
        });
    }
    static std::vector<print::frmPrintPreview*> Windows() {
        std::vector<print::frmPrintPreview*> windows;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<print::frmPrintPreview*>(widget);
                window != nullptr && window->isVisible()) {
                windows.push_back(window);
            }
        }
        return windows;
    }

    LayoutRequest request_;
    ReportRun run_;
    print::WindowPreviews windows_{TheServices(), output_};
    print::PageWriters windowPages_{TheServices(), output_, windows_, fakes_.program.Title()};
};

TEST_F(LayoutWindowsTest, EachRunOpensAWindowThatPrintsOnItsOwnPaper) {
    Launch();
    request_.layout = 7;
    fakes_.printers.orientation = Orientation::Landscape;
    Launch();
    ASSERT_EQ(Windows().size(), 2U);
    for (print::frmPrintPreview* window : Windows()) {
        QTest::mouseClick(window->findChild<QToolButton*>(u"Print"_s), Qt::LeftButton);
    }
    ASSERT_EQ(printer_.jobs.size(), 2U);
    EXPECT_EQ(printer_.devices, (QStringList{u"Lobby"_s, u"Lobby"_s}));
    for (const printers::QueueJob& job : printer_.jobs) {
        // The paper as it lies in the printer, and upright pages on it.
        EXPECT_EQ(job.paperWidth, 12240);
        EXPECT_EQ(job.paperHeight, 15840);
        EXPECT_TRUE(job.pdf.contains("/MediaBox [0 0 612.000000 792.000000]"));
        EXPECT_FALSE(job.pdf.contains("[0 0 792"));
    }
}

TEST_F(LayoutWindowsTest, LeavesTheReportOfTheDeskAlone) {
    print::PrintJob job({fakes_.program.services(), delivery_, [] { return std::vector<print::PrintAttribute>(); }});
    job.SetOutputTarget(3);
    const auto report = [&](const std::function<void()>& meanwhile) {
        job.BeginReport();
        job.PrintReportTitle("Starts", "", "now");
        job.SetTabStops(0.1, 0.2, 0.3, 0.4);
        meanwhile();
        job.PrintLabelValue("Jack", "J-1");
        job.EndReport();
        return delivery_.delivered;
    };
    const QByteArray alone = report([] {});
    run_.ReportRunning = true;
    const int tabStop = job.State().TabStop1();
    EXPECT_EQ(report([&] { Launch(); }), alone);
    EXPECT_EQ(job.State().TabStop1(), tabStop);
    EXPECT_EQ(job.Choice().OutputTarget, print::Target::TextFile);
    EXPECT_TRUE(run_.ReportRunning);
    EXPECT_EQ(Windows().size(), 1U);
}

} // namespace
} // namespace velmora::layouts
