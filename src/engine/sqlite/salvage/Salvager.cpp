#include "engine/sqlite/salvage/Salvager.h"

#include "engine/sqlite/Soundness.h"

#include <QByteArrayList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

using sqlite::Connection;
using sqlite::Quoted;
using sqlite::Statement;

// The store keeps tables of its own under such names.
bool IsReserved(const QByteArray& name) {
    return name.toLower().startsWith("sqlite_");
}

QByteArrayList TableNames(sqlite3* database) {
    QByteArrayList names;
    Statement tables(database, "SELECT name FROM sqlite_schema WHERE type = 'table'");
    while (tables.Step()) {
        if (!IsReserved(tables.TextCopy(0))) {
            names.append(tables.TextCopy(0));
        }
    }
    return names;
}

// Runs one statement that may have been damaged, or may need what this program does not have; false when it fails, or
// when more follows it.
bool TryExecute(sqlite3* database, const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int prepared = sqlite3_prepare_v2(database, sql.constData(), -1, &statement, &rest);
    const bool isAlone = prepared == SQLITE_OK && QByteArrayView(rest).trimmed().isEmpty();
    const bool isDone = isAlone && sqlite3_step(statement) == SQLITE_DONE;
    sqlite3_finalize(statement);
    return isDone;
}

// The store keeps the statements of a schema with their first words in this form.
bool Creates(const QByteArray& sql, const QByteArray& what) {
    return sql.startsWith("CREATE " + what);
}

constexpr const char* sequenceTable = "sqlite_sequence";

bool IsTable(const SchemaEntry& entry) {
    return entry.type == "table" && !IsReserved(entry.name);
}

} // namespace

Salvager::Salvager(const QByteArray& damaged, const QByteArray& target, const Schema& schema)
    : file_(damaged), reader_(file_), found_(ReadSchemaEntries(reader_)),
      // A database of the first version has lost none of the tables that came later.
      schema_(FindTable(propertyTable.toUtf8()) != nullptr ? schema : Schema{1, schema.TablesOf(1)}), target_(target) {}

RepairReport Salvager::Run() {
    target_.Run(schema_.tables);
    AddSources();
    DemandOwnTables(false);
    MakeUniqueIndexes();
    CopySequences();
    ClaimOtherTables();
    for (TableSource& source : sources_) {
        CopyReachableRows(reader_, source);
    }
    const qint64 strayLeaves = CopyStrayRows(reader_, sources_);
    DemandOwnTables(true);
    for (TableSource& source : sources_) {
        TraceMissingRows(reader_, found_, source);
        RaiseSequence(source);
    }
    MakeIndexesAndViews();
    CopyFileNumbers();
    target_.Commit();
    sqlite::CheckInFull(target_.Handle());
    RepairReport report = Report(strayLeaves);
    sources_.clear();
    return report;
}

const SchemaEntry* Salvager::FindTable(const QByteArray& name) const {
    const auto entry = std::find_if(found_.entries.begin(), found_.entries.end(), [&](const SchemaEntry& candidate) {
        return candidate.type == "table" && candidate.IsNamed(name);
    });
    return entry == found_.entries.end() ? nullptr : &*entry;
}

void Salvager::AddSources() {
    const QByteArrayList schemaTables = TableNames(target_.Handle());
    for (const QByteArray& table : schemaTables) {
        AddSource(table, FindTable(table), true);
    }
    for (const SchemaEntry& entry : found_.entries) {
        if (!IsTable(entry) || TargetHas(entry.name)) {
            continue;
        }
        MakeAnew(entry);
        if (TargetHas(entry.name)) {
            AddSource(entry.name, &entry, false);
        }
    }
}

void Salvager::AddSource(const QByteArray& table, const SchemaEntry* entry, bool isInSchema) {
    TableSource source;
    source.original = Original(table, entry);
    std::optional<TableShape> shape = ReadTableShape(source.original->Handle(), table);
    if (!shape) {
        return;
    }
    if (isInSchema) {
        AddColumnsOfSite(source.original->Handle(), *shape);
    }
    source.copier = std::make_unique<TableCopier>(target_.Handle(), std::move(*shape), found_.textEncoding);
    source.root = entry == nullptr ? 0 : entry->root;
    source.isInSchema = isInSchema;
    sources_.push_back(std::move(source));
}

