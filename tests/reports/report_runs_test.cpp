#include "tests/desk/DeskFixture.h"

#include "base/Translate.h"
#include "print/TextWriter.h"

namespace velmora {
namespace {

struct NamedReport {
    const char* name;
    ReportRequest request;
    // What its records are read with.
    const char* source;
    // The last line of the report when it is cancelled before the third record.
    const char* cancelled;
    const char* title;
};

const std::optional<Date> thursday = MakeDate(2026, 3, 5);
const DailyRequest starts{.days = {.choice = DayChoice::CurrentDay}};
const OccupancyRequest occupants{.days = {.choice = DayChoice::CurrentDay}};
const OccupancyRequest directory{OccupancyList::Directory, {.choice = DayChoice::CurrentDay}};
const ExceptionRequest exceptions{.date = thursday};
const ExceptionRequest notCheckedIn{ExceptionType::NotCheckedIn, MakeDate(2026, 3, 10)};
const UsageRequest usage{.date = thursday};

const NamedReport reports[] = {
    {"Print Daily Report", starts, "QReport3", "Cancelled after 2 of 15 reservations\r\n", "Reservation Starts"},
    {"Print Occupant Report", occupants, "QReport2", "Cancelled after 2 of 21 rows\r\n", "Occupant Report"},
    {"Print Directory Report", directory, "RangePerson", "Cancelled after 2 of 9 rows\r\n", "Directory Report"},
    {"Print Exception Report", exceptions, "Select * from Person order by EventType",
     "Cancelled after 2 of 8 persons\r\n", "Exception Report"},
    {"Print Usage Report", usage, "A1", "Cancelled after 2 of 16 rows\r\n", "Location Usage Report"},
};

// A page writer by its measures: every letter is 100 twips wide.
class MeasuringPages : public print::PageWriterFactory {
public:
    explicit MeasuringPages(print::DocumentSink& to) : sink(to) {}
    std::unique_ptr<print::ReportWriter> MakeWriter(print::JobState& state) override {
        class Writer : public print::TextWriter {
        public:
            using TextWriter::TextWriter;
            int TextWidth(print::Text text) const override { return 100 * static_cast<int>(text.toString().size()); }
        };
        return std::make_unique<Writer>(state, 10000, sink);
    }

    print::DocumentSink& sink;
};

class ReportRunsTest : public DeskFixture {
protected:
    ReportRunsTest() : DeskFixture({}, u"/reports/site.sql"_s) {}

