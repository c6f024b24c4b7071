// The grid under the fingers: cursor, editing in place, refusals, undo, selection, deletion, two desks.
#include "tests/notes_windows/NotesFixture.h"
#include "tests/support/Script.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace velmora {
namespace {

enum { Key, Reservation, Name, Category, Note, Cost, Confirm, Completed, Time, By };
const QStringList columns{u"Key"_s,  u"Reservation"_s, u"Name"_s,      u"Category"_s, u"Note"_s,
                          u"Cost"_s, u"Confirm"_s,     u"Completed"_s, u"Time"_s,     u"By"_s};

class NotesGridTest : public NotesTest {
protected:
    NotesGridTest() {
        job_.SetOutputTarget(3);
        Open(7);
    }
    void Open(qint32 reservation) {
        window_ = std::make_unique<frmNotes>(context_, reservation, u"ann"_s);
        // As ShowModal, without the loop that waits for its end.
        Opener::Activate(*window_);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        hand_.emplace(*window_);
        hand_->view.setFocus();
    }
    struct Opener : frmNotes {
        static void Activate(frmNotes& window) { (window.*&Opener::Form_Activate)(); }
    };
    void Plan(std::initializer_list<Answer> answers) { test_.dialogs.answers = answers; }

    std::unique_ptr<frmNotes> window_;
    std::optional<GridHand> hand_;
};

// The steps of grid.txt.
class NotesGridScript : public NotesGridTest, public testing::WithParamInterface<ScriptCase> {
protected:
    static int ColumnOf(const QString& name) { return static_cast<int>(columns.indexOf(name)); }
    // "0 Name"
    static std::pair<int, int> Place(const QString& words) {
        return {words.section(u' ', 0, 0).toInt(), ColumnOf(words.section(u' ', 1))};
    }
    QString At(const QString& words, int role) {
        const auto [row, column] = Place(words);
        return hand_->At(row, column).data(role).toString();
    }
    void SelectRow(const QString& words) {
        const QString key = words.section(u' ', 1);
        hand_->Select(words.section(u' ', 0, 0).toInt(), key == u"Ctrl"    ? Qt::ControlModifier
                                                         : key == u"Shift" ? Qt::ShiftModifier
                                                                           : Qt::NoModifier);
    }
    // "3 | text | end": the text three times and the end, as the other desk writes it into the note Chairs.
    void Write(const QString& words) {
        auto set = site_.other->OpenRecordset(u"Select * from [Note] where Name = \"Chairs\"",
                                              engine::RecordsetKind::Updatable);
        const QStringList parts = words.split(u" | "_s);
        set->Edit();
        set->Set("Note", Value(parts[1].repeated(parts[0].toInt()) + parts.value(2)));
        set->Update();
    }
    QString Editor() {
        const auto* sheet = qobject_cast<QPlainTextEdit*>(hand_->Editor());
        return sheet != nullptr ? sheet->toPlainText() : qobject_cast<QLineEdit*>(hand_->Editor())->text();
    }
    QString Offered() {
        const auto* box = qobject_cast<QComboBox*>(hand_->Editor());
        QStringList texts;
        for (int i = 0; i < box->count(); ++i) {
            texts += box->itemText(i);
        }
        return texts.join(u'|');
    }
    QString Question() {
        const Message& last = Told().back();
        return u"%1|%2|%3"_s.arg(last.text, last.title, QString::number(static_cast<int>(last.icon)));
    }
    QString SelectedRows() {
        QStringList rows;
        for (const int row : hand_->view.SelectedRows()) {
            rows += QString::number(row);
        }
        return rows.join(u' ');
    }
    void Focus(const QString& name) {
        Child<QWidget>(*window_, name).setFocus();
        if (name != u"TDBGrid1View") {
            QApplication::processEvents();
        }
    }

    ScriptWords Words();