std::unique_ptr<Connection> Salvager::Original(const QByteArray& table, const SchemaEntry* entry) const {
    auto original = std::make_unique<Connection>(Connection::InMemory());
    const bool isMade = entry != nullptr && Creates(entry->sql, "TABLE") &&
                        TryExecute(original->Handle(), entry->sql) &&
                        ReadTableShape(original->Handle(), table).has_value();
    if (!isMade) {
        *original = Connection::InMemory();
        for (const auto* statements : {&schema_.tables, &schema_.uniqueIndexes, &schema_.otherIndexes}) {
            for (const QByteArray& statement : *statements) {
                original->Execute(statement);
            }
        }
    }
    for (const SchemaEntry& index : found_.entries) {
        if (index.type == "index" && !index.sql.isEmpty() && index.table.compare(table, Qt::CaseInsensitive) == 0) {
            TryExecute(original->Handle(), index.sql);
        }
    }
    return original;
}

// A site may have added columns to a table of the schema.
void Salvager::AddColumnsOfSite(sqlite3* original, const TableShape& shape) {
    const std::optional<TableShape> made = ReadTableShape(target_.Handle(), shape.name);
    for (const ColumnShape& column : shape.stored) {
        const auto hasName = [&](const ColumnShape& known) {
            return known.name.compare(column.name, Qt::CaseInsensitive) == 0;
        };
        if (column.isGenerated || !made || std::any_of(made->stored.begin(), made->stored.end(), hasName)) {
            continue;
        }
        const char* type = nullptr;
        const char* collation = nullptr;
        sqlite3_table_column_metadata(original, "main", shape.name.constData(), column.name.constData(), &type,
                                      &collation, nullptr, nullptr, nullptr);
        Statement info(original, "SELECT dflt_value FROM pragma_table_info(?1) WHERE name = ?2");
        info.BindText(1, shape.name);
        info.BindText(2, column.name);
        const bool hasDefault = info.Step() && !info.IsNull(0);
        const QByteArray add = "ALTER TABLE " + Quoted(shape.name) + " ADD COLUMN " + Quoted(column.name) + ' ' +
                               (type == nullptr ? "" : type) + " COLLATE " +
                               (collation == nullptr ? "BINARY" : collation);
        if (!(hasDefault && TryExecute(target_.Handle(), add + " DEFAULT " + info.TextCopy(0))) &&
            !TryExecute(target_.Handle(), add)) {
            remarks_.append(
                u"The column \"%1\" of the table \"%2\" could not be made anew; what it holds is only in the "
                "kept file."_s.arg(QString::fromUtf8(column.name), QString::fromUtf8(shape.name)));
        }
    }
}

// Before the rows: a row that breaks one is left out then, and the others are kept.
void Salvager::MakeUniqueIndexes() {
    target_.Run(schema_.uniqueIndexes);
    for (const SchemaEntry& entry : found_.entries) {
        if (entry.type == "index" && Creates(entry.sql, "UNIQUE INDEX")) {
            MakeAnew(entry);
        }
    }
}

// Guards another program's database, and what is none, from being "repaired" into an empty one of ours. Without any
// name left, rows are a proof only where their table is too wide to be met by chance.
void Salvager::DemandOwnTables(bool rowsAreCopied) const {
    constexpr size_t wide = 8;
    const bool isOurs = std::any_of(sources_.begin(), sources_.end(), [&](const TableSource& source) {
        const bool hasRows = source.copier->Saved() > 0 && source.Shape().stored.size() >= wide;
        return source.isInSchema && (source.root != 0 || hasRows);
    });
    const bool rowsMayTell = !rowsAreCopied && !found_.isComplete;
    if (!isOurs && !rowsMayTell) {
        throw EngineError(EngineErrorNumber::Damaged, u"none of the expected tables are in it"_s);
    }
}

// Tables that are not copied keep their pages: else those would look as if they had lost their table.
void Salvager::ClaimOtherTables() {
    for (const SchemaEntry& entry : found_.entries) {
        const auto isItsSource = [&](const TableSource& source) { return source.root == entry.root; };
        if (entry.type == "table" && std::none_of(sources_.begin(), sources_.end(), isItsSource)) {
            reader_.WalkTable(entry.root, [](const BtreePage&) { return true; });
        }
    }
}

