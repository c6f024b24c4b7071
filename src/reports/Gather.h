#pragma once

#include "base/Steps.h"
#include "engine/Database.h"
#include "reports/ReportDays.h"
#include "reports/TextPool.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

// Runs reading that can fail. A reading that is tried again begins anew, so it must restart cleanly.
class Attempt {
public:
    // Failures are thrown.
    Attempt() = default;
    // Failures are reported.
    explicit Attempt(Steps& steps) : steps_(&steps) {}

    // False when the reading failed and the failure was ignored.
    template <typename Reading>
    bool operator()(Reading&& reading) const {
        if (steps_ != nullptr) {
            return steps_->Step({}, std::forward<Reading>(reading));
        }
        reading();
        return true;
    }

private:
    Steps* steps_ = nullptr;
};

// What the rows of a report are gathered with.
struct Gathering {
    engine::Database& database;
    Attempt attempt;
    // Called before each record with how many per cent of them were read. False when the user has cancelled.
    std::function<bool(double percent)> beforeRecord;
};

// What was read for a report.
struct GatheredRecords {
    // What the texts of the rows are views of.
    TextPool texts;
    // The user cancelled after so many of the records; the rows are those of the records until then.
    bool cancelled = false;
    qint64 recordsRead = 0;
    qint64 recordCount = 0;
};

// The rows of a report, gathered before anything of it is printed.
template <typename Row>
struct Gathered : GatheredRecords {
    std::vector<Row> rows;
};

// A field of the records that is a text of the row.
template <typename Row>
struct TextField {
    const char* name;
    QUtf8StringView Row::*text;
};

template <typename Row>
void ReadTexts(const engine::Recordset& record, std::span<const TextField<Row>> fields, Row& row, TextPool& texts) {
    for (const TextField<Row>& field : fields) {
        row.*field.text = texts.Keep(record[field.name]);
    }
}

// Gathers the rows of the records that `open` opens. `read` gives a record's row, none for one that the report leaves
// out. What fails in it costs the row; what it does through the attempt it is given costs that much of the row alone.
//
// What belongs to the records is read some records ahead, under one read lock: on a file that several desks share,
// taking the lock anew for every small record costs more than reading it. The lock is gone before `beforeRecord` lets
// events through. Reading ahead fails silently: the record at fault is read again, alone, in its turn.
template <typename Row>
class RowGatherer {
public:
    using Open = std::function<std::unique_ptr<engine::Recordset>()>;
    using Read = std::function<std::optional<Row>(const engine::Recordset&, TextPool& texts, const Attempt& attempt)>;

    RowGatherer(const Gathering& gathering, Read read) : gathering_(gathering), read_(std::move(read)) {}

    Gathered<Row> Gather(const Open& open) {
        if (gathering_.attempt([&] { records_ = open(); })) {
            ReadAll();
        }
        return std::move(gathered_);
    }

private:
    // Enough to make the lock's share small, and over in about a millisecond.
    static constexpr size_t recordsAhead = 16;

    void ReadAll() {
        qint64& count = gathered_.recordsRead;
        for (; !records_->EndOfFile(); records_->MoveNext(), ++count) {
            if (!gathering_.beforeRecord(records_->PercentPosition())) {
                gathered_.cancelled = true;
                records_->MoveLast();
                gathered_.recordCount = records_->RecordCount();
                return;
            }
            if (std::optional<Row> row = Next()) {
                gathered_.rows.push_back(std::move(*row));
            }
        }
        gathered_.recordCount = count;
    }

    // The current record's row.
    std::optional<Row> Next() {
        if (next_ == ahead_.size() && !failed_) {
            ReadAhead();
        }
        if (next_ < ahead_.size()) {
            return std::move(ahead_[next_++]);
        }
        failed_ = false;
        std::optional<Row> row;
        gathering_.attempt([&] { row = read_(*records_, gathered_.texts, gathering_.attempt); });
        return row;
    }

    void ReadAhead() {
        ahead_.clear();
        next_ = 0;
        const engine::Bookmark current = records_->CurrentBookmark();
        try {
            const engine::ReadScope scope(gathering_.database);
            for (; ahead_.size() < recordsAhead && !records_->EndOfFile(); records_->MoveNext()) {
                ahead_.push_back(read_(*records_, gathered_.texts, Attempt()));
            }
        } catch (const std::exception&) {
            failed_ = true;
        }
        records_->GoTo(current);
    }

    const Gathering& gathering_;
    Read read_;
    Gathered<Row> gathered_;
    std::unique_ptr<engine::Recordset> records_;
    std::vector<std::optional<Row>> ahead_;
    size_t next_ = 0;
    // The record behind those read ahead failed.
    bool failed_ = false;
};

// Opens the stored query of that name over the days, up to the first moment of `end`, and lets `readFields` read a
// first record: a site may have a query of its own, and what it lacks is reported once, not for each record. Without
// days the query lacks its parameters, which is an Error too.
std::unique_ptr<engine::Recordset> OpenOverDays(engine::Database& database, QStringView query,
                                                const std::optional<ReportDays>& days,
                                                const std::function<void(const engine::Recordset&)>& readFields);

} // namespace velmora
