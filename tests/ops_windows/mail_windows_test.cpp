#include "data/Configuration.h"
#include "ops/MailConfiguration.h"
#include "ops/windows/frmCompose.h"
#include "ops/windows/frmMailText.h"
#include "ops/windows/frmProgress.h"
#include "tests/support/Fakes.h"
#include "tests/support/MailServer.h"
#include "tests/support/Windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

void Click(QWidget& window, const QString& name) {
    QTest::mouseClick(&Child<QPushButton>(window, name), Qt::LeftButton);
}

class MailWindowsTest : public testing::Test {
protected:
    MailWindowsTest() {
        qputenv("VELMORA_SYSTEM_DIR", folder_.path().toUtf8());
        Settings().DataDirectory = folder_.path();
        // The windows are painted while the message is on its way.
        test_.eventLoop.onEvents = [] { QApplication::processEvents(); };
    }
    void Configure(const MailServer& server, const QByteArray& more = {}) const {
        QFile file(folder_.filePath(u"Velmora.INI"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Mail]\r\nServer=127.0.0.1\r\nPort=" + QByteArray::number(server.Port()) +
                   "\r\nSecurity=none\r\nSender=Service Desk <desk@example.org>\r\n" + more);
    }
    void SendText(const QString& text) { WindowMail().SendText(text); }

    QTemporaryDir folder_;
    fakes::TestProgram test_;
};

TEST_F(MailWindowsTest, AReportIsAddressedAndSentInTheDialog) {
    const MailServer server;
    Configure(server);
    Then<frmCompose>([](frmCompose& window) {
        EXPECT_EQ(Child<QPlainTextEdit>(window, u"txtText"_s).toPlainText(), u"the list"_s);
        EXPECT_TRUE(Child<QLineEdit>(window, u"txtSubject"_s).text().isEmpty());
        // Sending without an address says so and stays.
        Click(window, u"cmdSend"_s);
        EXPECT_TRUE(Child<QLabel>(window, u"lblState"_s).isVisible());
        QTest::keyClicks(&Child<QLineEdit>(window, u"txtTo"_s), u"ann@example.org; Crew <crew@example.org>"_s);
        QTest::keyClicks(&Child<QLineEdit>(window, u"txtSubject"_s), u"Today"_s);
        Click(window, u"cmdSend"_s);
    });
    SendText(u"the list"_s);
    ASSERT_EQ(server.Messages().size(), 1);
    const QByteArray message = server.Messages().front();
    EXPECT_TRUE(message.contains("RCPT TO:<crew@example.org>")) << message.constData();
    EXPECT_TRUE(message.contains("Subject: Today\r\n"));
    EXPECT_TRUE(message.endsWith("\r\nthe list\r\n"));
}

TEST_F(MailWindowsTest, ARefusalIsToldAndTheTextStays) {
    const MailServer server({u"--refuse"_s, u"ann@example.org"_s});
    Configure(server);
    test_.dialogs.saveAnswers = {SaveFileAnswer{folder_.path(), u"kept"_s}};
    Then<frmCompose>([](frmCompose& window) {
        Child<QLineEdit>(window, u"txtTo"_s).setText(u"ann@example.org"_s);
        Child<QLineEdit>(window, u"txtTo"_s).setFocus();
        Child<QPushButton>(window, u"cmdSend"_s).click();
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(Child<QLabel>(window, u"lblState"_s).text().contains(u"550 5.1.1 nobody of that name"_s));
        EXPECT_TRUE(Child<QPushButton>(window, u"cmdSend"_s).isEnabled());
        EXPECT_EQ(Child<QPlainTextEdit>(window, u"txtText"_s).toPlainText(), u"the list"_s);
        // Space does not cancel the message.
        EXPECT_EQ(window.focusWidget(), &Child<QLineEdit>(window, u"txtTo"_s));
        Click(window, u"cmdSave"_s);
        Click(window, u"cmdCancel"_s);
    });
    SendText(u"the list"_s);
    QFile kept(folder_.filePath(u"kept.txt"_s));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().trimmed(), "the list");
}