// The last numbers that the store assigned: a deleted row's number is not given out again.
void Salvager::CopySequences() {
    if (!TargetHas(sequenceTable)) {
        return;
    }
    const TreeReader::TakeLeaf take = [&](const BtreePage& leaf) { return TakeSequences(leaf); };
    if (const SchemaEntry* const entry = FindTable(sequenceTable)) {
        reader_.WalkTable(entry->root, take);
    } else if (!found_.isComplete) {
        for (const StrayLeaf& leaf : reader_.StrayLeaves()) {
            reader_.TakeStray(leaf.page, take);
        }
    }
}

// False, with nothing taken, unless every row is the name of a table and a number.
bool Salvager::TakeSequences(const BtreePage& leaf) {
    std::vector<RecordField> values;
    std::vector<std::pair<QByteArray, qint64>> sequences;
    for (const Cell& cell : leaf.cells) {
        const std::optional<Bytes> record = reader_.Record(cell);
        if (!record || !DecodeRecord(*record, values) || values.size() != 2 ||
            values[0].kind != RecordField::Kind::Text || values[1].kind != RecordField::Kind::Integer) {
            return false;
        }
        sequences.emplace_back(Utf8Text(values[0].bytes, found_.textEncoding), values[1].integer);
        if (!TargetHas(sequences.back().first)) {
            return false;
        }
    }
    for (const auto& [table, number] : sequences) {
        Statement insert(target_.Handle(), "INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)");
        insert.BindText(1, table);
        insert.BindInteger(2, number);
        insert.Step();
    }
    return true;
}

// Neither is the number of a row that was lost.
void Salvager::RaiseSequence(const TableSource& source) {
    if (source.lost.empty() || !TargetHas(sequenceTable)) {
        return;
    }
    Statement raise(target_.Handle(), "UPDATE sqlite_sequence SET seq = max(seq, ?2) WHERE name = ?1");
    raise.BindText(1, source.Shape().name);
    raise.BindInteger(2, source.lost.rbegin()->first);
    raise.Step();
}

void Salvager::MakeIndexesAndViews() {
    target_.MakeIndexes(schema_.otherIndexes);
    for (const SchemaEntry& entry : found_.entries) {
        if (!entry.sql.isEmpty() && (entry.type == "index" || entry.type == "view")) {
            MakeAnew(entry);
        }
    }
    for (const SchemaEntry& entry : found_.entries) {
        if (entry.type == "trigger") {
            MakeAnew(entry);
        }
    }
}

void Salvager::CopyFileNumbers() {
    const auto set = [&](const char* pragma, quint32 number) {
        target_.Run({pragma + QByteArray::number(static_cast<qint32>(number))});
    };
    set("PRAGMA user_version = ", file_.UserVersion());
    set("PRAGMA application_id = ", file_.ApplicationId());
}

bool Salvager::TargetHas(const QByteArray& name) const {
    Statement find(target_.Handle(), "SELECT 1 FROM sqlite_schema WHERE name = ?1 COLLATE NOCASE");
    find.BindText(1, name);
    return find.Step();
}

void Salvager::MakeAnew(const SchemaEntry& entry) {
    if (TargetHas(entry.name) || IsReserved(entry.name)) {
        return;
    }
    const bool mayRun = Creates(entry.sql, "") && !Creates(entry.sql, "VIRTUAL");
    if (!mayRun || !TryExecute(target_.Handle(), entry.sql)) {
        remarks_.append(u"The %1 \"%2\" could not be made anew; it is only in the kept file."_s.arg(
            QString::fromUtf8(entry.type), QString::fromUtf8(entry.name)));
    }
}

RepairReport Salvager::Report(qint64 strayLeaves) const {
    RepairReport report;
    for (const TableSource& source : sources_) {
        report.tables.push_back(Describe(source));
    }
    report.remarks = remarks_;
    if (!found_.isComplete) {
        report.remarks.append(u"A part of the list of tables could not be read; tables that the program does not know "
                              "may be missing."_s);
    }
    if (strayLeaves > 0) {
        report.remarks.append(
            u"%1 pages of rows that could not be told to which table they belong were not copied; they "
            "are only in the kept file."_s.arg(strayLeaves));
    }
    return report;
}

} // namespace velmora::engine::salvage
