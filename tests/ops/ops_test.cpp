#include "base/Translate.h"
#include "data/Configuration.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"
#include "ops/SharedDatabase.h"
#include "ops/TranslationLoader.h"
#include "tests/support/Fakes.h"
#include "tests/support/FolderTest.h"

#include <sqlite3.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

class OpsTest : public FolderTest {
protected:
    OpsTest() {
        qputenv("VELMORA_SYSTEM_DIR", folder_.path().toUtf8());
        Settings().DataDirectory = folder_.path();
    }
    void MakeSite() const { Site(folder_.path()).Create(); }
    // Overwrites the file's header, which only a repair mends.
    void DamageSite() const {
        QFile file(Path(u"Velmora.MDB"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write(QByteArray(16, 'x'));
    }

    fakes::FakeDialogs dialogs_;
    fakes::FakeLog log_;
    ErrorReport report_{dialogs_, log_};
    fakes::TestProgram test_{&report_};
};

TEST_F(OpsTest, TheErrorReportNamesThePlaceAndIsLogged) {
    const engine::EngineError error(engine::EngineErrorNumber::MissingParameter, u"Too few parameters."_s,
                                    u"Select x"_s);
    dialogs_.answers = {Answer::Retry, Answer::Ignore};
    EXPECT_EQ(ReportError(error, {u"Internal Data"_s, u"Fill Asset Collection"_s, u"undefined"_s}), Answer::Retry);
    EXPECT_EQ(LastErrorAnswer(), Answer::Retry);
    EXPECT_EQ(dialogs_.messages[0].text, u"Too few parameters.\r\nModule = Internal Data\r\nProcedure = Fill Asset "
                                         u"Collection\r\nTask = undefined"_s);
    EXPECT_EQ(dialogs_.messages[0].title, u"Velmora Database Engine Error"_s);
    EXPECT_EQ(dialogs_.messages[0].buttons, Buttons::AbortRetryIgnore);
    EXPECT_EQ(dialogs_.messages[0].icon, Icon::Exclamation);
    EXPECT_TRUE(log_.entries[0].contains(u"3061"_s) && log_.entries[0].contains(u"Select x"_s));
    // The progress window is cleared behind every report.
    EXPECT_EQ(test_.progress.shown.back().first, QString());

    ReportError(error);
    EXPECT_EQ(dialogs_.messages[1].text, u"Too few parameters."_s);
    EXPECT_EQ(LastErrorAnswer(), Answer::Ignore);
}

TEST_F(OpsTest, AbortUnloadsWindowsClosesTheDatabaseAndEnds) {
    MakeSite();
    OpenSharedDatabase();
    // A report that is aborted still holds its rows while the program ends around it.
    const auto rows = OpenedDatabase().OpenRecordset(u"StoredQuery");
    dialogs_.answers = {Answer::Abort};
    EXPECT_THROW(ReportError(ProgramError(ErrorNumber::DiskFull, u"Disk full"_s)), StopProgram);
    EXPECT_EQ(test_.windows.calls, QStringList{u"all"_s});
    EXPECT_THROW(OpenedDatabase(), Error);
}

TEST_F(OpsTest, HoldNoticeTellsTheMissingDatabaseFirst) {
    Put(u"HOLD.TXT"_s, "Moving servers\r\nuntil 5");
    EXPECT_EQ(HoldNotice(), u"Database "_s + Path(u"Velmora.MDB"_s) + u" cannot be found. Velmora will shut down."_s);
    Put(u"Velmora.MDB"_s, "");
    EXPECT_EQ(HoldNotice(), u"Administrative Hold Placed For:\r\nMoving servers\r\nuntil 5 Velmora will shut down."_s);
    Put(u"HOLD.TXT"_s, "");
    EXPECT_EQ(HoldNotice(), u"Administrative Hold Placed For:\r\n Velmora will shut down."_s);
    QFile::remove(Path(u"HOLD.TXT"_s));
    EXPECT_FALSE(HoldNotice());
}

TEST_F(OpsTest, AMissingDatabaseGoesToTheErrorReport) {
    dialogs_.answers = {Answer::Retry, Answer::Ignore};
    try {
        OpenSharedDatabase();
        FAIL() << "opened a database that is not there";
    } catch (const StopProgram&) {
        EXPECT_EQ(dialogs_.messages.size(), 2U) << "Retry opens again";
        EXPECT_TRUE(dialogs_.messages[0].text.endsWith(u"\r\nModule = 3024"_s));
        EXPECT_EQ(test_.windows.calls, QStringList{u"startup"_s});
    }
    EXPECT_FALSE(QFile::exists(Path(u"Velmora.MDB"_s))) << "a missing database is never made silently";
}

TEST_F(OpsTest, ADamagedDatabaseIsRepairedOnRequest) {
    MakeSite();
    DamageSite();
    dialogs_.answers = {Answer::Ok};
    test_.dialogs.answers = {Answer::Yes};
    OpenSharedDatabase();
    EXPECT_EQ(test_.dialogs.messages[0].text, u"Database is corrupt. Attempt to Repair?"_s);
    EXPECT_EQ(test_.dialogs.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(OpenedDatabase().OpenRecordset(u"Asset")->RecordCount(), 0);
    EXPECT_EQ(test_.eventLoop.pointers, (std::vector{Pointer::Hourglass, Pointer::Default}));
    EXPECT_FALSE(test_.log.entries.isEmpty()) << "what was saved and lost is told in the log";
}

TEST_F(OpsTest, ADamagedDatabaseIsLeftAloneWithoutConsentOrInUse) {
    MakeSite();
    const auto other = Site(folder_.path()).Open();
    DamageSite();
    const QByteArray damaged = Get(u"Velmora.MDB"_s);

    test_.dialogs.answers = {Answer::No};
    EXPECT_THROW(OpenSharedDatabase(), StopProgram);
    test_.dialogs.answers = {Answer::Yes, Answer::Ok};
    EXPECT_THROW(OpenSharedDatabase(), StopProgram);
    EXPECT_EQ(test_.dialogs.messages.back().text,
              Path(u"Velmora.MDB"_s) + u"Appears to be open by other users, cannot repair"_s);
    EXPECT_EQ(Get(u"Velmora.MDB"_s), damaged);
    EXPECT_EQ(test_.windows.calls, (QStringList{u"startup"_s, u"startup"_s}));
}

TEST_F(OpsTest, ANewerDatabaseIsRefusedWithoutAnOfferToRepairIt) {
    MakeSite();
    Site(folder_.path()).Open()->Execute(u"UPDATE SiteProperty SET [Value] = \"9\" WHERE Name = \"SchemaVersion\"");
    dialogs_.answers = {Answer::Ignore};
    EXPECT_THROW(OpenSharedDatabase(), StopProgram);
    EXPECT_TRUE(dialogs_.messages.at(0).text.contains(u"version 9")) << dialogs_.messages.at(0).text.toStdString();
    EXPECT_TRUE(test_.dialogs.messages.empty());
}

TEST_F(OpsTest, AFileThatCannotBeRepairedEndsTheProgram) {
    Put(u"Velmora.MDB"_s, "Dear colleagues, this is no database at all.");
    test_.dialogs.answers = {Answer::Yes, Answer::Ok};
    EXPECT_THROW(OpenSharedDatabase(), StopProgram);
    EXPECT_EQ(test_.dialogs.messages.back().text, Path(u"Velmora.MDB"_s) + u" could not be repaired."_s);
    EXPECT_TRUE(Get(u"Velmora.MDB"_s).startsWith("Dear colleagues"));
}

class TranslationTest : public OpsTest {
protected:
    void MakeStore(const char* sql) const {
        sqlite3* store = nullptr;
        ASSERT_EQ(sqlite3_open(Path(u"language.mdb"_s).toUtf8().constData(), &store), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(store, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(store);
    }
    static constexpr const char* german =
        "CREATE TABLE Language (Language TEXT COLLATE NOCASE, \"English Text\" TEXT, \"Translated Text\" TEXT);"
        "INSERT INTO Language VALUES ('DEU','Close','Schließen'),('DEU','PersonCode2','Kostenstelle'),"
        "('DEU','Empty',NULL),('fr','Close','Fermer'),('en','Close','Shut');";
};

TEST_F(TranslationTest, TheConfiguredLanguageComesBeforeTheLocale) {
    MakeStore(german);
    LoadTranslations();
    EXPECT_EQ(Translate(u"Close"_s), u"Shut"_s);
    Put(u"win.ini"_s, "[Intl]\r\nsLanguage=deu\r\n");
    LoadTranslations();
    EXPECT_EQ(Translate(u"close"_s), u"Schließen"_s);
    EXPECT_EQ(Translate(u"PersonCode2"_s), u"Kostenstelle"_s);
    EXPECT_EQ(Translate(u"Empty"_s), u"Empty"_s);
    Put(u"win.ini"_s, "[Intl]\r\nsLanguage=it\"alian\r\n");
    LoadTranslations();
    EXPECT_EQ(Translate(u"Close"_s), u"Close"_s);
    EXPECT_TRUE(test_.log.entries.isEmpty());
}

TEST_F(TranslationTest, AStoreThatCannotBeReadLeavesEnglishAndANote) {
    LoadTranslations();
    EXPECT_TRUE(test_.log.entries.isEmpty()) << "no store is no failure";
    Put(u"language.mdb"_s, "not a store");
    LoadTranslations();
    EXPECT_EQ(test_.log.entries.size(), 1);
    EXPECT_EQ(Translate(u"Close"_s), u"Close"_s);
}

class CheckHoldTest : public OpsTest {
protected:
    CheckHoldTest() {
        MakeSite();
        OpenSharedDatabase();
    }
    QString Status() const { return test_.progress.shown.empty() ? u"none"_s : test_.progress.shown.back().first; }
    bool IsOpen() { return test_.program.Part<SharedDatabase>().database != nullptr; }
    void ExpectToEnd(std::chrono::milliseconds least, std::chrono::milliseconds most) {
        EXPECT_THROW(CheckHold(), StopProgram);
        EXPECT_GE(test_.eventLoop.waited, least);
        EXPECT_LE(test_.eventLoop.waited, most);
        EXPECT_EQ(test_.windows.calls, QStringList{u"all"_s});
        EXPECT_FALSE(IsOpen());
    }
};

using namespace std::chrono_literals;

TEST_F(CheckHoldTest, AHoldIsShownWithItsWholeTextAndEndsTheProgram) {
    CheckHold();
    EXPECT_EQ(Status(), u"none"_s);
    EXPECT_TRUE(IsOpen());
    Put(u"HOLD.TXT"_s, "Maintenance until noon\r\nAnn, x4012");
    ExpectToEnd(10s, 11s);
    EXPECT_EQ(Status(), u"Administrative Hold Placed For:\r\nMaintenance until noon\r\nAnn, x4012 Velmora will shut "
                        "down."_s);
}

TEST_F(CheckHoldTest, AVanishedDatabaseComesBeforeAHold) {
    Put(u"HOLD.TXT"_s, {});
    ASSERT_TRUE(QFile::remove(Path(u"Velmora.MDB"_s)));
    ExpectToEnd(10s, 11s);
    EXPECT_EQ(Status(), u"Database "_s + Path(u"Velmora.MDB"_s) + u" cannot be found. Velmora will shut down."_s);
}

TEST_F(CheckHoldTest, TheLogoffMinuteIsAnnouncedAndKept) {
    Put(u"Velmora.INI"_s, "[Actions]\r\nLogoff=1020\r\n");
    const auto at = [&](int hour, int minute) { test_.clock.now = *MakeDateTime({2026, 3, 5, hour, minute, 59}); };
    at(16, 55);
    CheckHold();
    EXPECT_EQ(test_.eventLoop.beeps, 0);
    for (int left = 4; left > 0; --left) {
        at(16, 60 - left);
        CheckHold();
        EXPECT_EQ(Status(), u"Velmora is scheduled to shut down in %1 minutes"_s.arg(left));
    }
    EXPECT_EQ(test_.eventLoop.beeps, 4);
    at(17, 1);
    CheckHold();
    EXPECT_TRUE(IsOpen());
    at(17, 0);
    ExpectToEnd(0s, 0s);
    EXPECT_EQ(Status(), u"Velmora is scheduled to shut down in 0 minutes"_s);
}

TEST_F(CheckHoldTest, MidnightIsReadAnewAndAMinuteThatIsNoneIsToldOnce) {
    Put(u"Velmora.INI"_s, "[Actions]\r\nLogoff=0\r\n");
    CheckHold();
    EXPECT_EQ(Settings().LogoffMinute, 0);
    Put(u"Velmora.INI"_s, "[Actions]\r\nLogoff=soon\r\n");
    dialogs_.answers = {Answer::Ignore};
    CheckHold();
    CheckHold();
    ASSERT_EQ(dialogs_.messages.size(), 1U);
    EXPECT_TRUE(dialogs_.messages[0].text.contains(u"\"soon\" is no minute of the day"_s));
    EXPECT_TRUE(IsOpen());
}

} // namespace
} // namespace velmora
