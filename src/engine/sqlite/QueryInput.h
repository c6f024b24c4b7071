#pragma once

#include "engine/dialect/Compiler.h"
#include "engine/sqlite/Plan.h"
#include "engine/sqlite/RowArena.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace velmora::engine::sqlite {

// A text as its caller gave it, with all that is needed to run it again.
struct QueryInput {
    QString text;
    dialect::TextShape shape;      // the key is scratch; the literals are the text's once it has a plan
    std::vector<Value> parameters; // by their position in the plan
    std::shared_ptr<const Plan> plan;

    // Takes over the text; reuses storage.
    void Assign(QStringView source) {
        text.resize(0);
        text.append(source);
        parameters.clear();
        plan.reset();
    }
};

// Binds values to a statement and keeps the bytes of their texts while it runs.
class ValueBinder {
public:
    // Binds the places 1, 2, ... The binder must stay and not bind again until the statement is reset.
    void Bind(Statement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input);

private:
    void BindText(Statement& statement, int place, QStringView text);
    void BindMoment(Statement& statement, int place, DateTime moment);
    void BindValue(Statement& statement, int place, const Value& value, FieldType type);

    QByteArray bytes_;
    char* next_ = nullptr;
};

// What a recordset works with. Kept by the session from one recordset to the next, so that opening a small one takes
// nothing from the system.
struct RecordsetStorage {
    QueryInput input;
    ValueBinder binder;
    RowArena rows;
    RowReader reader;
    RowArena keys;
    RowReader keyReader;
};

} // namespace velmora::engine::sqlite
