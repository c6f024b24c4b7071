#pragma once

#include "base/Value.h"
#include "engine/EngineError.h"
#include "engine/FieldType.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>
#include <vector>

namespace velmora::engine {

enum class RecordsetKind {
    Snapshot,  // the rows as they were when the set was opened; cannot be changed
    Updatable, // shows what the database holds when a record is moved onto; can be edited
};

struct FieldDescription {
    QString name;
    // The table name or alias that the field belongs to; empty for an expression.
    QString table;
    FieldType type = FieldType::Unknown;
};

// One field of the current record. Valid until the recordset moves or changes.
class Field {
public:
    enum class Kind : unsigned char { Null, Integer, Real, Text };

    Field() = default;
    Field(FieldType type, qint64 number) : type_(type), kind_(Kind::Integer), integer_(number) {}
    Field(FieldType type, double number) : type_(type), kind_(Kind::Real), real_(number) {}
    Field(FieldType type, const char* utf8, qsizetype size)
        : type_(type), kind_(Kind::Text), size_(static_cast<quint32>(size)), text_(utf8) {}

    bool IsNull() const { return kind_ == Kind::Null; }
    // True for any number but 0; false when empty.
    bool ToBool() const;
    // 0 when empty or not a number. Real numbers are rounded half to even, a yes of a yes/no field is -1.
    qint64 ToInteger() const;
    double ToReal() const;
    // "" when empty; numbers and flags as Value::ToText gives them.
    QString ToText() const;
    // None when empty or not a date-time.
    std::optional<DateTime> ToDateTime() const;
    // The value by the field's type; a value that does not fit the type as it is stored.
    Value ToValue() const;
    // The stored bytes of a text; empty for any other kind.
    std::string_view Utf8() const { return kind_ == Kind::Text ? std::string_view(text_, size_) : std::string_view(); }
    Kind StoredKind() const { return kind_; }
    // The stored whole number; 0 for any other kind.
    qint64 StoredInteger() const { return kind_ == Kind::Integer ? integer_ : 0; }

private:
    FieldType type_ = FieldType::Unknown;
    Kind kind_ = Kind::Null;
    quint32 size_ = 0;
    union {
        qint64 integer_ = 0;
        double real_;
        const char* text_;
    };
};

// A place in one recordset. Good until its Requery or its end; after that, and in another recordset, GoTo throws
// InvalidArgument.
class Bookmark {
public:
    Bookmark() = default;
    // For recordsets: `opening` tells their openings apart.
    Bookmark(quint64 opening, qint64 position) : opening_(opening), position_(position) {}

    quint64 Opening() const { return opening_; }
    qint64 Position() const { return position_; }
    friend bool operator==(Bookmark, Bookmark) = default;

private:
    quint64 opening_ = 0;
    qint64 position_ = -1;
};

// The rows of a query, one of them current. A set with rows stands on the first one when opened.
//
// A record that another user deleted meanwhile: an updatable set throws RecordDeleted when its fields are read or it is
// edited, and moves past it as usual.
class Recordset {
public:
    virtual ~Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Moves. MoveFirst and MoveLast throw NoCurrentRecord on an empty set; MoveNext past the last record sets
    // EndOfFile, MovePrevious before the first BeginOfFile; a move further in that direction throws NoCurrentRecord.
    // A move gives up a pending edit or addition.
    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    virtual bool EndOfFile() const = 0;
    virtual bool BeginOfFile() const = 0;

    // The number of records; reliable once MoveLast was called.
    virtual qint64 RecordCount() const = 0;
    // Records before the current one in percent of all, 0 to 100; 100 at EndOfFile, 0 for an empty set.
    virtual double PercentPosition() const = 0;

    virtual Bookmark CurrentBookmark() const = 0;
    virtual void GoTo(Bookmark bookmark) = 0;

    // A field of the current record by its plain name, or as "Table.Field" where several tables have the name.
    // Letter case does not matter. Throws UnknownItem, AmbiguousField, NoCurrentRecord, RecordDeleted.
    // While an edit or addition is pending, the values set so far.
    virtual Field operator[](std::string_view utf8Name) const = 0;
    Field operator[](const char* utf8Name) const { return (*this)[std::string_view(utf8Name)]; }
    // By position from 0; the fastest way when all fields are read.
    virtual Field FieldAt(int index) const = 0;
    virtual const std::vector<FieldDescription>& Fields() const = 0;

    // Changing. Edit and AddNew begin, Set assigns, Update writes in a transaction of its own.
    // Edit, AddNew and Delete throw ReadOnly on a set that cannot be changed.
    virtual void Edit() = 0;
    virtual void AddNew() = 0;
    virtual void Set(std::string_view utf8Name, const Value& value) = 0;
    // Writes only the fields that changed, and only if they still hold what this set last read; then shows what was
    // written. What other users changed in the other fields, and fields that are worked out, show with the next move
    // onto the record. Throws RecordChanged, RecordDeleted, DuplicateKey, RecordLocked, TypeMismatch; the edit then
    // stays pending. After an addition the current record is the one that was current before, and the new record is
    // part of the set (its last).
    virtual void Update() = 0;
    // Gives up the edit, and reads the record again; or gives up the addition.
    virtual void CancelUpdate() = 0;
    // Deletes the current record; it stays current, without fields, until the next move.
    virtual void Delete() = 0;
    // The place of the record that the last Update wrote.
    virtual Bookmark LastModified() const = 0;

    // Runs the query again and stands on its first record.
    virtual void Requery() = 0;

protected:
    Recordset() = default;
};

} // namespace velmora::engine
