#pragma once

#include "tests/support/Folders.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <vector>

namespace velmora {

// What a program has printed and returned.
struct Outcome {
    int exitCode = -1;
    QByteArray out;
    QByteArray error;
};

inline Outcome Finish(QProcess& process) {
    EXPECT_TRUE(process.waitForFinished(120'000)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

// The lines of a file below tests/app/cases, without comments.
inline QByteArrayList CaseLines(const char* name) {
    QByteArrayList lines = TestBytes(QStringLiteral("app/cases/") + QLatin1StringView(name)).split('\n');
    lines.removeIf([](const QByteArray& line) { return line.startsWith('#'); });
    return lines;
}

struct ProgramCase {
    QByteArray line;
    QByteArray expected;
};

// Cases of the form "command line => what is expected".
inline std::vector<ProgramCase> Cases(const char* name) {
    std::vector<ProgramCase> cases;
    for (const QByteArray& line : CaseLines(name)) {
        if (const qsizetype arrow = line.indexOf(" => "); arrow >= 0) {
            cases.push_back({line.left(arrow), line.mid(arrow + 4)});
        }
    }
    EXPECT_FALSE(cases.empty()) << name;
    return cases;
}

} // namespace velmora
