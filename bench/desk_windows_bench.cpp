// Measures what a clerk waits for in the windows of the desk at the large demo tier: the start, against an empty window
// of the same toolkit and the bare query of the assets; a key press in the task view until its frame is painted; typing
// in the status list; what a report of 10,000 rows spends on showing its progress and handling events, and how soon it
// answers "Cancel Report". Fails when a limit is passed. Runs itself again as the programs whose start is measured.
#include "app/desk/DeskProgram.h"
#include "base/windows/Look.h"
#include "bench/BareStore.h"
#include "bench/LargeSite.h"
#include "bench/Measure.h"
#include "data/Configuration.h"
#include "ops/SharedDatabase.h"
#include "print/PrintStyles.h"
#include "reports/PrintReport.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace Qt::Literals::StringLiterals;
using namespace velmora;

namespace {

double Elapsed(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

bool Print(const char* what, double measured, const char* unit, double limit) {
    std::printf("%-60s %9.2f %-2s limit %6.2f %s\n", what, measured, unit, limit, measured <= limit ? "" : "ABOVE");
    return measured <= limit;
}

QWidget* MainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"frmScmain"_s) {
            return window;
        }
    }
    return nullptr;
}

// The two programs whose start is measured: each ends when its window is painted.
[[noreturn]] void EndWhenPainted(QWidget& window) {
    QElapsedTimer patience;
    patience.start();
    while (!window.windowHandle()->isExposed() && !patience.hasExpired(5000)) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    window.repaint();
    std::_Exit(window.windowHandle()->isExposed() ? 0 : 1);
}

// One line of text, so that the toolkit has its fonts: without any it would not even look for them.
int StartEmpty(QApplication& application) {
    ApplyLook(application, Shade::Light);
    QLabel window(u"Service Administration"_s);
    window.resize(960, 640);
    window.show();
    EndWhenPainted(window);
}

int StartDesk(QApplication& application) {
    ApplyLook(application, Shade::Light);
    desk::DeskProgram program{{}};
    program.Start();
    EndWhenPainted(*MainWindow());
}

double StartOf(const QString& what) {
    return Elapsed([&] {
        if (QProcess::execute(QCoreApplication::applicationFilePath(), {what}) != 0) {
            std::fprintf(stderr, "the start of %s failed\n", qPrintable(what));
            std::exit(1);
        }
    });
}

bool MeasureStart(const QString& folder) {
    qputenv("VELMORA_SYSTEM_DIR", folder.toUtf8());
    qputenv("XDG_CONFIG_HOME", folder.toUtf8());
    bench::BareStore store(folder + u"/Velmora.MDB"_s);
    sqlite3_stmt* assets = store.Prepare("SELECT * FROM Asset ORDER BY AssetID");
    std::vector<double> empty;
    std::vector<double> desk;
    std::vector<double> query;
    constexpr int rounds = 11;
    for (int round = 0; round < rounds; ++round) {
        empty.push_back(StartOf(u"--empty"_s));
        desk.push_back(StartOf(u"--desk"_s));
        query.push_back(Elapsed([&] {
            while (store.Step(assets)) {
            }
        }));
        sqlite3_reset(assets);
    }
    std::printf("empty window %.0f ms, asset query %.1f ms, desk %.0f ms\n", bench::Median(empty), bench::Median(query),
                bench::Median(desk));
    return Print("start until the main window is painted, ratio",
                 bench::Median(desk) / (bench::Median(empty) + bench::Median(query)), "", 2);
}

// The main window on the site, reports into memory.
class Desk : public print::DocumentSink {
public:
    explicit Desk(const QString& folder, Date day) {
        Settings().DataDirectory = folder;
        fakes_.clock.now = StartOfDay(day) + std::chrono::hours(8);
        fakes_.userSettings.values[u"Velmora/Printer Settings/Destination"_s] = u"3"_s;
        window_.Form_Load();
        window_.show();
        QApplication::processEvents();
    }
    void SendMail(const QByteArray&) override {}
    bool SaveFile(const QByteArray& bytes, print::ReportFileKind) override {
        size = bytes.size();
        return true;
    }

    template <typename T>
    T& Child(const QString& name) {
        return *window_.findChild<T*>(name);
    }
    void Choose(int tab) { Child<QTabBar>(u"TabStrip1"_s).setCurrentIndex(tab); }

