#include "notes/windows/CellEditing.h"

#include "base/windows/DateBox.h"
#include "notes/windows/BoundModel.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>

#include <algorithm>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int linesOnSheet = 6;
constexpr int lettersOnSheet = 44;
constexpr int lettersOfChoice = 8;
constexpr int lettersInList = 60;

// A frame that is seen on a dark grid too, which the style's own is not.
void SetApart(QFrame& area) {
    area.setFrameStyle(int{QFrame::Box} | int{QFrame::Plain});
    area.setLineWidth(1);
    area.setForegroundRole(QPalette::Highlight);
}

// Knows whether a choice came from its open list; the arrow keys choose without.
class ChoiceBox : public QComboBox {
public:
    using QComboBox::QComboBox;

    void hidePopup() override {
        QComboBox::hidePopup();
        listClosed_ = true;
        QTimer::singleShot(0, this, [this] { listClosed_ = false; });
    }
    // The list may be wider than the box, but not as wide as the longest entry can be.
    void showPopup() override {
        const int widest = fontMetrics().averageCharWidth() * lettersInList;
        const int entries = view()->sizeHintForColumn(0) + 2 * view()->verticalScrollBar()->sizeHint().width();
        SetApart(*view());
        view()->setMinimumWidth(std::clamp(entries, width(), std::max(width(), widest)));
        QComboBox::showPopup();
    }
    bool WasChosenFromList() const { return listClosed_; }

private:
    bool listClosed_ = false;
};

QLineEdit* LineOf(QWidget* editor) {
    auto* combo = qobject_cast<QComboBox*>(editor);
    return combo != nullptr ? combo->lineEdit() : qobject_cast<QLineEdit*>(editor);
}

// Lines that were pasted into an editor of one line are words behind each other.
void KeepOneLine(QLineEdit& line) {
    QString text = line.text();
    const auto endsLine = [](QChar c) {
        return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    };
    if (std::any_of(text.cbegin(), text.cend(), endsLine)) {
        text.replace(u"\r\n"_s, u" "_s);
        std::replace_if(text.begin(), text.end(), endsLine, QChar(u' '));
        const bool modified = line.isModified();
        line.setText(text);
        line.setModified(modified);
    }
}

} // namespace

CellEditing::CellEditing(const Program& program, QTableView& view, const CellText& texts)
    : QObject(&view), program_(program), view_(view), texts_(texts) {
    const auto place = [this] { Place(); };
    connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, place);
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, place);
    connect(view.horizontalHeader(), &QHeaderView::sectionResized, this, place);
}

QWidget* CellEditing::MakeEditor(const BoundColumn& column) {
    QWidget* parent = view_.viewport();
    if (column.kind == CellKind::Lines) {
        auto* sheet = new QPlainTextEdit(parent);
        sheet->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        SetApart(*sheet);
        return sheet;
    }
    if (column.kind == CellKind::Moment) {
        return new DateBox(texts_.Locale(), program_.services().clock, parent);
    }
    if (column.kind == CellKind::Choice) {
        auto* combo = new ChoiceBox(parent);
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        // As wide as its cell, however long an entry is.
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(lettersOfChoice);
        combo->addItems(choices_);
        connect(combo, &QComboBox::activated, this, [this, combo] {
            if (combo->WasChosenFromList()) {
                QTimer::singleShot(0, this, &CellEditing::Chosen);
            }
        });
        return combo;
    }
    auto* line = new QLineEdit(parent);
    if (column.kind == CellKind::Money) {
        line->setAlignment(Qt::AlignRight);
    }
    return line;
}

void CellEditing::Open(const QModelIndex& index, const QString& typed) {
    Close();
    const auto& model = static_cast<const BoundModel&>(*index.model());
    index_ = index;
    column_ = model.Column(index.column());
    stored_ = model.ValueAt(index);
    editor_ = MakeEditor(column_);
    editor_->setObjectName(u"CellEditor"_s);
    editor_->setAccessibleName(model.headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    editor_->setFont(view_.font());
    if (auto* date = qobject_cast<DateBox*>(editor_)) {
        const auto moment = stored_.ToDateTime();
        date->SetValue(moment ? std::optional(DateOf(*moment)) : std::nullopt);
    } else {
        SetText(texts_.Typed(stored_, column_.kind));
    }
    initial_ = EditorText();
    editor_->installEventFilter(this);
    if (QLineEdit* line = LineOf(editor_)) {
        line->installEventFilter(this);
        connect(line, &QLineEdit::textChanged, line, [line] { KeepOneLine(*line); });
    }
    Place();
    editor_->show();
    TakeFocus();
    if (typed.isNull()) {
        StandBehindText();
    } else {
        SetText(typed);
    }
}

void CellEditing::SetText(const QString& text) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(editor_)) {
        sheet->setPlainText(text);
        sheet->moveCursor(QTextCursor::End);
        return;
    }
    if (QLineEdit* line = LineOf(editor_)) {
        QString words = text;
        words.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ');
        if (auto* combo = qobject_cast<QComboBox*>(editor_)) {
            // The list opens, and the arrow keys go on, from the entry that is there.
            combo->setCurrentIndex(combo->findText(words, Qt::MatchFixedString));
        }
        line->setText(words);
        line->setModified(true);
    }
}

