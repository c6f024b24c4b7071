#include "tests/desk/TestSite.h"
#include "tests/support/Folders.h"
#include "tests/support/MailServer.h"

#include <QProcess>
#include <QTemporaryDir>

#include <sys/resource.h>

namespace velmora {
namespace {

struct Outcome {
    int exitCode = -1;
    QByteArray out;
    QByteArray error;
};

// The real program on the test site, on Thursday, March 5, 2026, 2:15 PM, in en_US.
class ReportProgramTest : public ::testing::Test {
protected:
    ReportProgramTest() { MakeTestSite(Path(u"Velmora.MDB"_s)); }

    QString Path(const QString& name) const { return folder_.filePath(name); }
    void WriteFile(const QString& name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    // Nothing of the person who runs the tests reaches the program.
    void Prepare(QProcess& process) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char16_t* name : {u"HOME", u"XDG_CONFIG_HOME", u"XDG_STATE_HOME", u"VELMORA_SYSTEM_DIR"}) {
            environment.insert(QString::fromUtf16(name), home_.path());
        }
        environment.insert(u"LC_ALL"_s, u"C"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder_.path());
    }
    Outcome Finish(QProcess& process) const {
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    // Runs the program with these words alone.
    Outcome RunWords(const QStringList& words, const std::function<void()>& inChild = {}) const {
        QProcess process;
        Prepare(process);
        if (inChild) {
            process.setChildProcessModifier(inChild);
        }
        process.start(program_, words);
        return Finish(process);
    }
    // Runs the program on the site with a command line of blank-separated words.
    QStringList Words(const char* line) const {
        return QStringList{u"--data"_s,   folder_.path(), u"--now"_s, u"2026-03-05 14:15:00"_s,
                           u"--locale"_s, u"en_US"_s} +
               QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
    }
    Outcome Run(const char* line) const { return RunWords(Words(line)); }
    // Runs a shell line in which $0 is the program.
    Outcome RunShell(const char* line) const {
        QProcess process;
        Prepare(process);
        process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromLatin1(line), program_});
        return Finish(process);
    }
    static QByteArray Expected(const char* name, const char* folder = "reports") {
        return FileBytes(
                   u"%1/%2/expected/%3"_s.arg(TestDataFolder(), QLatin1StringView(folder), QLatin1StringView(name))) +
               "\r\n";
    }

    QString program_ = QStringLiteral(VELMORA_BIN "/velmora-report");
    QTemporaryDir folder_;
    QTemporaryDir home_;
};

TEST_F(ReportProgramTest, PrintsTheBytesThatADeskSaves) {
    struct Case {
        const char* line;
        const char* expected;
    };
    for (const Case& c : {
             Case{"daily --list starts --day next --include-notes --include-phone --brief",
                  "starts-next-brief-everything.txt"},
             Case{"--to html daily --list starts --day next --brief", "starts-next-brief.htm"},
             Case{"daily --list starts --day next --brief --exclude-completed-moves --exclude-conference-rooms",
                  "starts-next-excludes.txt"},
             Case{"daily --brief --list=starts --day=next --exclude-completed-phones --to=text",
                  "starts-next-phones-done.txt"},
             Case{"--startup-argument B1 daily --list starts --day next --brief", "starts-next-prefix.txt"},
             Case{"daily --one-page --list starts --day next --brief", "starts-next-one-page.txt"},
             Case{"daily --one-page --list combined --day next --brief --to html", "combined-next-one-page.htm"},
             Case{"--now 2026-03-06T14:15:00 daily --list starts --day next --brief", "starts-friday.txt"},
             Case{"daily --list ends --day other --date 2026-03-08 --brief", "ends-other.txt"},
             Case{"daily --list starts --day other --date 2026-03-07 --days 3 --brief", "starts-other.txt"},
             Case{"--leader boxes --orientation landscape --printer Lobby daily --list combined --day current --brief",
                  "combined-current.txt"},
         }) {
        // The person codes of the expected texts come from a dictionary, which only the brief lists do without.
        const Outcome printed = Run(c.line);
        EXPECT_EQ(printed.exitCode, 0) << c.line << printed.error.toStdString();
        EXPECT_EQ(printed.out.toStdString(), Expected(c.expected).toStdString()) << c.line;
        EXPECT_EQ(printed.error, "") << c.line;

        const Outcome saved = Run((QByteArray("--output list.out ") + c.line).constData());
        EXPECT_EQ(saved.exitCode, 0) << c.line;
        EXPECT_EQ(saved.out, "") << c.line;
        EXPECT_EQ(FileBytes(Path(u"list.out"_s)), printed.out) << c.line;
    }
}

