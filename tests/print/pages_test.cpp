#include "tests/print/PagesFixture.h"

#include "platform/pages/PdfFile.h"

#include <QRegularExpression>

#include <map>
#include <random>
#include <tuple>

namespace velmora::print {
namespace {

using pages::Item;

class PagesTest : public PagesFixture {
protected:
    struct Extent {
        int right = 0;
        int bottom = 0;
    };
    // Without the blanks at its end, which may hang over.
    Extent ExtentOf(const Placed& placed) {
        auto& font = fonts_[{placed.font.points, placed.font.bold, placed.font.italic}];
        if (!font) {
            font = std::make_unique<pages::PageFont>(placed.font);
        }
        QStringView text = placed.text;
        while (text.endsWith(u' ')) {
            text.chop(1);
        }
        return {placed.x + font->TextWidth(text), placed.y + font->LineHeight()};
    }
    void ExpectApart(const std::vector<Placed>& texts, const std::string& where) {
        for (size_t i = 0; i < texts.size(); ++i) {
            const Placed& one = texts[i];
            const Extent end = ExtentOf(one);
            const bool inside = one.x >= 0 && end.right <= width + 1 && end.bottom <= height;
            EXPECT_TRUE(inside) << where << ": \"" << one.text.toStdString() << "\" leaves the page";
            for (size_t j = 0; j < i; ++j) {
                const Extent other = ExtentOf(texts[j]);
                const bool apart = other.bottom <= one.y || end.bottom <= texts[j].y || end.right <= texts[j].x ||
                                   other.right <= one.x;
                ASSERT_TRUE(apart) << where << ": \"" << one.text.toStdString() << "\" over \""
                                   << texts[j].text.toStdString() << '"';
            }
        }
    }

private:
    std::map<std::tuple<double, bool, bool>, std::unique_ptr<pages::PageFont>> fonts_;
};

TEST_F(PagesTest, ATitleStandsBetweenDoubleRules) {
    Lay([](PrintJob& job) { job.PrintReportTitle("Starts", "B1", "Printed at: 3/7/2026"); });
    const Placed title = Find(u"Starts"_s);
    const Placed subtitle = Find(u"B1"_s);
    const Placed second = Find(u"Printed at: 3/7/2026"_s);
    EXPECT_TRUE(title.font.bold && title.font.italic);
    EXPECT_TRUE(subtitle.font.bold && !subtitle.font.italic);
    EXPECT_FALSE(second.font.bold || second.font.italic);
    EXPECT_EQ(title.font.points, 15);
    EXPECT_EQ(second.font.points, 10);
    EXPECT_EQ(title.x, 0);
    EXPECT_EQ(title.y, 4 * 48 + 120) << "two rules with 20 dots on either side, then 50 dots";
    EXPECT_EQ(subtitle.y, title.y);
    EXPECT_GT(subtitle.x, title.x + title.width);
    const auto rules = Shapes(Item::Kind::Line);
    ASSERT_EQ(rules.size(), 4U);
    for (const Item& rule : rules) {
        EXPECT_EQ(rule.x, 0);
        EXPECT_EQ(rule.width, width);
        EXPECT_EQ(rule.text, 12U) << "5 dots";
    }
    EXPECT_EQ(rules[0].y, 48);
    EXPECT_EQ(rules[1].y, 144);
    EXPECT_EQ(factory_.document.name, u"Desk: Starts"_s);
}

TEST_F(PagesTest, PagesBreakWhereRoomEndsAndClosedPagesAreNumbered) {
    const int perPage = [this] {
        int rows = 1;
        for (int y = LineHeight(); (LineHeight() + 20) * 3 <= height - y; y += LineHeight()) {
            ++rows;
        }
        return rows;
    }();
    const auto rows = [perPage](PrintJob& job) {
        for (int i = 0; i < 2 * perPage + 1; ++i) {
            job.PrintTableRow({QString::number(1000 + i)}, RowStyle::Indented);
        }
    };
    Lay(rows);
    ASSERT_EQ(factory_.document.pages.size(), 3U);
    const Placed number = Find(u"1"_s, 0);
    EXPECT_EQ(number.x, width / 2);
    EXPECT_EQ(number.y, height - (LineHeight() + 20));
    EXPECT_EQ(Find(u"2"_s, 1).y, number.y);
    EXPECT_EQ(Texts(2).size(), 1U) << "the last page has no number";
    EXPECT_EQ(Texts(1).front().text, QString::number(1000 + perPage));
    EXPECT_EQ(Texts(1).front().y, 0);

    Lay(rows, true);
    ASSERT_EQ(factory_.document.pages.size(), 1U);
    EXPECT_EQ(factory_.document.pages[0].Height(), 15840 - height + (2 * perPage + 1) * LineHeight())
        << "the page holds everything and keeps its lower margin";
}

TEST_F(PagesTest, RulesAndTitlesBreakPagesByTheirOwnTests) {
    struct Case {
        int dots;
        std::function<void(PrintJob&)> operation;
        size_t pages;
    };
    const auto rule = [](PrintJob& job) { job.PrintRule(5, 20, 20); };
    const auto title = [](PrintJob& job) { job.PrintReportTitle("T", "", ""); };
    const auto heading = [](PrintJob& job) { job.PrintSectionHeading("H"); };
    // 15,000 twips are 6,250 dots. The rule's 45 dots are compared with twips.
    for (const Case& c : {Case{6231, rule, 1}, Case{6232, rule, 2}, Case{3125, title, 1}, Case{3126, title, 2},
                          Case{6215, heading, 1}, Case{6230, heading, 2}, Case{9000, rule, 2}}) {
        for (const bool suppressed : {true, false}) {
            if (!suppressed && c.dots == 6215) {
                continue; // a heading asks for its room first
            }
            const auto& document = Lay(
                [&](PrintJob& job) {
                    job.AddVerticalSpace(static_cast<qint16>(c.dots));
                    c.operation(job);
                },
                suppressed);
            EXPECT_EQ(document.pages.size(), c.pages) << c.dots << " " << suppressed;
        }
    }
    // A page that is full beyond its foot has its number below what was drawn.
    Lay(
        [](PrintJob& job) {
            for (int i = 0; i < 100; ++i) {
                job.PrintTableRow({"x"}, RowStyle::Indented);
            }
            job.PrintRule(5, 20, 20);
        },
        true);
    EXPECT_EQ(Find(u"1"_s).y, 100 * LineHeight());
}

TEST_F(PagesTest, TheRefusedPageGoesOnOnTheLast) {
    factory_.target.pageLimit = 2;
    Lay([](PrintJob& job) {
        for (int i = 0; i < 4; ++i) {
            job.PrintTableRow({QString::number(100 + i)}, RowStyle::Indented);
            job.NewPage();
        }
    });
    EXPECT_EQ(factory_.document.pages.size(), 2U);
    EXPECT_EQ(factory_.refusals, 3);
    EXPECT_EQ(Find(u"103"_s, 1).y, 2 * LineHeight());
    for (const Placed& placed : Texts(1)) {
        EXPECT_NE(placed.text, u"2"_s) << "a page that stays open has no number";
    }
}

TEST_F(PagesTest, ParagraphsAreWrappedBetweenTabStopAndEdge) {
    const QString words = QString(u"Please set up forty chairs and the projector. "_s).repeated(12).trimmed();
    const QString longWord = QString(500, u'W');
    const QString cyrillic = QString(u"Пожалуйста, поставьте сорок стульев у окна. "_s).repeated(12).trimmed();
    for (const QString& text :
         {words, longWord, u"short "_s + longWord + u" end"_s, cyrillic, QString(300, QChar(0x4E2D)),
          QString(u"\U0001F4DE"_s).repeated(200), u"one\r\ntwo\n\nfour\n"_s, QString(u"a"_s), QString(1, u' ')}) {
        Lay([&](PrintJob& job) { job.PrintParagraph(text); });
        QString all;
        int y = 0;
        for (const Placed& line : Texts()) {
            EXPECT_EQ(line.x, 2000);
            EXPECT_LE(line.width, width - 2000);
            EXPECT_FALSE(line.text.front().isLowSurrogate()) << "a letter is never divided";
            EXPECT_TRUE(line.y == y || text.contains(u'\n'));
            y = line.y + LineHeight();
            all += line.text;
        }
        EXPECT_EQ(all, QString(text).remove(u'\n').remove(u'\r'));
    }
    Lay([&](PrintJob& job) { job.PrintParagraph(words); });
    for (const Placed& line : Texts()) {
        EXPECT_TRUE(line.text.endsWith(u' ') || words.endsWith(line.text)) << line.text.toStdString();
    }
    Lay([](PrintJob& job) { job.PrintParagraph(""); });
    EXPECT_TRUE(factory_.document.pages[0].Items().empty());
    Lay([](PrintJob& job) { job.PrintParagraph("tab\there\x01"); });
    EXPECT_EQ(Texts().front().text, u"tab here "_s);
}

TEST_F(PagesTest, TheShortLinesOfAParagraphStayTogether) {
    const int fullPage = height / LineHeight();
    const auto linesOnFirstPage = [&](const QByteArray& text) {
        Lay([&](PrintJob& job) {
            job.AddVerticalSpace(static_cast<qint16>(height / 2.4 - 5 * LineHeight() / 2.4));
            job.PrintParagraph(text);
        });
        return std::ssize(Texts(0)) - (factory_.document.pages.size() > 1 ? 1 : 0);
    };
    EXPECT_EQ(linesOnFirstPage("one\ntwo\nthree"), 3) << "there is room";
    EXPECT_EQ(linesOnFirstPage("one\ntwo\nthree\nfour\nfive\nsix"), 0);
    EXPECT_EQ(Texts(1).size(), 6U);
    // A wrapped line asks for its own room only; what follows it stays together.
    const QByteArray wrapped = QByteArray("word ").repeated(25);
    EXPECT_EQ(linesOnFirstPage(wrapped + "\ntwo\nthree\nfour\nfive\nsix"), 1);
    // What no page holds is broken where the page ends, and nothing is lost.
    linesOnFirstPage(QByteArray("line\n").repeated(fullPage + 20));
    ASSERT_EQ(factory_.document.pages.size(), 3U);
    EXPECT_EQ(std::ssize(Texts(1)) - 1 + std::ssize(Texts(2)), fullPage + 20);
}

TEST_F(PagesTest, PairsStandAtTheirTabStopsInTheirStyle) {
    attributes_ = {{u"Jack"_s, Bold | Underlined}, {u"Jack"_s, Italic}};
    Lay([](PrintJob& job) {
        job.PrintLabelValue("Jack", "J1");
        job.PrintLabelValue("Jack", "plain", qint16{0});
        job.PrintWideLabelValue("Total", "12", Italic);
        job.PrintTwoLabelValues("a", "1", "b", "2", Bold);
        job.PrintLabelValue("after", "left again");
    });
    EXPECT_TRUE(Find(u"Jack"_s).font.bold);
    EXPECT_EQ(Find(u"Jack"_s).x, 2000);
    const Placed value = Find(u"J1"_s);
    EXPECT_EQ(value.x, 4000);
    EXPECT_TRUE(value.font.bold && value.font.underline && !value.font.italic) << "the first row of a caption counts";
    EXPECT_FALSE(Find(u"plain"_s).font.bold);
    EXPECT_EQ(Find(u"plain"_s).y, LineHeight() + 36) << "15 dots between the lines";
    EXPECT_EQ(Find(u"12"_s).x, 6000);
    EXPECT_TRUE(Find(u"12"_s).font.italic);
    EXPECT_EQ(Find(u"a"_s).y, Find(u"2"_s).y);
    EXPECT_EQ(Find(u"b"_s).x, 6000);
    EXPECT_EQ(Find(u"2"_s).x, 8000);
    EXPECT_FALSE(Find(u"1"_s).font.bold) << "the style is the second pair's";
    EXPECT_TRUE(Find(u"2"_s).font.bold);
    EXPECT_EQ(Find(u"after"_s).x, 2000);
}

TEST_F(PagesTest, BoxesAndLeaderLines) {
    const auto pairs = [](PrintJob& job) {
        job.PrintLabelValue("Jack", "J1", GreyBox);
        job.PrintLabelValue("Port", "");
        job.PrintWideLabelValue("Wide", "w");
        job.PrintLabelValue("Last", "x");
    };
    Lay(pairs, {}, 1);
    const auto boxes = Shapes(Item::Kind::Box);
    ASSERT_EQ(boxes.size(), 8U);
    EXPECT_EQ(boxes[0].fill, pages::Fill::None);
    EXPECT_EQ(boxes[0].x, 1980);
    EXPECT_EQ(boxes[0].y, -20);
    EXPECT_EQ(boxes[0].width, 1980);
    EXPECT_EQ(boxes[0].height, LineHeight() + 25);
    EXPECT_EQ(boxes[1].fill, pages::Fill::Grey);
    EXPECT_EQ(boxes[1].width, Find(u"J1"_s).width + 40);
    EXPECT_EQ(boxes[2].fill, pages::Fill::Grey) << "a label's box is filled as the value before it was";
    EXPECT_EQ(boxes[3].width, 40) << "an empty value";
    EXPECT_EQ(boxes[3].fill, pages::Fill::None);
    EXPECT_EQ(boxes[4].fill, pages::Fill::None);
    EXPECT_EQ(boxes[4].width, 3980);

    Lay(pairs, {}, 2);
    EXPECT_EQ(Shapes(Item::Kind::Box).size(), 1U) << "the grey one";
    const auto leaders = Shapes(Item::Kind::Line);
    ASSERT_EQ(leaders.size(), 4U);
    EXPECT_EQ(leaders[0].x, 2000 + Find(u"Jack"_s).width);
    EXPECT_EQ(leaders[0].x + leaders[0].width, 4000);
    EXPECT_EQ(leaders[0].y, LineHeight());
    EXPECT_EQ(leaders[2].x + leaders[2].width, 6000);
    // Tab stops may leave no room for the label: the leader then runs backwards to the value.
    Lay(
        [](PrintJob& job) {
            job.SetTabStops(0.5, 0.4, 0.6, 0.8);
            job.PrintLabelValue("Jack", "J1");
        },
        {}, 2);
    EXPECT_LT(Shapes(Item::Kind::Line)[0].width, 0);
    Lay(pairs, {}, 3);
    EXPECT_TRUE(Shapes(Item::Kind::Line).empty()) << "an unknown style is none";
}

TEST_F(PagesTest, RowsHaveTheirCellsAtTabStopsAndTheLastAtTheEdge) {
    const QString wide = u"Rm. Ext. "_s + QString(20, u'9');
    Lay([&](PrintJob& job) {
        job.PrintTableRow({"a", "b", "c", "d"}, RowStyle::Indented);
        job.PrintTableRow({"", "p", "q", "r", "s"});
        job.PrintTableRow({"0", "", "", "t", wide});
    });
    EXPECT_EQ(Find(u"b"_s).x, 4000);
    EXPECT_EQ(Find(u"d"_s).x + Find(u"d"_s).width, width);
    EXPECT_EQ(Texts()[4].text, u"p"_s) << "empty cells are not drawn";
    EXPECT_EQ(Find(u"p"_s).x, 2000);
    EXPECT_EQ(Find(u"s"_s).x, 8000);
    EXPECT_EQ(Find(u"0"_s).x, 0);
    EXPECT_EQ(Find(wide).x + Find(wide).width, width);
    EXPECT_EQ(Find(wide).y, 2 * LineHeight());
}

TEST_F(PagesTest, ATextFitsTheWidthThatItWasMeasuredToHave) {
    pages::Document document;
    const PageSurface surface(document, factory_.target.geometry, factory_.target.font);
    int roundedDown = 0;
    for (int i = 0; i < 200; ++i) {
        const QString text = u"Room %1, Building %2"_s.arg(i * i).arg(i * 7);
        const int measured = surface.TextWidth(text);
        roundedDown += pages::PageFont(factory_.target.font).Advance(text) > measured ? 1 : 0;
        EXPECT_EQ(surface.Wrap(text, measured).size(), 1U) << text.toStdString();
        EXPECT_EQ(surface.Wrap(text, measured - 1).size(), 2U) << text.toStdString();
    }
    EXPECT_GT(roundedDown, 20) << "these are the ones at stake";
}

TEST_F(PagesTest, TheOpenReportTellsHowWideATextIs) {
    const QString longer = u"Boardroom, 2nd floor"_s;
    int measured = 0;
    Lay([&](PrintJob& job) {
        measured = job.TextWidth(longer);
        EXPECT_EQ(job.TextWidth(u"C1\r\n"_s + longer + u"\nC2"_s), measured) << "the widest line";
        EXPECT_EQ(job.TextWidth("a\tb"), job.TextWidth("a b")) << "as it is shown";
        EXPECT_EQ(job.TextWidth({}), 0);
        job.PrintTableRow({longer});
    });
    EXPECT_EQ(Find(longer).width, measured);
    EXPECT_EQ(job_.TextWidth(longer), 0) << "no report is open";
    job_.SetOutputTarget(3);
    job_.BeginReport();
    EXPECT_EQ(job_.TextWidth(longer), 0) << "a text file has no width";
    job_.AbandonReport();
}

// Whatever the texts, tab stops and styles: no text overlaps another, and none leaves the drawable area.
TEST_F(PagesTest, NothingOverlapsAndNothingIsCut) {
    std::mt19937 random(7);
    const auto text = [&random] {
        const QStringList words{u"Organization"_s, u"Facilities"_s,    u"B1-204"_s, u"i"_s,
                                u"Großräume"_s,    u"Möbel\nTische"_s, u"会議室"_s, QString(90, u'M')};
        QString made;
        const int count = static_cast<int>(random() % 9 == 0 ? 25 : random() % 4);
        for (int i = 0; i < count; ++i) {
            made += words[static_cast<int>(random() % 40 == 0 ? 7 : random() % 7)] + u' ';
        }
        return made;
    };
    for (const qint16 leader : {qint16{0}, qint16{1}, qint16{2}}) {
        Lay(
            [&](PrintJob& job) {
                for (int i = 0; i < 400; ++i) {
                    switch (random() % 8) {
                    case 0:
                        job.PrintReportTitle(text(), text(), text());
                        break;
                    case 1:
                        job.PrintSectionHeading(text(), static_cast<int>(random() % 3) * 500);
                        break;
                    case 2:
                        job.PrintParagraph(text());
                        break;
                    case 3:
                        job.PrintLabelValue(text(), text(), static_cast<qint16>(random() % 16));
                        break;
                    case 4:
                        job.PrintWideLabelValue(text(), text());
                        break;
                    case 5:
                        job.PrintTwoLabelValues(text(), text(), text(), text(), Bold | GreyBox);
                        break;
                    case 6:
                        job.PrintTableRow({text(), text(), text(), text()}, RowStyle::Indented);
                        break;
                    default:
                        job.PrintTableRow({text(), text(), text(), text(), text()});
                        break;
                    }
                }
            },
            {}, leader);
        ASSERT_GT(factory_.document.pages.size(), 10U);
        for (size_t page = 0; page < factory_.document.pages.size(); ++page) {
            EXPECT_EQ(factory_.document.pages[page].Height(), 15840) << "page " << page;
            ExpectApart(Texts(page), "page " + std::to_string(page) + " leader " + std::to_string(leader));
        }
    }
}

TEST_F(PagesTest, TheSameReportGivesTheSameFile) {
    const auto bytes = [this] {
        const auto& document = Lay([](PrintJob& job) {
            job.PrintReportTitle("Starts", "B1", "Printed");
            for (int i = 0; i < 200; ++i) {
                job.PrintTwoLabelValues("Jack", QString::number(i), "Größe", u"中文"_s, GreyBox);
            }
        });
        QString pdf = QString::fromLatin1(pages::PdfBytes(document));
        EXPECT_EQ(pages::PdfBytes(document).size(), pdf.size());
        return pdf.remove(QRegularExpression(u"/CreationDate \\([^)]*\\)"_s));
    };
    const QString first = bytes();
    EXPECT_TRUE(first.startsWith(u"%PDF-"));
    EXPECT_TRUE(first == bytes());
}

} // namespace
} // namespace velmora::print
