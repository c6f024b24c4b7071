#include "tasks/Tasks.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "data/StoreAgainstOthers.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::EngineError;
using engine::EngineErrorNumber;

namespace {

QString ChangeNotice(const QStringList& captions) {
    if (captions.isEmpty()) {
        return {};
    }
    QStringList translated;
    for (const QString& caption : captions) {
        translated += Translate(caption);
    }
    return Translate(u"Changed by another desk:"_s) + u' ' + translated.join(u", "_s);
}

bool IsDeletion(const EngineError& error) {
    return error.Kind() == EngineErrorNumber::RecordDeleted;
}

} // namespace

void Tasks::ShowMessage(const QString& text) const {
    program_.services().dialogs.ShowMessage({text, program_.Title(), Buttons::Ok, Icon::None});
}

template <typename Function>
bool Tasks::Do(const QString& failure, Function&& work) {
    QString description;
    try {
        const BusyPointer busy(program_.services().eventLoop);
        work();
        return true;
    } catch (const std::exception&) {
        description = CurrentError().Description();
    }
    Hide({});
    ShowMessage(failure + u' ' + description);
    return false;
}

void Tasks::ShowTasks() {
    const DateRange& range = choices_.DateRange1;
    if (!range.StartDate || !range.EndDate) {
        Close();
        Hide(Translate(u"Enter a start date and an end date to see the reservations between them."_s));
        return;
    }
    if (*range.StartDate > *range.EndDate) {
        ShowMessage(Translate(u"End Date is before Start date, No Reservations can be found"_s));
    }
    if (Do(Translate(u"Error Occured Selecting and Displaying Reservations:"_s), [this] { Select(); })) {
        DisplayEvent();
    }
}

void Tasks::Select() {
    moved_.reset();
    TaskRecordset_.reset();
    seen_.clear();
    position_ = 0;
    count_ = 0;
    selectedFor_ = TaskOfViewType(choices_.ViewType);
    TaskRecordset_ = database_.OpenRecordset(TaskQuery(choices_, program_.services().startupArgument),
                                             engine::RecordsetKind::Updatable);
    if (!TaskRecordset_->EndOfFile()) {
        TaskRecordset_->MoveLast();
        count_ = TaskRecordset_->RecordCount();
        TaskRecordset_->MoveFirst();
    }
}

void Tasks::First() {
    StepTo(0);
}

void Tasks::Previous() {
    StepTo(position_ - 1);
}

void Tasks::Next() {
    StepTo(position_ + 1);
}

void Tasks::Last() {
    StepTo(count_ - 1);
}

void Tasks::StepTo(qint64 position) {
    if (position >= 0 && position < count_ && position != position_) {
        moved_.reset();
        position_ = position;
        DisplayEvent();
    }
}

void Tasks::DisplayEvent() {
    if (count_ == 0) {
        Hide(Translate(u"There are no reservations for this choice."_s));
        return;
    }
    if (Do(Translate(u"Error occured displaying event:"_s), [this] { Read(); })) {
        Show();
    }
}

bool Tasks::FindMoved() {
    const QString id = seen_.value(position_).lblID;
    moved_.reset();
    if (id.isEmpty()) {
        return false;
    }
    auto record = database_.OpenRecordset(
        u"SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where ID = "_s + id,
        engine::RecordsetKind::Updatable);
    if (!record->EndOfFile()) {
        moved_ = std::move(record);
    }
    return moved_ != nullptr;
}

