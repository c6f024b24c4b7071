#include "tests/desk/DeskFixture.h"

namespace velmora {
namespace {

class RunTest : public DeskFixture {
protected:
    QByteArray Run() { return Print(request_); }

    QByteArray WholeReport() {
        const QByteArray text = Run();
        delivery_.delivered.clear();
        view_ = {};
        fakes_.eventLoop.pointers.clear();
        fakes_.eventLoop.eventRounds = 0;
        return text;
    }
    DailyRequest request_{.brief = true};
    // How often a reservation line stands in the text.
    static qsizetype Lines(const QByteArray& text) { return text.count(": From "); }
};

TEST_F(RunTest, ShowsWhatItDoesFromStartToEnd) {
    fakes_.printers.names = {u"Lobby"_s, u"Desk"_s, u"Lobby"_s};
    fakes_.printers.current = u"Desk"_s;
    settings_.printer = u"Lobby"_s;
    settings_.font = u"Liberation Sans"_s;
    settings_.orientation = Orientation::Landscape;
    Run();
    EXPECT_EQ(view_.captions, (QStringList{u"Cancel Report"_s, u"Close"_s}));
    EXPECT_EQ(view_.progress.front(), std::pair(u"Preparing Report"_s, 0));
    EXPECT_EQ(view_.progress[view_.progress.size() - 2], std::pair(u"Sending Report"_s, 0));
    int last = 0;
    for (const auto& [text, percent] : view_.progress) {
        if (text == u"Preparing Report") {
            EXPECT_GE(percent, last);
            last = percent;
        }
    }
    EXPECT_GT(last, 80);
    EXPECT_EQ(fakes_.eventLoop.pointers.front(), Pointer::Hourglass);
    EXPECT_EQ(fakes_.eventLoop.eventRounds, static_cast<int>(view_.progress.size()) - 3) << "once before every row";
    EXPECT_EQ(fakes_.printers.current, u"Lobby"_s);
    EXPECT_EQ(run_.SelectedPrinterName, u"Lobby"_s);
    EXPECT_EQ(fakes_.printers.font.family, u"Liberation Sans"_s);
    EXPECT_EQ(fakes_.printers.orientation, Orientation::Landscape);
    EXPECT_EQ(job_.LookupPrintAttribute(u"Jack"_s), print::Bold);
    EXPECT_FALSE(job_.State().SuppressPageBreaks);
    ExpectIdle();
}

TEST_F(RunTest, ACancelThatComesTooLateDoesNotStopTheNextReport) {
    const QByteArray whole = WholeReport();
    fakes_.errors.answers = {Answer::Ignore};
    faulty_->failures[u"QReport3"_s] = 1;
    // Pressed while the failure is being reported, with no row left to stop at.
    run_.CancelRequested = true;
    Run();
    ExpectIdle();
    EXPECT_EQ(Run(), whole);
}

// Each statement that can fail: a retry gives the report as if nothing had happened, and once only.
TEST_F(RunTest, ARetriedFailureLeavesNoTrace) {
    request_.brief = false;
    request_.includeNotes = true;
    request_.includePhone = true;
    const QByteArray whole = WholeReport();
    for (const char* beginning : {"QReport3", "Select FirstName", "Select Reservation, NoteCategory",
                                  "Select Name, Description", "Select Link"}) {
        // Reading ahead fails once more, silently.
        const int silent = QByteArray(beginning) == "QReport3" ? 0 : 1;
        faulty_->failures = {{QString::fromLatin1(beginning), 2 + silent}};
        fakes_.errors.answers = {Answer::Retry, Answer::Retry};
        fakes_.errors.reports.clear();
        EXPECT_EQ(Run().toStdString(), whole.toStdString()) << beginning;
        EXPECT_EQ(fakes_.errors.reports.size(), 2U) << beginning;
        ExpectIdle();
    }
}

TEST_F(RunTest, AnOtherDayWithoutADateIsReportedAndThenHasNoRows) {
    request_.days.choice = DayChoice::OtherDay;
    fakes_.errors.answers = {Answer::Ignore, Answer::Ignore};
    const QByteArray text = Run();
    EXPECT_TRUE(text.contains("Reservation Starts\t\r\nPrinted at: 3/5/2026 2:15 PM\r\n"));
    EXPECT_EQ(Lines(text), 0);
    ASSERT_EQ(fakes_.errors.reports.size(), 2U);
    EXPECT_TRUE(fakes_.errors.reports[0].error.Description().contains(u"other day"_s));
    EXPECT_EQ(fakes_.errors.reports[1].error.Number(), static_cast<int>(engine::EngineErrorNumber::MissingParameter));
    ExpectIdle();
}

TEST_F(RunTest, AnAbortedReportDeliversNothingAndReturnsTheWindowToIdle) {
    fakes_.errors.answers = {Answer::Abort};
    ReportContext context = Context();
    faulty_->failures[u"QReport3"_s] = 1;
    job_.SetOutputTarget(3);
    EXPECT_THROW(PrintReport(context, request_), StopProgram);
    job_.EndReport();
    EXPECT_TRUE(delivery_.delivered.empty());
    ExpectIdle();
}

} // namespace
} // namespace velmora
