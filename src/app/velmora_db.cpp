// velmora-db: makes, checks, repairs and queries a site's database.

#include "app/StandardStreams.h"
#include "app/db/CommandLine.h"
#include "app/db/ParameterText.h"
#include "app/db/RowPrinter.h"
#include "base/services/Clock.h"
#include "demo/DemoSite.h"
#include "engine/Database.h"
#include "platform/LogFile.h"
#include "platform/SystemClock.h"
#include "site/Site.h"
#include "site/SiteVersion.h"

#include <QDir>

#include <algorithm>

namespace velmora::db {

namespace {

enum class ExitCode {
    Done = 0, // or sound
    Failed = 1,
    BadUsage = 2,
    Damaged = 3,
    InUse = 4,
    NotRepaired = 5,
    NoDatabase = 6,
};

using engine::EngineError;
using engine::EngineErrorNumber;

void Tell(const QString& text) {
    Output output;
    output.Add(text);
    output.Flush();
}

ExitCode Refuse(ExitCode code, const QString& reason) {
    WriteStandardError(QStringLiteral("velmora-db: %1\n").arg(reason));
    return code;
}

ExitCode CodeOf(EngineErrorNumber number) {
    switch (number) {
    case EngineErrorNumber::FileNotFound:
        return ExitCode::NoDatabase;
    case EngineErrorNumber::Damaged:
        return ExitCode::Damaged;
    default:
        return ExitCode::Failed;
    }
}

Site SiteOf(const CommandLine& line) {
    return Site(QDir(line.folder).path());
}

ExitCode Create(const CommandLine& line, const Clock& clock) {
    const auto create = [&] {
        if (!line.tier) {
            return CreateSite(line.folder);
        }
        demo::Options demo{.tier = *line.tier, .today = line.today.value_or(clock.Today())};
        demo.seed = line.seed.value_or(demo.seed);
        return demo::CreateDemoSite(line.folder, demo);
    };
    const QString location = create().Location();
    try {
        Tell(QStringLiteral("%1: created\n").arg(location));
    } catch (const Error& error) {
        return Refuse(ExitCode::Failed,
                      QStringLiteral("%1 was created; only the line that says so could not be written. %2")
                          .arg(location, error.Description()));
    }
    return ExitCode::Done;
}

ExitCode Check(const CommandLine& line) {
    const Site site = SiteOf(line);
    const engine::CheckResult result = site.Check();
    Tell(result.isSound ? QStringLiteral("%1: sound\n").arg(site.Location())
                        : QStringLiteral("%1: damaged\n%2\n").arg(site.Location(), result.fault));
    return result.isSound ? ExitCode::Done : ExitCode::Damaged;
}

ExitCode Repair(const CommandLine& line, const Clock& clock) {
    const Site site = SiteOf(line);
    const QString path = site.Location();
    if (site.IsInUse()) {
        return Refuse(ExitCode::InUse, QStringLiteral("%1 is in use by another program.").arg(path));
    }
    if (site.Check().isSound) {
        Tell(QStringLiteral("%1: sound, nothing to repair\n").arg(path));
        return ExitCode::Done;
    }
    try {
        const engine::RepairReport report = site.Repair(clock.Now());
        Tell(QStringLiteral("%1: repaired\n%2\n").arg(path, report.ToText().trimmed()));
        return ExitCode::Done;
    } catch (const EngineError& error) {
        switch (error.Kind()) {
        case EngineErrorNumber::RecordLocked:
            return Refuse(ExitCode::InUse, error.Description());
        case EngineErrorNumber::FileNotFound:
            throw;
        default:
            return Refuse(ExitCode::NotRepaired, error.Description());
        }
    }
}

void SetParameters(engine::QueryDef& query, const std::vector<ParameterText>& texts) {
    const auto known = query.Parameters();
    for (const ParameterText& text : texts) {
        const auto found = std::find_if(known.begin(), known.end(), [&](const auto& parameter) {
            return parameter.name.compare(text.name, Qt::CaseInsensitive) == 0;
        });
        const engine::FieldType type =
            found != known.end() && found->declared ? found->type : engine::FieldType::Unknown;
        const std::optional<Value> value = ReadParameter(text.value, type);
        if (!value) {
            throw ProgramError(ErrorNumber::TypeMismatch,
                               QStringLiteral("The parameter \"%1\" takes %2; \"%3\" is none.")
                                   .arg(found->name, TypeInWords(type), text.value));
        }
        query.SetParameter(text.name, *value);
    }
}

std::unique_ptr<engine::QueryDef> FindQuery(engine::Database& database, const QString& text) {
    const QString name = text.trimmed();
    const QStringList names = database.QueryNames();
    const bool isStored = names.contains(name, Qt::CaseInsensitive);
    return isStored ? database.OpenQueryDef(name) : database.CreateQueryDef(text);
}

ExitCode RunQuery(engine::Database& database, const CommandLine& line) {
    const auto query = FindQuery(database, line.query);
    SetParameters(*query, line.parameters);
    Output output;
    if (query->IsAction()) {
        // Where a failure is reported nothing is changed, also when only the answer could not be written.
        engine::Transaction transaction(database);
        output.Add(QStringLiteral("rows: %1\n").arg(query->Execute()));
        output.Flush();
        transaction.Commit();
        return ExitCode::Done;
    }
    PrintRows(*query->OpenRecordset(), output);
    output.Flush();
    return ExitCode::Done;
}

ExitCode Query(const CommandLine& line, const Clock& clock) {
    LogFile log(LogFile::DefaultPath(), clock);
    const std::unique_ptr<engine::Database> database = SiteOf(line).Open(&log);
    try {
        return RunQuery(*database, line);
    } catch (const EngineError& error) {
        if (error.Kind() == EngineErrorNumber::UnknownTable) {
            if (const std::optional<QString> reason = WhyOutdated(*database)) {
                throw EngineError(error.Kind(), error.Description() + u' ' + *reason, error.Sql());
            }
        }
        throw;
    }
}

ExitCode RunCommand(const CommandLine& line, const Clock& clock) {
    switch (line.kind) {
    case CommandKind::Create:
        return Create(line, clock);
    case CommandKind::Check:
        return Check(line);
    case CommandKind::Repair:
        return Repair(line, clock);
    case CommandKind::Query:
        return Query(line, clock);
    case CommandKind::Help:
        break;
    }
    Tell(Usage());
    return ExitCode::Done;
}

ExitCode Run(const CommandLine& line, const Clock& clock) {
    try {
        return RunCommand(line, clock);
    } catch (const EngineError& error) {
        return Refuse(CodeOf(error.Kind()), error.Description());
    } catch (const std::exception&) {
        return Refuse(ExitCode::Failed, CurrentError().Description());
    }
}

int Main(int argc, char** argv) {
    PrepareStandardStreams();
    try {
        const SystemClock clock;
        return static_cast<int>(Run(ParseCommandLine(ArgumentTexts(argc, argv)), clock));
    } catch (const BadUsage& usage) {
        WriteStandardError(QStringLiteral("velmora-db: %1\n\n%2").arg(usage.reason, Usage()));
        return static_cast<int>(ExitCode::BadUsage);
    }
}

} // namespace
} // namespace velmora::db

int main(int argc, char** argv) {
    return velmora::db::Main(argc, argv);
}