TEST_F(ReportProgramTest, PrintsTheManagementReportsThatADeskSaves) {
    ASSERT_TRUE(QFile::remove(Path(u"Velmora.MDB"_s)));
    MakeTestSite(Path(u"Velmora.MDB"_s), u"/reports/site.sql"_s);
    struct Case {
        const char* line;
        const char* expected;
    };
    for (const Case& c : {
             Case{"occupant --day current", "occupant.txt"},
             Case{"occupant --day current --include-unreserved --to html", "occupant.htm"},
             Case{"occupant --non-permanent --day=current", "occupant-non-permanent.txt"},
             Case{"--startup-argument B2 occupant --day current --include-unreserved", "occupant-prefix.txt"},
             Case{"occupant --day next --now 2026-03-06T14:15:00", "occupant-friday.txt"},
             Case{"directory --day current --include-unreserved", "directory-unreserved.txt"},
             Case{"directory --day current --non-permanent", "directory-non-permanent.txt"},
             Case{"directory --day other --date 2026-03-10 --days 3", "directory-other.txt"},
             Case{"exception --type space --date 2026-03-05", "exception-space.txt"},
             Case{"exception --type area1 --date 2026-03-05", "exception-area1.txt"},
             Case{"exception --type area2 --date 2026-03-05 --to html", "exception-area2.htm"},
             Case{"exception --type area3 --date 2026-03-05", "exception-area3.txt"},
             Case{"exception --type not-checked-in --date 2026-03-05 --exclude-conference-rooms",
                  "exception-not-checked-in-conference.txt"},
             Case{"usage --by location --date 2026-03-05", "usage-location.txt"},
             Case{"usage --by area1 --date 2026-03-05 --detail", "usage-area1-detail.txt"},
             Case{"usage --by area2 --date 2026-03-05", "usage-area2.txt"},
             Case{"usage --by area3 --detail --date 2026-03-05", "usage-area3-detail.txt"},
         }) {
        const Outcome printed = Run(c.line);
        EXPECT_EQ(printed.exitCode, 0) << c.line << printed.error.toStdString();
        EXPECT_EQ(printed.error, "") << c.line;
        EXPECT_EQ(printed.out.toStdString(), Expected(c.expected, "reports").toStdString()) << c.line;
    }
}

TEST_F(ReportProgramTest, AReportThatPrintsNothingIsEmptyAndTheLocaleWritesTheDates) {
    const Outcome nothing = Run("daily --list starts --day other --date 2026-01-01 --one-page");
    EXPECT_EQ(nothing.exitCode, 0);
    EXPECT_EQ(nothing.out, "");
    const Outcome german = Run("--locale de_DE daily --list starts --day current --brief");
    EXPECT_TRUE(german.out.contains("Printed at: 05.03.2026 14:15 for 05.03.2026\r\n")) << german.out.toStdString();
    WriteFile(u"htmlpre.txt"_s, "<html>");
    WriteFile(u"htmlpost.txt"_s, "</html>");
    const Outcome wrapped = Run("--to html daily --list starts --day other --date 2026-01-01 --one-page");
    EXPECT_EQ(wrapped.out, "<html></html>\r\n");
}

TEST_F(ReportProgramTest, TheConfiguredDirectoryCountsWithoutTheOption) {
    QFile ini(home_.filePath(u"Velmora.INI"_s));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[Files]\r\nDatabase=" + folder_.path().toUtf8() + "\r\n");
    ini.close();
    const Outcome outcome = RunWords({u"--now"_s, u"2026-03-05 14:15:00"_s, u"daily"_s, u"--list"_s, u"combined"_s,
                                      u"--day"_s, u"current"_s, u"--brief"_s});
    EXPECT_EQ(outcome.out, Expected("combined-current.txt"));
}

