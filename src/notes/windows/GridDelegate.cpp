#include "notes/windows/GridDelegate.h"

#include "base/windows/DateBox.h"
#include "base/windows/Look.h"
#include "notes/windows/BoundModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int lettersInBox = 8;
constexpr int lettersInList = 60;
constexpr int linesOnSheet = 6;
constexpr int lettersOnSheet = 44;
// The property of an editor that keeps the text it was opened with.
constexpr const char* openedWith = "openedWith";

// A frame that is seen on a dark grid too, which the style's own is not.
void FrameInHighlight(QFrame& area) {
    area.setFrameStyle(int{QFrame::Box} | int{QFrame::Plain});
    area.setLineWidth(1);
    area.setForegroundRole(QPalette::Highlight);
}

const BoundModel& ModelOf(const QModelIndex& index) {
    return static_cast<const BoundModel&>(*index.model());
}

bool IsCurrent(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    return view != nullptr && view->currentIndex() == index;
}

QLineEdit& LineOf(QWidget& editor) {
    auto* box = qobject_cast<QComboBox*>(&editor);
    return box != nullptr ? *box->lineEdit() : static_cast<QLineEdit&>(editor);
}

bool EndsLine(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

QString InOneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    std::replace_if(text.begin(), text.end(), EndsLine, QChar(u' '));
    return text;
}

// Lines that were pasted into an editor of one line.
void KeepOneLine(QLineEdit& line) {
    const QString text = line.text();
    if (std::any_of(text.cbegin(), text.cend(), EndsLine)) {
        const bool modified = line.isModified();
        line.setText(InOneLine(text));
        line.setModified(modified);
    }
}

QString TextOf(QWidget& editor) {
    const auto* sheet = qobject_cast<const QPlainTextEdit*>(&editor);
    return sheet != nullptr ? sheet->toPlainText() : LineOf(editor).text();
}

} // namespace

ChoiceBox::ChoiceBox(const QStringList& choices, QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(lettersInBox);
    addItems(choices);
    connect(this, &QComboBox::activated, this, [this] { chosen_ = true; });
}

void ChoiceBox::showPopup() {
    // The list may be wider than the box, but not as wide as the longest entry can be.
    const int widest = fontMetrics().averageCharWidth() * lettersInList;
    const int entries = view()->sizeHintForColumn(0) + 2 * view()->verticalScrollBar()->sizeHint().width();
    FrameInHighlight(*view());
    view()->setMinimumWidth(std::clamp(entries, width(), std::max(width(), widest)));
    chosen_ = false;
    QComboBox::showPopup();
}

void ChoiceBox::hidePopup() {
    const bool wasOpen = view()->isVisible();
    QComboBox::hidePopup();
    if (wasOpen) {
        // The box takes the chosen entry only after its list is closed.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (std::exchange(chosen_, false)) {
                    Q_EMIT Chosen();
                }
            },
            Qt::QueuedConnection);
    }
}

QRect GridDelegate::BoxRect(const QRect& cell, const QWidget& view) {
    const int size = view.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &view);
    return {cell.left() + spacing::normal, cell.center().y() - size / 2, size, size};
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const BoundModel& model = ModelOf(index);
    option->state.setFlag(QStyle::State_Selected, selection_.contains(index.row()));
    option->state.setFlag(QStyle::State_Active, true);
    option->state.setFlag(QStyle::State_HasFocus, false);
    option->textElideMode = Qt::ElideRight;
    option->text.remove(u'\r').replace(QChar::LineSeparator, u" / "_s);
    if (model.IsGone(index.row())) {
        option->font.setStrikeOut(true);
    }
    // In a list that is only read nothing is set apart.
    if (model.IsGone(index.row()) || (model.CanAdd() && !model.CanEdit(index.column()))) {
        option->palette.setColor(QPalette::Text, QuietColour(option->palette));
    }
}

