#include "platform/printers/CupsQueues.h"
#include "platform/printers/PrintQueues.h"
#include "platform/printers/SystemPrinters.h"
#include "tests/print/PagesFixture.h"
#include "tests/support/PrivatePrintServer.h"

#include <QRegularExpression>

namespace velmora::print {
namespace {

using printers::CupsQueues;
using printers::PdfFileDevice;
using printers::SystemPrinters;

// Queues whose jobs are kept.
class FakeQueues : public printers::PrintQueues {
public:
    struct Record {
        QStringList names{u"Crew"_s, u"Office"_s};
        QString defaultName;
        std::vector<std::pair<QString, printers::QueueJob>> jobs;
    };
    explicit FakeQueues(Record& record) : record_(record) {}
    QStringList Names() const override { return record_.names; }
    QString DefaultName() const override { return record_.defaultName; }
    std::optional<PrinterPage> Paper(const QString& queue) const override {
        if (!record_.names.contains(queue)) {
            printers::NoQueues().Paper(queue);
        }
        return queue == u"Crew" ? std::nullopt : std::optional(PrinterPage{10000, 14000, 100, 200, 9500, 13000, 4.8});
    }
    void Submit(const QString& queue, const printers::QueueJob& job) override { record_.jobs.emplace_back(queue, job); }

private:
    Record& record_;
};

class PrintersTest : public PrintFixture {
protected:
    void Print(const std::function<void(PrintJob&)>& layout, std::optional<bool> suppress = {}) {
        job_.SetOutputTarget(0);
        job_.BeginReport(suppress);
        layout(job_);
        job_.EndReport();
    }

