#pragma once

#include "tests/support/Folders.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

namespace velmora::fakes {

// A print server of the test's own, with its socket, spool and queues below a temporary directory; nothing of the
// machine's own printing is touched. Each queue writes what it receives into a file. Programs and libraries find the
// server through the environment, so it is started before any of them looks.
class PrivatePrintServer {
public:
    PrivatePrintServer() {
        qputenv("CUPS_SERVER", QFile::encodeName(Socket()));
        qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
        qputenv("HOME", QFile::encodeName(folder_.path()));
        server_.start(TestDataFolder() + QStringLiteral("/support/print_server.sh"), {folder_.path()});
        for (int i = 0; i < 200 && server_.state() != QProcess::NotRunning && !QFile::exists(Socket()); ++i) {
            server_.waitForFinished(50);
        }
    }
    ~PrivatePrintServer() { Stop(); }
    PrivatePrintServer(const PrivatePrintServer&) = delete;
    PrivatePrintServer& operator=(const PrivatePrintServer&) = delete;

    bool Runs() const { return server_.state() == QProcess::Running && QFile::exists(Socket()); }
    // Why it does not run.
    QString Reason() {
        return QStringLiteral("cupsd did not start: ") + QString::fromUtf8(server_.readAllStandardError());
    }
    void Stop() {
        server_.terminate();
        if (!server_.waitForFinished(10000)) {
            server_.kill();
            server_.waitForFinished(10000);
        }
    }

    // Adds a queue that takes documents as they are, or as the driver file makes them; false when it could not be.
    bool AddQueue(const QString& name, const QString& driver = {}) {
        QStringList words{QStringLiteral("-p"), name, QStringLiteral("-E"), QStringLiteral("-v"),
                          QStringLiteral("keep:") + Output(name)};
        if (!driver.isEmpty()) {
            words += {QStringLiteral("-P"), driver};
        }
        return Run(QStringLiteral("lpadmin"), words);
    }
    bool MakeDefault(const QString& name) { return Run(QStringLiteral("lpadmin"), {QStringLiteral("-d"), name}); }
    bool RemoveQueue(const QString& name) { return Run(QStringLiteral("lpadmin"), {QStringLiteral("-x"), name}); }
    bool Reject(const QString& name) { return Run(QStringLiteral("cupsreject"), {name}); }

    // The file that the queue prints into.
    QString Output(const QString& queue) const { return folder_.filePath(QStringLiteral("out/") + queue); }
    // The text of the pages that the queue has printed, a form feed behind each; waits for the print to be complete.
    QString PrintedText(const QString& queue) const {
        for (int i = 0; i < 1200; ++i) {
            const QString text = TextOfPdf(Output(queue));
            if (!text.isEmpty()) {
                return text;
            }
            QThread::msleep(50);
        }
        return {};
    }
    static QString TextOfPdf(const QString& path) {
        QProcess process;
        process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
        process.waitForFinished(30000);
        return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
    }

private:
    // A socket's path is short.
    QString Socket() const { return folder_.filePath(QStringLiteral("s")); }
    static bool Run(const QString& program, const QStringList& words) { return QProcess::execute(program, words) == 0; }

    QTemporaryDir folder_;
    QProcess server_;
};

} // namespace velmora::fakes
