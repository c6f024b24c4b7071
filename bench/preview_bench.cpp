// The preview window with the most pages it takes: the first page on the screen, the repaint of a page, and the memory
// that the kept pages take above the empty program.
#include "base/windows/Look.h"
#include "bench/Measure.h"
#include "print/pages/PageWriters.h"
#include "print/windows/PageView.h"
#include "print/windows/frmPrintPreview.h"
#include "tests/print_windows/PreviewReports.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QFile>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace velmora;
using namespace velmora::print;

namespace {

// The memory that belongs to this program alone.
double PrivateMegabytes() {
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    double kilobytes = 0;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("Private_Dirty:")) {
                kilobytes += line.simplified().split(' ').value(1).toDouble();
            }
        }
    }
    return kilobytes / 1024;
}

frmPrintPreview* OpenWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<frmPrintPreview*>(widget); window != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ApplyLook(application, Shade::Light);
    fakes::TestProgram fakes;
    FakePagePrinter printer;
    WindowPreviews previews(fakes.program.services(), printer);
    FakeQueue queue;
    PageOutput output(fakes.printers, queue, queue);
    PageWriters pages(fakes.program.services(), output, previews, {});
    fakes.printers.page = {12240, 15840, 360, 360, 11520, 15120, 2.4};
    const auto report = [&] {
        auto state = std::make_unique<JobState>();
        constexpr int fifth = 2304;
        state->TabStops = {fifth, 2 * fifth, 3 * fifth, 4 * fifth};
        state->PreviewMode = true;
        auto writer = pages.MakeWriter(*state);
        for (int page = 0; page < 255; ++page) {
            if (page > 0) {
                writer->NewPage();
            }
            for (int entry = 0; entry < 5; ++entry) {
                PrintEntry(static_cast<PageWriter&>(*writer), page * 5 + entry);
            }
        }
        return std::make_pair(std::move(state), std::move(writer));
    };

    const double empty = PrivateMegabytes();
    std::vector<double> opened;
    std::vector<double> first;
    double kept = 0;
    double repaint = 0;
    double slowest = 0;
    for (int run = 0; run < 5; ++run) {
        auto made = report(); // the state outlives the writer
        first.push_back(bench::Milliseconds([&] {
            opened.push_back(bench::Milliseconds([&] { made.second->Deliver(); }));
            while (!OpenWindow()->isActiveWindow() && !OpenWindow()->windowHandle()->isExposed()) {
                QApplication::processEvents();
            }
            OpenWindow()->findChild<PageView*>()->viewport()->repaint();
        }));
        made.second.reset();
        frmPrintPreview& window = *OpenWindow();
        if (run == 0) {
            kept = PrivateMegabytes();
            PageView& view = *window.findChild<PageView*>();
            view.SetFit(PageView::Fit::Page);
            std::vector<double> repaints;
            for (int page = 0; page < 60; ++page) {
                view.ShowPage(page);
                repaints.push_back(bench::Milliseconds([&] { view.viewport()->repaint(); }));
            }
            repaint = bench::Median(repaints);
            slowest = *std::max_element(repaints.begin(), repaints.end());
        }
        window.close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    std::printf("first page on the screen  %.1f ms (limit 50), of it until the window is there %.1f\n",
                bench::Median(first), bench::Median(opened));
    std::printf("repaint of a whole page   %.2f ms, slowest %.2f (limit 5)\n", repaint, slowest);
    std::printf("255 kept pages, window    %.1f MB above the empty program (limit 30)\n", kept - empty);
    return bench::Median(first) <= 50 && repaint <= 5 && kept - empty <= 30 ? 0 : 1;
}
