#pragma once

#include "data/Configuration.h"
#include "layouts/LayoutRunner.h"
#include "layouts/file/LayoutFile.h"
#include "print/pages/PageWriters.h"
#include "tests/data/RawStore.h"
#include "tests/desk/TestSite.h"
#include "tests/support/Fakes.h"

#include <QTemporaryDir>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

class KeepingDelivery : public print::DocumentSink {
public:
    void SendMail(const QByteArray& text) override { delivered = "mail:" + text; }
    bool SaveFile(const QByteArray& bytes, print::ReportFileKind) override {
        delivered = bytes;
        return true;
    }
    QByteArray delivered;
};

class KeepingPrinter : public printers::DocumentPrinter {
public:
    void Print(const QString& deviceName, const printers::QueueJob& job) override {
        devices += deviceName;
        jobs.push_back(job);
    }
    QStringList devices;
    std::vector<printers::QueueJob> jobs;
};

class KeptPreviews : public print::PreviewWindows {
public:
    void Open(print::PreviewReport report) override { opened.push_back(std::move(report)); }
    std::vector<print::PreviewReport> opened;
};

// The test site with the shipped layouts and a few work orders, on Thursday, March 5, 2026, 2:15 PM.
class LayoutFixture : public ::testing::Test {
protected:
    LayoutFixture() {
        Settings().DataDirectory = folder_.path();
        MakeTestSite(Path(u"Velmora.MDB"_s));
        store_ = std::make_unique<test::RawStore>(Path(u"Velmora.MDB"_s));
        store_->Run(
            u"INSERT INTO WorkOrder (ID, Requested, Completed, Asset, Description, RequestedBy) VALUES "
            "(1, '2026-03-05 00:00:00', 0, 12, 'Lamp <b>', 'Anna'), (2, '2026-03-05 23:59:59', 1, 12, 'Done', NULL),"
            "(3, '2026-03-06 00:00:00', 0, 12, 'Next day', ''), (4, '2026-03-05 12:00:00', NULL, 999, 'No room', 'X'),"
            "(5, '2026-03-05 12:00:00', 2, NULL, 'Odd yes', 'Y')"_s);
        for (const QString& name : QDir(ShareFolder() + u"/layouts"_s).entryList(QDir::Files)) {
            QFile::copy(ShareFolder() + u"/layouts/"_s + name, Path(name));
        }
        database_ = engine::Database::Open(Path(u"Velmora.MDB"_s));
        fakes_.clock.now = *MakeDateTime({2026, 3, 5, 14, 15, 0});
    }

    QString Path(const QString& name) const { return folder_.filePath(name); }
    void WriteLayout(const QString& name, const QByteArray& json) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
    }
    const Services& TheServices() const { return fakes_.program.services(); }
    print::PrintServices Printing() { return {TheServices(), delivery_, {}, &pages_}; }

    // Runs a layout file as text.
    QString RunText(const QString& file, const QString& formula) {
        Run(print::Target::TextFile, file, formula);
        return QString::fromUtf8(delivery_.delivered);
    }
    void Run(print::Target target, const QString& file, const QString& formula) {
        RunLayout(Printing(), *database_, {target}, folder_.path() + u'\\' + file, formula);
    }
    // What a failing call says; empty when it does not fail.
    template <typename Call>
    static QString Failure(Call&& call) {
        try {
            call();
        } catch (const Error& error) {
            return error.Description();
        }
        return {};
    }

    QTemporaryDir folder_;
    fakes::TestProgram fakes_;
    std::unique_ptr<test::RawStore> store_;
    std::unique_ptr<engine::Database> database_;
    KeepingDelivery delivery_;
    KeepingPrinter printer_;
    print::PageOutput output_{fakes_.printers, printer_, delivery_};
    KeptPreviews previews_;
    print::PageWriters pages_{TheServices(), output_, previews_, u"Desk"_s};
};

} // namespace velmora::layouts
