#include "tests/print/PrintFixture.h"

#include "print/PrintOptions.h"

namespace velmora::print {
namespace {

class JobTest : public PrintFixture {};

TEST_F(JobTest, TheOutputTargetSetsItsFlags) {
    struct Case {
        qint16 target;
        Target expected;
        bool preview;
        bool suppress;
    };
    for (const Case& c : {Case{0, Target::Printer, false, false}, Case{1, Target::Preview, true, false},
                          Case{2, Target::Mail, false, true}, Case{3, Target::TextFile, false, false},
                          Case{4, Target::HtmlFile, false, false}, Case{7, Target::Printer, false, false},
                          Case{-1, Target::Printer, false, false}}) {
        job_.SetOutputTarget(c.target);
        EXPECT_EQ(job_.Choice().OutputTarget, c.expected) << c.target;
        EXPECT_EQ(job_.Choice().PreviewMode, c.preview) << c.target;
        EXPECT_EQ(job_.Choice().SuppressPageBreaks, c.suppress) << c.target;
    }
    job_.SetPreviewMode(true);
    EXPECT_TRUE(job_.Choice().PreviewMode);
    EXPECT_EQ(job_.Choice().OutputTarget, Target::Printer);
}

TEST_F(JobTest, ReportsGoToTheTargetTheyWereBegunFor) {
    job_.SetOutputTarget(4);
    job_.BeginReport();
    job_.PrintRule(1, 1, 1);
    // Another report command is pressed while this one runs.
    job_.SetOutputTarget(2);
    job_.PrintRule(1, 1, 1);
    job_.EndReport();
    job_.EndReport();
    job_.PrintRule(1, 1, 1);
    ASSERT_EQ(delivery_.delivered.size(), 1U);
    EXPECT_EQ(delivery_.delivered[0].first, "html");
    EXPECT_EQ(delivery_.delivered[0].second, "<hr><hr>");
    EXPECT_FALSE(job_.State().SuppressPageBreaks);

    job_.BeginReport(true);
    EXPECT_EQ(job_.State().OutputTarget, Target::Mail);
    EXPECT_TRUE(job_.State().SuppressPageBreaks);
    job_.AbandonReport();
    job_.EndReport();
    EXPECT_EQ(delivery_.delivered.size(), 1U);
}

// Says what was begun; a page is 12001 twips wide.
class RecordingPages : public PageWriterFactory {
public:
    class Writer : public ReportWriter {
    public:
        explicit Writer(QStringList& calls) : calls_(calls) {}
        int DeviceWidth() const override { return 12001; }
        void Begin() override { calls_ += u"begin"_s; }
        void Deliver() override { calls_ += u"deliver"_s; }

    private:
        QStringList& calls_;
    };

    std::unique_ptr<ReportWriter> MakeWriter(JobState& state) override {
        calls += state.PreviewMode ? u"preview"_s : u"printer"_s;
        return std::make_unique<Writer>(calls);
    }
    QStringList calls;
};

TEST_F(JobTest, PagesGetTheStateTheyDrawBy) {
    RecordingPages pages;
    fakes_.userSettings.Write(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s, u"2"_s);
    PrintJob job({fakes_.program.services(), delivery_, [this] { return attributes_; }, &pages});
    job.SetOutputTarget(1);
    job.BeginReport();
    EXPECT_TRUE(job.State().SuppressPageBreaks) << "the preview suppresses page breaks by default";
    EXPECT_EQ(job.State().LeaderStyle, 2);
    EXPECT_EQ(job.State().TabStop1(), 2400);
    EXPECT_EQ(job.State().TabStop4(), 9600) << "multiples of the first one, not fractions of the width";
    job.SetTabStops(0.25, 0.5, 0.75, 0.99999);
    EXPECT_EQ(job.State().TabStop1(), 3000);
    EXPECT_EQ(job.State().TabStop4(), 12001);
    job.EndReport();
    job.SetOutputTarget(0);
    job.BeginReport();
    EXPECT_FALSE(job.State().SuppressPageBreaks);
    EXPECT_EQ(pages.calls.join(u' '), u"preview begin deliver printer begin"_s);
}

TEST_F(JobTest, WithoutPagesThePrinterAndThePreviewAreRefused) {
    for (const qint16 target : {qint16{0}, qint16{1}}) {
        job_.SetOutputTarget(target);
        try {
            job_.BeginReport();
            ADD_FAILURE() << target;
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), static_cast<int>(ErrorNumber::Unavailable));
            EXPECT_TRUE(error.Description().contains(u"text file"_s));
        }
        job_.PrintRule(1, 1, 1);
        job_.EndReport();
    }
    EXPECT_TRUE(delivery_.delivered.empty());
}

