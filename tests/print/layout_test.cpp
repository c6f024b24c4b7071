#include "tests/print/PrintFixture.h"
#include "tests/print/PrintScript.h"

namespace velmora::print {
namespace {

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
    for (const ScriptCase& c : ReadScripts(u"print/operations.txt"_s)) {
        const auto layout = [&](PrintJob& job) {
            for (const QByteArray& operation : c.script) {
                RunOperation(job, operation);
            }
        };
        QByteArray text;
        for (const QByteArray& line : c.expected.at("text")) {
            text += (line == "(empty)" ? "" : QByteArray::fromPercentEncoding(line)) + "\r\n";
        }
        EXPECT_EQ(Lay(3, layout), text) << c.name;
        EXPECT_EQ(Lay(2, layout), text) << c.name << " as mail";
        EXPECT_EQ(Lay(4, layout), QByteArray::fromPercentEncoding(c.expected.at("html").join())) << c.name;
    }
}

// The header decides whether the first row opens a table, and the report's end whether one is closed.
TEST_F(LayoutTest, TheWrapperFilesStandAsTheyAreAroundTheMarkup) {
    const auto heading = [](PrintJob& job) { job.PrintSectionHeading("h"); };
    const QByteArray footer = "\n</BODY>&\xFE";
    Put(u"htmlpost.txt"_s, footer);
    for (const ScriptCase& c : ReadScripts(u"print/html_headers.txt"_s)) {
        const QByteArray header = QByteArray::fromPercentEncoding(c.script.at(0));
        Put(u"htmlpre.txt"_s, header);
        const QByteArray row = Lay(4, [](PrintJob& job) { job.PrintLabelValue("a", "b"); });
        EXPECT_EQ(row, header + c.expected.at("row").join() + "<tr><th>a</th><td>b</td></tr>" + footer) << c.name;
        const QByteArray between = c.expected.at("heading").join();
        EXPECT_EQ(Lay(4, heading), header + between + "<hr><strong><em>h</strong></em><br>" + footer) << c.name;
    }
    EXPECT_EQ(Lay(3, heading), QByteArray(50, '-') + "\r\nh\r\n") << "text has no wrapper";
}

} // namespace
} // namespace velmora::print