void GridDelegate::PaintBox(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const QString word = shown.text;
    shown.text.clear();
    const QStyle& style = *option.widget->style();
    style.drawControl(QStyle::CE_ItemViewItem, &shown, &painter, option.widget);

    const QRect box = BoxRect(option.rect, *option.widget);
    QStyleOption tick;
    tick.rect = box;
    tick.palette = shown.palette;
    tick.state =
        QStyle::State_Enabled | (ModelOf(index).ValueAt(index).ToBool() ? QStyle::State_On : QStyle::State_Off);
    // As everywhere in the program: the grid's own style knows only rows and lines.
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &tick, &painter, option.widget);

    const bool selected = shown.state.testFlag(QStyle::State_Selected);
    painter.setPen(shown.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter.setFont(shown.font);
    const QRect room = option.rect.adjusted(box.right() - option.rect.left() + spacing::normal, 0, -2, 0);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     shown.fontMetrics.elidedText(word, Qt::ElideRight, room.width()));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    const BoundModel& model = ModelOf(index);
    // The empty row shows no boxes until something is in it.
    const bool box = model.Column(index.column()).kind == CellKind::YesNo &&
                     (!model.IsNewRow(index.row()) || model.Rows().PendingRow() == index.row());
    if (box) {
        PaintBox(*painter, option, index);
    } else {
        QStyledItemDelegate::paint(painter, option, index);
    }
    if (IsCurrent(option, index)) {
        const bool selected = selection_.contains(index.row());
        painter->setPen(QPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight), 2));
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
    const CellKind kind = ModelOf(index).Column(index.column()).kind;
    QWidget* editor = nullptr;
    if (kind == CellKind::Lines) {
        auto* sheet = new QPlainTextEdit(parent);
        FrameInHighlight(*sheet);
        editor = sheet;
    } else if (kind == CellKind::Moment) {
        editor = new DateBox(texts_.Locale(), program_.services().clock, parent);
    } else if (kind == CellKind::Choice) {
        editor = new ChoiceBox(choices_, parent);
    } else {
        editor = new QLineEdit(parent);
    }
    if (kind != CellKind::Lines) {
        QLineEdit& line = LineOf(*editor);
        line.setAlignment(kind == CellKind::Money ? Qt::AlignRight : Qt::AlignLeft);
        connect(&line, &QLineEdit::textChanged, &line, [&line] { KeepOneLine(line); });
    }
    editor->setObjectName(u"CellEditor"_s);
    editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    editor->setFont(parent->font());
    return editor;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    // A row that changes under an open editor does not take back what is being typed.
    if (editor->property(openedWith).isValid()) {
        return;
    }
    const Value stored = ModelOf(index).ValueAt(index);
    if (auto* date = qobject_cast<DateBox*>(editor)) {
        const auto moment = stored.ToDateTime();
        date->SetValue(moment ? std::optional(DateOf(*moment)) : std::nullopt);
    } else {
        SetText(*editor, texts_.Typed(stored, ModelOf(index).Column(index.column()).kind));
    }
    editor->setProperty(openedWith, TextOf(*editor));
}

void GridDelegate::SetText(QWidget& editor, const QString& text) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(&editor)) {
        sheet->setPlainText(text);
        sheet->moveCursor(QTextCursor::End);
        return;
    }
    const QString words = InOneLine(text);
    if (auto* box = qobject_cast<QComboBox*>(&editor)) {
        // The list opens, and the arrow keys go on, from the entry that is there.
        box->setCurrentIndex(box->findText(words, Qt::MatchFixedString));
    }
    LineOf(editor).setText(words);
    LineOf(editor).setModified(true);
}

void GridDelegate::SelectText(QWidget& editor) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(&editor)) {
        sheet->selectAll();
    } else {
        LineOf(editor).selectAll();
    }
}

void GridDelegate::GoBehindText(QWidget& editor) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(&editor)) {
        sheet->moveCursor(QTextCursor::End);
    } else {
        LineOf(editor).end(false);
    }
}

void GridDelegate::OpenList(QWidget& editor) {
    if (auto* box = qobject_cast<QComboBox*>(&editor)) {
        box->lineEdit()->selectAll();
        box->showPopup();
    } else if (auto* date = qobject_cast<DateBox*>(&editor)) {
        date->OpenCalendar();
    }
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex&) const {
    QRect place = option.rect;
    if (qobject_cast<QPlainTextEdit*>(editor) != nullptr) {
        const QFontMetrics metrics(editor->font());
        const QSize room = editor->parentWidget()->size();
        place.setWidth(std::min(std::max(place.width(), metrics.averageCharWidth() * lettersOnSheet), room.width()));
        place.setHeight(std::min(metrics.lineSpacing() * linesOnSheet + 12, room.height()));
        place.moveLeft(std::max(0, std::min(place.left(), room.width() - place.width())));
        place.moveTop(std::max(0, std::min(place.top(), room.height() - place.height())));
    } else {
        place.setWidth(std::max(place.width(), editor->minimumSizeHint().width()));
    }
    editor->setGeometry(place);
}

bool GridDelegate::IsUntouched(QWidget& editor) {
    return TextOf(editor) == editor.property(openedWith).toString();
}

Value GridDelegate::Read(QWidget& editor, const QModelIndex& index) const {
    const BoundColumn& column = ModelOf(index).Column(index.column());
    const Value stored = ModelOf(index).ValueAt(index);
    QString text = TextOf(editor);
    if (auto* date = qobject_cast<DateBox*>(&editor)) {
        if (!date->Commit()) {
            throw ProgramError(ErrorNumber::TypeMismatch, date->Refusal());
        }
        if (!date->Value()) {
            return {};
        }
        // Another day keeps the time of day that the record has.
        const auto before = stored.ToDateTime();
        const auto time = before ? *before - StartOfDay(DateOf(*before)) : DateTime::duration(0);
        return Value(StartOfDay(*date->Value()) + time);
    }
    if (column.kind == CellKind::Lines && stored.ToText().contains(u"\r\n")) {
        // The line ends stay those that the text had.
        text.replace(u"\n"_s, u"\r\n"_s);
    }
    return texts_.Read(text, column, choices_);
}

} // namespace velmora