TEST_F(JobTest, TheAttributeTableIsReadAtEveryBeginAndMayFail) {
    bool broken = false;
    PrintJob job({fakes_.program.services(), delivery_, [&] {
                      if (broken) {
                          throw ProgramError(ErrorNumber::FileNotFound, u"no table"_s);
                      }
                      return attributes_;
                  }});
    job.SetOutputTarget(3);
    attributes_ = {{u"Storage"_s, 1}};
    job.BeginReport();
    EXPECT_EQ(job.LookupPrintAttribute(u"Storage"_s), 1);
    EXPECT_EQ(job.LookupPrintAttribute(u"storage"_s), 0);
    EXPECT_TRUE(job.State().attributes.HaveAttributeTable());
    broken = true;
    job.BeginReport();
    EXPECT_EQ(job.LookupPrintAttribute(u"Storage"_s), 0);
    EXPECT_FALSE(job.State().attributes.HaveAttributeTable());
    broken = false;
    attributes_.clear();
    job.BeginReport();
    EXPECT_FALSE(job.State().attributes.HaveAttributeTable());
}

TEST_F(JobTest, AStoredLeaderStyleThatIsNoNumberCountsAsNone) {
    EXPECT_EQ(LoadLeaderStyle(fakes_.userSettings), 0);
    SaveLeaderStyle(fakes_.userSettings, 2);
    EXPECT_EQ(fakes_.userSettings.values.at(u"Velmora/Print Options/Leader Style"_s), u"2"_s);
    for (const auto& [stored, style] : std::initializer_list<std::pair<QString, int>>{
             {u"1"_s, 1}, {u" 2 "_s, 2}, {u"boxes"_s, 0}, {u""_s, 0}, {u"70000"_s, 0}, {u"nan"_s, 0}, {u"1x"_s, 0}}) {
        SaveLeaderStyle(fakes_.userSettings, 1);
        fakes_.userSettings.Write(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s, stored);
        EXPECT_EQ(LoadLeaderStyle(fakes_.userSettings), style) << stored.toStdString();
    }
}

TEST_F(JobTest, AFailedEndIsReportedAndRepeatedOrGivenUp) {
    Put(u"htmlpost.txt"_s, "!");
    job_.SetOutputTarget(4);
    job_.BeginReport();
    job_.PrintRule(1, 1, 1);
    delivery_.failures = 2;
    fakes_.errors.answers = {Answer::Retry, Answer::Retry};
    job_.EndReport();
    ASSERT_EQ(delivery_.delivered.size(), 1U);
    EXPECT_EQ(delivery_.delivered[0].second, "<hr>!") << "the footer stands once";
    ASSERT_EQ(fakes_.errors.reports.size(), 2U);
    const FailurePlace& place = fakes_.errors.reports[0].place;
    EXPECT_EQ(place.module, u"Printing"_s);
    EXPECT_EQ(place.procedure, u"End Job"_s);
    EXPECT_EQ(place.task, u"Undefined"_s);

    job_.BeginReport();
    delivery_.failures = 1;
    fakes_.errors.answers = {Answer::Ignore};
    job_.EndReport();
    EXPECT_EQ(delivery_.delivered.size(), 1U);
}

} // namespace
} // namespace velmora::print
