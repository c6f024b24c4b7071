#include "data/Configuration.h"
#include "data/Helpers.h"
#include "data/IniEntry.h"
#include "data/NativePath.h"
#include "data/ReservationTime.h"
#include "tests/support/Fakes.h"
#include "tests/support/FolderTest.h"
#include "tests/support/Folders.h"

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

class ConfigurationTest : public FolderTest {
protected:
    ConfigurationTest() { qputenv("VELMORA_SYSTEM_DIR", folder_.path().toUtf8()); }
    fakes::TestProgram test_;
};

TEST_F(ConfigurationTest, TheFileWinsOverTheUserAndTheUserOverTheDefault) {
    EXPECT_EQ(GetConfigValue(u"Velmora"_s, u"Files"_s, u"Help"_s, u"d"_s), u"d"_s);
    test_.userSettings.values[u"Velmora/Files/Help"_s] = u"user"_s;
    EXPECT_EQ(GetConfigValue(u"Velmora"_s, u"Files"_s, u"Help"_s, u"d"_s), u"user"_s);
    Put(u"Velmora.INI"_s, "[Files]\r\nHelp=\r\n");
    EXPECT_EQ(GetConfigValue(u"Velmora"_s, u"Files"_s, u"Help"_s, u"d"_s), QString());
    EXPECT_EQ(HelpDirectory(), QString());
}

TEST_F(ConfigurationTest, PathsAreUsedAsConfigured) {
    Put(u"Velmora.INI"_s, "[Files]\r\nDatabase=\\\\srv\\data\\\r\n");
    EXPECT_EQ(DatabasePath(), u"\\\\srv\\data\\\\Velmora.MDB"_s);
    EXPECT_EQ(NativePath(u"\\srv/data\\Velmora.MDB"_s), u"/srv/data/Velmora.MDB"_s);
    Put(u"Velmora.INI"_s, "[Files]\r\nDatabase=elsewhere\r\n");
    EXPECT_EQ(DataDirectory(), u"\\\\srv\\data\\"_s) << "read once";
    EXPECT_EQ(HelpDirectory(), u"/opt/velmora/bin"_s);
}

TEST_F(ConfigurationTest, WithoutConfigurationTheCurrentDirectoryAnEmptyKeyTheRoot) {
    EXPECT_EQ(DatabasePath(), QDir::currentPath() + u"\\Velmora.MDB"_s);
    Put(u"Velmora.INI"_s, "[Files]\r\nDatabase=\r\n");
    Settings() = ProgramSettings();
    EXPECT_EQ(DatabasePath(), u"\\Velmora.MDB"_s);
}

TEST_F(ConfigurationTest, LogoffMinute) {
    ReadLogoffMinute();
    EXPECT_EQ(Settings().LogoffMinute, 16000);
    for (const auto& [text, minute] : {std::pair("1440", 1440), std::pair("1020.5", 1020), std::pair("0", 0)}) {
        Settings().LogoffMinute = 0;
        Put(u"Velmora.INI"_s, QByteArray("[Actions]\nLogoff=") + text + "\n");
        ReadLogoffMinute();
        EXPECT_EQ(Settings().LogoffMinute, minute) << text;
    }
    for (const char* bad : {"noon", "", "40000", "nan"}) {
        Settings().LogoffMinute = 0;
        Put(u"Velmora.INI"_s, QByteArray("[Actions]\nLogoff=") + bad + "\n");
        EXPECT_THROW(ReadLogoffMinute(), Error) << bad;
    }
}

TEST_F(ConfigurationTest, IniEntriesChooseTheirFile) {
    INIEntry entry;
    entry.Section = u"Intl"_s;
    entry.SetPrivate(u"sLanguage"_s, u"own"_s);
    EXPECT_EQ(entry.FileName, u"velmora-desk.ini"_s);
    entry.Value = u"win"_s;
    EXPECT_NE(entry.WriteWinIni(), 0);
    EXPECT_EQ(entry.FileName, u"win.ini"_s);
    EXPECT_EQ(entry.ReadWinIni(), u"win"_s);
    entry.FileName = folder_.filePath(u"velmora-desk.ini"_s).replace(u'/', u'\\');
    EXPECT_EQ(entry.ReadPrivate(), u"own"_s);
    entry.Key = u"absent"_s;
    entry.Default = QString(300, u'd');
    EXPECT_EQ(entry.ReadPrivate().size(), 255);
    entry.FileName = u"/no/such/folder/x.ini"_s;
    EXPECT_EQ(entry.WritePrivate(), 0);
}

TEST(ReservationTimeTest, PhrasesByTheFirstMatchingRule) {
    const LocaleText us(QLocale::c());
    const DateTime start = *MakeDateTime({2026, 5, 3, 9, 0, 0});
    for (const QStringList& c : TestRows(u"data/periods.txt"_s)) {
        EXPECT_EQ(ReservationTimeText(us, start, *ParseStorageText(c[0]), c[1] == u"permanent"),
                  u"5/3/2026 9:00 AM "_s + c[2]);
    }
    EXPECT_EQ(EndPhrase(us, *MakeDateTime({2026, 5, 5, 0, 0, 0})), u" Through 5/4/2026"_s);
}

TEST_F(ConfigurationTest, PathsKeysAndQuoting) {
    EXPECT_EQ(AddBackslash(u"C:\\"_s), u"C:\\"_s);
    EXPECT_EQ(AddBackslash(QString()), u"\\"_s);
    EXPECT_EQ(AssetKey(205), u"<205>"_s);
    EXPECT_EQ(AssetKey(u"205"_s), u"<205>"_s);
    for (const char* name : {"205A", "", "B1-204", "nan", "Infinity"}) {
        EXPECT_EQ(AssetKey(QString::fromLatin1(name)).toStdString(), name);
    }
    EXPECT_EQ(SqlText(u"O\"Brien's"_s), u"\"O\"\"Brien's\""_s);
    EXPECT_EQ(SqlDate(*MakeDate(2026, 3, 7)), u"#03/07/2026#"_s);

    Put(u"hold.txt"_s, "Gr\xFC\xDF\r\n");
    EXPECT_TRUE(FileExists(folder_.path() + u"\\hold.txt"_s));
    EXPECT_FALSE(FileExists(folder_.path()));
    EXPECT_EQ(ReadFileText(folder_.path() + u"\\hold.txt"_s), u"Grüß\r\n"_s);
    EXPECT_EQ(ReadFileText(folder_.path() + u"\\none.txt"_s), QString());
}

} // namespace
} // namespace velmora
