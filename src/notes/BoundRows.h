#pragma once

#include "engine/Database.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

enum class CellKind {
    Text,   // one line
    Lines,  // a text that may have several lines
    Choice, // one of the texts that the column offers
    Number, // a whole number that the store assigns
    Money,
    YesNo,
    Moment,
};

enum class Editing { Allowed, ReadOnly };

// One column of a grid and the field that it is bound to.
struct BoundColumn {
    QString caption;
    // Name of the field in the grid's record set.
    QByteArray field;
    CellKind kind = CellKind::Text;
    Editing editing = Editing::Allowed;
    // Width at first, in letters of the grid's font.
    int letters = 12;
};

// The rows that a grid shows and edits: a record set (updatable unless all columns are read-only), what was read of it,
// and the one row that is being edited. Nothing of an edit reaches the database before Write. All of it may throw
// EngineError.
//
// A row is read once, when it is first shown. An edit is checked against what was shown then: what another desk changed
// since is reported as a conflict, never overwritten.
class BoundRows {
public:
    // `fixed` are the values that every written row gets besides what is typed. The database outlives the object.
    struct FixedValue {
        QByteArray field;
        Value value;
    };
    BoundRows(engine::Database& database, std::vector<BoundColumn> columns, std::vector<FixedValue> fixed = {});

    // Runs the query; forgets all rows and a pending edit. On failure there are no rows.
    void Open(const QString& source);
    // The same with the query that was opened last.
    void Reopen() { Open(QString(source_)); }
    void Close();
    bool IsOpen() const { return set_ != nullptr; }

    engine::Database& Database() const { return database_; }
    const std::vector<BoundColumn>& Columns() const { return columns_; }
    // The column bound to that field; -1 without one.
    int ColumnOf(const char* field) const;
    // The stored rows; the row with this number is the empty one behind them.
    int Count() const { return static_cast<int>(rows_.size()); }

    // The value with what was edited in it.
    const Value& At(int row, int column);
    // What the database held when the row was last read.
    const Value& Stored(int row, int column);
    // Found deleted by another desk.
    bool IsGone(int row) const;

    // The one row being edited or added; none at most times.
    std::optional<int> PendingRow() const { return pending_; }
    bool IsAdding() const { return pending_ && *pending_ == Count(); }
    bool IsChanged(int column) const { return edits_.contains(column); }
    // Begins to edit the row unless that is going on. An edit that comes back to the stored values ends. Another row
    // must not be pending.
    void Set(int row, int column, const Value& value);
    // Takes back all that was edited; the row shows what the database holds by now.
    void Undo();

    enum class Outcome {
        Done,
        Changed, // nothing was written: another desk changed the row; see Conflicts
        Gone,    // nothing was written: another desk deleted the row
    };
    struct Conflict {
        int column = 0;
        Value before;
        Value mine;
        Value theirs;
    };

    // Writes the pending row, which a success ends. After Changed or Gone it is still pending.
    Outcome Write();
    const std::vector<Conflict>& Conflicts() const { return conflicts_; }
    // After Changed: the edit goes on over the other desk's values, so that Write stores it.
    void KeepMine();
    // After Gone: the row as it was edited becomes a new one.
    void AddAgain();

    enum class Force { No, Yes };
    // Deletes a stored row, which stays among the rows as a gone one. Without force, a row that another desk changed
    // since it was shown is left as it is: Changed.
    Outcome Delete(int row, Force force = Force::No);

private:
    struct Row {
        engine::Bookmark place;
        bool loaded = false;
        bool gone = false;
        std::vector<Value> values;
    };

    Row& Loaded(int row);
    void LoadAround(int row);
    void Load(Row& row);
    // The fields of the row as the database holds them; none when it is deleted.
    std::optional<std::vector<Value>> ReadNow(const Row& row);
    std::vector<Value> ReadFields() const;
    void FindConflicts(const Row& row, const std::vector<Value>& now);
    void AssignEdits();
    void WriteNew();
    void EndEdit();

    engine::Database& database_;
    std::vector<BoundColumn> columns_;
    std::vector<FixedValue> fixed_;
    QString source_;
    std::unique_ptr<engine::Recordset> set_;
    std::vector<Row> rows_;
    std::vector<Value> emptyRow_;

    std::optional<int> pending_;
    std::map<int, Value> edits_;
    std::vector<Conflict> conflicts_;
    std::vector<Value> theirs_;
};

// What one kind of rows adds to how every grid edits: a plain grid has none of it.
class RowRules {
public:
    virtual ~RowRules() = default;

    // Fills in the fields that depend on a value that was just entered.
    virtual void FillIn(BoundRows&, int /*row*/, int /*column*/) {}

    struct Refusal {
        // What is missing and what to do.
        QString reason;
        // Where it is to be entered.
        int column = 0;
        // What that column offers by now, where it turned out to be other than what was offered.
        std::optional<QStringList> choices;
    };
    // Why the pending row cannot be stored. May throw.
    virtual std::optional<Refusal> Refuse(BoundRows&) { return std::nullopt; }

    // A question to be answered with Yes before the pending row is written, or the rows are deleted; empty without one.
    virtual QString QuestionBeforeWriting(BoundRows&) { return {}; }
    virtual QString QuestionBeforeDeleting(BoundRows&, const QList<int>& /*rows*/) { return {}; }

    // Writes the pending row and what must change together with it.
    virtual BoundRows::Outcome Write(BoundRows& rows) { return rows.Write(); }
};

} // namespace velmora