    std::optional<engine::Transaction> lock_;
};

ScriptWords NotesGridScript::Words() {
    ScriptWords words;
    words.actions = {
        {u"open"_s, [this](const QString& reservation) { Open(reservation.toInt()); }},
        {u"click"_s, [this](const QString& cell) { hand_->Click(Place(cell).first, Place(cell).second); }},
        {u"tick"_s, [this](const QString& cell) { hand_->Tick(Place(cell).first, Place(cell).second); }},
        {u"type"_s, [this](const QString& text) { hand_->Type(text); }},
        {u"key"_s, [this](const QString& key) { hand_->Press(key); }},
        {u"row"_s, [this](const QString& row) { SelectRow(row); }},
        {u"caption"_s, [this](const QString&) { hand_->ClickCaption(); }},
        {u"press"_s, [this](const QString& name) { Child<QPushButton>(*window_, name).click(); }},
        {u"focus"_s, [this](const QString& name) { Focus(name); }},
        {u"answer"_s, [this](const QString& answers) { PlanAnswers(test_.dialogs.answers, answers); }},
        {u"fail"_s, [this](const QString& answers) { PlanAnswers(test_.errors.answers, answers); }},
        {u"copy"_s, [](const QString& text) { QApplication::clipboard()->setText(text); }},
        {u"other"_s, [this](const QString& sql) { site_.other->Execute(sql); }},
        {u"write"_s, [this](const QString& text) { Write(text); }},
        {u"lock"_s, [this](const QString&) { lock_.emplace(*site_.other); }},
        {u"unlock"_s, [this](const QString&) { lock_.reset(); }},
    };
    words.values = {
        {u"rows"_s, [this](const QString&) { return QString::number(hand_->RowCount()); }},
        {u"at"_s, [this](const QString&) { return QString::number(hand_->Row()) + u' ' + columns[hand_->Column()]; }},
        {u"cell"_s, [this](const QString& cell) { return At(cell, Qt::DisplayRole); }},
        {u"tip"_s, [this](const QString& cell) { return At(cell, Qt::ToolTipRole); }},
        {u"editing"_s, [this](const QString&) { return YesNo(hand_->IsEditing()); }},
        {u"pending"_s, [this](const QString&) { return YesNo(hand_->view.HasPendingEdit()); }},
        {u"editor"_s, [this](const QString&) { return Editor(); }},
        {u"offered"_s, [this](const QString&) { return Offered(); }},
        {u"selected"_s, [this](const QString&) { return SelectedRows(); }},
        {u"open"_s, [this](const QString&) { return YesNo(window_->isVisible()); }},
        {u"focused"_s, [this](const QString&) { return YesNo(hand_->grid.isAncestorOf(QApplication::focusWidget())); }},
        {u"message"_s, [this](const QString&) { return Told().empty() ? QString() : Told().back().text; }},
        {u"messages"_s, [this](const QString&) { return QString::number(Told().size()); }},
        {u"question"_s, [this](const QString&) { return Question(); }},
        {u"unanswered"_s, [this](const QString&) { return QString::number(test_.dialogs.answers.size()); }},
        {u"error"_s,
         [this](const QString&) {
             const auto& first = test_.errors.reports.at(0);
             return *first.place.module + u' ' + QString::number(first.error.Number());
         }},
        {u"copied"_s, [](const QString&) { return QApplication::clipboard()->text(); }},
        {u"names"_s, [this](const QString&) { return site_.Names(); }},
        {u"stored"_s,
         [this](const QString& fields) {
             return site_.Shown(u"Select "_s + fields + u" from [Note] where Reservation = 7"_s);
         }},
        {u"select"_s, [this](const QString& sql) { return site_.Shown(sql); }},
    };
    return words;
}

TEST_P(NotesGridScript, Runs) {
    RunScript(GetParam(), Words());
}

INSTANTIATE_TEST_SUITE_P(Grid, NotesGridScript, testing::ValuesIn(ReadScript(u"notes_windows/grid.txt"_s)), CaseName);

TEST_F(NotesGridTest, AnEditorHasAFrameAndTakesLettersOfTheInputMethod) {
    GridHand& hand = *hand_;
    hand.Click(0, Note);
    hand.Key(Qt::Key_F2);
    // Its frame stands out from the grid in every shade.
    auto* sheet = qobject_cast<QPlainTextEdit*>(hand.Editor());
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->grab().toImage().pixelColor(sheet->width() / 2, 0),
              hand.view.palette().color(QPalette::Highlight));
    hand.Key(Qt::Key_Tab);
    // A letter put together by the input method begins an entry.
    hand.Click(0, Name);
    EXPECT_TRUE(hand.view.testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent letter;
    letter.setCommitString(u"\u00e9"_s);
    QApplication::sendEvent(&hand.view, &letter);
    hand.Type(u"tage"_s);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Name), u"\u00e9tage"_s);
}