    QByteArray Fresh(const ReportRequest& request) {
        delivery_.delivered.clear();
        view_ = {};
        fakes_.eventLoop.eventRounds = 0;
        return Print(request);
    }
};

TEST_F(ReportRunsTest, ACancelEndsTheReportAndTheNextOneIsWhole) {
    for (const NamedReport& report : reports) {
        const QByteArray whole = Fresh(report.request);
        fakes_.eventLoop.onEvents = [this] { run_.CancelRequested = fakes_.eventLoop.eventRounds == 3; };
        const QByteArray part = Fresh(report.request);
        EXPECT_EQ(fakes_.eventLoop.eventRounds, 3) << report.name;
        const QByteArray notice = report.cancelled;
        EXPECT_EQ(delivery_.delivered.size(), 1U) << report.name;
        EXPECT_TRUE(part.endsWith(notice)) << report.name << part.toStdString();
        EXPECT_TRUE(whole.startsWith(part.chopped(notice.size())) && part.size() < whole.size()) << report.name;
        EXPECT_TRUE(part.contains(report.title)) << report.name;
        ExpectIdle();
        fakes_.eventLoop.onEvents = {};
        EXPECT_EQ(Fresh(report.request), whole) << report.name;
    }
}

TEST_F(ReportRunsTest, ASecondStartIsRefusedAndLeavesTheFirstAlone) {
    for (const NamedReport& report : reports) {
        const QByteArray whole = Fresh(report.request);
        for (const NamedReport& second : reports) {
            fakes_.dialogs.answers = {Answer::Ok};
            fakes_.dialogs.messages.clear();
            fakes_.eventLoop.onEvents = [&] {
                if (fakes_.eventLoop.eventRounds == 2) {
                    const Delivery elsewhere{.target = DeliveryTarget::HtmlFile, .continuous = true};
                    job_.SetOutputTarget(4);
                    ReportContext context{fakes_.program, run_, elsewhere, view_, *faulty_, job_};
                    PrintReport(context, second.request);
                }
            };
            EXPECT_EQ(Fresh(report.request), whole) << second.name << " inside " << report.name;
            ASSERT_EQ(fakes_.dialogs.messages.size(), 1U);
            EXPECT_EQ(fakes_.dialogs.messages[0].text, u"Already Printing, wait or cancel exisitng report"_s);
            EXPECT_FALSE(job_.State().SuppressPageBreaks);
            ExpectIdle();
            fakes_.eventLoop.onEvents = {};
        }
    }
}

TEST_F(ReportRunsTest, ARetriedFailureLeavesNoTraceAndAnIgnoredOneNoRows) {
    for (const NamedReport& report : reports) {
        const QByteArray whole = Fresh(report.request);
        faulty_->failures = {{QString::fromLatin1(report.source), 1}};
        fakes_.errors.reports.clear();
        fakes_.errors.answers = {Answer::Retry};
        EXPECT_EQ(Fresh(report.request).toStdString(), whole.toStdString()) << report.name;
        ASSERT_EQ(fakes_.errors.reports.size(), 1U);
        EXPECT_EQ(fakes_.errors.reports[0].place.module, u"Service Administration"_s);
        EXPECT_EQ(fakes_.errors.reports[0].place.procedure, QString::fromLatin1(report.name));
        EXPECT_EQ(fakes_.errors.reports[0].place.task, QString());

        faulty_->failures = {{QString::fromLatin1(report.source), 1}};
        fakes_.errors.answers = {Answer::Ignore};
        const QByteArray empty = Fresh(report.request);
        EXPECT_TRUE(whole.startsWith(empty) && empty.size() < whole.size()) << report.name;
        ExpectIdle();
    }
}

TEST_F(ReportRunsTest, AStoredQueryWithoutTheFieldsIsReportedOnce) {
    // The error of each row would be a box for each row.
    database_->Execute(u"Update StoredQuery Set Text = 'PARAMETERS RStart DateTime, REnd DateTime; Select FirstName, "
                       "EventType, Area From Person' Where Name In ('QReport3', 'QReport2', 'RangePerson', 'A1')");
    for (const NamedReport& report : reports) {
        if (report.request == ReportRequest(exceptions)) {
            continue;
        }
        fakes_.errors.reports.clear();
        fakes_.errors.answers = {Answer::Ignore};
        Fresh(report.request);
        ASSERT_EQ(fakes_.errors.reports.size(), 1U) << report.name;
        EXPECT_TRUE(fakes_.errors.reports[0].error.Description().contains(u"no field"_s))
            << report.name << ": " << fakes_.errors.reports[0].error.what();
        ExpectIdle();
    }
}

TEST_F(ReportRunsTest, AFailureBelowARecordCostsThatRowAlone) {
    const std::pair<ReportRequest, const char*> cases[] = {{occupants, "Select Phone"},
                                                           {exceptions, "Select Asset,"},
                                                           {exceptions, "Select AssetID from [Asset/Event]"},
                                                           {exceptions, "Select Name from Asset"}};
    for (const auto& [request, beginning] : cases) {
        const QByteArray whole = Fresh(request);
        for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
            // Reading ahead fails first, silently.
            faulty_->failures = {{QString::fromLatin1(beginning), 2}};
            fakes_.errors.answers = {answer};
            const QByteArray text = Fresh(request);
            EXPECT_EQ(text == whole, answer == Answer::Retry) << beginning;
            EXPECT_GE(text.count('\n'), whole.count('\n') - 2) << beginning;
            ExpectIdle();
        }
    }
}

TEST_F(ReportRunsTest, WithoutADateNothingIsPrinted) {
    const DaySelection otherDay{.choice = DayChoice::OtherDay};
    for (const ReportRequest& request : {ReportRequest(OccupancyRequest{OccupancyList::Occupants, otherDay}),
                                         ReportRequest(OccupancyRequest{OccupancyList::Directory, otherDay}),
                                         ReportRequest(ExceptionRequest()), ReportRequest(UsageRequest())}) {
        fakes_.errors.reports.clear();
        fakes_.errors.answers = {Answer::Ignore};
        EXPECT_EQ(Fresh(request), QByteArray());
        ASSERT_EQ(fakes_.errors.reports.size(), 1U);
        EXPECT_TRUE(fakes_.errors.reports[0].error.Description().contains(u"holds no date"_s));
        EXPECT_TRUE(delivery_.delivered.empty());
        ExpectIdle();
    }
}

TEST_F(ReportRunsTest, AnEmptyResultHasItsTitleAndTheHeaderRowOrNothing) {
    database_->Execute(u"Delete from Reservation");
    const QByteArray rules = "--------------------------------------------------\r\n"
                             "--------------------------------------------------\r\n";
    const QByteArray printedAt = "Printed at: 3/5/2026 2:15 PM for 3/5/2026\r\n";
    EXPECT_EQ(Fresh(occupants), rules + "Occupant Report\t\r\n" + printedAt + rules +
                                    "\tLocation\tPerson\tPhone\tOrganization\tFrom - To\r\n");
    EXPECT_EQ(Fresh(directory), rules + "Directory Report\t\r\n" + printedAt + rules +
                                    "\tName\tLocation\tPhone\tOrganization\tFrom - To\r\n");
    EXPECT_TRUE(Fresh(exceptions).endsWith("\tLocation\tPerson\tSpace Type\tSpace Type\tFrom - To\r\n"));
    database_->Execute(u"Delete from Person");
    EXPECT_EQ(Fresh(UsageRequest{UsageBreakdown::SecondArea, thursday}), QByteArray());
    EXPECT_EQ(delivery_.delivered.size(), 1U);
    ExpectIdle();
}

TEST_F(ReportRunsTest, ATableShowsHowMuchOfItIsSent) {
    Print(occupants);
    std::vector<int> sent;
    for (const auto& [text, percent] : view_.progress) {
        if (text == u"Sending Report") {
            sent.push_back(percent);
        }
    }
    // The end of reading, the header row, and 11 rows.
    EXPECT_EQ(sent, (std::vector<int>{0, 0, 9, 18, 27, 36, 45, 55, 64, 73, 82, 91, 100}));
}

TEST_F(ReportRunsTest, ColumnsShareThePageInProportionToTheirWidestTexts) {
    MeasuringPages pages(delivery_);
    print::PrintJob job({fakes_.program.services(), delivery_, {}, &pages});
    ReportContext context{fakes_.program, run_, settings_, view_, *faulty_, job};
    job.SetOutputTarget(0);
    PrintReport(context, notCheckedIn);
    // "Location", "Abel, Anna", "Space Type", "Organization", "3/9/2026 9:00 AM Until 3/11/2026 8:00 AM"
    const double total = 8 + 10 + 10 + 12 + 40;
    EXPECT_EQ(job.State().TabStop1(), std::lrint(10000 * 8 / total));
    EXPECT_EQ(job.State().TabStop2(), std::lrint(10000 * 18 / total));
    EXPECT_EQ(job.State().TabStop3(), std::lrint(10000 * 28 / total));
    EXPECT_EQ(job.State().TabStop4(), std::lrint(10000 * 40 / total));
    // The next report has its own columns; where texts have no width they are fifths.
    PrintReport(context, usage);
    EXPECT_EQ(job.State().TabStop1(), 2000);
    Print(exceptions);
    EXPECT_EQ(job_.State().TabStop4(), 4 * job_.State().TabStop1());
}

TEST_F(ReportRunsTest, AContinuousReportLeavesThePrinterAloneButForTheOrientationOfSome) {
    fakes_.printers.names = {u"Lobby"_s};
    settings_.printer = u"Lobby"_s;
    settings_.continuous = true;
    settings_.orientation = Orientation::Landscape;
    for (const NamedReport& report : reports) {
        fakes_.printers.orientation = Orientation::Portrait;
        Fresh(report.request);
        const bool sets = report.request != ReportRequest(starts) && report.request != ReportRequest(directory);
        EXPECT_EQ(fakes_.printers.orientation == Orientation::Landscape, sets) << report.name;
        EXPECT_EQ(fakes_.printers.current + run_.SelectedPrinterName, QString());
        EXPECT_TRUE(job_.State().SuppressPageBreaks);
    }
}

TEST_F(ReportRunsTest, UsageForgetsACancelOfTheTimeBeforeIt) {
    const QByteArray whole = Fresh(usage);
    run_.CancelRequested = true;
    EXPECT_EQ(Fresh(usage), whole);
}

TEST_F(ReportRunsTest, TheSqlTextsOfNamesWithQuotes) {
    Print(ExceptionRequest{ExceptionType::FirstArea, thursday});
    Print(occupants);
    for (const QString& text :
         {u"Select * from Person order by Area"_s,
          u"Select Asset, LastName, FirstName, EventType, Organization, Start, End, Permanent from Reservation Where "
          u"LastName = \"O\"\"Hara\" and FirstName = \"Jo \"\"Jo\"\"\" and End > "
          "#03/05/2026# and Start < #03/06/2026#"_s,
          u"Select AssetID from [Asset/Area] where AssetID = 306 and AreaName = \"O'Neil's \"\"Yard\"\"\""_s,
          u"Select AssetID from [Asset/Area] where AssetID = 257 and AreaName = \"\"\"\""_s,
          u"Select Name from Asset where AssetID = 257"_s,
          u"Select Phone, Extension from Person where LastName = \"O'NEIL\" and FirstName = \"pat\""_s}) {
        EXPECT_TRUE(faulty_->sources.contains(text)) << text.toStdString();
    }
    // Who has no reservation, or no location, is not asked about any further.
    EXPECT_FALSE(
        faulty_->sources.contains(u"Select AssetID from [Asset/Area] where AssetID =  and AreaName = \"North\""_s));
}

TEST_F(ReportRunsTest, FixedTextsAreTranslated) {
    TranslationDictionary& dictionary = fakes_.program.Part<TranslationDictionary>();
    const QStringList english =
        u"Occupant Report|Directory Report|Exception Report|Persons outside of Space Type|Location Usage Report|"
        "Printed at|Printed at:|Location|Person|Name|Phone|Organization|Space Type|From - To|Unreserved|"
        "Permanently Reserved|Non-Permanently Reserved|Permanent|Non-Permanent|Total"_s.split(u'|');
    for (const QString& text : english) {
        dictionary.Add(text, u'<' + text.toUpper() + u'>');
    }
    QByteArray all = Fresh(UsageRequest{UsageBreakdown::Locations, thursday, true});
    for (const NamedReport& report : reports) {
        all += Fresh(report.request);
    }
    for (const QString& text : english) {
        EXPECT_TRUE(all.contains('<' + text.toUpper().toUtf8() + '>')) << text.toStdString();
    }
}

} // namespace
} // namespace velmora
