#include "notes/windows/CellEditors.h"

#include "base/windows/DateBox.h"
#include "notes/windows/ChoiceBox.h"

#include <QPlainTextEdit>

#include <algorithm>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

QWidget* MakeCellEditor(CellKind kind, const CellText& texts, const Clock& clock, const QStringList& choices,
                        QWidget* parent) {
    if (kind == CellKind::Lines) {
        auto* sheet = new QPlainTextEdit(parent);
        FrameInHighlight(*sheet);
        return sheet;
    }
    QWidget* editor = nullptr;
    if (kind == CellKind::Moment) {
        editor = new DateBox(texts.Locale(), clock, parent);
    } else if (kind == CellKind::Choice) {
        editor = new ChoiceBox(choices, parent);
    } else {
        editor = new QLineEdit(parent);
    }
    QLineEdit& line = LineOf(*editor);
    line.setAlignment(kind == CellKind::Money ? Qt::AlignRight : Qt::AlignLeft);
    QObject::connect(&line, &QLineEdit::textChanged, &line, [&line] { KeepOneLine(line); });
    return editor;
}

QString EditorText(const QWidget& editor) {
    auto& widget = const_cast<QWidget&>(editor);
    const auto* sheet = qobject_cast<const QPlainTextEdit*>(&editor);
    return sheet != nullptr ? sheet->toPlainText() : LineOf(widget).text();
}

void SetEditorText(QWidget& editor, const QString& text) {
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

void SelectEditorText(QWidget& editor) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(&editor)) {
        sheet->selectAll();
    } else {
        LineOf(editor).selectAll();
    }
}

void DeselectEditorText(QWidget& editor) {
    if (auto* sheet = qobject_cast<QPlainTextEdit*>(&editor)) {
        sheet->moveCursor(QTextCursor::End);
    } else {
        LineOf(editor).end(false);
    }
}

void OpenEditorList(QWidget& editor) {
    if (auto* box = qobject_cast<QComboBox*>(&editor)) {
        box->lineEdit()->selectAll();
        box->showPopup();
    } else if (auto* date = qobject_cast<DateBox*>(&editor)) {
        date->OpenCalendar();
    }
}

void FrameInHighlight(QFrame& area) {
    area.setFrameStyle(int{QFrame::Box} | int{QFrame::Plain});
    area.setLineWidth(1);
    area.setForegroundRole(QPalette::Highlight);
}

} // namespace velmora
