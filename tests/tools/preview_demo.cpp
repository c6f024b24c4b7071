// Shows the print windows for trying them by hand: preview_demo [preview|grown|short|long|options|styles] [dark]
//     [leader 0..2]
// A printer of its own tells what it was given on standard output.
#include "base/windows/Look.h"
#include "base/windows/WindowDialogs.h"
#include "base/windows/WindowEventLoop.h"
#include "print/windows/WindowPreviews.h"
#include "print/windows/frmPrintOptions.h"
#include "print/windows/frmPrintStyles.h"
#include "tests/print_windows/PreviewReports.h"
#include "tests/support/Fakes.h"

#include <QApplication>

#include <cstdio>

using namespace velmora;
using namespace velmora::print;

namespace {

class TellingPrinter : public FakePagePrinter {
public:
    bool Print(const pages::Document& document) override {
        std::printf("printed %zu pages\n", document.pages.size());
        std::fflush(stdout);
        return true;
    }
};

// The report of a failure in a message box.
class BoxReporter : public ErrorReporter {
public:
    explicit BoxReporter(Dialogs& dialogs) : dialogs_(dialogs) {}
    Answer Report(const Error& error, const FailurePlace& place) override {
        return dialogs_.ShowMessage({place.task.value_or(QString()) + QStringLiteral(": ") + error.Description(),
                                     QStringLiteral("Error"), Buttons::RetryCancel, Icon::Critical});
    }

private:
    Dialogs& dialogs_;
};

class MemoryStyles : public StyleStore {
public:
    StyleRows Read() override { return rows_; }
    std::optional<StyleRows> Replace(const StyleRows& expected, const StyleRows& rows) override {
        if (rows_ != expected) {
            return rows_;
        }
        rows_ = rows;
        return std::nullopt;
    }

private:
    StyleRows rows_ = {{QStringLiteral("Phone"), GreyBox},
                       {QStringLiteral("Jack"), Bold | Underlined},
                       {QStringLiteral("Space Type"), Italic},
                       {QStringLiteral("Phone"), Bold}};
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = application.arguments();
    const QString what = words.value(1, QStringLiteral("preview"));
    ApplyLook(application, words.contains(QStringLiteral("dark")) ? Shade::Dark : Shade::Light);
    const qint16 leader = words.value(words.size() - 1).toShort();

    fakes::TestProgram fakes;
    WindowDialogs dialogs;
    WindowEventLoop eventLoop;
    BoxReporter reporter(dialogs);
    const Services& known = fakes.program.services();
    const Services services{dialogs,  known.clock,     eventLoop,     known.printers,     known.progress, known.mail,
                            reporter, known.windows,   known.process, known.userSettings, known.log,      {},
                            {},       known.localeText};
    TellingPrinter printer;
    MemoryStyles styles;
    if (what == u"options") {
        return frmPrintOptions(services, styles).exec();
    }
    if (what == u"styles") {
        return frmPrintStyles(services, styles).exec();
    }
    WindowPreviews previews(services, printer);
    if (what == u"grown") {
        previews.Open({GrownPage(40, leader), {}});
    } else if (what == u"short") {
        previews.Open({DailyList(1, 3, leader), {}});
    } else if (what == u"long") {
        previews.Open({DailyList(255, 5, leader),
                       QStringLiteral("Print Preview Not supported for Reports longer than 256 Pages")});
    } else {
        previews.Open({DailyList(5, 5, leader), {}});
    }
    return application.exec();
}
