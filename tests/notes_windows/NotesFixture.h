#pragma once

#include "notes/windows/BoundGrid.h"
#include "notes/windows/BoundModel.h"
#include "notes/windows/frmNoteCategory.h"
#include "notes/windows/frmNotes.h"
#include "notes/windows/frmSelectStdNotes.h"
#include "print/PrintStyles.h"
#include "site/Site.h"
#include "tests/notes/NoteSite.h"
#include "tests/support/Windows.h"

#include <QApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace velmora {

class KeptText : public print::DocumentSink {
public:
    void SendMail(const QByteArray& text) override { texts.push_back(text); }
    bool SaveFile(const QByteArray& text, print::ReportFileKind) override {
        texts.push_back(text);
        return true;
    }
    std::vector<QByteArray> texts;
};

// The site of the notes with a program and a job around it; reports go into `delivery_`.
class NotesTest : public testing::Test {
protected:
    const std::vector<Message>& Told() const { return test_.dialogs.messages; }

    fakes::TestProgram test_;
    NoteSite site_;
    KeptText delivery_;
    print::PrintJob job_{
        {test_.program.services(), delivery_, [this] { return print::ReadPrintAttributes(*site_.desk); }}};
    const NotesContext context_{test_.program, *site_.desk, job_};
};

// A grid under the fingers of a test.
class GridHand {
public:
    explicit GridHand(QWidget& window, const QString& name = QStringLiteral("TDBGrid1"))
        : grid(Child<BoundGrid>(window, name)), view(grid.View()) {}

    QModelIndex At(int row, int column) const { return view.model()->index(row, column); }
    QString Text(int row, int column) const { return At(row, column).data().toString(); }
    int RowCount() const { return view.model()->rowCount(); }
    int Row() const { return view.currentIndex().row(); }
    int Column() const { return view.currentIndex().column(); }
    QWidget* Editor() const { return view.findChild<QWidget*>(QStringLiteral("CellEditor")); }
    bool IsEditing() const { return Editor() != nullptr && Editor()->isVisible(); }

    void Click(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
        view.scrollTo(At(row, column));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, view.visualRect(At(row, column)).center());
        Settle();
    }
    void Tick(int row, int column) {
        view.scrollTo(At(row, column));
        const QRect cell = view.visualRect(At(row, column));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 14, cell.center().y()));
        Settle();
    }
    void Select(int row, Qt::KeyboardModifiers modifiers = {}) {
        QHeaderView& header = *view.verticalHeader();
        const QPoint place(5, header.sectionViewportPosition(row) + 5);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, modifiers, place);
        Settle();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Focus(), key, modifiers);
        Settle();
    }
    // "Ctrl+Return"
    void Press(const QString& keys) {
        const QKeyCombination key = QKeySequence(keys)[0];
        Key(key.key(), key.keyboardModifiers());
    }
    // Selects all rows.
    void ClickCaption() { QTest::mouseClick(&grid, Qt::LeftButton, {}, QPoint(200, 6)); }
    void Type(const QString& text) {
        for (const QChar letter : text) {
            QTest::keyClick(Focus(), letter.toLatin1());
        }
        Settle();
    }

    BoundGrid& grid;
    GridView& view;

private:
    // Where the keys go: to the window's focus, even while another window is in front.
    QWidget* Focus() {
        QWidget* focus = view.window()->focusWidget();
        return focus != nullptr ? focus : &view;
    }
    static void Settle() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

} // namespace velmora
