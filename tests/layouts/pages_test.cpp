#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class PagesTest : public LayoutFixture {
protected:
    PagesTest() { fakes_.printers.font.family = u"Liberation Sans"_s; }

    const pages::Document& Preview(const QString& file, const QString& formula) {
        Run(print::Target::Preview, file, formula);
        return previews_.opened.back().document;
    }
    const pages::Document& PreviewMine(const QByteArray& keys, const QString& formula = {}) {
        WriteLayout(u"Mine.rpx"_s, "{\"title\": \"Mine\", \"tables\": [{\"table\": \"WorkOrder\"}],\n" + keys + "}");
        return Preview(u"Mine.rpx"_s, formula);
    }
    void AddWorkOrders(int count, const QString& description) {
        store_->Run(
            u"INSERT INTO WorkOrder (ID, Requested, Completed, Description) WITH RECURSIVE n(i) AS (SELECT 100 UNION "
            "ALL SELECT i + 1 FROM n WHERE i < %1) SELECT i, '2026-04-0' || (1 + i % 3) || ' 10:00:00', 0, '%2' FROM n"_s
                .arg(99 + count)
                .arg(description));
    }
    static QStringList Lines(const pages::Page& page) { return page.PlainText().split(u'\n', Qt::SkipEmptyParts); }
    // Nothing stands outside the paper's margins.
    static void ExpectInside(const pages::Document& document, int margin) {
        for (const pages::Page& page : document.pages) {
            EXPECT_EQ(page.Width(), 12240);
            EXPECT_EQ(page.Height(), 15840);
            for (const pages::Item& item : page.Items()) {
                EXPECT_GE(std::min(item.x, item.x + item.width), margin - 10);
                EXPECT_LE(item.x + item.width, page.Width() - margin + 10) << page.Text(item).toString().toStdString();
                EXPECT_GE(item.y, margin - 10);
                EXPECT_LE(item.y + item.height, page.Height() - margin + 10)
                    << page.Text(item).toString().toStdString();
            }
        }
    }
};

TEST_F(PagesTest, RepeatsHeadingsAndNumbersPages) {
    AddWorkOrders(300, u"Something to do"_s);
    const pages::Document& document = PreviewMine(
        R"("groups": [{"by": "WorkOrder.Requested", "unit": "day", "heading": "Day {WorkOrder.Requested:date}", "footer": "{Count} on this day"}],
           "sort": ["WorkOrder.ID"], "total": "{Count} in all",
           "columns": [{"tick": "WorkOrder.Completed", "width": 2}, {"heading": "Number", "value": "{WorkOrder.ID}"}, {"heading": "What", "value": "{WorkOrder.Description}"}],
           "pageHeader": {"left": "Mine again"}, "pageFooter": {"right": "Page {Page} of {Pages}"})",
        u"{WorkOrder.ID} >= 100"_s);
    const size_t count = document.pages.size();
    ASSERT_GE(count, 4U);
    ExpectInside(document, 720);
    EXPECT_EQ(document.name, u"Desk: Mine"_s);
    qsizetype rows = 0;
    qsizetype ticks = 0;
    for (size_t i = 0; i < count; ++i) {
        const QStringList lines = Lines(document.pages[i]);
        EXPECT_EQ(lines.front(), i == 0 ? u"Mine"_s : u"Mine again"_s);
        EXPECT_EQ(lines.back(), u"Page %1 of %2"_s.arg(i + 1).arg(count));
        EXPECT_TRUE(lines[1] == u"Number\tWhat"_s) << lines[1].toStdString();
        EXPECT_TRUE(lines[2].startsWith(u"Day 4/"_s)) << lines[2].toStdString();
        // A page never ends in a heading, and goes on where the last one ended.
        EXPECT_FALSE(lines[lines.size() - 2].startsWith(u"Day"_s));
        rows += lines.filter(u"Something to do"_s).size();
        for (const pages::Item& item : document.pages[i].Items()) {
            ticks += item.kind == pages::Item::Kind::Box ? 1 : 0;
        }
    }
    EXPECT_EQ(rows, 300);
    EXPECT_EQ(ticks, 300);
    EXPECT_TRUE(Lines(document.pages[1])[2].endsWith(u"(continued)"_s));
    EXPECT_TRUE(document.pages.back().PlainText().contains(u"100 on this day\n300 in all"_s));
}