TEST_F(ReportProgramTest, BadUsageIsTwoWithTheReason) {
    struct Case {
        const char* line;
        const char* reason;
    };
    for (const Case& c : {
             Case{"", "report is missing"},
             Case{"daily", "--list"},
             Case{"daily --list starts", "--day"},
             Case{"daily --day next", "--list"},
             Case{"daily --list middle --day next", "starts or ends or combined, not \"middle\""},
             Case{"daily --list starts --day tomorrow", "not \"tomorrow\""},
             Case{"daily --list starts --day other", "--date"},
             Case{"daily --list starts --day other --date 2026-02-30", "2026-02-30"},
             Case{"daily --list starts --day other --date 3/7/2026", "3/7/2026"},
             Case{"daily --list starts --day other --date 2026-03-07 --days 0", "at least 1"},
             Case{"daily --list starts --day other --date 2026-03-07 --days two", "two"},
             Case{"daily --list starts --day other --date 9999-12-31 --days 2", "9999"},
             Case{"daily --list starts --day next --date 2026-03-07", "--day other"},
             Case{"daily --list starts --day current --days 2", "--day other"},
             Case{"daily --list starts --day next --bref", "--bref"},
             Case{"daily --list starts --day next more", "more"},
             Case{"daily --list starts --day next --brief=yes", "brief"},
             Case{"daily --list starts --day", "--day"},
             Case{"--now 2026-03-05x daily --list starts --day next", "2026-03-05x"},
             Case{"--locale xx_YY daily --list starts --day next", "xx_YY"},
             Case{"--to fax daily --list starts --day next", "fax"},
             Case{"--to mail daily --list starts --day next", "--mail-to"},
             Case{"--to pdf daily --list starts --day next", "--output"},
             Case{"--to printer --output list.pdf daily --list starts --day next", "--to pdf"},
             Case{"--printer= daily --list starts --day next", "--printer"},
             Case{"--mail-to a@b daily --list starts --day next", "without --to mail"},
             Case{"--to mail --mail-to nobody daily --list starts --day next", "nobody"},
             Case{"--to mail --mail-to a@b --output x daily --list starts --day next", "makes none"},
             Case{"--orientation upright daily --list starts --day next", "portrait or landscape"},
             Case{"--data= daily --list starts --day next", "--data"},
             Case{"layouts --report setup --start 2026-03-05 --end 2026-03-06", "layouts"},
             Case{"occupant", "--day"},
             Case{"directory --day other", "--date"},
             Case{"occupant --day next --detail", "--detail"},
             Case{"exception --date 2026-03-05", "--type space"},
             Case{"exception --type area4 --date 2026-03-05", "not \"area4\""},
             Case{"exception --type area1", "--date YYYY-MM-DD is missing"},
             Case{"exception --type area1 --date 5.3.2026", "5.3.2026"},
             Case{"exception --type area1 --date 2026-03-05 --day next", "--day"},
             Case{"usage --by location", "--date YYYY-MM-DD is missing"},
             Case{"usage --date 2026-03-05", "--by location"},
             Case{"usage --by floor --date 2026-03-05", "not \"floor\""},
             Case{"usage --by area1 --date 9999-12-31", "9999"},
             Case{"weekly --day next", "weekly"},
             Case{"--brief daily --list starts --day next", "--brief"},
         }) {
        const Outcome outcome = RunWords(QString::fromLatin1(c.line).split(u' ', Qt::SkipEmptyParts));
        EXPECT_EQ(outcome.exitCode, 2) << c.line;
        EXPECT_EQ(outcome.out, "") << c.line;
        EXPECT_TRUE(outcome.error.contains(c.reason)) << c.line << ": " << outcome.error.toStdString();
    }
    const Outcome help = RunWords({u"--help"_s});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* part : {"Usage: velmora-report", "daily", "occupant", "directory", "exception", "usage", "layout",
                             "--list", "--mail-to", "--show-formula"}) {
        EXPECT_TRUE(help.out.contains(part)) << part;
    }
    EXPECT_EQ(RunWords({u"daily"_s, u"--help"_s}).out, help.out);
}

