#include "tests/print/PrintFixture.h"

namespace velmora::print {
namespace {

// One sequence of layout operations and what each kind of target makes of it, to the byte.
struct LayoutCase {
    const char* name;
    std::function<void(PrintJob&)> layout;
    QByteArray text;
    QByteArray html;
};

const QByteArray rule = QByteArray(50, '-') + "\r\n";

std::vector<LayoutCase> LayoutCases() {
    return {
        {"title", [](PrintJob& job) { job.PrintReportTitle("Starts", "B1", "Printed at: 3/7/2026"); },
         rule + rule + "Starts\tB1\r\nPrinted at: 3/7/2026\r\n" + rule + rule,
         "<hr><H1>Starts:  B1</H1><BR><H2>Printed at: 3/7/2026</H2><BR><hr>"},
        {"title without subtitle", [](PrintJob& job) { job.PrintReportTitle("Notes", {}, ""); },
         rule + rule + "Notes\t\r\n\r\n" + rule + rule, "<hr><H1>Notes:  </H1><BR><H2></H2><BR><hr>"},
        {"heading", [](PrintJob& job) { job.PrintSectionHeading("Board: From", 612); }, rule + "Board: From\r\n",
         "<hr><strong><em>Board: From</strong></em><br>"},
        {"empty heading", [](PrintJob& job) { job.PrintSectionHeading(""); }, rule + "\r\n",
         "<hr><strong><em></strong></em><br>"},
        {"rule", [](PrintJob& job) { job.PrintRule(5, 20, 20); }, rule, "<hr>"},
        {"paragraph", [](PrintJob& job) { job.PrintParagraph(u"two\nlines"); }, "two\nlines\r\n", "<p>two\nlines</p>"},
        {"empty paragraph inside a table",
         [](PrintJob& job) {
             job.PrintLabelValue("a", "b");
             job.PrintParagraph({});
             job.PrintParagraph(QString());
             job.PrintLabelValue("c", "");
         },
         "\ta\tb\r\n\tc\t\r\n", "<table><tr><th>a</th><td>b</td></tr><tr><th>c</th><td></td></tr>"},
        {"label and value", [](PrintJob& job) { job.PrintLabelValue("Jack", "J1", Bold | GreyBox); }, "\tJack\tJ1\r\n",
         "<table><tr><th>Jack</th><td>J1</td></tr>"},
        {"wide label and value", [](PrintJob& job) { job.PrintWideLabelValue("Total", "12", Italic); },
         "\tTotal\t12\r\n", "<table><tr><th colspan=\"2\">Total</th><td colspan=\"2\">12</td></tr>"},
        {"two labels and values", [](PrintJob& job) { job.PrintTwoLabelValues("Jack", "J1", "Port", "", Bold); },
         "\tJack\tJ1\tPort\t\r\n", "<table><tr><th>Jack</th><td>J1</td><th>Port</th><td></td></tr>"},
        {"row of four",
         [](PrintJob& job) {
             job.PrintTableRow({"a", QString::number(2), "c", ""}, RowStyle::Indented);
         },
         "\ta\t2\tc\t\r\n", "<table><tr><td>a</td><td>2</td><td>c</td><td></td></tr>"},
        {"row of six",
         [](PrintJob& job) {
             job.PrintTableRow({"", "a", "b", "c", "d", "e"});
         },
         "\t\ta\tb\tc\td\te\r\n", "<table><tr><td></td><td>a</td><td>b</td><td>c</td><td>d</td><td>e</td></tr>"},
        {"what concerns pages alone",
         [](PrintJob& job) {
             job.AddVerticalSpace(50);
             job.EnsureRoom(5);
             job.NewPage();
             job.SetTabStops(0.1, 0.2, 0.3, 0.4);
         },
         "", ""},
        {"rows share a table, everything else ends it",
         [](PrintJob& job) {
             job.PrintLabelValue("1", "2");
             job.PrintTableRow({"3", ""}, RowStyle::Indented);
             job.PrintTableRow({"4", "", ""});
             job.PrintRule(1, 1, 1);
             job.PrintWideLabelValue("5", "6");
             job.PrintSectionHeading("7");
             job.PrintTwoLabelValues("8", "9", "a", "b");
             job.PrintParagraph("c");
             job.PrintTableRow({"d"});
             job.PrintReportTitle("e", "f", "g");
         },
         "\t1\t2\r\n\t3\t\r\n\t4\t\t\r\n" + rule + "\t5\t6\r\n" + rule + "7\r\n\t8\t9\ta\tb\r\nc\r\n\td\r\n" + rule +
             rule + "e\tf\r\ng\r\n" + rule + rule,
         "<table><tr><th>1</th><td>2</td></tr><tr><td>3</td><td></td></tr>"
         "<tr><td>4</td><td></td><td></td></tr></table><hr>"
         "<table><tr><th colspan=\"2\">5</th><td colspan=\"2\">6</td></tr></table><hr><strong><em>7</strong></em><br>"
         "<table><tr><th>8</th><td>9</td><th>a</th><td>b</td></tr></table><p>c</p>"
         "<table><tr><td>d</td></tr></table>"
         "<hr><H1>e:  f</H1><BR><H2>g</H2><BR><hr>"},
        {"markup and other scripts in values",
         [](PrintJob& job) {
             job.PrintReportTitle("<T>", u"A&B", "\"q\" 'a'");
             job.PrintSectionHeading("x < y > z & &amp;");
             job.PrintLabelValue(u"Größe", "</td>");
             job.PrintTableRow({u"\U0001F4DE 12"_s, "\xE2\x82\xAC", QUtf8StringView("bad \xFF\xC3"), "", ""});
             job.PrintParagraph("</table>");
         },
         rule + rule + "<T>\tA&B\r\n\"q\" 'a'\r\n" + rule + rule + rule + "x < y > z & &amp;\r\n" +
             "\tGr\xC3\xB6\xC3\x9F"
             "e\t</td>\r\n\t\xF0\x9F\x93\x9E 12\t\xE2\x82\xAC\tbad \xEF\xBF\xBD\xEF\xBF\xBD\t\t\r\n</table>\r\n",
         "<hr><H1>&lt;T&gt;:  A&amp;B</H1><BR><H2>\"q\" 'a'</H2><BR><hr>"
         "<hr><strong><em>x &lt; y &gt; z &amp; &amp;amp;</strong></em><br>"
         "<table><tr><th>Gr\xC3\xB6\xC3\x9F"
         "e</th><td>&lt;/td&gt;</td></tr>"
         "<tr><td>\xF0\x9F\x93\x9E 12</td><td>\xE2\x82\xAC</td><td>bad \xEF\xBF\xBD\xEF\xBF\xBD</td><td></td><td></td>"
         "</tr></table><p>&lt;/table&gt;</p>"},
    };
}

class LayoutTest : public PrintFixture {
protected:
    QByteArray Lay(qint16 target, const std::function<void(PrintJob&)>& layout) {
        job_.SetOutputTarget(target);
        job_.BeginReport();
        layout(job_);
        job_.EndReport();
        const QByteArray text = delivery_.delivered.back().second;
        EXPECT_EQ(text, job_.State().ReportText);
        return text;
    }
};

TEST_F(LayoutTest, EachTargetToTheByte) {
    for (const LayoutCase& c : LayoutCases()) {
        EXPECT_EQ(Lay(3, c.layout), c.text) << c.name;
        EXPECT_EQ(Lay(2, c.layout), c.text) << c.name << " as mail";
        EXPECT_EQ(Lay(4, c.layout), c.html) << c.name;
    }
}

// The header decides whether the first row opens a table, and the report's end whether one is closed.
TEST_F(LayoutTest, TheWrapperFilesStandAsTheyAreAroundTheMarkup) {
    const auto row = [](PrintJob& job) { job.PrintLabelValue("a", "b"); };
    const auto heading = [](PrintJob& job) { job.PrintSectionHeading("h"); };
    const QByteArray rowMarkup = "<tr><th>a</th><td>b</td></tr>";
    const QByteArray headingMarkup = "<hr><strong><em>h</strong></em><br>";
    struct Case {
        QByteArray header;
        QByteArray betweenAndRow;
        QByteArray betweenAndHeading;
    };
    for (const Case& c : {
             Case{"<html><body>\r\n", "<table>", ""},
             Case{"<TABLE>", "", ""},
             Case{"x<Td>1</tD>", "", "</tr></table>"},
             Case{"<TH>1</TH>", "", "</tr></table>"},
             Case{"<tr></TR>", "", "</table>"},
             Case{"<table border=1>", "<table>", ""},
             Case{"</td> ", "<table>", ""},
             Case{"\xFF raw &<>\r\n", "<table>", ""},
         }) {
        WriteFile(u"htmlpre.txt"_s, c.header);
        WriteFile(u"htmlpost.txt"_s, "\n</BODY>&\xFE");
        EXPECT_EQ(Lay(4, row), c.header + c.betweenAndRow + rowMarkup + "\n</BODY>&\xFE") << c.header.toStdString();
        EXPECT_EQ(Lay(4, heading), c.header + c.betweenAndHeading + headingMarkup + "\n</BODY>&\xFE")
            << c.header.toStdString();
    }
    EXPECT_EQ(Lay(3, heading), rule + "h\r\n") << "text has no wrapper";
}

} // namespace
} // namespace velmora::print
