#pragma once

#include "engine/Recordset.h"
#include "engine/records/RowArena.h"
#include "engine/records/RowCursor.h"
#include "engine/records/Session.h"

#include <memory>

namespace velmora::engine::records {

// What snapshots and updatable sets share: moving, counting, bookmarks, and the names of the fields.
class CursorRecordset : public Recordset {
public:
    void MoveFirst() final { Move(&RowCursor::MoveFirst); }
    void MoveLast() final { Move(&RowCursor::MoveLast); }
    void MoveNext() final { Move(&RowCursor::MoveNext); }
    void MovePrevious() final { Move(&RowCursor::MovePrevious); }
    bool EndOfFile() const final { return cursor_.EndOfFile(); }
    bool BeginOfFile() const final { return cursor_.BeginOfFile(); }
    qint64 RecordCount() const final { return cursor_.Count(); }
    double PercentPosition() const final { return cursor_.Percent(); }
    Bookmark CurrentBookmark() const final;
    void GoTo(Bookmark bookmark) final;
    const std::vector<FieldDescription>& Fields() const final { return Query().fields; }
    Field operator[](std::string_view utf8Name) const final;
    Field FieldAt(int index) const final;
    void Requery() final { Fill(); }

protected:
    // The input has its query.
    CursorRecordset(Session& session, QueryInput input);

    // Runs the query, reads the rows or their keys and stands on the first one; an empty set when that fails.
    virtual void Fill() = 0;
    // Reads the record that the cursor stands on, if it stands on one.
    virtual void ReadRecord() = 0;
    // The value of a field of the current record.
    virtual Field ValueAt(int index) const = 0;

    const CompiledQuery& Query() const { return *input_.query; }
    const QString& Text() const { return input_.text; }
    // Does `work`; an error that names no text gets this set's.
    template <typename Work>
    auto WithText(Work&& work) const {
        try {
            return work();
        } catch (const EngineError& error) {
            if (!error.Sql().isEmpty()) {
                throw;
            }
            Fail(error.Kind(), error.Description());
        }
    }
    int IndexOf(std::string_view utf8Name) const {
        return WithText([&] { return Query().names.Find(utf8Name); });
    }
    // Throws NoCurrentRecord unless the set stands on a record.
    qint64 Position() const {
        return WithText([this] { return cursor_.Position(); });
    }
    // Throws an error that belongs to this set's text.
    [[noreturn]] void Fail(EngineErrorNumber number, const QString& description) const;

    Session& session_;
    const std::shared_ptr<Session> keepsSession_;
    const QueryInput input_;
    RowCursor cursor_;

private:
    // A move whose record cannot be read has not taken place: repeated, it does not pass a record over.
    template <typename Work>
    void MoveBy(Work&& work) {
        const RowCursor::Standing before = cursor_.Where();
        WithText(work);
        try {
            ReadRecord();
        } catch (...) {
            cursor_.Return(before);
            throw;
        }
    }
    void Move(void (RowCursor::*move)()) {
        MoveBy([this, move] { (cursor_.*move)(); });
    }
};

// The rows as they were at the opening, all read at once: while the caller works through them, no lock is held and no
// other user waits.
class SnapshotRecordset final : public CursorRecordset {
public:
    // `whyReadOnly` is the error of an attempt to change the set.
    SnapshotRecordset(Session& session, QueryInput input, QString whyReadOnly);

    void Edit() override { ThrowReadOnly(); }
    void AddNew() override { ThrowReadOnly(); }
    void Set(std::string_view, const Value&) override { ThrowReadOnly(); }
    void Update() override { ThrowReadOnly(); }
    void CancelUpdate() override {}
    void Delete() override { ThrowReadOnly(); }
    Bookmark LastModified() const override { ThrowReadOnly(); }

private:
    void Fill() override;
    void ReadRecord() override;
    Field ValueAt(int index) const override;
    [[noreturn]] void ThrowReadOnly() const { Fail(EngineErrorNumber::ReadOnly, whyReadOnly_); }

    QString whyReadOnly_;
    RowArena rows_{session_.SpareRowMemory()};
    // The fields of the current record.
    std::vector<Field> row_;
};

} // namespace velmora::engine::records
