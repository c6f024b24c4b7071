#pragma once

#include "engine/Database.h"
#include "reports/ReportDays.h"

#include <QStringView>

#include <algorithm>
#include <functional>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

// Keeps the texts of a report's rows, as UTF-8. Its views are good as long as the pool, also when it is moved.
class TextPool {
public:
    QUtf8StringView Keep(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        char* kept = static_cast<char*>(memory_->allocate(text.size(), 1));
        std::copy(text.begin(), text.end(), kept);
        return {kept, static_cast<qsizetype>(text.size())};
    }
    // The field as a person reads it; empty for an empty field.
    QUtf8StringView Keep(const engine::Field& field) {
        return field.StoredKind() == engine::Field::Kind::Text ? Keep(field.Utf8())
                                                               : Keep(std::string_view(field.ToText().toUtf8()));
    }

private:
    std::unique_ptr<std::pmr::monotonic_buffer_resource> memory_ =
        std::make_unique<std::pmr::monotonic_buffer_resource>();
};

inline bool BeginsWith(QUtf8StringView text, const QString& beginning) {
    const QByteArray bytes = beginning.toUtf8();
    return QByteArrayView(text).startsWith(bytes);
}

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

// Runs a reading that can fail; false when it failed and the failure was ignored. A reading that is tried again begins
// anew, so it must restart cleanly.
using Attempt = std::function<bool(const std::function<void()>& reading)>;

// What the rows of a report are gathered with.
struct Gathering {
    engine::Database& database;
    // Reports a failure to the user.
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

// Gathers the rows of records. `read` gives a record's row, none for one that the report leaves out; `complete` reads
// what belongs to some rows in other records. What fails in them costs the row; what `complete` does through the
// attempt that it is given costs that much of the rows alone.
//
// Records are read and completed some ahead, under one read lock: on a file that several desks share, taking the lock
// anew for every small record costs more than reading it. The lock is gone before `beforeRecord` lets events through.
// Reading ahead fails silently: the same records are then read again, each alone in its turn.
template <typename Row>
class RowGatherer {
public:
    using Open = std::function<std::unique_ptr<engine::Recordset>()>;
    using Read = std::function<std::optional<Row>(const engine::Recordset&, TextPool& texts)>;
    // Rows that the report leaves out are none.
    using Rows = std::span<std::optional<Row>>;
    using Complete = std::function<void(Rows, TextPool& texts, const Attempt& attempt)>;

    // For one gathering.
    RowGatherer(const Gathering& gathering, Read read, Complete complete = {})
        : gathering_(gathering), read_(std::move(read)), complete_(std::move(complete)) {}

    Gathered<Row> Gather(const Open& open) {
        if (gathering_.attempt([&] { records_ = open(); })) {
            ReadAll();
        }
        return std::move(gathered_);
    }

    // The records of the stored query of that name over the days; without days the query lacks its parameters, which is
    // reported as its failure. A first record is read at once: a site may have a query of its own, and what it lacks is
    // reported once, not for each record.
    Gathered<Row> GatherOverDays(QStringView query, const std::optional<ReportDays>& days) {
        return Gather([&] {
            const auto definition = gathering_.database.OpenQueryDef(query);
            if (days) {
                definition->SetParameter(u"RStart", StartOfDay(days->start));
                definition->SetParameter(u"REnd", StartOfDay(days->end));
            }
            auto records = definition->OpenRecordset(engine::RecordsetKind::Snapshot);
            if (!records->EndOfFile()) {
                TextPool texts;
                read_(*records, texts);
            }
            return records;
        });
    }

private:
    // Enough to make the lock's share small, and over in about a millisecond.
    static constexpr size_t recordsAhead = 64;

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
        if (next_ == ahead_.size() && alone_ == 0) {
            ReadAhead();
        }
        if (next_ < ahead_.size()) {
            return std::move(ahead_[next_++]);
        }
        --alone_;
        std::optional<Row> row;
        gathering_.attempt([&] {
            row = read_(*records_, gathered_.texts);
            Finish({&row, 1}, gathering_.attempt);
        });
        return row;
    }

    void ReadAhead() {
        ahead_.clear();
        next_ = 0;
        const engine::Bookmark current = records_->CurrentBookmark();
        const Attempt throwing = [](const std::function<void()>& reading) {
            reading();
            return true;
        };
        try {
            const engine::ReadScope scope(gathering_.database);
            for (; ahead_.size() < recordsAhead && !records_->EndOfFile(); records_->MoveNext()) {
                ahead_.push_back(read_(*records_, gathered_.texts));
            }
            Finish(ahead_, throwing);
        } catch (const std::exception&) {
            // Also the record at fault, which may not be among them.
            alone_ = ahead_.size() + 1;
            ahead_.clear();
        }
        records_->GoTo(current);
    }

    void Finish(Rows rows, const Attempt& attempt) {
        if (complete_) {
            complete_(rows, gathered_.texts, attempt);
        }
    }

    const Gathering& gathering_;
    Read read_;
    Complete complete_;
    Gathered<Row> gathered_;
    std::unique_ptr<engine::Recordset> records_;
    std::vector<std::optional<Row>> ahead_;
    size_t next_ = 0;
    // So many of the next records are read alone, since reading them ahead failed.
    size_t alone_ = 0;
};

} // namespace velmora
