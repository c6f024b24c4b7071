// The print options, the editor of the print styles, and what every window is translated by.
#include "tests/engine/TestSite.h"
#include "tests/support/Fakes.h"

#include "base/Translate.h"
#include "base/windows/TranslateForm.h"
#include "base/windows/WindowServices.h"
#include "print/windows/SampleView.h"
#include "print/windows/frmPrintOptions.h"
#include "print/windows/frmPrintStyles.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace velmora::print {
namespace {

using namespace Qt::StringLiterals;

class DialogTest : public ::testing::Test {
protected:
    DialogTest() { site_.Run("INSERT INTO PrintAttributes VALUES ('Phone', 8), ('Jack', 17)"); }

    template <typename T>
    static T& Get(QWidget& window, const char* name) {
        T* found = window.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static void Click(QWidget& window, const char* name) {
        QTest::mouseClick(&Get<QPushButton>(window, name), Qt::LeftButton);
    }

    const QString setting_ = u"Velmora/Print Options/Leader Style"_s;
    fakes::TestProgram fakes_;
    const engine::test::TestSite site_;
    std::unique_ptr<engine::Database> database_ = site_.Open();
};

TEST_F(DialogTest, OptionsShowTheStoredStyleAndStoreTheChosenOne) {
    struct Case {
        const char16_t* stored;
        int shown;
        int click;
        const char* button;
        const char16_t* after;
    };
    for (const Case& c : {Case{u"", 0, 2, "cmdOK", u"2"}, Case{u"1", 1, 2, "cmdCancel", u"1"},
                          Case{u"many", 0, -1, "cmdOK", u"0"}, Case{u"2", 2, 0, "cmdOK", u"0"}}) {
        fakes_.userSettings.values.clear();
        if (c.stored[0] != 0) {
            fakes_.userSettings.values[setting_] = QString::fromUtf16(c.stored);
        }
        frmPrintOptions window(fakes_.program.services(), *database_);
        window.show();
        for (int i = 0; i < 3; ++i) {
            const auto name = "optLeader" + std::to_string(i);
            EXPECT_EQ(Get<QRadioButton>(window, name.c_str()).isChecked(), i == c.shown);
        }
        if (c.click >= 0) {
            const auto name = "optLeader" + std::to_string(c.click);
            Get<QRadioButton>(window, name.c_str()).click();
        }
        Click(window, c.button);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(fakes_.userSettings.values[setting_], QString::fromUtf16(c.after));
    }
}

TEST_F(DialogTest, OptionsAreTranslatedAndOpenTheStyles) {
    fakes_.program.Part<TranslationDictionary>().Add(u"Print Options"_s, u"Druckoptionen"_s);
    fakes_.program.Part<TranslationDictionary>().Add(u"Boxes"_s, u"Kästen"_s);
    frmPrintOptions window(fakes_.program.services(), *database_);
    window.show();
    EXPECT_EQ(window.windowTitle(), u"Druckoptionen");
    EXPECT_EQ(Get<QRadioButton>(window, "optLeader1").text(), u"Kästen"_s);
    EXPECT_EQ(Get<QRadioButton>(window, "optLeader2").text(), u"&Lines"_s);
    bool opened = false;
    QTimer::singleShot(0, &window, [&] {
        auto* editor = window.findChild<frmPrintStyles*>();
        opened = editor != nullptr && editor->isVisible();
        if (opened) {
            Click(*editor, "cmdCancel");
        }
    });
    Click(window, "Command1");
    EXPECT_TRUE(opened);
    EXPECT_TRUE(window.isVisible());
}

// The samples are pages that the engine draws: each leader style leaves its own marks.
TEST(Samples, AreDrawnAsTheStylesLook) {
    const auto kinds = [](qint16 leader, qint16 style) {
        std::array<int, 3> count{};
        const pages::Document document = SampleDocument({u"Caption"_s, u"Value"_s, leader, style});
        for (const pages::Item& item : document.pages.at(0).Items()) {
            ++count[static_cast<size_t>(item.kind)];
            EXPECT_LE(item.x + item.width, document.pages[0].Width());
            EXPECT_LE(item.y + item.height, document.pages[0].Height());
        }
        return count;
    };
    EXPECT_EQ(kinds(0, 0), (std::array{2, 0, 0}));
    EXPECT_EQ(kinds(1, 0), (std::array{2, 0, 2}));
    EXPECT_EQ(kinds(2, 0), (std::array{2, 1, 0}));
    EXPECT_EQ(kinds(0, GreyBox), (std::array{2, 0, 1}));
}

TEST(Samples, ALongCaptionIsNotCut) {
    constexpr int rowHeight = 30;
    QImage row(220, rowHeight, QImage::Format_Grayscale8);
    QPainter painter(&row);
    DrawSample(painter, row.rect(), SampleDocument({u"Default Extension"_s, u"Value"_s, 0, 0}), 96);
    painter.end();
    const auto isBlank = [&](int y) {
        const uchar* line = row.constScanLine(y);
        return std::all_of(line, line + row.width(), [](uchar dot) { return dot == 255; });
    };
    EXPECT_TRUE(isBlank(0));
    EXPECT_TRUE(isBlank(rowHeight - 1));
    EXPECT_FALSE(isBlank(rowHeight * 2 / 3)) << "the second line is there";
}

class StylesTest : public DialogTest {
protected:
    StylesTest() { window_.show(); }
    QAbstractItemModel& Model() { return *Get<QTableView>(window_, "grdStyles").model(); }
    void Tick(int row, int column) { Model().setData(Model().index(row, column), Qt::Checked, Qt::CheckStateRole); }
    void Type(const QString& text) {
        auto* editor = window_.findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    StyleRows Stored() { return ReadPrintAttributes(*database_); }
    // As another desk has it by now.
    void Change(const char* values) {
        site_.Run(("DELETE FROM PrintAttributes; INSERT INTO PrintAttributes VALUES " + std::string(values)).c_str());
    }

    frmPrintStyles window_{fakes_.program.services(), *database_};
};

TEST_F(StylesTest, AddsChangesAndDeletesInOrder) {
    Click(window_, "cmdAdd");
    Type(u"Space Type"_s);
    Tick(2, 2);
    Tick(2, 3);
    Tick(1, 1);
    Click(window_, "cmdAdd");
    Type(u"Phone"_s);
    EXPECT_TRUE(Get<QLabel>(window_, "lblNotice").isVisible());
    EXPECT_TRUE(Get<QLabel>(window_, "lblNotice").text().endsWith(u": Phone"));
    Click(window_, "cmdOK");
    EXPECT_FALSE(window_.isVisible());
    const StyleRows expected = {
        {u"Phone"_s, GreyBox}, {u"Jack"_s, Bold | 16}, {u"Space Type"_s, Italic | Underlined}, {u"Phone"_s, 0}};
    EXPECT_EQ(Stored(), expected);
}

TEST_F(StylesTest, ARowNeedsACaptionAndChangesAreNotDroppedUnasked) {
    Click(window_, "cmdAdd");
    Type(u""_s);
    fakes_.dialogs.answers = {Answer::Ok, Answer::No, Answer::Yes};
    Click(window_, "cmdOK");
    EXPECT_TRUE(fakes_.dialogs.messages.at(0).text.startsWith(u"Row 3 has no caption"));
    Click(window_, "cmdCancel");
    EXPECT_TRUE(window_.isVisible());
    Click(window_, "cmdCancel");
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(Stored().size(), 2U);
}

TEST_F(StylesTest, AnotherUsersChangesAreKept) {
    Tick(0, 1);
    Change("('Phone', 8), ('Jack', 2), ('Port', 1)");
    Click(window_, "cmdOK");
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(Stored(), (StyleRows{{u"Phone"_s, GreyBox | Bold}, {u"Jack"_s, Italic}, {u"Port"_s, Bold}}));
}

TEST_F(StylesTest, ConflictsAreAskedAboutAndFailuresKeepTheRows) {
    Tick(0, 1);
    Change("('Phone', 2), ('Jack', 17)");
    fakes_.dialogs.answers = {Answer::Cancel, Answer::No, Answer::No};
    Click(window_, "cmdOK");
    EXPECT_TRUE(window_.isVisible());
    EXPECT_TRUE(fakes_.dialogs.messages.at(0).text.contains(u"Phone"));
    site_.Run("CREATE TRIGGER full BEFORE INSERT ON PrintAttributes BEGIN SELECT RAISE(ABORT, 'no'); END");
    fakes_.errors.answers = {Answer::Ignore};
    Click(window_, "cmdOK");
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(Stored().size(), 2U) << "nothing is stored by halves";
    site_.Run("DROP TRIGGER full");
    Click(window_, "cmdOK");
    EXPECT_EQ(Stored()[0].style, Italic) << "the other user's row was chosen";
}

TEST_F(StylesTest, TheTableKeepsItsOrderAndAnotherUsersRows) {
    Change("('Phone', 8), ('Jack', 17), (NULL, NULL), ('Phone', 1)");
    const auto other = site_.Open();
    const StyleRows base = {{u"Phone"_s, 8}, {u"Jack"_s, 17}, {u""_s, 0}, {u"Phone"_s, 1}};
    EXPECT_EQ(Stored(), base);
    const StyleRows first = {{u"Q\"1\" 'x'"_s, 3}, {u"Phone"_s, 8}, {u"Jack"_s, 17}};
    EXPECT_EQ(ReplacePrintAttributes(*other, base, first), std::nullopt);
    EXPECT_EQ(ReplacePrintAttributes(*database_, base, {}), first) << "what is there now";
    EXPECT_EQ(Stored(), first) << "and still is";
    EXPECT_EQ(ReplacePrintAttributes(*database_, first, {}), std::nullopt);
    EXPECT_EQ(Stored(), StyleRows());
}

TEST(TranslateForm, TranslatesEveryKindOfCaption) {
    fakes::TestProgram fakes;
    auto& dictionary = fakes.program.Part<TranslationDictionary>();
    for (const char16_t* word : {u"Window", u"Label", u"Frame", u"Tab", u"Tip", u"Tool", u"Close && go"}) {
        dictionary.Add(QString::fromUtf16(word), QString::fromUtf16(word).toUpper());
    }
    QWidget window;
    window.setWindowTitle(u"Window"_s);
    QLabel label(u"&Label"_s, &window);
    QLabel unknown(u"&Unknown"_s, &window);
    QGroupBox frame(u"Frame"_s, &window);
    QPushButton button(u"Close && go"_s, &window);
    QLineEdit typed(u"Label"_s, &window);
    QTabWidget tabs(&window);
    tabs.addTab(new QLabel(&tabs), u"Tab"_s);
    tabs.setTabToolTip(0, u"Tip"_s);
    QToolBar bar(&window);
    QAction* tool = bar.addAction(u"Tool"_s);
    tool->setToolTip(u"Tip"_s);
    TranslateForm(window);
    EXPECT_EQ(window.windowTitle(), u"WINDOW");
    EXPECT_EQ(label.text(), u"LABEL");
    EXPECT_EQ(unknown.text(), u"&Unknown");
    EXPECT_EQ(frame.title(), u"FRAME");
    EXPECT_EQ(button.text(), u"CLOSE && GO");
    EXPECT_EQ(typed.text(), u"Label") << "what a person typed stays";
    EXPECT_EQ(tabs.tabText(0) + tabs.tabToolTip(0), u"TABTIP");
    EXPECT_EQ(tool->text() + tool->toolTip(), u"TOOLTIP");
}

TEST(WindowDialogs, GivesTheToolkitItsFilters) {
    EXPECT_EQ(NameFilters(u"Text file (*.txt)|*.txt|Pages (*.htm;*.html)|*.htm;*.html"_s),
              u"Text file (*.txt);;Pages (*.htm *.html)");
}

} // namespace
} // namespace velmora::print
