#include "tests/desk/TestSite.h"

#include <QProcess>
#include <QTemporaryDir>

namespace velmora {
namespace {

struct Outcome {
    int exitCode = -1;
    QByteArray out;
    QByteArray error;
};

// velmora-report layout on the test site, on Thursday, March 5, 2026, 2:15 PM, in en_US.
class LayoutProgramTest : public ::testing::Test {
protected:
    LayoutProgramTest() {
        MakeTestSite(Path(u"Velmora.MDB"_s));
        for (const QString& name : QDir(ShareFolder() + u"/layouts"_s).entryList(QDir::Files)) {
            QFile::copy(ShareFolder() + u"/layouts/"_s + name, Path(name));
        }
    }

    QString Path(const QString& name) const { return folder_.filePath(name); }
    Outcome RunWords(const QStringList& words) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char16_t* name : {u"HOME", u"XDG_CONFIG_HOME", u"XDG_STATE_HOME", u"VELMORA_SYSTEM_DIR"}) {
            environment.insert(QString::fromUtf16(name), home_.path());
        }
        environment.insert(u"LC_ALL"_s, u"C"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home_.path());
        process.start(QStringLiteral(VELMORA_BIN "/velmora-report"), words);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    Outcome Run(const char* line) const {
        return RunWords(
            QStringList{u"--data"_s, folder_.path(), u"--now"_s, u"2026-03-05 14:15:00"_s, u"--locale"_s, u"en_US"_s} +
            QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts));
    }

    QTemporaryDir folder_;
    QTemporaryDir home_;
};

TEST_F(LayoutProgramTest, ShowsFormulasWithoutADatabase) {
    const auto show = [&](const char* line) {
        const Outcome shown =
            RunWords(QStringList{u"--data"_s, u"/nowhere"_s, u"layout"_s} + QString::fromLatin1(line).split(u' ') +
                     QStringList{u"--start"_s, u"2026-03-10"_s, u"--end"_s, u"2026-03-11"_s, u"--show-formula"_s});
        EXPECT_EQ(shown.exitCode, 0) << shown.error.toStdString();
        EXPECT_EQ(shown.error, "");
        return shown.out.toStdString();
    };
    EXPECT_EQ(show("--report setup --exclude-conference-rooms --completion-filter"),
              "Setup.rpx\t{Reservation.Start} >= Date(2026,03,10) And {Reservation.Start} < Date(2026,03,11) and "
              "{Reservation.SLockStart} = No and {Asset.AssetID} >= 256\n");
    EXPECT_EQ(show("--report work-requests --exclude-conference-rooms"),
              "WorkOrd.rpx\t{WorkOrder.Requested} >= Date(2026,03,10) And {WorkOrder.Requested} < Date(2026,03,11)\n");
    EXPECT_EQ(show("--report directory --exclude-conference-rooms --completion-filter"),
              "Directry.rpx\t{Reservation.End} > Date(2026,03,10) And {Reservation.Start} < Date(2026,03,11)\n");
    const std::pair<const char*, const char*> files[] = {{"takedown", "Takedown.rpx\t"},
                                                         {"phone-connect", "Connect.rpx\t"},
                                                         {"phone-disconnect", "Disconn.rpx\t"},
                                                         {"occupant", "Occupant.rpt\t"},
                                                         {"reminder", "Reminder.rpx\t"}};
    for (const auto& [report, begins] : files) {
        EXPECT_EQ(show((QByteArray("--report ") + report).constData()).rfind(begins, 0), 0U) << report;
    }
}

TEST_F(LayoutProgramTest, DeliversToEveryTarget) {
    const Outcome text = Run("layout --report setup --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(text.exitCode, 0) << text.error.toStdString();
    EXPECT_TRUE(text.out.startsWith("Setup\r\nReservations that start\r\n")) << text.out.toStdString();
    EXPECT_TRUE(text.out.contains("\tBoardroom")) << text.out.toStdString();
    EXPECT_TRUE(text.out.endsWith("\r\n") && !text.out.endsWith("\r\n\r\n"));

    const Outcome html = Run("--to html layout --report occupant --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(html.exitCode, 0);
    EXPECT_TRUE(html.out.startsWith("<h1>Occupants</h1>")) << html.out.toStdString();

    const Outcome pdf = Run("--to pdf --output - layout --report reminder --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(pdf.exitCode, 0) << pdf.error.toStdString();
    EXPECT_TRUE(pdf.out.startsWith("%PDF-"));
    EXPECT_EQ(
        Run("--to pdf --output out.pdf --orientation landscape layout --report directory --start 2026-03-06 --end "
            "2026-03-07")
            .out,
        "");
    EXPECT_TRUE(FileBytes(home_.filePath(u"out.pdf"_s)).startsWith("%PDF-"));
}

TEST_F(LayoutProgramTest, TellsAFailureAndLeavesNoFile) {
    QFile(Path(u"Setup.rpx"_s)).remove();
    const Outcome missing = Run("--output out.txt layout --report setup --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.error.contains("Setup.rpx is missing")) << missing.error.toStdString();
    QFile broken(Path(u"Takedown.rpx"_s));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\n\"title\": \"T\",\n\"tabels\": []}");
    broken.close();
    const Outcome wrong = Run("--output out.txt layout --report takedown --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_TRUE(wrong.error.contains("Takedown.rpx is wrong in line 1")) << wrong.error.toStdString();
    EXPECT_FALSE(QFile::exists(home_.filePath(u"out.txt"_s)));
}

TEST_F(LayoutProgramTest, ExplainsBadUsage) {
    const std::pair<const char*, const char*> cases[] = {
        {"layout --start 2026-03-06 --end 2026-03-07", "--report work-requests or setup"},
        {"layout --report stages --start 2026-03-06 --end 2026-03-07", "not \"stages\""},
        {"layout --report setup --start 2026-03-06", "--end YYYY-MM-DD is missing"},
        {"layout --report setup --start 3/6/2026 --end 2026-03-07", "--start takes a day"},
        {"layout --report setup --start 2026-03-06 --end 2026-03-06", "comes after --start"},
        {"layout --report setup --brief", "--brief"},
        {"--to pdf layout --report setup --start 2026-03-06 --end 2026-03-07", "--to pdf needs --output"},
    };
    for (const auto& [line, says] : cases) {
        const Outcome bad = Run(line);
        EXPECT_EQ(bad.exitCode, 2) << line;
        EXPECT_EQ(bad.out, "") << line;
        EXPECT_TRUE(bad.error.contains(says)) << bad.error.toStdString();
    }
}

} // namespace
} // namespace velmora
