#include "platform/pages/PdfFile.h"
#include "tests/print/PagesFixture.h"
#include "tests/print/PrintScript.h"

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

    // All pages as lines of text.
    QByteArray Described() const {
        QByteArrayList lines;
        const pages::Document& document = factory_.document;
        for (const pages::Page& page : document.pages) {
            lines.append("page " + QByteArray::number(page.Height()));
            for (const Item& item : page.Items()) {
                const QString place = u" %1 %2 "_s.arg(item.x - left).arg(item.y - top);
                const QString size = u"%1 %2 "_s.arg(item.width).arg(item.height);
                const bool grey = item.fill == pages::Fill::Grey;
                const QString line =
                    item.kind == Item::Kind::Text
                        ? u"text"_s + place + Shown(document.fonts[item.font]) + u' ' + page.Text(item).toString()
                    : item.kind == Item::Kind::Line ? u"line"_s + place + size + QString::number(item.text)
                                                    : u"box"_s + place + size + (grey ? u"grey"_s : u"empty"_s);
                lines.append(line.toUtf8());
            }
        }
        return lines.join('\n');
    }

private:
    // "10" points, with "b", "i" and "u" behind it.
    static QString Shown(const pages::FontSpec& font) {
        return QString::number(font.points) + (font.bold ? u"b"_s : QString()) + (font.italic ? u"i"_s : QString()) +
               (font.underline ? u"u"_s : QString());
    }

    std::map<std::tuple<double, bool, bool>, std::unique_ptr<pages::PageFont>> fonts_;
};

TEST_F(PagesTest, EachOperationToTheTwip) {
    for (const ScriptCase& c : ReadScripts(u"print/pages.txt"_s)) {
        QByteArrayList operations;
        qint16 leader = 0;
        bool suppress = false;
        attributes_.clear();
        for (const QByteArray& line : c.script) {
            const QByteArrayList fields = line.split('|');
            if (fields[0] == "leader") {
                leader = fields[1].toShort();
            } else if (fields[0] == "attribute") {
                attributes_.push_back({QString::fromUtf8(fields[1]), fields[2].toShort()});
            } else if (fields[0] == "unbroken") {
                suppress = true;
            } else {
                operations.append(line);
            }
        }
        Lay(
            [&](PrintJob& job) {
                for (const QByteArray& operation : operations) {
                    RunOperation(job, operation);
                }
            },
            suppress, leader);
        EXPECT_EQ(Described().toStdString(), c.expected.at("pages").join('\n').toStdString()) << c.name;
    }
    EXPECT_EQ(factory_.document.name, u"Desk"_s);
    Lay([](PrintJob& job) { job.PrintReportTitle("Starts", "", ""); });
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
        const char* operation;
        size_t pages;
    };
    // 15,000 twips are 6,250 dots. The rule's 45 dots are compared with twips.
    for (const Case& c : {Case{6231, "rule|5|20|20", 1}, Case{6232, "rule|5|20|20", 2}, Case{3125, "title|T", 1},
                          Case{3126, "title|T", 2}, Case{6215, "heading|H", 1}, Case{6230, "heading|H", 2},
                          Case{9000, "rule|5|20|20", 2}}) {
        for (const bool suppressed : {true, false}) {
            if (!suppressed && c.dots == 6215) {
                continue; // a heading asks for its room first
            }
            const auto layout = [&](PrintJob& job) {
                job.AddVerticalSpace(static_cast<qint16>(c.dots));
                RunOperation(job, c.operation);
            };
            EXPECT_EQ(Lay(layout, suppressed).pages.size(), c.pages) << c.dots << " " << suppressed;
        }
    }
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
    const QStringList words{u"Organization"_s, u"Facilities"_s,    u"B1-204"_s, u"i"_s,
                            u"Großräume"_s,    u"Möbel\nTische"_s, u"会議室"_s, QString(90, u'M')};
    const QByteArrayList operations{"title|$|$|$", "heading|$|500", "paragraph|$",      "pair|$|$|10",
                                    "wide|$|$",    "two|$|$|$|$|9", "indented|$|$|$|$", "row|$|$|$|$|$"};
    const auto operation = [&] {
        QByteArrayList pieces = operations[static_cast<int>(random() % 8)].split('$');
        for (qsizetype piece = 0; piece + 1 < pieces.size(); ++piece) {
            for (auto count = random() % 9 == 0 ? 25 : random() % 4; count > 0; --count) {
                const QString& word = words[static_cast<int>(random() % 40 == 0 ? 7 : random() % 7)];
                pieces[piece] += (word + u' ').toUtf8().toPercentEncoding();
            }
        }
        return pieces.join();
    };
    for (const qint16 leader : {qint16{0}, qint16{1}, qint16{2}}) {
        Lay(
            [&](PrintJob& job) {
                for (int i = 0; i < 400; ++i) {
                    RunOperation(job, operation());
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
        return pages::PdfBytes(Lay([](PrintJob& job) {
            for (int i = 0; i < 200; ++i) {
                RunOperation(job, "two|Jack|" + QByteArray::number(i) + "|Größe|中文|8");
            }
        }));
    };
    const QByteArray first = bytes();
    EXPECT_TRUE(first.startsWith("%PDF-"));
    // All but the second in which it was made.
    const qsizetype date = first.indexOf("/CreationDate (");
    ASSERT_GT(date, 0);
    const qsizetype length = first.indexOf(')', date) - date;
    EXPECT_TRUE(first.left(date) == bytes().left(date));
    EXPECT_TRUE(first.sliced(date + length) == bytes().sliced(date + length));
}

} // namespace
} // namespace velmora::print
