// velmora-db: makes, checks, repairs and queries a site's database.

#include "app/StandardStreams.h"
#include "app/db/CommandLine.h"
#include "app/db/Commands.h"
#include "platform/SystemClock.h"

int main(int argc, char** argv) {
    velmora::PrepareStandardStreams();
    QStringList words;
    for (int n = 1; n < argc; ++n) {
        words.append(QString::fromUtf8(argv[n]));
    }
    try {
        const velmora::SystemClock clock;
        return static_cast<int>(velmora::db::Run(velmora::db::ParseCommandLine(words), clock));
    } catch (const velmora::db::BadUsage& usage) {
        velmora::WriteStandardError(QStringLiteral("velmora-db: %1\n\n%2").arg(usage.reason, velmora::db::Usage()));
        return static_cast<int>(velmora::db::ExitCode::BadUsage);
    }
}