TEST_F(MailWindowsTest, WithoutAServerTheDialogSaysWhatToSet) {
    Then<frmCompose>([](frmCompose& window) {
        EXPECT_FALSE(Child<QPushButton>(window, u"cmdSend"_s).isEnabled());
        EXPECT_TRUE(Child<QPushButton>(window, u"cmdSave"_s).isEnabled());
        EXPECT_TRUE(Child<QLabel>(window, u"lblState"_s).text().contains(u"Velmora.INI"_s));
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    SendText(u"the list"_s);
}

TEST_F(MailWindowsTest, ThePasswordIsAskedForUntilItIsRightAndKeptOnRequest) {
    const MailServer server({u"--login"_s, u"desk:s3cret"_s});
    Configure(server, "User=desk\r\n");
    test_.userSettings.values[u"Velmora/Mail/Password for desk at 127.0.0.1"_s] = u"old"_s;
    Then<frmCompose>([](frmCompose& window) {
        Child<QLineEdit>(window, u"txtTo"_s).setText(u"ann@example.org"_s);
        Then<frmPassword>([](frmPassword& password) {
            QTest::keyClicks(&Child<QLineEdit>(password, u"txtPassword"_s), u"s3cret"_s);
            Child<QCheckBox>(password, u"chkRemember"_s).click();
            password.accept();
        });
        Click(window, u"cmdSend"_s);
    });
    SendText(u"the list"_s);
    EXPECT_EQ(server.Messages().size(), 1);
    EXPECT_EQ(test_.userSettings.values[u"Velmora/Mail/Password for desk at 127.0.0.1"_s], u"s3cret"_s);
}

// Writes down what is asked of it.
class RecordingSession : public MailSession {
public:
    class Message : public MailMessage {
    public:
        explicit Message(RecordingSession& session) : session_(session) {}
        void Compose() override { session_.calls += u"compose"_s; }
        void SetNoteText(const QString& text) override { session_.calls += u"text "_s + text; }
        void SetSubject(const QString& subject) override { session_.calls += u"subject "_s + subject; }
        void AddRecipient(const MailRecipient& each) override {
            session_.calls += u"recipient "_s + each.address + u' ' + each.name;
        }
        void Send(MailDialog dialog) override {
            session_.calls += dialog == MailDialog::Show ? u"dialog"_s : u"send"_s;
            if (dialog == MailDialog::Skip && session_.fails) {
                throw ProgramError(ErrorNumber::Unavailable, u"421 busy"_s);
            }
        }

    private:
        RecordingSession& session_;
    };
    void SignOn() override {
        calls += u"sign on"_s;
        if (signOnFails) {
            throw ProgramError(ErrorNumber::Unavailable, u"no"_s);
        }
    }
    std::unique_ptr<MailMessage> NewMessage() override { return std::make_unique<Message>(*this); }
    QStringList calls;
    bool fails = false;
    bool signOnFails = false;
};

TEST_F(MailWindowsTest, AddressedMailIsSentDirectlyAndAFailureEndsInTheDialog) {
    RecordingSession session;
    const auto send = [&](bool direct, const std::vector<MailRecipient>& recipients) {
        frmMailText window(test_.program.services(), session);
        window.MessageText = u"t"_s;
        window.Subject = u"s"_s;
        window.Recipients = recipients;
        window.SendWithoutDialog = direct;
        window.ShowModal();
        EXPECT_TRUE(window.MessageText.isEmpty() && window.Subject.isEmpty() && window.Recipients.empty());
        return std::exchange(session.calls, {});
    };
    const std::vector<MailRecipient> ann = {{u"a@x.org"_s, u"Ann"_s}};
    const QStringList head{u"sign on"_s, u"compose"_s, u"text t"_s, u"subject s"_s};
    const QString recipient = u"recipient a@x.org Ann"_s;
    EXPECT_EQ(send(true, ann), head + QStringList({recipient, u"send"_s}));
    EXPECT_EQ(send(false, ann), head + QStringList({recipient, u"dialog"_s}));
    EXPECT_EQ(send(true, {}), head + QStringList{u"dialog"_s});

    session.fails = true;
    test_.errors.answers = {Answer::Retry, Answer::Ignore};
    EXPECT_EQ(send(true, ann), head + QStringList({recipient, u"send"_s, u"send"_s, u"dialog"_s}));
    ASSERT_EQ(test_.errors.reports.size(), 2U);
    EXPECT_EQ(test_.errors.reports[0].place.module, u"Mail Text"_s);
    EXPECT_EQ(test_.errors.reports[0].place.procedure, u"Sending"_s);
    EXPECT_EQ(test_.errors.reports[0].place.task, u"Sending"_s);

    session.signOnFails = true;
    test_.errors.answers = {Answer::Ignore};
    send(false, {});
    EXPECT_EQ(test_.errors.reports.back().place.procedure, u"Initializitg"_s);
    EXPECT_EQ(test_.errors.reports.back().place.task, u"Signing On"_s);
}

TEST_F(MailWindowsTest, SettingsThatCannotBeUsedAreNamed) {
    const MailServer server;
    for (const auto& [line, named] : {std::pair{"Port=99999\r\n", "99999"}, std::pair{"Security=ssl\r\n", "ssl"},
                                      std::pair{"Sender=nobody\r\n", "nobody"}}) {
        QFile file(folder_.filePath(u"Velmora.INI"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Mail]\r\n" + QByteArray(line) + "Server=mail.example.org\r\nSender=a@b.org\r\n");
        file.close();
        try {
            ReadMailConfiguration();
            ADD_FAILURE() << "took " << line;
        } catch (const Error& error) {
            EXPECT_TRUE(error.Description().contains(QLatin1String(named))) << error.what();
        }
    }
}

TEST(ProgressWindowTest, ShowsMovesAndHides) {
    frmProgress window;
    auto& label = Child<QLabel>(window, u"Label1"_s);
    auto& bar = Child<QProgressBar>(window, u"pnlProgress"_s);
    window.ShowStatus(u"Loading Persons"_s, std::nullopt);
    EXPECT_TRUE(window.isVisible() && !bar.isVisible());
    window.ShowStatus(u"Loading Locations"_s, 55.4);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.value(), 55);
    EXPECT_EQ(label.text(), u"Loading Locations"_s);
    EXPECT_NEAR(window.geometry().center().x(), window.screen()->availableGeometry().center().x(), 40);

    QTest::mouseClick(&window, Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    // The same text only moves the bar; another one brings the window back.
    window.ShowStatus(u"Loading Locations"_s, 70);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(bar.value(), 70);
    window.ShowStatus(u"Two\r\nlines"_s, std::nullopt);
    EXPECT_TRUE(window.isVisible());
    // A word longer than a line is not cut.
    window.ShowStatus(u"Database /srv/"_s + QString(70, u'm') + u"/Velmora.MDB cannot be found."_s, std::nullopt);
    EXPECT_GE(label.width(), std::min(label.fontMetrics().horizontalAdvance(QString(70, u'm')),
                                      window.screen()->availableGeometry().width() / 2));
    window.ShowStatus({}, std::nullopt);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(label.text().isEmpty());
}

} // namespace
} // namespace velmora