    bool MeasureTasks() {
        Choose(1);
        QApplication::processEvents();
        std::vector<double> steps;
        steps.reserve(200);
        QWidget& page = Child<QWidget>(u"Page1"_s);
        for (int i = 0; i < 200; ++i) {
            steps.push_back(Elapsed([&] {
                QTest::keyClick(&page, Qt::Key_PageDown, Qt::AltModifier);
                QApplication::processEvents();
            }));
        }
        return Print("next task, from the key to the painted frame", bench::Median(steps), "ms", 5);
    }
    bool MeasureTyping() {
        Choose(3);
        Child<QAbstractButton>(u"optStatusType0"_s).click();
        auto& find = Child<QLineEdit>(u"txtFind"_s);
        double longest = 0;
        for (const char* word : {"son", "smith, a", "zz", "e"}) {
            find.clear();
            for (const char letter : std::string(word)) {
                longest = std::max(longest, Elapsed([&] {
                                       QTest::keyClick(&find, letter);
                                       QApplication::processEvents();
                                   }));
            }
        }
        return Print("a letter typed into the status list of 10,000, the longest", longest, "ms", 50);
    }
    bool MeasureReport(int days) {
        const DailyRequest request{.days = {DayChoice::OtherDay, fakes_.clock.Today(), days}};
        ReportRun run;
        NoView view;
        auto& database = window_.Database();
        double bare = 1e9;
        double shown = 1e9;
        for (int round = 0; round < 5; ++round) {
            loop_.real = false;
            ReportContext without{fakes_.program, run, intoFile_, view, database, job_};
            job_.SetOutputTarget(3);
            bare = std::min(bare, bench::Milliseconds([&] { PrintReport(without, request); }));
            loop_.real = true;
            ReportContext with{fakes_.program, window_.State(), intoFile_, window_, database, job_};
            job_.SetOutputTarget(3);
            shown = std::min(shown, bench::Milliseconds([&] { PrintReport(with, request); }));
        }
        std::printf("a report of %d rows, %lld bytes: %.0f ms, without window %.0f ms\n", view.rows / 5,
                    static_cast<long long>(size), shown, bare);
        return Print("its share for progress and events, per cent", 100 * (shown - bare) / shown, "", 10) &
               MeasureCancel(request);
    }
    bool MeasureCancel(const ReportRequest& request) {
        double longest = 0;
        for (const int when : {10, 30, 50}) {
            QElapsedTimer since;
            QTimer::singleShot(when, &window_, [&] {
                since.start();
                Child<QPushButton>(u"cmdClose"_s).click();
            });
            ReportContext context{fakes_.program, window_.State(), intoFile_, window_, window_.Database(), job_};
            job_.SetOutputTarget(3);
            PrintReport(context, request);
            longest = std::max(longest, since.isValid() ? static_cast<double>(since.nsecsElapsed()) / 1e6 : 1e3);
        }
        return Print("\"Cancel Report\" until the desk is idle, the longest", longest, "ms", 100);
    }

    qsizetype size = 0;

private:
    struct NoView : ReportView {
        void SetCloseCaption(const QString&) override {}
        void ShowProgress(const QString&, int) override { ++rows; }
        void HideProgress() override {}
        int rows = 0;
    };
    struct SwitchedLoop : EventLoop {
        void ProcessPendingEvents() override {
            if (real) {
                window.ProcessPendingEvents();
            }
        }
        void SetPointer(Pointer) override {}
        void Beep() override {}
        void Wait(std::chrono::milliseconds) override {}
        WindowEventLoop window;
        bool real = true;
    };

    const velmora::Delivery intoFile_{.target = DeliveryTarget::TextFile};
    fakes::TestProgram fakes_;
    SwitchedLoop loop_;
    print::PrintJob job_{
        {fakes_.program.services(), *this, [] { return print::ReadPrintAttributes(OpenedDatabase()); }}};
    frmScmain window_{DeskParts{fakes_.program, job_, {}, {}}};

public:
    // The fakes' loop hands on to the switched one.
    void Connect() {
        fakes_.eventLoop.onEvents = [this] { loop_.ProcessPendingEvents(); };
    }
};

int Measure(const QString& folder, Date day) {
    QFile settings(folder + u"/Velmora.INI"_s);
    if (!settings.open(QIODevice::WriteOnly)) {
        return 1;
    }
    settings.write("[Files]\r\nDatabase=" + folder.toUtf8() + "\r\n");
    settings.close();
    bool good = MeasureStart(folder);
    Desk desk(folder, day);
    desk.Connect();
    good &= desk.MeasureTasks();
    good &= desk.MeasureTyping();
    constexpr int daysOfTenThousandStarts = 14;
    good &= desk.MeasureReport(daysOfTenThousandStarts);
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    const QString what = QString::fromUtf8(argc > 1 ? argv[1] : "");
    if (what == u"--empty"_s) {
        return StartEmpty(application);
    }
    if (what == u"--desk"_s) {
        return StartDesk(application);
    }
    ApplyLook(application, Shade::Light);
    return bench::OnLargeSite(argc, argv, &Measure);
}
