// Printing the selected rows of a grid: what is asked, the geometry on pages, the table of the other targets.
#include "print/PrintGrid.h"
#include "tests/print/PagesFixture.h"

namespace velmora::print {
namespace {

class GridTest : public PagesFixture {
protected:
    GridTest() {
        fakes_.printers.page = {12240, 15840, left, top, width, height, 2.4};
        grid_.caption = u"Notes"_s;
        grid_.font = {u"Liberation Sans"_s, 12, false, true};
        grid_.columns = {{u"Name"_s, 3000}, {u"Gone"_s, 0}, {u"Note"_s, 2000}};
        Rows({{u"Chairs"_s, u"x"_s, u"ten"_s}, {u"A & B"_s, u"y"_s, u"one\r\ntwo\tthree"_s}});
    }
    void Rows(std::vector<QStringList> rows) {
        rows_ = std::move(rows);
        grid_.rowCount = static_cast<int>(rows_.size());
        grid_.text = [this](int row, int column) { return rows_[static_cast<size_t>(row)][column]; };
    }
    void Print(Answer answer = Answer::Yes) {
        fakes_.dialogs.answers = {answer};
        // Page targets are made from the printer at the time, as the real factories make them.
        fakes_.eventLoop.pointers.clear();
        PrintGridSelection(fakes_.program, job_, grid_);
    }

    GridSelection grid_;
    std::vector<QStringList> rows_;
};

TEST_F(GridTest, AsksFirstAndPrintsNothingWithoutYes) {
    Print(Answer::No);
    EXPECT_EQ(fakes_.dialogs.messages.back().text, u"Print 2 Rows?"_s);
    EXPECT_EQ(fakes_.dialogs.messages.back().buttons, Buttons::YesNo);
    Rows({});
    Print(Answer::Ok);
    EXPECT_TRUE(fakes_.dialogs.messages.back().text.startsWith(u"No rows selected for Printing.\r\nSelect rows by"));
    EXPECT_TRUE(fakes_.dialogs.messages.back().text.endsWith(u"by clicking on the grid caption."));
    EXPECT_TRUE(factory_.document.pages.empty());
    EXPECT_NE(fakes_.printers.font.points, 12);
}

TEST_F(GridTest, ColumnsStandBesideEachOtherAndAreCutToOneLine) {
    rows_[0][0] = QString(200, u'W');
    Print();
    EXPECT_EQ(fakes_.printers.font.points, 12);
    EXPECT_TRUE(fakes_.printers.font.italic);
    EXPECT_EQ(fakes_.printers.orientation, Orientation::Portrait);
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);

    const Placed heading = Find(u"Name"_s);
    EXPECT_TRUE(heading.font.bold);
    EXPECT_EQ(heading.x, 0);
    EXPECT_EQ(Find(u"Note"_s).x, 3000);
    EXPECT_EQ(Find(u"Note"_s).y, heading.y);
    const Placed ten = Find(u"ten"_s);
    EXPECT_FALSE(ten.font.bold);
    EXPECT_EQ(ten.x, 3000);
    const Placed one = Find(u"one"_s);
    EXPECT_EQ(one.y - ten.y, LineHeight() + 48);
    bool cut = false;
    for (const Placed& placed : Texts()) {
        EXPECT_NE(placed.text, u"x"_s);
        EXPECT_NE(placed.text, u"Gone"_s);
        if (placed.text.startsWith(u"WW")) {
            cut = true;
            EXPECT_LE(placed.width, 3000);
            EXPECT_GT(placed.width, 2700);
        }
    }
    EXPECT_TRUE(cut);
}

TEST_F(GridTest, AWideGridTurnsThePageAndIsNarrowedToIt) {
    const auto widths = [&](double first, double second, int room) {
        grid_.columns = {{u"a"_s, first}, {u"b"_s, second}};
        return GridPrintWidths(grid_, room);
    };
    EXPECT_EQ(widths(3000, 7000, 10000), (std::vector{3000, 7000}));
    EXPECT_EQ(widths(3000.4, 0, 10000), (std::vector{3000, 0}));
    EXPECT_EQ(widths(6000, 14000, 10000), (std::vector{3000, 7000}));
    EXPECT_EQ(widths(1, 20000, 10000), (std::vector{0, 10000}));

    for (const auto& [each, turned] : {std::pair{6120, false}, std::pair{6121, true}, std::pair{20000, true}}) {
        grid_.columns = {{u"Name"_s, double(each)}, {u"Note"_s, double(each)}};
        Rows({{u"first"_s, u"second"_s}});
        fakes_.printers.orientation = Orientation::Portrait;
        Print();
        EXPECT_EQ(fakes_.printers.orientation, turned ? Orientation::Landscape : Orientation::Portrait) << each;
        const int room = turned ? height : width;
        EXPECT_EQ(Find(u"second"_s).x, std::min(each, room / 2)) << each;
    }
}

TEST_F(GridTest, LongSelectionsGoOnOnFurtherPages) {
    std::vector<QStringList> rows;
    rows.reserve(120);
    for (int i = 0; i < 120; ++i) {
        rows.push_back({QString::number(i), {}, {}});
    }
    Rows(rows);
    Print();
    ASSERT_GT(factory_.document.pages.size(), 1U);
    int next = 0;
    for (size_t page = 0; page < factory_.document.pages.size(); ++page) {
        for (const Placed& placed : Texts(page)) {
            EXPECT_LE(placed.y + LineHeight(), height);
            next += placed.x == 0 && placed.text == QString::number(next) ? 1 : 0;
        }
    }
    EXPECT_EQ(next, 120);
}

TEST_F(GridTest, TextAndHtmlTakeTheRowsAsATable) {
    job_.SetOutputTarget(3);
    Print();
    EXPECT_TRUE(delivery_.delivered.at(0).second.endsWith(
        "-\r\n\tName\tGone\tNote\r\n\tChairs\tx\tten\r\n\tA & B\ty\tone two three\r\n"));
    job_.SetOutputTarget(4);
    Print();
    EXPECT_TRUE(delivery_.delivered.at(1).second.contains(
        "<hr><table><tr><th>Name</th><th>Gone</th><th>Note</th></tr><tr><td>Chairs</td><td>x</td><td>ten</td></tr>"
        "<tr><td>A &amp; B</td>"));
}

TEST_F(GridTest, ACellThatCannotBeReadIsReportedAndNothingIsDelivered) {
    grid_.text = [](int, int) -> QString { throw ProgramError(ErrorNumber::Unavailable, u"gone"_s); };
    job_.SetOutputTarget(3);
    fakes_.errors.answers = {Answer::Retry, Answer::Ignore};
    Print();
    EXPECT_EQ(fakes_.errors.reports.size(), 2U);
    EXPECT_TRUE(delivery_.delivered.empty());
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
}

} // namespace
} // namespace velmora::print