TEST_F(ReportProgramTest, AHoldOrAMissingDatabaseIsThreeAtOnce) {
    const char* daily = "--output list.txt daily --list starts --day next";
    WriteFile(u"HOLD.TXT"_s, "Backup until 18:00\r\nAsk Ann.");
    Outcome outcome = Run(daily);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error, "Administrative Hold Placed For:\nBackup until 18:00\nAsk Ann. Velmora will shut down.\n");
    ASSERT_TRUE(QFile::remove(Path(u"Velmora.MDB"_s)));
    outcome = Run(daily);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error.toStdString(),
              "Database " + Path(u"Velmora.MDB"_s).toStdString() + " cannot be found. Velmora will shut down.\n");
    EXPECT_EQ(outcome.out, "");
    EXPECT_FALSE(QFile::exists(Path(u"list.txt"_s)));
    EXPECT_FALSE(QFile::exists(Path(u"Velmora.MDB"_s)));
}

TEST_F(ReportProgramTest, FailuresAreOneWithTheErrorReportAndLeaveNoFile) {
    WriteFile(u"old.txt"_s, "yesterday");
    const char* oldDaily = "--output old.txt daily --list starts --day next";
    const auto expectFailure = [this](const Outcome& outcome, const QByteArray& report) {
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.error.contains(report)) << outcome.error.toStdString();
        EXPECT_EQ(FileBytes(Path(u"old.txt"_s)), "yesterday");
        EXPECT_EQ(QDir(folder_.path()).entryList({u"*.txt*"_s}, QDir::Files | QDir::Hidden).size(), 1);
    };
    const QByteArray endJob = "\nModule = Printing\nProcedure = End Job\nTask = Undefined\n";
    expectFailure(Run("--output missing/list.txt daily --list starts --day next"), "missing/list.txt");
    expectFailure(Run("--output /dev/full daily --list starts --day next"), endJob);
    const rlimit small{2000, RLIM_INFINITY};
    expectFailure(RunWords(Words(oldDaily), [small] { setrlimit(RLIMIT_FSIZE, &small); }), endJob);
    const char* pdf = "--to pdf --output old.txt daily --list starts --day next";
    expectFailure(RunWords(Words(pdf), [small] { setrlimit(RLIMIT_FSIZE, &small); }), endJob);
    // No print server answers there.
    qputenv("CUPS_SERVER", QFile::encodeName(Path(u"nowhere"_s)));
    expectFailure(Run("--to printer daily --list starts --day next"), "No printer is installed");
    expectFailure(Run("--to printer --printer Lobby daily --list starts --day next"), "\"Lobby\"");
    expectFailure(Run("--to pdf --printer Lobby --output old.txt daily --list starts --day next"), "\"Lobby\"");
    WriteFile(u"Velmora.MDB"_s, "no database at all");
    expectFailure(Run(oldDaily), "Repair it with: velmora-db repair");
}

TEST_F(ReportProgramTest, PrintsThePagesAsPdf) {
    const auto textOf = [this](const QByteArray& pdf) {
        WriteFile(u"read.pdf"_s, pdf);
        QProcess process;
        process.start(u"pdftotext"_s, {u"-layout"_s, Path(u"read.pdf"_s), u"-"_s});
        EXPECT_TRUE(process.waitForFinished(30000));
        return process.readAllStandardOutput();
    };
    const Outcome printed = Run("--to pdf --output - --leader boxes daily --list starts --day next");
    EXPECT_EQ(printed.exitCode, 0) << printed.error.toStdString();
    EXPECT_EQ(printed.error, "");
    EXPECT_TRUE(printed.out.startsWith("%PDF-"));
    EXPECT_TRUE(printed.out.endsWith("%%EOF\n")) << "no line end of a text file behind it";
    EXPECT_TRUE(printed.out.contains("/MediaBox [0 0 612.000000 792.000000]")) << "Letter, as the locale has it";
    const QByteArray text = textOf(printed.out);
    EXPECT_TRUE(text.contains("Reservation Starts")) << text.toStdString();
    EXPECT_TRUE(text.contains("Organization"));

    const QByteArray table = textOf(Run("--to pdf --output - occupant --day next").out);
    EXPECT_TRUE(table.contains("Occupant Report")) << table.toStdString();
    const QByteArray line = table.mid(table.indexOf("B1 \"Æther\"")).split('\n').front();
    EXPECT_TRUE(line.contains("Baker, Bob") && line.contains("3/6/2026 1:00 PM Until 3/9/2026 5:00 PM"))
        << "no column wraps where all fit: " << table.toStdString();

    const Outcome saved =
        Run("--to pdf --locale de_DE --orientation landscape --output list.pdf daily --list starts --day next");
    EXPECT_EQ(saved.exitCode, 0) << saved.error.toStdString();
    EXPECT_EQ(saved.out, "");
    const QByteArray file = FileBytes(Path(u"list.pdf"_s));
    EXPECT_TRUE(file.contains("/MediaBox [0 0 842.000000 595.000000]")) << "A4 lying on its side";
    EXPECT_TRUE(textOf(file).contains("Reservation Starts"));
}

