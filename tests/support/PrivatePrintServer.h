#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <sys/stat.h>

namespace velmora::fakes {

// A print server of the test's own, with its socket, spool and queues below a temporary directory; nothing of the
// machine's own printing is touched. Each queue writes what it receives into a file. Programs and libraries find the
// server through the environment, so it is started before any of them looks.
class PrivatePrintServer {
public:
    PrivatePrintServer() {
        // The server's own user must reach the spool.
        ::chmod(Native(folder_.path()).constData(), 0755);
        for (const char16_t* name : {u"etc", u"etc/ppd", u"spool", u"spool/tmp", u"cache", u"state", u"log", u"out"}) {
            QDir(folder_.path()).mkpath(QString::fromUtf16(name));
        }
        Write(QStringLiteral("etc/cupsd.conf"),
              "Listen " + Native(Socket()) +
                  "\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n"
                  "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                  "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n</Limit>\n</Policy>\n");
        QByteArray files;
        MakePrograms();
        for (const auto& [key, place] :
             {std::pair{"ServerRoot", "etc"}, std::pair{"ServerBin", "bin"}, std::pair{"RequestRoot", "spool"},
              std::pair{"TempDir", "spool/tmp"}, std::pair{"CacheDir", "cache"}, std::pair{"StateDir", "state"},
              std::pair{"AccessLog", "log/access"}, std::pair{"ErrorLog", "log/error"},
              std::pair{"PageLog", "log/page"}}) {
            files += QByteArray(key) + ' ' + Native(folder_.filePath(QString::fromLatin1(place))) + '\n';
        }
        Write(QStringLiteral("etc/cups-files.conf"), files);
        qputenv("CUPS_SERVER", Native(Socket()));
        qputenv("HOME", Native(folder_.path()));
        Start();
    }
    ~PrivatePrintServer() { Stop(); }
    PrivatePrintServer(const PrivatePrintServer&) = delete;
    PrivatePrintServer& operator=(const PrivatePrintServer&) = delete;

    bool Runs() const { return server_.state() == QProcess::Running && QFile::exists(Socket()); }
    // Why it does not run.
    QString Reason() const { return reason_; }
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
        for (int i = 0; i < 200; ++i) {
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
    static QByteArray Native(const QString& path) { return QFile::encodeName(path); }
    // A socket's path is short.
    QString Socket() const { return folder_.filePath(QStringLiteral("s")); }
    static QString Program(const QString& name) {
        const QString found = QStandardPaths::findExecutable(name);
        return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")}) : found;
    }

    // The system's own filters, and one back end, which keeps what it is given in the file that its device names.
    void MakePrograms() const {
        QDir(folder_.path()).mkpath(QStringLiteral("bin/backend"));
        const QDir system(QStringLiteral("/usr/lib/cups"));
        for (const QString& name : system.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            if (name != u"backend") {
                QFile::link(system.filePath(name), folder_.filePath(QStringLiteral("bin/") + name));
            }
        }
        const QString backend = QStringLiteral("bin/backend/keep");
        Write(backend, "#!/bin/sh\n[ $# -gt 0 ] || exit 0\nfile=${DEVICE_URI#keep:}\n"
                       "cat ${6:+\"$6\"} >\"$file.part\" && mv \"$file.part\" \"$file\"\n");
        ::chmod(Native(folder_.filePath(backend)).constData(), 0755);
        ::chmod(Native(folder_.filePath(QStringLiteral("out"))).constData(), 0777);
    }
    void Write(const QString& name, const QByteArray& bytes) const {
        QFile file(folder_.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
    }
    bool Run(const QString& program, const QStringList& words) const {
        QProcess process;
        process.start(Program(program), words);
        return process.waitForFinished(30000) && process.exitCode() == 0;
    }
    void Start() {
        const QString program = Program(QStringLiteral("cupsd"));
        if (program.isEmpty()) {
            reason_ = QStringLiteral("cupsd is not installed");
            return;
        }
        server_.start(program,
                      {QStringLiteral("-f"), QStringLiteral("-c"), folder_.filePath(QStringLiteral("etc/cupsd.conf")),
                       QStringLiteral("-s"), folder_.filePath(QStringLiteral("etc/cups-files.conf"))});
        for (int i = 0; i < 200 && server_.state() != QProcess::NotRunning && !QFile::exists(Socket()); ++i) {
            server_.waitForFinished(50);
        }
        if (!Runs()) {
            reason_ = QStringLiteral("cupsd did not start: ") + QString::fromUtf8(server_.readAllStandardError());
        }
    }

    QTemporaryDir folder_;
    QProcess server_;
    QString reason_;
};

} // namespace velmora::fakes
