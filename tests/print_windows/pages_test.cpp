// What the preview keeps, finds and sends to a printer, apart from its window.
#include "tests/support/Fakes.h"

#include "platform/pages/PageSearch.h"
#include "print/PrintStyles.h"
#include "print/pages/PageWriters.h"
#include "tests/print_windows/PreviewReports.h"
#include "tests/support/Folders.h"

namespace velmora::print {
namespace {

using namespace Qt::StringLiterals;

class KeepingWindows : public PreviewWindows {
public:
    void Open(PreviewReport report) override { opened.push_back(std::move(report)); }
    std::vector<PreviewReport> opened;
};

const pages::FontSpec font{u"Liberation Sans"_s, 10, false, false, false, false};

TEST(PageWriters, Refuses256thPageInABoxOnceAndThenInTheStatusLine) {
    fakes::TestProgram fakes;
    fakes.dialogs.answers = {Answer::Ok};
    KeepingWindows windows;
    fakes.printers.page = {12240, 15840, 360, 360, 11520, 15120, 2.4};
    FakeQueue queue;
    PageOutput output(fakes.printers, queue, queue);
    PageWriters pageWriters(fakes.program.services(), output, windows, u"x"_s);
    JobState state;
    const auto printed = pageWriters.MakeWriter(state);
    printed->PrintParagraph("on paper");
    printed->Deliver();
    EXPECT_EQ(queue.jobs, 1) << "without preview mode it is the printer's";
    state.PreviewMode = true;
    const auto writer = pageWriters.MakeWriter(state);
    EXPECT_EQ(writer->DeviceWidth(), 11520) << "as wide as the printer prints";
    for (int page = 1; page < 255; ++page) {
        writer->NewPage();
    }
    EXPECT_TRUE(fakes.dialogs.messages.empty());
    for (int row = 0; row < 40; ++row) {
        writer->PrintParagraph("row " + QByteArray::number(row));
        writer->NewPage();
    }
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    const QString refusal = u"Print Preview Not supported for Reports longer than 256 Pages"_s;
    EXPECT_EQ(fakes.dialogs.messages[0].text, refusal);
    EXPECT_EQ(fakes.dialogs.messages[0].icon, Icon::Exclamation);
    EXPECT_EQ(fakes.dialogs.messages[0].buttons, Buttons::Ok);
    EXPECT_EQ(fakes.progress.shown.size(), 39U);
    EXPECT_EQ(fakes.progress.shown.back().first, refusal);
    writer->Deliver();
    EXPECT_EQ(fakes.progress.shown.back().first, QString()) << "nothing stands before the preview";
    ASSERT_EQ(windows.opened.size(), 1U);
    const pages::Document& document = windows.opened[0].document;
    EXPECT_EQ(document.pages.size(), 255U);
    EXPECT_EQ(windows.opened[0].notice, refusal);
    EXPECT_EQ(document.pages[254].PlainText().count(u"row"_s), 40) << "nothing is lost";
    EXPECT_EQ(document.pages[253].PlainText(), u"254\n"_s) << "a closed page has its number";
}

// The texts of a document's sheets, with those that a sheet's printable area does not hold whole.
struct SheetTexts {
    QStringList all;
    QStringList outside;
};

SheetTexts TextsOf(const pages::Document& sheets, const pages::PaperSize& paper) {
    SheetTexts texts;
    for (const pages::Page& page : sheets.pages) {
        EXPECT_EQ(page.Width(), paper.width);
        EXPECT_EQ(page.Height(), paper.height);
        const pages::Placement& placed = page.Placed();
        for (const pages::Item& item : page.Items()) {
            const double top = item.y * placed.scaleY + placed.dy;
            const double bottom = (item.y + item.height) * placed.scaleY + placed.dy;
            const double right = (item.x + item.width) * placed.scaleX + placed.dx;
            const bool inside = top >= paper.top - 25 && bottom <= paper.height - paper.bottom + 25 &&
                                right <= paper.width - paper.right + 25;
            if (item.kind == pages::Item::Kind::Text) {
                texts.all.append(page.Text(item).toString());
            }
            if (!inside) {
                texts.outside.append(page.Text(item).toString());
            }
        }
    }
    return texts;
}

QStringList TextsOf(const pages::Page& page) {
    QStringList texts;
    for (const pages::Item& item : page.Items()) {
        if (item.kind == pages::Item::Kind::Text) {
            texts.append(page.Text(item).toString());
        }
    }
    return texts;
}

TEST(Sheets, GrownPagesAreStretchedOrCutAndLoseNothing) {
    const pages::PaperSize letter{12240, 15840, 360, 360, 360, 360};
    const pages::PaperSize narrow{8390, 11900, 360, 360, 360, 360};
    struct Case {
        const char* name;
        int entries;
        pages::PaperSize paper;
        int sheets;
        bool trueSize;
        qint16 leaders;
    };
    for (const Case& c :
         {Case{"fits", 5, letter, 1, true, 0}, Case{"a little longer", 9, letter, 1, false, 1},
          Case{"almost a half longer", 13, letter, 2, true, 1}, Case{"long", 60, letter, 7, true, 1},
          Case{"other paper", 7, narrow, 1, false, 2}, Case{"long, other paper", 60, narrow, 6, false, 0}}) {
        const pages::Document report = GrownPage(c.entries, c.leaders);
        ASSERT_EQ(report.pages.size(), 1U);
        const pages::Document sheets = pages::OnSheets(report, c.paper);
        if (report.pages[0].Height() <= c.paper.height) {
            ASSERT_EQ(sheets.pages.size(), 1U) << c.name;
            EXPECT_EQ(sheets.pages[0].Items().size(), report.pages[0].Items().size()) << c.name;
            continue;
        }
        const SheetTexts texts = TextsOf(sheets, c.paper);
        EXPECT_EQ(texts.all, TextsOf(report.pages[0])) << c.name;
        EXPECT_EQ(texts.outside, QStringList()) << c.name;
        EXPECT_NEAR(static_cast<int>(sheets.pages.size()), c.sheets, c.sheets / 4.0)
            << c.name << " height " << report.pages[0].Height();
        EXPECT_EQ(sheets.pages[0].Placed() == pages::Placement(), c.trueSize) << c.name;
    }
}

TEST(Sheets, APdfHasNoPageBeyondWhatPdfKnows) {
    pages::Document report = GrownPage(3000, 0);
    report.pages.push_back(GrownPage(60, 0).pages[0]);
    const pages::Document made = pages::ForPdf(report);
    QStringList texts;
    for (const pages::Page& page : made.pages) {
        EXPECT_LE(page.Height(), 200 * 1440);
        texts += TextsOf(page);
    }
    EXPECT_EQ(texts, TextsOf(report.pages[0]) + TextsOf(report.pages[1]));
    EXPECT_EQ(made.pages.back().Height(), report.pages[1].Height())
        << "a long page stays one where PDF has room for it";
}

TEST(Sheets, ABoxAcrossTheCutIsClosedOnBothSheets) {
    pages::Document report{u"x"_s, {font}, {pages::Page(1000, 1000)}};
    report.pages[0].GrowTo(2600);
    report.pages[0].AddBox(100, 100, 500, 2400, pages::Fill::None, 10);
    report.pages[0].AddLine(50, 100, 50, 1500, 10);
    const pages::Document sheets = pages::OnSheets(report, {1000, 1000, 0, 0, 0, 0});
    ASSERT_EQ(sheets.pages.size(), 3U);
    int boxes = 0;
    for (const pages::Page& page : sheets.pages) {
        for (const pages::Item& item : page.Items()) {
            boxes += item.kind == pages::Item::Kind::Box ? item.height : 0;
            EXPECT_GE(item.y, 0);
            EXPECT_LE(item.y + item.height, 1000);
        }
    }
    EXPECT_EQ(boxes, 2400);
    EXPECT_EQ(pages::CutIntoSheets(report, {1000, 2100, 0, 0, 0, 0}).pages.size(), 2U) << "a strip is never squeezed";
}

TEST(PageSearch, FindsInEveryLetterCaseAcrossWrappedLines) {
    const pages::Document report = DailyList(3, 4);
    struct Case {
        QString wanted;
        size_t hits;
        size_t marks;
    };
    for (const Case& c : {Case{u"SETUP"_s, 12, 1}, Case{u"person 7, alma"_s, 1, 1}, Case{u""_s, 0, 0},
                          Case{u"no such text"_s, 0, 0}, Case{u"a connecting"_s, 0, 0}}) {
        const auto hits = pages::FindText(report, c.wanted);
        ASSERT_EQ(hits.size(), c.hits) << c.wanted.toStdString();
        EXPECT_TRUE(hits.empty() || hits[0].marks.size() == c.marks);
    }
    const auto paragraphs = pages::FindText(report, u"unlocked until noon"_s);
    ASSERT_EQ(paragraphs.size(), 12U);
    EXPECT_GE(paragraphs[0].marks.size(), 2U) << "the paragraph is wrapped";
    const auto labels = pages::FindText(report, u"etu"_s);
    ASSERT_EQ(labels.size(), 12U);
    EXPECT_EQ(labels.back().page, 2);
    EXPECT_GT(labels[0].marks[0].x(), 11520 / 5) << "only the letters found are marked";
}

TEST(MergeStyles, PutsBothUsersChangesTogether) {
    const auto rowsOf = [](const QString& text) {
        StyleRows rows;
        for (const QString& row : text.split(u' ')) {
            rows.push_back({row.first(1), row.sliced(1).toShort()});
        }
        return rows;
    };
    for (const QStringList& fields : TestRows(u"print_windows/merged_styles.txt"_s)) {
        const MergedStyles merged = MergeStyles(rowsOf(u"A1 B2 A4"_s), rowsOf(fields[0]), rowsOf(fields[1]));
        EXPECT_EQ(merged.rows, rowsOf(fields.at(2))) << fields.join(u'|').toStdString();
        EXPECT_EQ(merged.conflicts.join(u' '), fields.at(3)) << fields.join(u'|').toStdString();
    }
}

} // namespace
} // namespace velmora::print
