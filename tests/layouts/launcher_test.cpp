#include "layouts/LayoutChoice.h"
#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class LauncherTest : public LayoutFixture {
protected:
    LauncherTest() {
        request_.start = MakeDate(2026, 3, 10);
        request_.end = MakeDate(2026, 3, 11);
    }
    // Records what is run instead of running it.
    void Launch(const std::function<void()>& onRun = [] {}) {
        RunCrystalReport(fakes_.program, request_, run_, *database_, [&](const QString& path, const QString& formula) {
            runs_ += path + u' ' + formula;
            onRun();
        });
    }
    void RunAsText() {
        RunCrystalReport(fakes_.program, request_, run_, *database_, [&](const QString& path, const QString& formula) {
            RunLayout(Printing(), *database_, {print::Target::TextFile}, path, formula);
        });
    }

    LayoutRequest request_;
    ReportRun run_;
    QStringList runs_;
};

TEST_F(LauncherTest, BuildsEveryFormula) {
    QString found;
    for (const LayoutChoice& choice : LayoutChoices()) {
        found += u"%1 %2 %3\n"_s.arg(choice.index).arg(choice.caption.toString().remove(u'&'), choice.file);
        for (const bool completed : {false, true}) {
            for (const bool conference : {false, true}) {
                request_.layout = choice.index;
                request_.completionFilter = completed;
                request_.excludeConferenceRooms = conference;
                found += u"    "_s + SelectionFormula(request_) + u'\n';
            }
        }
    }
    EXPECT_EQ(found.toStdString(), TestText(u"layouts/selection_formulas.expected"_s).toStdString());
    EXPECT_EQ(FindLayoutChoice(8), nullptr);
}

TEST_F(LauncherTest, AnOptionRelabelsTheCheckBox) {
    for (qint16 index = 1; index <= 12; ++index) {
        const auto view = ShowReportSelection(index, true);
        ASSERT_TRUE(view) << index;
        const bool hidden = index >= 9 && index <= 11;
        EXPECT_EQ(view->showCompleted, !hidden) << index;
        EXPECT_EQ(view->completedCaption, hidden                     ? QString()
                                          : index == 6 || index == 7 ? u"Non-Permanent Only"_s
                                                                     : u"Uncompleted Only"_s);
    }
    // The button that another one releases.
    EXPECT_FALSE(ShowReportSelection(3, false));
}

TEST_F(LauncherTest, HandsOverRefreshesAndRuns) {
    store_->Run(u"UPDATE Reservation SET TextStart = 'old' WHERE ID = 1"_s);
    QString textAtRun;
    request_.layout = 2;
    Launch([&] { textAtRun = store_->Rows(u"SELECT TextStart FROM Reservation WHERE ID = 1"_s)[0]; });
    EXPECT_EQ(runs_, QStringList{folder_.path() + u"\\Setup.rpx "_s + SelectionFormula(request_)});
    EXPECT_EQ(textAtRun, store_->Rows(u"SELECT TextStart FROM Reservation WHERE ID = 1"_s)[0]);
    EXPECT_TRUE(textAtRun.startsWith(u"3/6/2026 "_s)) << textAtRun.toStdString();
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
    EXPECT_EQ(fakes_.eventLoop.pointers.front(), Pointer::Hourglass);
    EXPECT_EQ(fakes_.progress.shown.front().first, u"Preparing Report"_s);
    EXPECT_EQ(fakes_.progress.shown.back().first, QString());
}

TEST_F(LauncherTest, RunsNothingWithoutALayout) {
    for (const qint16 index : std::array<qint16, 3>{0, 8, 10}) {
        request_.layout = index;
        fakes_.dialogs.answers.push_back(Answer::Ok);
        Launch();
        EXPECT_EQ(runs_, QStringList());
        const Message& message = fakes_.dialogs.messages.back();
        EXPECT_EQ(message.text, u"No Report Selected"_s);
        EXPECT_EQ(message.title, u"Service Administration"_s);
        EXPECT_EQ(message.buttons, Buttons::Ok);
    }
}

TEST_F(LauncherTest, LeavesARunningReportAlone) {
    request_.layout = 6;
    run_.ReportRunning = true;
    Launch();
    EXPECT_EQ(runs_.size(), 1);
    EXPECT_TRUE(fakes_.eventLoop.pointers.empty());
    EXPECT_TRUE(fakes_.progress.shown.empty());
    EXPECT_TRUE(run_.ReportRunning);
}

TEST_F(LauncherTest, ReportsFailuresAndCarriesOn) {
    request_.layout = 7;
    QFile::remove(Path(u"Reminder.rpx"_s));
    fakes_.errors.answers = {Answer::Ignore};
    RunAsText();
    ASSERT_EQ(fakes_.errors.reports.size(), 1U);
    const auto& report = fakes_.errors.reports[0];
    EXPECT_EQ(report.error.Number(), static_cast<int>(ErrorNumber::FileNotFound));
    EXPECT_TRUE(report.error.Description().contains(Path(u"Reminder.rpx"_s)));
    EXPECT_EQ(report.place.module, u"Service Administration"_s);
    EXPECT_EQ(report.place.procedure, u"Run Crystal Report"_s);

    // A query that the site broke: the report runs all the same when the person says so.
    store_->Run(u"UPDATE StoredQuery SET Text = 'UPDATE Nowhere SET A = 1' WHERE Name = 'RefreshTextDates'"_s);
    database_ = engine::Database::Open(Path(u"Velmora.MDB"_s));
    fakes_.errors.answers = {Answer::Ignore};
    Launch();
    EXPECT_EQ(runs_.size(), 1);

    // A box without a date.
    request_.layout = 2;
    request_.start.reset();
    fakes_.errors.answers = {Answer::Ignore, Answer::Ignore};
    RunAsText();
    EXPECT_TRUE(fakes_.errors.reports.back().error.Description().contains(u"Date(year, month, day)"_s));
}

} // namespace
} // namespace velmora::layouts
