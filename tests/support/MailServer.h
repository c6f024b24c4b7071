#pragma once

#include "tests/support/Folders.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora {

// A mail server process on loopback, with what it has taken.
class MailServer {
public:
    explicit MailServer(const QStringList& options = {}) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral("python3"),
                       QStringList{TestDataFolder() + QStringLiteral("/support/smtp_server.py"), folder_.path()} +
                           options);
        EXPECT_TRUE(process_.waitForReadyRead(30000)) << process_.errorString().toStdString();
        port_ = process_.readLine().trimmed().toInt();
    }
    Q_DISABLE_COPY_MOVE(MailServer)
    ~MailServer() {
        process_.closeWriteChannel();
        process_.waitForFinished(5000);
    }

    int Port() const { return port_; }
    // The messages taken, behind the lines of their envelopes.
    QByteArrayList Messages() const {
        QByteArrayList messages;
        for (const QString& name : QDir(folder_.path()).entryList(QDir::Files, QDir::Name)) {
            QFile file(folder_.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            messages += file.readAll();
        }
        return messages;
    }

private:
    QTemporaryDir folder_;
    QProcess process_;
    int port_ = 0;
};

// A certificate for "localhost" and 127.0.0.1 that nobody but its owner trusts; key and certificate in one file.
class TestCertificate {
public:
    TestCertificate() {
        const QString key = folder_.filePath(QStringLiteral("key.pem"));
        const QString command = QStringLiteral("openssl req -x509 -newkey rsa:2048 -nodes -keyout %1 -out %2 -days 2 "
                                               "-subj /CN=localhost "
                                               "-addext subjectAltName=DNS:localhost,IP:127.0.0.1 2>/dev/null && "
                                               "cat %1 >>%2")
                                    .arg(key, Path());
        EXPECT_EQ(QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), command}), 0);
    }
    QString Path() const { return folder_.filePath(QStringLiteral("certificate.pem")); }

private:
    QTemporaryDir folder_;
};

} // namespace velmora
