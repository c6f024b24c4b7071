#pragma once

#include "engine/Recordset.h"
#include "engine/sqlite/RowCursor.h"
#include "engine/sqlite/Session.h"

#include <memory>

namespace velmora::engine::sqlite {

// What snapshots and updatable sets share: moving, counting, bookmarks, and the names of the fields.
class CursorRecordset : public Recordset {
public:
    ~CursorRecordset() override;
    CursorRecordset(const CursorRecordset&) = delete;
    CursorRecordset& operator=(const CursorRecordset&) = delete;

    void MoveFirst() final;
    void MoveLast() final;
    void MoveNext() final;
    void MovePrevious() final;
    bool EndOfFile() const final { return cursor_.EndOfFile(); }
    bool BeginOfFile() const final { return cursor_.BeginOfFile(); }
    qint64 RecordCount() const final { return cursor_.Count(); }
    double PercentPosition() const final { return cursor_.Percent(); }
    Bookmark CurrentBookmark() const final;
    void GoTo(Bookmark bookmark) final;
    const std::vector<FieldDescription>& Fields() const final { return ThePlan().fields; }
    void Requery() final;

protected:
    // The storage's input names the plan.
    CursorRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage);

    // Reads the rows, and leaves the cursor on the first one.
    virtual void Fill() = 0;
    // Called after the cursor moved.
    virtual void Arrive() = 0;

    const Plan& ThePlan() const { return *storage_->input.plan; }
    const QString& Text() const { return storage_->input.text; }
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
        return WithText([&] { return ThePlan().names.Find(utf8Name); });
    }
    void CheckIndex(int index) const;
    // Throws an error that belongs to this set's text.
    [[noreturn]] void Fail(EngineErrorNumber number, const QString& description) const;

    Session& session_;
    const std::shared_ptr<Session> keepsSession_;
    std::unique_ptr<RecordsetStorage> storage_;
    RowCursor cursor_;
};

} // namespace velmora::engine::sqlite
