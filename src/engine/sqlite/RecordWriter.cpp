#include "engine/sqlite/RecordWriter.h"

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

constexpr qsizetype usualTextSize = 256;
constexpr std::size_t updatesKept = 16;

QByteArray Began(const char* beginning) {
    QByteArray text;
    text.reserve(usualTextSize);
    return text += beginning;
}

} // namespace

// True while the column still holds the value bound. A yes stays a yes whatever its number; a text that differs in
// letter case only is another one.
void RecordWriter::AppendStillHolds(QByteArray& text, const FieldChange& change) const {
    if (TypeOf(change) == FieldType::YesNo) {
        text.append('(').append(ColumnOf(change)).append(" <> 0) IS ?");
    } else {
        text.append(ColumnOf(change)).append(" COLLATE BINARY IS ?");
    }
}

void RecordWriter::BindBefore(Statement& statement, int place, const FieldChange& change) const {
    const Field& before = change.before;
    if (TypeOf(change) == FieldType::YesNo && !before.IsNull()) {
        const bool isText = before.StoredKind() == Field::Kind::Text;
        statement.BindInteger(place, isText || before.ToBool() ? 1 : 0);
    } else {
        statement.Bind(place, before);
    }
}

QByteArray RecordWriter::UpdateText(std::size_t base, const std::vector<FieldChange>& changes) const {
    QByteArray text = Began("UPDATE ");
    text += plan_.tables[base].name;
    const char* separator = " SET ";
    for (const FieldChange& change : changes) {
        text.append(separator).append(ColumnOf(change)).append(" = ?");
        separator = ", ";
    }
    text += plan_.tables[base].whereKey;
    for (const FieldChange& change : changes) {
        AppendStillHolds(text += " AND ", change);
    }
    return text;
}

// A place of the program ticks the same box or two again and again.
PreparedText& RecordWriter::UpdateOf(std::size_t base, const std::vector<FieldChange>& changes) const {
    const auto assignsThem = [&changes](const Plan::FieldUpdate& update) {
        return std::equal(changes.begin(), changes.end(), update.fields.begin(), update.fields.end(),
                          [](const FieldChange& change, int field) { return change.field == field; });
    };
    auto& known = plan_.updates;
    const auto found = std::find_if(known.begin(), known.end(), assignsThem);
    if (found != known.end()) {
        return *found->text;
    }
    if (known.size() == updatesKept) {
        known.erase(known.begin());
    }
    std::vector<int> fields;
    fields.reserve(changes.size());
    for (const FieldChange& change : changes) {
        fields.push_back(change.field);
    }
    auto text = std::make_shared<PreparedText>(session_.Store(), UpdateText(base, changes));
    known.push_back({std::move(fields), std::move(text)});
    return *known.back().text;
}

void RecordWriter::Update(std::size_t base, const std::vector<Field>& key, const std::vector<FieldChange>& changes) {
    {
        Statement statement = UpdateOf(base, changes).Acquire(sql_);
        int place = 0;
        for (const FieldChange& change : changes) {
            statement.Bind(++place, change.after);
        }
        for (const Field& part : key) {
            statement.Bind(++place, part);
        }
        for (const FieldChange& change : changes) {
            BindBefore(statement, ++place, change);
        }
        statement.Step(sql_);
    }
    if (sqlite3_changes64(session_.Store().Handle()) != 1) {
        ExplainRefusal(base, key, changes);
    }
}

void RecordWriter::ExplainRefusal(std::size_t base, const std::vector<Field>& key,
                                  const std::vector<FieldChange>& changes) {
    QByteArray text = Began("SELECT ");
    for (const FieldChange& change : changes) {
        AppendStillHolds(text, change);
        text += ", ";
    }
    text.append("1 FROM ").append(plan_.tables[base].name).append(plan_.tables[base].whereKey);
    Statement statement = session_.Statements().Acquire(text, sql_);
    int place = 0;
    for (const FieldChange& change : changes) {
        BindBefore(statement, ++place, change);
    }
    for (const Field& part : key) {
        statement.Bind(++place, part);
    }
    if (!statement.Step(sql_)) {
        ThrowDeleted();
    }
    QStringList fields;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (sqlite3_column_int(statement.Handle(), static_cast<int>(i)) == 0) {
            fields.append(plan_.fields[static_cast<std::size_t>(changes[i].field)].name);
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

void RecordWriter::Insert(std::size_t base, const std::vector<FieldChange>& fields,
                          const std::function<void(sqlite3_stmt*)>& onKey) {
    QByteArray text = Began("INSERT INTO ");
    text += plan_.tables[base].name;
    const char* separator = " (";
    for (const FieldChange& field : fields) {
        text.append(separator).append(ColumnOf(field));
        separator = ", ";
    }
    separator = ") VALUES (";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        text.append(separator).append('?');
        separator = ", ";
    }
    text.append(fields.empty() ? " DEFAULT VALUES" : ")").append(" RETURNING ").append(plan_.tables[base].keyList);
    Statement statement = session_.Statements().Acquire(text, sql_);
    int place = 0;
    for (const FieldChange& field : fields) {
        statement.Bind(++place, field.after);
    }
    statement.Step(sql_);
    onKey(statement.Handle());
    statement.Step(sql_);
}

void RecordWriter::Delete(std::size_t base, const std::vector<Field>& key) {
    {
        const QByteArray text = "DELETE FROM " + plan_.tables[base].name + plan_.tables[base].whereKey;
        Statement statement = session_.Statements().Acquire(text, sql_);
        int place = 0;
        for (const Field& part : key) {
            statement.Bind(++place, part);
        }
        statement.Step(sql_);
    }
    if (sqlite3_changes64(session_.Store().Handle()) != 1) {
        ThrowDeleted();
    }
}

} // namespace velmora::engine::sqlite