TEST_F(NotesGridTest, LongCategoriesNeitherWidenTheEditorNorTheMessage) {
    const QString longName = u"responsible for everything "_s.repeated(20).trimmed();
    site_.other->Execute(u"Insert into NoteCategory (Name) Values (\"%1\")"_s.arg(longName));
    for (int i = 0; i < 40; ++i) {
        site_.other->Execute(u"Insert into NoteCategory (Name) Values (\"Category %1\")"_s.arg(i));
    }
    Open(7);
    GridHand& hand = *hand_;
    hand.Click(0, Category);
    hand.Key(Qt::Key_F4);
    auto* box = qobject_cast<QComboBox*>(hand.Editor());
    ASSERT_NE(box, nullptr);
    EXPECT_LE(box->width(), hand.view.columnWidth(Category) + 20);
    EXPECT_LT(box->view()->window()->width(), 700);
    box->hidePopup();
    box->lineEdit()->setText(u"nope"_s);
    Plan({Answer::Ok});
    hand.Key(Qt::Key_Tab);
    EXPECT_TRUE(Told().back().text.contains(u"Category 0, Category 1, ")) << Told().back().text.toStdString();
    EXPECT_LT(Told().back().text.size(), 400);
}

TEST_F(NotesGridTest, AnEntryChosenFromTheListIsTakenAtOnce) {
    GridHand& hand = *hand_;
    hand.Click(0, Category);
    hand.Key(Qt::Key_Down, Qt::AltModifier);
    auto* list = qobject_cast<QComboBox*>(hand.Editor());
    ASSERT_TRUE(list != nullptr && list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_FALSE(hand.IsEditing());
    EXPECT_EQ(hand.Text(0, Category), u"Unused"_s);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(hand.view.Rows().PendingRow(), 0);
}

TEST_F(NotesGridTest, FontAndColumnsAreKeptForTheUser) {
    test_.dialogs.fonts = {FontChoice{u"Liberation Serif"_s, 14, true, false}};
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(hand_->view.viewport(), &press);
    hand_->view.horizontalHeader()->resizeSection(Note, 333);
    window_->reject();
    Open(8);
    EXPECT_EQ(hand_->view.font().family(), u"Liberation Serif"_s);
    EXPECT_EQ(hand_->view.font().pointSizeF(), 14);
    EXPECT_EQ(hand_->view.horizontalHeader()->sectionSize(Note), 333);
    // What is not sound is passed over.
    test_.userSettings.values[u"Velmora/Notes Grid/Columns"_s] = u"1,2,x"_s;
    test_.userSettings.values[u"Velmora/Notes Grid/Font"_s] = u"Liberation Serif|-3|0|0"_s;
    Open(8);
    EXPECT_EQ(hand_->view.font().family(), u"Liberation Sans"_s);
    EXPECT_GT(hand_->view.horizontalHeader()->sectionSize(Key), 20);
}

TEST_F(NotesGridTest, SelectedRowsArePrintedAsTheyWereSelected) {
    GridHand& hand = *hand_;
    Plan({Answer::Ok});
    Child<QAbstractButton>(*window_, u"Image1"_s).click();
    EXPECT_TRUE(Told().back().text.startsWith(u"No rows selected for Printing."));
    hand.Select(1);
    hand.Select(0, Qt::ControlModifier);
    Plan({Answer::Yes});
    Child<QAbstractButton>(*window_, u"Image1"_s).click();
    EXPECT_EQ(Told().back().text, u"Print 2 Rows?"_s);
    const QByteArray& text = delivery_.texts.at(0);
    EXPECT_TRUE(text.contains("Coffee\tCatering\thot\t\tFalse\tFalse\t\t\r\n")) << text.constData();
    EXPECT_LT(text.indexOf("Coffee"), text.indexOf("Chairs\tSetup\tten\t$5.00"));
    EXPECT_EQ(test_.printers.orientation, Orientation::Landscape);
}

} // namespace
} // namespace velmora
