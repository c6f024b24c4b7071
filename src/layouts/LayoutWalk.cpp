#include "layouts/LayoutWalk.h"

#include "base/Translate.h"
#include "layouts/LayoutQuery.h"

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

// Equal as the database sorts them: letter case of A to Z apart.
bool SameKey(const QByteArray& left, const QByteArray& right) {
    const auto fold = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return fold(a) == fold(b); });
}

class RecordWalk {
public:
    RecordWalk(const Layout& layout, engine::Database& database, const LocaleText& locale, print::ReportWriter& writer)
        : layout_(layout), database_(database), locale_(locale), writer_(writer) {}

    qint64 Run(const Formula& selection, DateTime now) {
        SetSpecial(Special::Now, locale_.GeneralDate(now));
        SetSpecial(Special::Today, locale_.LongDate(DateOf(now)));
        SetSpecial(Special::Period, PeriodText(selection, locale_));
        const LayoutQuery query = RecordQuery(layout_, selection);
        rows_ = query.parameters.Open(database_, query.statement)->OpenRecordset();
        if (layout_.details) {
            const LayoutQuery details = DetailQuery(*layout_.details);
            details_ = details.parameters.Open(database_, details.statement);
        }
        writer_.BeginRecords(Form());
        for (; !rows_->EndOfFile(); rows_->MoveNext()) {
            EnterGroups(query.firstGroup);
            WriteRecord();
        }
        EndGroups(0);
        writer_.EndRecords(Closing());
        return count_;
    }

private:
    struct OpenGroup {
        QByteArray key;
        qint64 count = 0;
    };

    void SetSpecial(Special special, const QString& text) { specials_[static_cast<size_t>(special)] = text; }

    QString FillSpecials(const Template& text, qint64 count) {
        SetSpecial(Special::Count, locale_.Locale().toString(count));
        return text.Fill({nullptr, specials_, locale_});
    }

    print::RecordForm Form() const {
        print::RecordForm form;
        form.title = layout_.title.Fill({nullptr, specials_, locale_});
        form.subtitle = layout_.subtitle.Fill({nullptr, specials_, locale_});
        form.columns.assign(layout_.columns.begin(), layout_.columns.end());
        form.items.assign(layout_.body.begin(), layout_.body.end());
        for (const LayoutGroup& group : layout_.groups) {
            form.groupsBeginPage.push_back(group.newPage);
        }
        form.numberPagesPerGroup = layout_.numberPagesPerGroup;
        form.rowLines = layout_.rowLines;
        form.pageHeader = Strip(layout_.pageHeader);
        form.pageFooter = Strip(layout_.pageFooter);
        return form;
    }

    print::PageStrip Strip(const PageStrip& strip) const {
        if (strip.IsEmpty()) {
            return {};
        }
        return [strip, specials = specials_, &locale = locale_](int page, int pages) mutable {
            specials[static_cast<size_t>(Special::Page)] = locale.Locale().toString(page);
            specials[static_cast<size_t>(Special::Pages)] = locale.Locale().toString(pages);
            const FillIn from{nullptr, specials, locale};
            return std::array{strip.left.Fill(from), strip.center.Fill(from), strip.right.Fill(from)};
        };
    }

    QString FillRow(const Template& text) const { return text.Fill({rows_.get(), specials_, locale_}); }

    // An empty text and none are one group.
    QByteArray Key(int column) const { return rows_->FieldAt(column).ToText().toUtf8(); }

    void EnterGroups(int firstColumn) {
        size_t level = 0;
        while (level < open_.size() && SameKey(open_[level].key, Key(firstColumn + static_cast<int>(level)))) {
            ++level;
        }
        EndGroups(level);
        for (; level < layout_.groups.size(); ++level) {
            const LayoutGroup& group = layout_.groups[level];
            open_.push_back({Key(firstColumn + static_cast<int>(level)), 0});
            const bool isNone = open_.back().key.isEmpty() && !group.none.IsEmpty();
            writer_.BeginGroup(level, FillRow(isNone ? group.none : group.heading));
            groupCount_ += level == 0 ? 1 : 0;
            previous_.clear();
        }
    }