TEST_F(ReportProgramTest, MailGoesOutUnderTheReportsTitle) {
    const char* line = "--to mail --mail-to ann@example.org --mail-to crew@example.org "
                       "daily --list starts --day other --date 2026-03-06";
    Outcome outcome = Run(line);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.error.contains("[Mail]")) << outcome.error.toStdString();

    const auto configure = [this](const MailServer& server) {
        QFile file(home_.filePath(u"Velmora.INI"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Mail]\nServer=127.0.0.1\nSecurity=none\nSender=desk@example.org\nPort=" +
                   QByteArray::number(server.Port()) + '\n');
    };
    const MailServer server;
    configure(server);
    outcome = Run(line);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.error.toStdString();
    ASSERT_EQ(server.Messages().size(), 1);
    const QByteArray message = server.Messages().front();
    EXPECT_TRUE(message.contains("RCPT TO:<ann@example.org>") && message.contains("RCPT TO:<crew@example.org>"));
    EXPECT_TRUE(message.contains("\r\nSubject: Reservation Starts")) << message.constData();

    const MailServer refusing({u"--refuse"_s, u"crew@example.org"_s});
    configure(refusing);
    outcome = Run(line);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.error.contains("550 5.1.1 nobody of that name lives here")) << outcome.error.toStdString();
}

TEST_F(ReportProgramTest, AFailingQueryIsReportedByItsPlace) {
    sqlite3* store = nullptr;
    ASSERT_EQ(sqlite3_open(Path(u"Velmora.MDB"_s).toUtf8().constData(), &store), SQLITE_OK);
    sqlite3_exec(store, "DELETE FROM StoredQuery", nullptr, nullptr, nullptr);
    sqlite3_close(store);
    struct Case {
        const char* line;
        const char* missing;
        const char* procedure;
    };
    for (const Case& c :
         {Case{"daily --list ends --day next", "QReport4", "Daily"},
          Case{"occupant --day next", "QReport2", "Occupant"}, Case{"directory --day next", "RangePerson", "Directory"},
          Case{"usage --by area2 --date 2026-03-05", "P2", "Usage"}}) {
        const Outcome outcome = Run(c.line);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.error.startsWith("Velmora Database Engine Error: ") && outcome.error.contains(c.missing))
            << outcome.error.toStdString();
        EXPECT_TRUE(outcome.error.endsWith(QByteArray("\nModule = Service Administration\nProcedure = Print ") +
                                           c.procedure + " Report\nTask = \n"))
            << outcome.error.toStdString();
    }
}

TEST_F(ReportProgramTest, AStandardOutputThatTakesNothingIsAFailure) {
    for (const char* line : {"$0 --data . daily --list starts --day other --date 2026-03-06 >/dev/full",
                             "$0 --data . daily --list starts --day other --date 2026-03-06 >&-"}) {
        const Outcome outcome = RunShell(line);
        EXPECT_EQ(outcome.exitCode, 1) << line;
        EXPECT_TRUE(outcome.error.contains("standard output")) << line << outcome.error.toStdString();
    }
}

} // namespace
} // namespace velmora
