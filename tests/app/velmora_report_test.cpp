#include "tests/app/Programs.h"
#include "tests/desk/TestSite.h"
#include "tests/support/MailServer.h"

#include <QTemporaryDir>

#include <sys/resource.h>

namespace velmora {
namespace {

// The real program on the test site, on Thursday, March 5, 2026, 2:15 PM, in en_US.
class ReportProgramTest : public ::testing::Test {
protected:
    ReportProgramTest() {
        MakeTestSite(Path(u"Velmora.MDB"_s));
        for (const QString& name : QDir(ShareFolder() + u"/layouts"_s).entryList(QDir::Files)) {
            QFile::copy(ShareFolder() + u"/layouts/"_s + name, Path(name));
        }
    }

    QString Path(const QString& name) const { return QDir(folder_.path()).filePath(name); }
    // A relative path is taken below the site's folder.
    void WriteFile(const QString& name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void Configure(const QByteArray& settings) const { WriteFile(home_.filePath(u"Velmora.INI"_s), settings); }
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
    QStringList Words(const QByteArray& line) const {
        return QStringList{u"--data"_s,   folder_.path(), u"--now"_s, u"2026-03-05 14:15:00"_s,
                           u"--locale"_s, u"en_US"_s} +
               QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
    }
    Outcome Run(const QByteArray& line) const { return RunWords(Words(line)); }
    // Runs a shell line in which $0 is the program.
    Outcome RunShell(const char* line) const {
        QProcess process;
        Prepare(process);
        process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromLatin1(line), program_});
        return Finish(process);
    }
    static QByteArray Expected(const QByteArray& name) {
        return FileBytes(TestDataFolder() + u"/reports/expected/"_s + QString::fromLatin1(name)) + "\r\n";
    }
    // Runs the command lines of a file of cases and compares what they print, and what they save, with the expected
    // texts.
    void ExpectTexts(const char* file) const {
        for (const ProgramCase& c : Cases(file)) {
            const Outcome printed = Run(c.line);
            EXPECT_EQ(printed.exitCode, 0) << c.line.constData() << printed.error.constData();
            EXPECT_EQ(printed.out.toStdString(), Expected(c.expected).toStdString()) << c.line.constData();
            EXPECT_EQ(printed.error, "") << c.line.constData();
            const Outcome saved = Run("--output list.out " + c.line);
            EXPECT_EQ(saved.exitCode, 0) << c.line.constData();
            EXPECT_EQ(saved.out, "") << c.line.constData();
            EXPECT_EQ(FileBytes(Path(u"list.out"_s)), printed.out) << c.line.constData();
        }
    }

    QString program_ = QStringLiteral(VELMORA_BIN "/velmora-report");
    QTemporaryDir folder_;
    QTemporaryDir home_;
};

TEST_F(ReportProgramTest, PrintsAndSavesTheBytesThatADeskSaves) {
    ExpectTexts("daily.txt");
    ASSERT_TRUE(QFile::remove(Path(u"Velmora.MDB"_s)));
    MakeTestSite(Path(u"Velmora.MDB"_s), u"/reports/site.sql"_s);
    ExpectTexts("management.txt");
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
    Configure("[Files]\r\nDatabase=" + folder_.path().toUtf8() + "\r\n");
    const Outcome outcome = RunWords({u"--now"_s, u"2026-03-05 14:15:00"_s, u"daily"_s, u"--list"_s, u"combined"_s,
                                      u"--day"_s, u"current"_s, u"--brief"_s});
    EXPECT_EQ(outcome.out, Expected("combined-current.txt"));
}

TEST_F(ReportProgramTest, BadUsageIsTwoWithTheReason) {
    for (const ProgramCase& c : Cases("report-usage.txt")) {
        const Outcome outcome = RunWords(QString::fromLatin1(c.line).split(u' ', Qt::SkipEmptyParts));
        EXPECT_EQ(outcome.exitCode, 2) << c.line.constData();
        EXPECT_EQ(outcome.out, "") << c.line.constData();
        EXPECT_TRUE(outcome.error.contains(c.expected)) << c.line.constData() << ": " << outcome.error.constData();
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
        Configure("[Mail]\nServer=127.0.0.1\nSecurity=none\nSender=desk@example.org\nPort=" +
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

TEST_F(ReportProgramTest, ShowsFormulasWithoutADatabase) {
    for (const ProgramCase& c : Cases("formulas.txt")) {
        const Outcome shown = RunWords(QString::fromLatin1("--data /nowhere layout --start 2026-03-10 --end 2026-03-11 "
                                                           "--show-formula --report " +
                                                           c.line)
                                           .split(u' '));
        EXPECT_EQ(shown.exitCode, 0) << shown.error.constData();
        EXPECT_EQ(QByteArray(shown.out).replace('\t', "<TAB>"), c.expected + '\n') << c.line.constData();
        EXPECT_EQ(shown.error, "");
    }
}

TEST_F(ReportProgramTest, LayoutsGoToEveryTarget) {
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
    EXPECT_TRUE(FileBytes(Path(u"out.pdf"_s)).startsWith("%PDF-"));
}

TEST_F(ReportProgramTest, ALayoutThatCannotBeReadIsReportedAndLeavesNoFile) {
    QFile(Path(u"Setup.rpx"_s)).remove();
    const Outcome missing = Run("--output out.txt layout --report setup --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.error.contains("Setup.rpx is missing")) << missing.error.toStdString();
    WriteFile(u"Takedown.rpx"_s, "{\n\"title\": \"T\",\n\"tabels\": []}");
    const Outcome wrong = Run("--output out.txt layout --report takedown --start 2026-03-06 --end 2026-03-07");
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_TRUE(wrong.error.contains("Takedown.rpx is wrong in line 1")) << wrong.error.toStdString();
    EXPECT_FALSE(QFile::exists(Path(u"out.txt"_s)));
}

} // namespace
} // namespace velmora
