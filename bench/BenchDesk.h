#pragma once

#include "bench/Measure.h"
#include "platform/ConsoleServices.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "platform/printers/PrintQueues.h"
#include "platform/printers/SystemPrinters.h"
#include "print/PrintStyles.h"
#include "reports/PrintReport.h"

namespace velmora::bench {

using namespace Qt::StringLiterals;

class NoView : public ReportView {
public:
    void SetCloseCaption(const QString&) override {}
    void ShowProgress(const QString&, int) override {}
    void HideProgress() override {}
};

class MemoryDelivery : public print::DocumentSink {
public:
    void SendMail(const QByteArray& text) override { last = text; }
    bool SaveFile(const QByteArray& text, print::ReportFileKind) override {
        last = text;
        return true;
    }
    QByteArray last;
};

// A failure ends the measurement.
class NoErrors : public ErrorReporter {
public:
    Answer Report(const Error& error, const FailurePlace&) override { throw error; }
};

class NoLog : public Log {
public:
    void Write(const QString&) noexcept override {}
};

// A desk whose reports go as text into memory, as velmora-report runs them.
class BenchDesk {
public:
    explicit BenchDesk(Date day) : clock_(StartOfDay(day)) {}
    void Run(engine::Database& database, const ReportRequest& request) {
        print::PrintJob job({program_.services(), delivery_, [&] { return print::ReadPrintAttributes(database); }});
        job.SetOutputTarget(3);
        ReportContext context{program_, run_, intoFile_, view_, database, job};
        PrintReport(context, request);
    }
    // What the last report printed.
    const QByteArray& Text() const { return delivery_.last; }

private:
    FixedClock clock_;
    ConsoleDialogs dialogs_{stderr};
    ConsoleEventLoop eventLoop_;
    printers::SystemPrinters printers_{std::make_unique<printers::NoQueues>(), QLocale(u"en_US"_s)};
    ConsoleProgress progress_;
    ConsoleMail mail_;
    ConsoleWindows windows_;
    NativeUserSettings settings_;
    NoErrors errors_;
    NoLog log_;
    Program program_{Services{dialogs_,
                              clock_,
                              eventLoop_,
                              printers_,
                              progress_,
                              mail_,
                              errors_,
                              windows_,
                              settings_,
                              log_,
                              {},
                              {},
                              LocaleText(QLocale(u"en_US"_s))},
                     u"Service Administration"_s};
    ProgramInstaller installer_{program_};
    NoView view_;
    ReportRun run_;
    Delivery intoFile_{.target = DeliveryTarget::TextFile};
    MemoryDelivery delivery_;
};

} // namespace velmora::bench