    FakeQueues::Record record_;
    SystemPrinters printers_{std::make_unique<FakeQueues>(record_), QLocale(QLocale::English, QLocale::UnitedStates)};
    PageOutput output_{printers_, printers_, delivery_};
    PageWriters pages_{printers_, output_, u"Desk"_s};
    PrintJob job_{{fakes_.program.services(), delivery_, [this] { return attributes_; }, &pages_}};
};

TEST_F(PrintersTest, TheCurrentPrinterItsPaperAndFont) {
    EXPECT_EQ(printers_.DeviceNames(), (QStringList{u"Crew"_s, u"Office"_s, PdfFileDevice()}));
    EXPECT_EQ(printers_.CurrentDevice(), PdfFileDevice()) << "no queue is the default";
    EXPECT_EQ(printers_.CurrentPage(), (PrinterPage{12240, 15840, 720, 720, 10800, 14400, 2.4}));
    printers_.SelectDevice(u"Crew"_s);
    EXPECT_FALSE(printers_.PrintsToFile());
    EXPECT_EQ(printers_.CurrentPage().paperWidth, 12240) << "a queue that does not tell its paper";
    printers_.SelectDevice(u"Office"_s);
    EXPECT_EQ(printers_.CurrentPage(), (PrinterPage{10000, 14000, 100, 200, 9500, 13000, 4.8}));
    printers_.SetOrientation(Orientation::Landscape);
    EXPECT_EQ(printers_.CurrentPage(), (PrinterPage{14000, 10000, 800, 400, 12400, 9200, 4.8}))
        << "the greater of two opposite margins, as the sheet may be turned either way";
    EXPECT_EQ(printers_.PageWidth(), 14000);
    try {
        printers_.SelectDevice(u"crew"_s);
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_TRUE(error.Description().contains(u"\"crew\""));
    }
    EXPECT_EQ(printers_.CurrentDevice(), u"Office"_s);
    printers_.SetFontName(u"No Such Family"_s);
    EXPECT_EQ(FontOf(printers_.CurrentFont()).family, u"Liberation Sans"_s);
    record_.defaultName = u"Crew"_s;
    EXPECT_EQ(SystemPrinters(std::make_unique<FakeQueues>(record_), QLocale::c()).CurrentDevice(), u"Crew"_s);
    EXPECT_EQ(SystemPrinters(std::make_unique<printers::NoQueues>(), QLocale(QLocale::German)).PageWidth(), 11906);
}

TEST_F(PrintersTest, AReportGoesToThePrinterItWasBegunFor) {
    printers_.SelectDevice(u"Crew"_s);
    Print([this](PrintJob& job) {
        job.PrintReportTitle("Ends", "", "");
        printers_.SelectDevice(PdfFileDevice());
    });
    ASSERT_EQ(record_.jobs.size(), 1U);
    EXPECT_EQ(record_.jobs[0].first, u"Crew"_s);
    EXPECT_EQ(record_.jobs[0].second.title, u"Desk: Ends"_s);
    EXPECT_EQ(record_.jobs[0].second.paperWidth, 12240);
    Print([](PrintJob& job) { job.PrintParagraph("x"); });
    EXPECT_EQ(record_.jobs.size(), 1U);
    ASSERT_EQ(delivery_.delivered.size(), 1U);
    EXPECT_EQ(delivery_.delivered[0].first, "pdf");

    job_.SetPreviewMode(true);
    EXPECT_THROW(job_.BeginReport(), Error);
}

// The page sizes of a PDF file, in points.
QStringList PageSizes(const QByteArray& pdf) {
    QStringList sizes;
    const QRegularExpression box(u"/MediaBox \\[0 0 ([0-9.]+ [0-9.]+)\\s*\\]"_s);
    for (auto match = box.globalMatch(QString::fromLatin1(pdf)); match.hasNext();) {
        sizes += match.next().captured(1);
    }
    return sizes;
}

TEST_F(PrintersTest, AStripIsCutOnPaperAndStaysWholeInAFile) {
    const auto strip = [](PrintJob& job) {
        for (int i = 0; i < 200; ++i) {
            job.PrintTableRow({QString::number(1000 + i)}, RowStyle::Indented);
        }
    };
    Print(strip, true);
    EXPECT_EQ(PageSizes(delivery_.delivered.back().second).size(), 1);
    printers_.SelectDevice(u"Crew"_s);
    Print(strip, true);
    const QByteArray pdf = record_.jobs.back().second.pdf;
    EXPECT_EQ(PageSizes(pdf), QStringList(4, u"612.000000 792.000000"_s)) << PageSizes(pdf).join(u'|').toStdString();
    Put(u"strip.pdf"_s, pdf);
    const QString text = fakes::PrivatePrintServer::TextOfPdf(Path(u"strip.pdf"_s)).simplified();
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(text.count(QString::number(1000 + i)), 1) << i << ": every row stands on one sheet, once";
    }
}

// One server for one process: libraries look for it once.
TEST(PrintServer, QueuesPrintWhatTheyAreSentAndFailuresAreTold) {
    fakes::PrivatePrintServer server;
    if (!server.Runs()) {
        GTEST_SKIP() << "no private print server: " << server.Reason().toStdString();
    }
    ASSERT_TRUE(server.AddQueue(u"Crew"_s) && server.AddQueue(u"Gone"_s) && server.AddQueue(u"Shut"_s));
    ASSERT_TRUE(server.MakeDefault(u"Crew"_s) && server.Reject(u"Shut"_s));

    fakes::TestProgram fakes;
    FakeDelivery delivery;
    SystemPrinters printers(std::make_unique<CupsQueues>(), QLocale(QLocale::German));
    PageOutput output(printers, printers, delivery);
    PageWriters pages(printers, output, u"Desk"_s);
    PrintJob job({fakes.program.services(), delivery, [] { return std::vector<PrintAttribute>(); }, &pages});
    const auto print = [&] {
        job.BeginReport();
        job.PrintReportTitle("Starts", "Größe", "Printed at: 3/7/2026");
        for (int i = 0; i < 60; ++i) {
            job.PrintTwoLabelValues("Organization", u"Facilities "_s + QString::number(i), "Space Type", "Conference");
        }
        job.EndReport();
    };
    EXPECT_EQ(printers.DeviceNames(), (QStringList{u"Crew"_s, u"Gone"_s, u"Shut"_s, PdfFileDevice()}));
    EXPECT_EQ(printers.CurrentDevice(), u"Crew"_s);
    EXPECT_EQ(printers.PageWidth(), 11906) << "a queue without a driver tells no paper";
    printers.SetOrientation(Orientation::Landscape);
    print();
    const QString text = server.PrintedText(u"Crew"_s);
    EXPECT_TRUE(text.contains(u"Größe")) << text.toStdString();
    EXPECT_EQ(text.count(u"Facilities "), 60);
    EXPECT_EQ(text.count(u'\f'), 2);
    EXPECT_TRUE(text.contains(QRegularExpression(u"Facilities 0 +Space Type +Conference"_s)));

    // Through the print system's own filters, onto paper that the queue names: the sheet is turned, nothing is scaled.
    const QString driver = u"/usr/share/ppd/cupsfilters/Generic-PDF_Printer-PDF.ppd"_s;
    if (QFile::exists(driver)) {
        ASSERT_TRUE(server.AddQueue(u"Filtered"_s, driver));
        printers.SelectDevice(u"Filtered"_s);
        EXPECT_EQ(printers.CurrentPage(), (PrinterPage{15840, 12240, 720, 360, 14400, 11520, 2.4}));
        print();
        EXPECT_EQ(server.PrintedText(u"Filtered"_s).count(u"Facilities "), 60);
        ASSERT_TRUE(server.RemoveQueue(u"Filtered"_s));
    }

    const auto failure = [&](const QString& device) {
        fakes.errors.reports.clear();
        fakes.errors.answers = {Answer::Ignore};
        print();
        EXPECT_EQ(fakes.errors.reports.size(), 1U) << device.toStdString();
        const QString told = fakes.errors.reports.empty() ? QString() : fakes.errors.reports[0].error.Description();
        EXPECT_TRUE(told.contains(u'"' + device + u'"')) << told.toStdString();
    };
    EXPECT_THROW(printers.SelectDevice(u"crew2"_s), Error);
    printers.SelectDevice(u"Shut"_s);
    failure(u"Shut"_s);
    printers.SelectDevice(u"Gone"_s);
    ASSERT_TRUE(server.RemoveQueue(u"Gone"_s));
    failure(u"Gone"_s);
    EXPECT_FALSE(QFile::exists(server.Output(u"Gone"_s)));
    printers.SelectDevice(u"Crew"_s);
    server.Stop();
    failure(u"Crew"_s);
    EXPECT_EQ(printers.DeviceNames(), QStringList(PdfFileDevice()));
    EXPECT_TRUE(delivery.delivered.empty()) << "nothing is printed elsewhere";
}

} // namespace
} // namespace velmora::print