QString CellEditing::EditorText() const {
    if (const auto* sheet = qobject_cast<const QPlainTextEdit*>(editor_.data())) {
        return sheet->toPlainText();
    }
    const QLineEdit* line = LineOf(editor_);
    return line != nullptr ? line->text() : QString();
}

void CellEditing::Place() {
    if (editor_ == nullptr || !index_.isValid()) {
        return;
    }
    QRect place = view_.visualRect(index_);
    if (column_.kind == CellKind::Lines) {
        const QFontMetrics metrics = view_.fontMetrics();
        const QSize room = view_.viewport()->size();
        place.setWidth(std::min(std::max(place.width(), metrics.averageCharWidth() * lettersOnSheet), room.width()));
        place.setHeight(std::min(metrics.lineSpacing() * linesOnSheet + 12, room.height()));
        place.moveLeft(std::max(0, std::min(place.left(), room.width() - place.width())));
        place.moveTop(std::max(0, std::min(place.top(), room.height() - place.height())));
    } else {
        place.setWidth(std::max(place.width(), editor_->minimumSizeHint().width()));
    }
    editor_->setGeometry(place);
}

void CellEditing::DropDown() {
    if (auto* combo = qobject_cast<QComboBox*>(editor_)) {
        combo->lineEdit()->selectAll();
        combo->showPopup();
    } else if (auto* date = qobject_cast<DateBox*>(editor_)) {
        date->OpenCalendar();
    }
}

bool CellEditing::IsUntouched() const {
    return editor_ == nullptr || EditorText() == initial_;
}

bool CellEditing::TellsRefusal() const {
    return qobject_cast<const DateBox*>(editor_.data()) != nullptr;
}

Value CellEditing::ReadMoment() const {
    auto* date = qobject_cast<DateBox*>(editor_.data());
    if (!date->Commit()) {
        throw ProgramError(ErrorNumber::TypeMismatch, date->Refusal());
    }
    if (!date->Value()) {
        return {};
    }
    // Another day keeps the time of day that the record has.
    const auto before = stored_.ToDateTime();
    const auto time = before ? *before - StartOfDay(DateOf(*before)) : DateTime::duration(0);
    return Value(StartOfDay(*date->Value()) + time);
}

Value CellEditing::Read() const {
    if (column_.kind == CellKind::Moment) {
        return ReadMoment();
    }
    QString text = EditorText();
    if (column_.kind == CellKind::Lines && stored_.ToText().contains(u"\r\n")) {
        // The line ends stay those that the text had.
        text.replace(u"\n"_s, u"\r\n"_s);
    }
    return texts_.Read(text, column_, choices_);
}

void CellEditing::Close() {
    if (editor_ == nullptr) {
        return;
    }
    QWidget* closing = editor_;
    editor_ = nullptr;
    closing->removeEventFilter(this);
    // A hidden control hands the focus on with a Tab key of its own, so the view takes it before.
    if (closing->hasFocus() || closing->isAncestorOf(QApplication::focusWidget())) {
        view_.setFocus();
    }
    closing->hide();
    closing->deleteLater();
}

void CellEditing::TakeFocus() {
    if (editor_ == nullptr) {
        return;
    }
    view_.scrollTo(index_);
    editor_->setFocus();
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(editor_)) {
        sheet->selectAll();
    } else if (QLineEdit* line = LineOf(editor_)) {
        line->selectAll();
    }
}

void CellEditing::StandBehindText() {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(editor_)) {
        sheet->moveCursor(QTextCursor::End);
    } else if (QLineEdit* line = LineOf(editor_)) {
        line->end(false);
    }
}

bool CellEditing::IsGridKey(const QKeyEvent& event) const {
    const bool sheet = column_.kind == CellKind::Lines;
    const bool plain = event.modifiers() == Qt::NoModifier || event.modifiers() == Qt::KeypadModifier;
    switch (event.key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return plain;
    case Qt::Key_Up:
    case Qt::Key_Down:
        return plain && (column_.kind == CellKind::Text || column_.kind == CellKind::Money);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return !sheet;
    default:
        return false;
    }
}

bool CellEditing::eventFilter(QObject*, QEvent* event) {
    if (editor_ == nullptr || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)) {
        return false;
    }
    auto* key = static_cast<QKeyEvent*>(event);
    if (!IsGridKey(*key)) {
        // In the sheet these end a line instead of the entry.
        const bool lineEnd = column_.kind == CellKind::Lines && key->key() == Qt::Key_Return;
        if (lineEnd && event->type() == QEvent::KeyPress) {
            qobject_cast<QPlainTextEdit*>(editor_)->insertPlainText(u"\n"_s);
        }
        return lineEnd;
    }
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    Q_EMIT GridKey(key);
    return true;
}

} // namespace velmora
