#include "engine/records/RecordWriter.h"

#include <QByteArrayList>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

// Binds values to the places of a statement in turn.
class Places {
public:
    explicit Places(StoreStatement& statement) : statement_(statement) {}

    void Bind(const StoredValue& value) { statement_.Bind(++place_, value.AsField()); }
    void Bind(const RecordKey& key) {
        for (const StoredValue& part : key) {
            Bind(part);
        }
    }
    // What RecordWriter::StillHolds compares with.
    void BindBefore(const FieldChange& change, FieldType type) {
        const Field before = change.before.AsField();
        if (type == FieldType::YesNo && !before.IsNull()) {
            const bool isYes = before.StoredKind() == Field::Kind::Text || before.ToBool();
            statement_.Bind(++place_, Field(FieldType::Unknown, qint64{isYes}));
        } else {
            statement_.Bind(++place_, before);
        }
    }

private:
    StoreStatement& statement_;
    int place_ = 0;
};

} // namespace

void RecordWriter::AppendKey(QByteArray& sql, std::size_t base, std::size_t& place) const {
    const char* joint = " WHERE ";
    for (const QByteArray& column : query_.tables[base].key) {
        sql += joint + Writer().IsKey(column, Writer().Placeholder(++place, FieldType::Unknown));
        joint = " AND ";
    }
}

QByteArray RecordWriter::StillHolds(const FieldChange& change, std::size_t& place) const {
    const FieldType type = TypeOf(change);
    return Writer().StillHolds(ColumnOf(change), type, Writer().Placeholder(++place, type));
}

bool RecordWriter::ChangesARow(StoreStatement& statement) {
    statement.Step(sql_);
    return session_.Connection().RowsChanged() == 1;
}

void RecordWriter::Update(std::size_t base, const RecordKey& key, const std::vector<FieldChange>& changes) {
    std::size_t place = 0;
    QByteArray sql = "UPDATE " + query_.tables[base].name;
    for (const FieldChange& change : changes) {
        sql += (place == 0 ? " SET " : ", ") + ColumnOf(change) + " = ";
        sql += Writer().Placeholder(++place, TypeOf(change));
    }
    AppendKey(sql, base, place);
    for (const FieldChange& change : changes) {
        sql += " AND " + StillHolds(change, place);
    }
    const auto statement = Prepare(sql);
    Places places(*statement);
    for (const FieldChange& change : changes) {
        places.Bind(change.after);
    }
    places.Bind(key);
    for (const FieldChange& change : changes) {
        places.BindBefore(change, TypeOf(change));
    }
    if (!ChangesARow(*statement)) {
        ExplainRefusal(base, key, changes);
    }
}

void RecordWriter::ExplainRefusal(std::size_t base, const RecordKey& key, const std::vector<FieldChange>& changes) {
    std::size_t place = 0;
    QByteArray sql;
    for (const FieldChange& change : changes) {
        sql += (sql.isEmpty() ? "SELECT " : ", ") + StillHolds(change, place);
    }
    sql += " FROM " + query_.tables[base].name;
    AppendKey(sql, base, place);
    const auto statement = Prepare(sql);
    Places places(*statement);
    for (const FieldChange& change : changes) {
        places.BindBefore(change, TypeOf(change));
    }
    places.Bind(key);
    if (!statement->Step(sql_)) {
        ThrowDeleted();
    }
    std::vector<Field> holds(changes.size());
    statement->ReadRow(holds);
    QStringList fields;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (!holds[i].ToBool()) {
            fields.append(query_.fields[static_cast<std::size_t>(changes[i].field)].name);
        }
    }
    throw EngineError(EngineErrorNumber::RecordChanged,
                      u"The record was not written because another user changed it meanwhile (%1). Read it again and "
                      "repeat the change."_s.arg(fields.join(u", "_s)),
                      sql_);
}

void RecordWriter::ThrowDeleted() const {
    throw EngineError(EngineErrorNumber::RecordDeleted, u"The record has been deleted by another user."_s, sql_);
}

RecordKey RecordWriter::Insert(std::size_t base, const std::vector<FieldChange>& fields) {
    QByteArrayList columns;
    QByteArrayList places;
    for (const FieldChange& field : fields) {
        columns.append(ColumnOf(field));
        places.append(Writer().Placeholder(static_cast<std::size_t>(columns.size()), TypeOf(field)));
    }
    const QByteArray values =
        fields.empty() ? " DEFAULT VALUES" : " (" + columns.join(", ") + ") VALUES (" + places.join(", ") + ')';
    const WrittenTable& table = query_.tables[base];
    const auto statement = Prepare("INSERT INTO " + table.name + values + " RETURNING " + table.key.join(", "));
    Places bound(*statement);
    for (const FieldChange& field : fields) {
        bound.Bind(field.after);
    }
    statement->Step(sql_);
    std::vector<Field> key(query_.compiled.bases[base].keyPositions.size());
    statement->ReadRow(key);
    RecordKey added = CopyOf(key);
    statement->Step(sql_);
    return added;
}

void RecordWriter::Delete(std::size_t base, const RecordKey& key) {
    std::size_t place = 0;
    QByteArray sql = "DELETE FROM " + query_.tables[base].name;
    AppendKey(sql, base, place);
    const auto statement = Prepare(sql);
    Places(*statement).Bind(key);
    if (!ChangesARow(*statement)) {
        ThrowDeleted();
    }
}

} // namespace velmora::engine::records
