#include "tests/print/PrintFixture.h"

#include "print/ReportFile.h"

#include <QBuffer>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace velmora::print {
namespace {

// No file may grow beyond `bytes` while this lives: a full disk, as the writing program meets it.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        previousHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit small{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, previousHandler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit previous_{};
    void (*previousHandler_)(int) = nullptr;
};

class DialogDeliveryTest : public PrintFixture {
protected:
    DialogDelivery desk_{fakes_.program.services()};
};

TEST_F(DialogDeliveryTest, TheChosenNameGetsTheFiltersExtension) {
    struct Case {
        ReportFileKind kind;
        QString name;
        QString expected;
    };
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"other"_s));
    for (const Case& c : {Case{ReportFileKind::PlainText, u"list"_s, u"list.txt"_s},
                          Case{ReportFileKind::PlainText, u"list.txt"_s, u"list.txt"_s},
                          Case{ReportFileKind::PlainText, u"list.TXT"_s, u"list.TXT.txt"_s},
                          Case{ReportFileKind::PlainText, u"March 7.2026"_s, u"March 7.2026.txt"_s},
                          Case{ReportFileKind::Html, u"list"_s, u"list.htm"_s},
                          Case{ReportFileKind::Html, u"list.htm"_s, u"list.htm"_s},
                          Case{ReportFileKind::Html, u"list.html"_s, u"list.html.htm"_s},
                          Case{ReportFileKind::Html, u"htm"_s, u"htm.htm"_s}}) {
        // The folder that the person went to counts, with or without a separator at its end.
        for (const QString& end : {u""_s, u"/"_s, u"\\"_s}) {
            fakes_.dialogs.saveAnswers = {SaveFileAnswer{Path(u"other"_s) + end, c.name}};
            desk_.SaveFile("text", c.kind);
            const QString made = u"other/"_s + c.expected;
            EXPECT_EQ(Get(made), "text\r\n") << made.toStdString();
            EXPECT_TRUE(QFile::remove(Path(made)));
        }
        const SaveFileRequest& request = fakes_.dialogs.saveRequests.back();
        EXPECT_EQ(request.title, u"Save File As"_s);
        EXPECT_EQ(request.folder, folder_.path());
        EXPECT_EQ(request.filter,
                  c.kind == ReportFileKind::Html ? u"HTML File (*.htm)|*.htm"_s : u"Text file (*.txt)|*.txt"_s);
    }
    EXPECT_EQ(fakes_.eventLoop.pointers.front(), Pointer::Default) << "the arrow while the dialog is open";
    EXPECT_EQ(fakes_.eventLoop.pointers[1], Pointer::Hourglass);
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
    EXPECT_TRUE(FileNames().isEmpty());
}

TEST_F(DialogDeliveryTest, ACancelledDialogWritesNothing) {
    fakes_.dialogs.saveAnswers = {std::nullopt, SaveFileAnswer{folder_.path(), QString()}};
    EXPECT_FALSE(desk_.SaveFile("text", ReportFileKind::PlainText));
    EXPECT_FALSE(desk_.SaveFile("text", ReportFileKind::PlainText));
    EXPECT_TRUE(FileNames().isEmpty());
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
}

TEST_F(DialogDeliveryTest, AnEmptyReportIsAnEmptyFileAndMailIsText) {
    fakes_.dialogs.saveAnswers = {SaveFileAnswer{folder_.path(), u"empty.txt"_s}};
    desk_.SaveFile("", ReportFileKind::PlainText);
    EXPECT_EQ(Get(u"empty.txt"_s), "");
    desk_.SendMail("Gr\xC3\xBC\xC3\x9F"
                   "e\r\n");
    EXPECT_EQ(fakes_.mail.sent, QStringList{u"Grüße\r\n"_s});
}

class ReportFileTest : public PrintFixture {
protected:
    // The description of the failure to write `text`, which must happen.
    QString Failure(const QString& path, const QByteArray& text, ErrorNumber number) {
        try {
            WriteReportFile(path, text, ReportFileKind::PlainText);
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), static_cast<int>(number)) << error.what();
            return error.Description();
        }
        ADD_FAILURE() << "written: " << path.toStdString();
        return {};
    }
};

TEST_F(ReportFileTest, AFullDiskLeavesWhatWasThereAndNothingElse) {
    const QByteArray longText(100000, 'x');
    Put(u"old.txt"_s, "yesterday");
    {
        const FullDisk full(5000);
        for (const QString& name : {u"new.txt"_s, u"old.txt"_s}) {
            const QString path = Path(name);
            const QString failure = Failure(path, longText, ErrorNumber::FileAccess);
            EXPECT_TRUE(failure.contains(path) && failure.contains(u"too large"_s)) << failure.toStdString();
        }
    }
    EXPECT_EQ(FileNames(), QStringList{u"old.txt"_s});
    EXPECT_EQ(Get(u"old.txt"_s), "yesterday");
    WriteReportFile(Path(u"old.txt"_s), longText, ReportFileKind::PlainText);
    EXPECT_EQ(Get(u"old.txt"_s), longText + "\r\n");
}

TEST_F(ReportFileTest, FailuresNameTheFile) {
    const QString nowhere = Path(u"missing/list.txt"_s);
    EXPECT_TRUE(Failure(nowhere, "x", ErrorNumber::PathNotFound).contains(nowhere));
    EXPECT_TRUE(Failure(folder_.path(), "x", ErrorNumber::FileAccess).contains(folder_.path()));
    EXPECT_TRUE(Failure(u"/dev/full"_s, "x", ErrorNumber::DiskFull).contains(u"/dev/full"_s));
    struct stat device {};
    ASSERT_EQ(stat("/dev/full", &device), 0);
    EXPECT_TRUE(S_ISCHR(device.st_mode)) << "a device is written to, not replaced";
}

} // namespace
} // namespace velmora::print
