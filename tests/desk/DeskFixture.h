#pragma once

#include "base/Steps.h"
#include "data/Configuration.h"
#include "print/PrintStyles.h"
#include "reports/Gather.h"
#include "reports/PrintReport.h"
#include "tests/desk/TestSite.h"
#include "tests/support/Fakes.h"

#include <QTemporaryDir>

namespace velmora {

using namespace Qt::StringLiterals;

// Hands everything on to a database, but fails where a test planned it.
class FaultyDatabase : public engine::Database {
public:
    explicit FaultyDatabase(engine::Database& database) : database_(database) {}

    // The texts of opened sources are checked against these beginnings; each fails as often as planned.
    std::map<QString, int> failures;
    QStringList sources;

    std::unique_ptr<engine::Recordset> OpenRecordset(QStringView source, engine::RecordsetKind kind) override {
        Check(source);
        return database_.OpenRecordset(source, kind);
    }
    std::unique_ptr<engine::QueryDef> OpenQueryDef(QStringView name) override {
        Check(name);
        return database_.OpenQueryDef(name);
    }
    qint64 Execute(QStringView sql) override { return database_.Execute(sql); }
    std::unique_ptr<engine::QueryDef> CreateQueryDef(const QString& sql) override {
        return database_.CreateQueryDef(sql);
    }
    QStringList QueryNames() override { return database_.QueryNames(); }
    void AddTable(const engine::TableDefinition& table) override { database_.AddTable(table); }
    void Idle(engine::IdleOption option) override { database_.Idle(option); }
    const engine::Catalog& Schema() override { return database_.Schema(); }
    const QString& Location() const override { return database_.Location(); }
    void BeginTransaction() override { database_.BeginTransaction(); }
    void CommitTransaction() override { database_.CommitTransaction(); }
    void RollbackTransaction() noexcept override { database_.RollbackTransaction(); }
    void BeginReading() override { database_.BeginReading(); }
    void EndReading() noexcept override { database_.EndReading(); }

private:
    void Check(QStringView source) {
        sources += source.toString();
        for (auto& [beginning, count] : failures) {
            if (source.startsWith(beginning) && count > 0) {
                --count;
                throw engine::EngineError(engine::EngineErrorNumber::DiskError, u"the share is away"_s);
            }
        }
    }

    engine::Database& database_;
};

// Records what the window would show.
class FakeReportView : public ReportView {
public:
    void SetCloseCaption(const QString& caption) override { captions += caption; }
    void ShowProgress(const QString& text, int percent) override { progress.emplace_back(text, percent); }
    void HideProgress() override { progress.emplace_back(QString(), -1); }

    QStringList captions;
    std::vector<std::pair<QString, int>> progress;
};

class KeepingDelivery : public print::DocumentSink {
public:
    void SendMail(const QByteArray& text) override { delivered.push_back(text); }
    bool SaveFile(const QByteArray& text, print::ReportFileKind) override {
        delivered.push_back(text);
        return true;
    }
    std::vector<QByteArray> delivered;
};

// The desk on the test site: Thursday, March 5, 2026, 2:15 PM, reports into text files.
class DeskFixture : public ::testing::Test {
protected:
    explicit DeskFixture(const QString& startupArgument = {}, const QString& rows = u"/desk/site.sql"_s)
        : fakes_(nullptr, startupArgument) {
        Settings().DataDirectory = folder_.path();
        const QString path = folder_.filePath(u"Velmora.MDB"_s);
        MakeTestSite(path, rows);
        database_ = engine::Database::Open(path);
        faulty_ = std::make_unique<FaultyDatabase>(*database_);
        fakes_.clock.now = *MakeDateTime({2026, 3, 5, 14, 15, 0});
    }

    ReportContext Context() { return {fakes_.program, run_, settings_, view_, *faulty_, job_}; }

    // Runs a report as its button does and returns what was delivered.
    QByteArray Print(const ReportRequest& request) {
        job_.SetOutputTarget(static_cast<qint16>(settings_.target));
        ReportContext context = Context();
        PrintReport(context, request);
        return delivery_.delivered.empty() ? QByteArray() : delivery_.delivered.back();
    }
    // What the rows of a report are gathered with, without a report around them.
    Gathering Gather(std::function<bool(double)> beforeRecord = [](double) { return true; }) {
        return {*faulty_, [this](const auto& reading) { return steps_.Step({}, reading); }, std::move(beforeRecord)};
    }
    void ExpectIdle() {
        EXPECT_FALSE(run_.ReportRunning);
        EXPECT_FALSE(run_.CancelRequested);
        EXPECT_EQ(view_.captions.back(), u"Close"_s);
        EXPECT_EQ(view_.progress.back().second, -1);
        EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
    }

    QTemporaryDir folder_;
    fakes::TestProgram fakes_;
    std::unique_ptr<engine::Database> database_;
    std::unique_ptr<FaultyDatabase> faulty_;
    ReportRun run_;
    Delivery settings_{.target = DeliveryTarget::TextFile};
    FakeReportView view_;
    KeepingDelivery delivery_;
    Steps steps_{fakes_.errors, u"Module"_s, u"Procedure"_s};
    print::PrintJob job_{
        {fakes_.program.services(), delivery_, [this] { return print::ReadPrintAttributes(*database_); }}};
};

} // namespace velmora
