#pragma once

#include "base/Program.h"
#include "base/services/UserSettings.h"
#include "engine/Database.h"
#include "platform/printers/SystemPrinters.h"
#include "print/PrintServices.h"
#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora::runner {

// The printers of one delivery: for pages the system's queues when it names one or prints on paper, else none, so that
// no print server is asked. For a PDF file the pages of the chosen printer, or of none, go into a file.
class ReportPrinters : public printers::SystemPrinters {
public:
    ReportPrinters(const Delivery& delivery, const QLocale& locale);

    bool PrintsToFile() const override { return toPdf_ || SystemPrinters::PrintsToFile(); }
    void Print(const QString& deviceName, const printers::QueueJob& job) override;

    // Makes the printer that the delivery names the current one. Throws Error when there is no such printer, or
    // none to print on.
    void Choose(const Delivery& delivery);
    bool HasPrinted() const { return printed_; }

private:
    bool toPdf_ = false;
    bool printed_ = false;
};

// The user's settings with the leader style of one delivery, which is not stored.
class DeliverySettings : public UserSettings {
public:
    DeliverySettings(UserSettings& stored, std::optional<qint16> leaderStyle)
        : stored_(stored), leaderStyle_(leaderStyle) {}

    std::optional<QString> Read(const QString& application, const QString& section, const QString& key) const override {
        if (leaderStyle_ && key == u"Leader Style") {
            return QString::number(*leaderStyle_);
        }
        return stored_.Read(application, section, key);
    }
    void Write(const QString& application, const QString& section, const QString& key, const QString& value) override {
        stored_.Write(application, section, key, value);
    }

private:
    UserSettings& stored_;
    std::optional<qint16> leaderStyle_;
};

// Runs a report of any kind to the target of the context's delivery: through its job, but for a layout, which makes a
// document of its own with `services` and leaves the job alone. Failures are reported, not thrown.
void RunRequest(ReportContext& context, const print::PrintServices& services, const ReportRequest& request);

// Runs a report that nobody watches, to where `delivery` says; `printers` are those of the program. Failures are
// reported as at a desk. False when nothing was delivered.
bool RunUnattended(const Program& program, engine::Database& database, ReportPrinters& printers,
                   const Delivery& delivery, const ReportRequest& request);

} // namespace velmora::runner