    void EndGroups(size_t level) {
        while (open_.size() > level) {
            const size_t last = open_.size() - 1;
            writer_.EndGroup(last, FillSpecials(layout_.groups[last].footer, open_[last].count));
            open_.pop_back();
        }
    }

    void WriteRecord() {
        ++count_;
        for (OpenGroup& group : open_) {
            ++group.count;
        }
        print::Record record;
        for (const LayoutColumn& column : layout_.columns) {
            print::RecordCell cell{FillRow(column.value), FillRow(column.below)};
            if (column.kind == LayoutColumn::Kind::Tick) {
                cell.ticked = rows_->FieldAt(column.tick).ToBool();
            }
            record.cells.push_back(std::move(cell));
        }
        for (const BodyItem& item : layout_.body) {
            record.cells.push_back({FillRow(item.text), {}});
        }
        MarkRepeated(record);
        AddDetails(record);
        writer_.PrintRecord(record);
    }

    // A value repeats only where the ones to its left do: two persons may share an extension.
    void MarkRepeated(print::Record& record) {
        bool repeats = !previous_.empty();
        for (size_t i = 0; i < layout_.columns.size() && repeats; ++i) {
            if (!layout_.columns[i].repeat) {
                print::RecordCell& cell = record.cells[i];
                repeats = previous_[i].value == cell.value && previous_[i].below == cell.below;
                cell.repeated = repeats;
            }
        }
        previous_ = record.cells;
    }

    void AddDetails(print::Record& record) {
        if (details_ == nullptr) {
            return;
        }
        details_->SetParameter(detailKey, rows_->FieldAt(layout_.details->parent).ToValue());
        const auto below = details_->OpenRecordset();
        for (; !below->EndOfFile(); below->MoveNext()) {
            const QString line = layout_.details->text.Fill({below.get(), specials_, locale_});
            if (!line.isEmpty()) {
                record.details += line;
            }
        }
    }

    QString Closing() {
        if (count_ > 0) {
            // The footer of the only group has said it.
            const bool isSaid = groupCount_ == 1 && !layout_.groups.front().footer.IsEmpty();
            return isSaid ? QString() : FillSpecials(layout_.total, count_);
        }
        return layout_.empty.IsEmpty() ? Translate(u"There is nothing to list."_s) : FillSpecials(layout_.empty, 0);
    }

    const Layout& layout_;
    engine::Database& database_;
    const LocaleText& locale_;
    print::ReportWriter& writer_;
    SpecialTexts specials_;
    std::unique_ptr<engine::Recordset> rows_;
    std::unique_ptr<engine::QueryDef> details_;
    std::vector<OpenGroup> open_;
    std::vector<print::RecordCell> previous_;
    qint64 count_ = 0;
    // Of the outermost level.
    qint64 groupCount_ = 0;
};

} // namespace

qint64 WriteRecords(const Layout& layout, const Formula& selection, engine::Database& database,
                    const LocaleText& locale, DateTime now, print::ReportWriter& writer) {
    return RecordWalk(layout, database, locale, writer).Run(selection, now);
}

QString PeriodText(const Formula& formula, const LocaleText& locale) {
    const std::vector<DateTime> dates = formula.Dates();
    if (dates.empty()) {
        return {};
    }
    const auto [least, most] = std::minmax_element(dates.begin(), dates.end());
    const Date first = DateOf(*least);
    const Date last = std::max(first, DateOf(*most) - std::chrono::days(1));
    return first == last ? locale.LongDate(first)
                         : u"%1 %2 %3"_s.arg(locale.ShortDate(first), Translate(u"to"_s), locale.ShortDate(last));
}

} // namespace velmora::layouts
