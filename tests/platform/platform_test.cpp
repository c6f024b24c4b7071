#include "platform/LogFile.h"
#include "platform/NativeUserSettings.h"
#include "platform/ProfileFile.h"
#include "platform/SystemClock.h"

#include "tests/support/FolderTest.h"

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

class PlatformTest : public FolderTest {
protected:
    QString Made(const QString& name, const QByteArray& bytes) const {
        Put(name, bytes);
        return Path(name);
    }
};

TEST_F(PlatformTest, ProfileReadsAsAdministratorsWrite) {
    const ProfileFile file(Made(u"a.ini"_s, "\xEF\xBB\xBF; Key=comment\r\n[Files]\r\n Database = \\\\srv\\a;b,c \r\n"
                                            "Quoted=\" padded \"\r\nOne=\"\r\nEmpty=\r\nEmpty=second\r\nM=M\xC3\xBC\r\n"
                                            "[Other]\r\nDatabase=no\r\n[files]\r\nLate=x\r\nnot an entry\r\n"));
    EXPECT_EQ(file.Read(u"files"_s, u"DATABASE"_s), u"\\\\srv\\a;b,c"_s);
    EXPECT_EQ(file.Read(u"Files"_s, u"Quoted"_s), u" padded "_s);
    EXPECT_EQ(file.Read(u"Files"_s, u"One"_s), u"\""_s);
    EXPECT_EQ(file.Read(u"Files"_s, u"Empty"_s), QString());
    EXPECT_TRUE(file.Read(u"Files"_s, u"Empty"_s).has_value());
    EXPECT_EQ(file.Read(u"Files"_s, u"M"_s), u"Mü"_s);
    EXPECT_FALSE(file.Read(u"Files"_s, u"Late"_s)) << "the first section of a name counts";
    EXPECT_FALSE(file.Read(u"Files"_s, u"; Key"_s));
    EXPECT_FALSE(ProfileFile(Path(u"none.ini"_s)).Read(u"Files"_s, u"Database"_s));
    EXPECT_EQ(ProfileFile(Made(u"latin.ini"_s, "[S]\nK=M\xFC\n")).Read(u"S"_s, u"K"_s), u"Mü"_s);
}

TEST_F(PlatformTest, ProfileWritingKeepsEverythingElse) {
    const QByteArray before = "; hand-written\r\n[A]\r\nk=1 ; why\r\n\r\n[B]\r\nx=\\\\srv\\p;q\r\n";
    const QString path = Made(u"a.ini"_s, before);
    const ProfileFile file(path);
    EXPECT_TRUE(file.Write(u"a"_s, u"K"_s, u"2"_s));
    EXPECT_EQ(Get(path), "; hand-written\r\n[A]\r\nK=2\r\n\r\n[B]\r\nx=\\\\srv\\p;q\r\n");
    EXPECT_TRUE(file.Write(u"A"_s, u"n"_s, u"3"_s));
    EXPECT_TRUE(file.Write(u"C"_s, u"m"_s, u"ü"_s));
    EXPECT_EQ(Get(path), "; hand-written\r\n[A]\r\nK=2\r\nn=3\r\n\r\n[B]\r\nx=\\\\srv\\p;q\r\n[C]\r\nm=\xC3\xBC\r\n");
    EXPECT_FALSE(file.Write(u"A"_s, u"n"_s, u"3\n[Evil]"_s));
    EXPECT_EQ(file.Read(u"A"_s, u"n"_s), u"3"_s);

    const ProfileFile open(Made(u"b.ini"_s, "[A]\nk=1"));
    EXPECT_TRUE(open.Write(u"A"_s, u"l"_s, u"2"_s));
    EXPECT_EQ(open.Read(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(open.Read(u"A"_s, u"l"_s), u"2"_s);
    const ProfileFile made(Path(u"new.ini"_s));
    EXPECT_TRUE(made.Write(u"A"_s, u"k"_s, u"1"_s));
    EXPECT_EQ(Get(Path(u"new.ini"_s)), "[A]\r\nk=1\r\n");
    EXPECT_FALSE(ProfileFile(Path(u"no/such/folder.ini"_s)).Write(u"A"_s, u"k"_s, u"1"_s));
}

TEST_F(PlatformTest, LogIsDatedPerLineAndBounded) {
    const FixedClock clock(*MakeDateTime({2026, 3, 7, 14, 15, 9}));
    const QString path = Path(u"deep/er/velmora.log"_s);
    LogFile log(path, clock, 200);
    log.Write(u"first\r\nsecond"_s);
    EXPECT_EQ(Get(path), "2026-03-07 14:15:09 first\n2026-03-07 14:15:09 second\n");
    for (int i = 0; i < 50; ++i) {
        log.Write(u"entry number "_s + QString::number(i));
    }
    log.Write(QString(5000, u'x'));
    EXPECT_LE(Get(path).size(), 2 * 200);
    EXPECT_LE(Get(path + u".1"_s).size(), 2 * 200);
    EXPECT_TRUE(Get(path).contains("xxx"));
    LogFile(u"/proc/no/such"_s, clock).Write(u"silent"_s);
}

TEST_F(PlatformTest, UserSettingsTellAbsentFromEmpty) {
    qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8());
    NativeUserSettings settings;
    EXPECT_FALSE(settings.Read(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s));
    settings.Write(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s, QString());
    EXPECT_EQ(NativeUserSettings().Read(u"Velmora"_s, u"Print Options"_s, u"Leader Style"_s), QString());
    settings.Write(u"Velmora"_s, u"Files"_s, u"Database"_s, u"\\\\srv\\a;b, c"_s);
    EXPECT_EQ(NativeUserSettings().Read(u"Velmora"_s, u"Files"_s, u"Database"_s), u"\\\\srv\\a;b, c"_s);
    // Mail passwords are among them.
    const auto others = QFile::permissions(Path(u"Velmora/Velmora.conf"_s)) & (QFile::ReadGroup | QFile::ReadOther);
    EXPECT_EQ(others, QFile::Permissions());
}

} // namespace
} // namespace velmora