void Tasks::Read() {
    const LocaleText& locale = program_.services().localeText;
    TaskDetails now;
    bool gone = false;
    try {
        // Moving onto the record makes the set read it again.
        if (moved_ != nullptr) {
            moved_->GoTo(moved_->CurrentBookmark());
        } else {
            TaskRecordset_->GoTo(engine::Bookmark(TaskRecordset_->CurrentBookmark().Opening(), position_));
        }
        now = TaskDetails::Read(Record(), locale);
    } catch (const EngineError& error) {
        if (!IsDeletion(error)) {
            throw;
        }
        gone = !FindMoved();
        if (!gone) {
            now = TaskDetails::Read(Record(), locale);
        }
    }
    gone_ = gone;
    const auto last = seen_.constFind(position_);
    if (gone_) {
        const bool known = last != seen_.constEnd();
        shown_.details = known ? *last : TaskDetails();
        shown_.notice = known ? Translate(u"Another desk deleted this reservation."_s)
                              : Translate(u"Another desk deleted this reservation or moved it to another location. "
                                          "Show the tasks again to see it there."_s);
        return;
    }
    shown_.notice = last == seen_.constEnd() ? QString() : ChangeNotice(last->Differences(now));
    shown_.details = now;
    seen_[position_] = std::move(now);
}

void Tasks::Show() {
    shown_.position = static_cast<int>(position_) + 1;
    shown_.count = static_cast<int>(count_);
    shown_.place = Translate(u"%1 of %2"_s).arg(shown_.position).arg(shown_.count);
    shown_.hasPrevious = position_ > 0;
    shown_.hasNext = position_ + 1 < count_;
    shown_.tickable = gone_ ? std::nullopt : std::optional(selectedFor_);
    visible_ = true;
    view_.ShowTask(shown_);
}

void Tasks::Hide(const QString& text) {
    visible_ = false;
    view_.HideTask(text);
}

void Tasks::StoreTick(TaskKind task, bool done) {
    if (!visible_ || gone_) {
        return;
    }
    Outcome outcome = Outcome::Stored;
    Steps steps(program_.services().errors, u"Service Administration"_s, u"Store Task"_s);
    const bool written = steps.Step(TaskCaption(task), [&] {
        const BusyPointer busy(program_.services().eventLoop);
        outcome = WriteTick(task, done);
    });
    if (written && outcome == Outcome::Deleted) {
        ShowMessage(Translate(u"Record not found, possibly deleted by another user"_s));
    } else if (written && outcome == Outcome::Stored) {
        // Not a change to report: it is this desk's own.
        seen_[position_].Done(task) = done;
    }
    ShowAfterTick();
}

Tasks::Outcome Tasks::WriteTick(TaskKind task, bool done) {
    const QByteArray field = TaskField(task).toUtf8();
    Outcome outcome = Outcome::Stored;
    bool refused = false;
    const auto find = [&]() -> engine::Recordset* {
        try {
            // After a refusal the field is read anew. A field that another desk emptied counts as changed, not as
            // ticked.
            if (std::exchange(refused, true) && !Record()[field.constData()].IsNull() &&
                Record()[field.constData()].ToBool() == done) {
                outcome = Outcome::MadeByAnother;
                return nullptr;
            }
        } catch (const EngineError& error) {
            if (!IsDeletion(error)) {
                throw;
            }
            if (!FindMoved()) {
                outcome = Outcome::Deleted;
                return nullptr;
            }
        }
        return &Record();
    };
    StoreAgainstOthers(find, [&](engine::Recordset& record) { record.Set(field.constData(), done); });
    return outcome;
}

void Tasks::ShowAfterTick() {
    try {
        Read();
    } catch (const std::exception&) {
        // It cannot be read just now; what is known of it stays on the screen, with the tick only if it was stored.
        shown_.details = seen_.value(position_);
    }
    Show();
}

void Tasks::Refresh() {
    if (!visible_) {
        return;
    }
    const ShownTask before = shown_;
    const bool wasGone = gone_;
    try {
        Read();
    } catch (const std::exception&) {
        return;
    }
    if (gone_ == wasGone && shown_.details == before.details) {
        // The notice of an earlier change stays to be read.
        shown_.notice = before.notice;
        return;
    }
    Show();
}

std::optional<qint32> Tasks::ShownReservation() const {
    return visible_ && !gone_ ? std::optional(shown_.details.lblID.toInt()) : std::nullopt;
}

void Tasks::Close() {
    moved_.reset();
    TaskRecordset_.reset();
    seen_.clear();
    position_ = 0;
    count_ = 0;
    Hide({});
}

} // namespace velmora