TEST_F(PagesTest, KeepsHeadingsWithTheirFirstRecord) {
    AddWorkOrders(200, u"Something to do"_s);
    const pages::Document& document = PreviewMine(
        R"("groups": [{"by": "WorkOrder.ID", "heading": "Order {WorkOrder.ID}\n{WorkOrder.RequestedBy}of two lines"},
                      {"by": "WorkOrder.Requested", "heading": "on {WorkOrder.Requested:date}"}],
           "columns": [{"value": "{WorkOrder.Description}"}])",
        u"{WorkOrder.ID} >= 100"_s);
    ASSERT_GE(document.pages.size(), 5U);
    ExpectInside(document, 720);
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const QStringList lines = Lines(document.pages[i]);
        // Below the title the pages are alike, as every order is as tall as the next.
        EXPECT_EQ(lines.back(), u"Something to do"_s);
        EXPECT_TRUE(lines[i == 0 ? 1 : 0].startsWith(u"Order "_s));
        EXPECT_FALSE(document.pages[i].PlainText().contains(u"continued"_s));
    }
}

TEST_F(PagesTest, WritesALetterForEachReservation) {
    const pages::Document& document =
        Preview(u"Reminder.rpx"_s, u"{Reservation.Start} >= Date(2026,3,6) And {Reservation.Start} < Date(2026,3,7)"_s);
    ExpectInside(document, 1440);
    EXPECT_EQ(
        static_cast<qint64>(document.pages.size()),
        store_->Number(
            u"SELECT Count(*) FROM Reservation JOIN Asset ON Asset = AssetID WHERE date(Start) = '2026-03-06' AND LastName <> ''"_s));
    for (const pages::Page& page : document.pages) {
        const QStringList lines = Lines(page);
        EXPECT_EQ(lines.front().section(u'\t', 0, 0), u"Reminder"_s);
        EXPECT_EQ(lines.filter(u"Dear "_s).size(), 1);
        EXPECT_EQ(lines.back(), u"Page 1 of 1"_s);
    }
}

TEST_F(PagesTest, PartsOnlyWhatIsLongerThanAPage) {
    QString words;
    for (int i = 0; i < 3000; ++i) {
        words += u"word%1 "_s.arg(i);
    }
    AddWorkOrders(2, words);
    const pages::Document& document = PreviewMine(
        R"("sort": ["WorkOrder.ID"], "columns": [{"heading": "N", "value": "{WorkOrder.ID}", "width": 1}, {"value": "{WorkOrder.Description}", "width": 3}], "total": "end")",
        u"{WorkOrder.ID} >= 100"_s);
    ASSERT_GE(document.pages.size(), 4U);
    ExpectInside(document, 720);
    QString all;
    for (const pages::Page& page : document.pages) {
        all += page.PlainText();
    }
    EXPECT_EQ(all.count(u"word2999"_s), 2);
    EXPECT_EQ(all.count(u"word1500 "_s) + all.count(u"word1500\n"_s) + all.count(u"word1500\t"_s), 2);
    // A heading as long as a page is cut, or there would be no end to it.
    const pages::Document& headings = PreviewMine(
        R"("groups": [{"by": "WorkOrder.ID", "heading": "{WorkOrder.Description}", "newPage": true}], "columns": [{"value": "x"}])",
        u"{WorkOrder.ID} >= 100"_s);
    EXPECT_EQ(headings.pages.size(), 2U);
}

TEST_F(PagesTest, KeepsItsOwnOrientationAndTouchesNothing) {
    fakes_.printers.orientation = Orientation::Landscape;
    fakes_.printers.current = u"Lobby"_s;
    ExpectInside(Preview(u"Setup.rpx"_s, u"{Reservation.ID} <= 5"_s), 720);
    EXPECT_EQ(fakes_.printers.orientation, Orientation::Landscape);
    PreviewMine(R"("columns": [{"value": "x"}])");
    WriteLayout(
        u"Wide.rpx"_s,
        R"({"title": "Wide", "orientation": "landscape", "tables": [{"table": "Asset"}], "columns": [{"value": "x"}]})");
    EXPECT_EQ(previews_.opened.back().orientation, Orientation::Portrait);
    EXPECT_EQ(Preview(u"Wide.rpx"_s, {}).pages[0].Width(), 15840);
    EXPECT_EQ(previews_.opened.back().orientation, Orientation::Landscape);
    EXPECT_EQ(previews_.opened.back().notice, QString());
}

TEST_F(PagesTest, GetsOnWithTinyPaper) {
    AddWorkOrders(5, u"Something long to do on a label that is as small as a stamp"_s);
    fakes_.printers.page = {1440, 1000, 0, 0, 1440, 1000, 2.4};
    PreviewMine(R"("fontSize": 24, "margin": 2, "columns": [{"heading": "A", "value": "{WorkOrder.Description}"},
                   {"heading": "B", "value": "{WorkOrder.ID}"}])");
    EXPECT_GT(previews_.opened.back().document.pages.size(), 5U);
}

} // namespace
} // namespace velmora::layouts
