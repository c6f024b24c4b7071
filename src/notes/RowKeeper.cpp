#include "notes/RowKeeper.h"

#include "base/Steps.h"
#include "base/Translate.h"

#include <algorithm>

namespace velmora {

using namespace Qt::StringLiterals;

using Outcome = BoundRows::Outcome;

namespace {

constexpr qsizetype longestExcerpt = 300;
constexpr qsizetype mostLines = 8;

// Where a text is begun to be shown, so that the place of a difference is among what there is room for.
qsizetype BeginOfExcerpt(const QString& text, qsizetype difference) {
    constexpr qsizetype before = 40;
    const QString begin = text.first(difference);
    if (difference <= longestExcerpt / 2 && begin.count(u'\n') <= mostLines / 2) {
        return 0;
    }
    // The line of the difference from its beginning where that is near.
    const qsizetype line = begin.lastIndexOf(u'\n') + 1;
    const qsizetype from = std::max(line, difference - before);
    return from < text.size() && text[from].isLowSurrogate() ? from - 1 : from;
}

// What of a text a message has room for, its further lines set in below its first.
QString ExcerptFrom(const QString& text, qsizetype difference) {
    if (text.isEmpty()) {
        return Translate(u"(empty)"_s);
    }
    const qsizetype from = BeginOfExcerpt(text, difference);
    QStringList lines = text.sliced(from, std::min(longestExcerpt, text.size() - from)).split(u'\n');
    const bool cut = from + longestExcerpt < text.size() || lines.size() > mostLines;
    lines = lines.first(std::min(mostLines, lines.size()));
    return (from > 0 ? u"\u2026"_s : QString()) + lines.join(u"\n        "_s).remove(u'\r') +
           (cut ? u"\u2026"_s : QString());
}

qsizetype FirstDifference(const QString& one, const QString& other) {
    return std::mismatch(one.cbegin(), one.cend(), other.cbegin(), other.cend()).first - one.cbegin();
}

} // namespace

RowKeeper::RowKeeper(const Program& program, BoundRows& rows, RowRules& rules, QString module)
    : program_(program), rows_(rows), rules_(rules), module_(std::move(module)), texts_(program.services().localeText) {
}

Answer RowKeeper::Ask(const QString& text, Buttons buttons, Icon icon) const {
    return program_.services().dialogs.ShowMessage({text, program_.Title(), buttons, icon});
}

QString RowKeeper::Shown(const Value& value, int column) const {
    return texts_.Shown(value, rows_.Columns()[static_cast<size_t>(column)].kind);
}

QString RowKeeper::Excerpt(const Value& value, int column) const {
    return ExcerptFrom(Shown(value, column), 0);
}

QString RowKeeper::BothVersions() const {
    QStringList lines;
    for (const BoundRows::Conflict& each : rows_.Conflicts()) {
        const QString before = Shown(each.before, each.column);
        const QString mine = Shown(each.mine, each.column);
        const QString theirs = Shown(each.theirs, each.column);
        // Of long texts the part that each desk changed.
        const qsizetype mineAt = FirstDifference(before, mine);
        const qsizetype theirsAt = FirstDifference(before, theirs);
        lines.append(Translate(u"%1\n    before: %2\n    yours: %3\n    the other desk's: %4"_s)
                         .arg(Translate(rows_.Columns()[static_cast<size_t>(each.column)].caption),
                              ExcerptFrom(before, std::min(mineAt, theirsAt)), ExcerptFrom(mine, mineAt),
                              ExcerptFrom(theirs, theirsAt)));
    }
    return lines.join(u'\n');
}

QString RowKeeper::MyVersion() const {
    QStringList lines;
    const int row = *rows_.PendingRow();
    for (size_t i = 0; i < rows_.Columns().size(); ++i) {
        const BoundColumn& column = rows_.Columns()[i];
        const Value& value = rows_.At(row, static_cast<int>(i));
        if (column.editing == Editing::Allowed && !value.IsNull()) {
            lines.append(u"%1: %2"_s.arg(Translate(column.caption), Excerpt(value, static_cast<int>(i))));
        }
    }
    return lines.join(u'\n');
}

bool RowKeeper::MayWrite(Steps& steps) {
    refusal_.reset();
    if (!steps.Step(u"Checking Row"_s, [this] { refusal_ = rules_.Refuse(rows_); })) {
        return false;
    }
    if (refusal_) {
        Ask(refusal_->reason, Buttons::Ok, Icon::Exclamation);
    }
    return !refusal_;
}

bool RowKeeper::Store() {
    if (!rows_.PendingRow()) {
        return true;
    }
    // Another desk's lock is waited for.
    const BusyPointer busy(program_.services().eventLoop);
    Steps steps(program_.services().errors, module_, u"Update Row"_s);
    if (!MayWrite(steps)) {
        return false;
    }
    QString question;
    if (!steps.Step(u"Checking Row"_s, [&] { question = rules_.QuestionBeforeWriting(rows_); })) {
        return false;
    }
    if (!question.isEmpty() && Ask(question, Buttons::YesNo, Icon::Question) != Answer::Yes) {
        rows_.Undo();
        return true;
    }
    while (rows_.PendingRow()) {
        Outcome outcome = Outcome::Done;
        if (!steps.Step(u"Writing Row"_s, [&] { outcome = rules_.Write(rows_); })) {
            return false;
        }
        if (!SettleOutcome(outcome)) {
            return false;
        }
    }
    return true;
}

void RowKeeper::StoreUnasked() noexcept {
    if (!rows_.PendingRow()) {
        return;
    }
    try {
        const bool mayWrite = !rules_.Refuse(rows_) && rules_.QuestionBeforeWriting(rows_).isEmpty();
        if (mayWrite && rules_.Write(rows_) == Outcome::Done) {
            return;
        }
        program_.services().log.Write(module_ + u": not stored when the program ended\n"_s + MyVersion());
    } catch (const std::exception& failure) {
        program_.services().log.Write(module_ + u": not stored when the program ended, "_s +
                                      QString::fromUtf8(failure.what()) + u'\n' + MyVersion());
    }
}

bool RowKeeper::SettleOutcome(Outcome outcome) {
    switch (outcome) {
    case Outcome::Done:
        return true;
    case Outcome::Changed:
        return Settle(Translate(u"Another desk changed this row while you were editing it.\n\n%1\n\n"
                                "Yes stores yours, No keeps the other desk's, Cancel goes on editing."_s)
                          .arg(BothVersions()),
                      &BoundRows::KeepMine);
    case Outcome::Gone:
        break;
    }
    return Settle(Translate(u"Another desk deleted this row while you were editing it. Yours is:\n\n%1\n\n"
                            "Yes adds it again as a new row, No gives it up, Cancel goes on editing."_s)
                      .arg(MyVersion()),
                  &BoundRows::AddAgain);
}

bool RowKeeper::Settle(const QString& question, void (BoundRows::*accept)()) {
    const Answer answer = Ask(question, Buttons::YesNoCancel, Icon::Question);
    if (answer == Answer::Yes) {
        (rows_.*accept)();
    } else if (answer == Answer::No) {
        rows_.Undo();
    }
    return answer != Answer::Cancel;
}

bool RowKeeper::MayDelete(const QList<int>& rows) {
    const QString count = QString::number(rows.size());
    const QString question = Translate(u"Delete"_s) + u' ' + count + u' ' + Translate(u"Rows"_s) + u'?';
    Dialogs& dialogs = program_.services().dialogs;
    if (dialogs.ShowMessage({question, {}, Buttons::YesNo, Icon::Question}) != Answer::Yes) {
        return false;
    }
    Steps steps(program_.services().errors, module_, u"Keyboard Trap"_s);
    QString more;
    return steps.Step(u"Delete Rows"_s, [&] { more = rules_.QuestionBeforeDeleting(rows_, rows); }) &&
           (more.isEmpty() || Ask(more, Buttons::YesNo, Icon::Question) == Answer::Yes);
}

bool RowKeeper::DeleteRow(Steps& steps, int row) {
    Outcome outcome = Outcome::Done;
    const auto tryTo = [&](BoundRows::Force force) {
        return steps.Step(u"Delete Rows"_s, [&] { outcome = rows_.Delete(row, force); });
    };
    if (!tryTo(BoundRows::Force::No)) {
        return false;
    }
    if (outcome != Outcome::Changed) {
        return true;
    }
    QStringList changes;
    for (const BoundRows::Conflict& each : rows_.Conflicts()) {
        const QString before = Shown(each.before, each.column);
        const QString theirs = Shown(each.theirs, each.column);
        const qsizetype difference = FirstDifference(before, theirs);
        changes.append(Translate(u"%1\n    shown here: %2\n    the other desk's: %3"_s)
                           .arg(Translate(rows_.Columns()[static_cast<size_t>(each.column)].caption),
                                ExcerptFrom(before, difference), ExcerptFrom(theirs, difference)));
    }
    const QString question = Translate(u"Another desk changed a row that is to be deleted.\n\n%1\n\n"
                                       "Delete it all the same?"_s)
                                 .arg(changes.join(u'\n'));
    return Ask(question, Buttons::YesNo, Icon::Question) != Answer::Yes || tryTo(BoundRows::Force::Yes);
}

bool RowKeeper::Delete(const QList<int>& rows) {
    if (rows.isEmpty() || !MayDelete(rows)) {
        return false;
    }
    const auto pending = rows_.PendingRow();
    if (pending && rows.contains(*pending)) {
        rows_.Undo();
    }
    const BusyPointer busy(program_.services().eventLoop);
    Steps steps(program_.services().errors, module_, u"Keyboard Trap"_s);
    for (const int row : rows) {
        if (!DeleteRow(steps, row)) {
            break;
        }
    }
    return true;
}

} // namespace velmora
