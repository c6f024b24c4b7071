#include "layouts/LayoutChoice.h"
#include "layouts/LayoutWalk.h"
#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class DocumentsTest : public LayoutFixture {
protected:
    // Runs a layout with these keys besides the title, as text lines.
    QString Lines(QString keys, const QString& formula) {
        if (!keys.contains(u"\"tables\""_s)) {
            keys.prepend(u"\"tables\": [{\"table\": \"Reservation\"}, {\"table\": \"Asset\", "
                         "\"on\": \"{Reservation.Asset} = {Asset.AssetID}\"}],\n"_s);
        }
        WriteLayout(u"Mine.rpx"_s, u"{\"title\": \"Mine\", %1}"_s.arg(keys).toUtf8());
        return RunText(u"Mine.rpx"_s, formula).remove(u'\r');
    }
    // The number of records of a shipped layout.
    qint64 Count(const LayoutRequest& request) {
        const Layout layout =
            ReadLayoutFile(Path(FindLayoutChoice(request.layout)->file.toString()), database_->Schema());
        print::ReportWriter none;
        return WriteRecords(layout, ParseFormula(SelectionFormula(request), layout.scope), *database_,
                            TheServices().localeText, fakes_.clock.now, none);
    }
};

TEST_F(DocumentsTest, ListsTheRowsThatSqlCounts) {
    LayoutRequest request;
    request.start = MakeDate(2026, 3, 5);
    for (const QStringList& each : TestRows(u"counts.txt"_s)) {
        request.layout = each.at(0).toShort();
        for (const int options : {0, 1, 2, 3, 4, 5, 6, 7}) {
            request.completionFilter = (options & 1) != 0;
            request.excludeConferenceRooms = (options & 2) != 0;
            const unsigned days = (options & 4) != 0 ? 5 : 1;
            request.end = MakeDate(2026, 3, 5 + days);
            const QString sql = each.at(1) + (request.completionFilter ? each.at(2) : QString()) +
                                (request.excludeConferenceRooms ? each.at(3) : QString());
            const QString expected =
                store_->Rows(sql, StorageText(StartOfDay(*request.start)), StorageText(StartOfDay(*request.end)))[0];
            EXPECT_EQ(QString::number(Count(request)), expected) << sql.toStdString();
            // A day without any says nothing about the filters.
            EXPECT_TRUE(days == 1 || request.excludeConferenceRooms || expected.toInt() > 0) << sql.toStdString();
        }
    }
}

TEST_F(DocumentsTest, PrintsWhatTheLayoutSays) {
    for (const QString& block : TestText(u"documents.txt"_s).split(u"\n@ "_s).mid(1)) {
        const QString head = block.section(u'\n', 0, 0);
        const QString body = block.section(u"\n=>"_s, 0, 0).section(u'\n', 1);
        QStringList keys;
        for (const QString& line : body.split(u'\n')) {
            line.startsWith(u"sql: ") ? store_->Run(line.sliced(5)) : keys.append(line);
        }
        QString found = Lines(keys.join(u'\n'), head.section(u" | "_s, 1));
        found.replace(QString(50, u'='), u"="_s).replace(QString(50, u'-'), u"-"_s);
        EXPECT_EQ(found.toStdString(), block.section(u"\n=>\n"_s, 1).trimmed().toStdString()) << head.toStdString();
    }
}

TEST_F(DocumentsTest, FillsInTexts) {
    store_->Run(
        u"UPDATE Reservation SET Start = '2026-03-06 13:05:00', \"End\" = '2026-03-07 00:00:00', Permanent = 1, "
        "Attendees = 12 WHERE ID = 1; UPDATE Asset SET LocationLvl = NULL"_s);
    const QString first =
        u"{Reservation.ID} = 1 And {Reservation.Start} >= Date(2026,3,6) And {Reservation.Start} < Date(2026,3,7)"_s;
    for (const QStringList& each : TestRows(u"templates.txt"_s)) {
        const QString written = Lines(u"\"columns\": [{\"value\": \"%1\"}]"_s.arg(each.at(0)), first);
        EXPECT_EQ(written.section(u'\n', 2, 2).toStdString(), each.at(1).toStdString()) << each[0].toStdString();
    }
    const auto period = [&](const char16_t* formula) {
        FieldScope scope;
        scope.Add(*database_->Schema().FindTable(u"Reservation"), {});
        return PeriodText(ParseFormula(QStringView(formula), scope), TheServices().localeText);
    };
    EXPECT_EQ(period(u"{Reservation.End} < Date(2026,3,10) And {Reservation.Start} > Date(2026,3,6)"),
              u"3/6/2026 to 3/9/2026"_s);
    EXPECT_EQ(period(u"{Reservation.End} < Date(2026,3,10)"), u"Tuesday, March 10, 2026"_s);
    EXPECT_EQ(period(u""), QString());
}

TEST_F(DocumentsTest, AChangedLayoutChangesTheDocument) {
    const QString formula = u"{Reservation.Start} >= Date(2026,3,6) And {Reservation.Start} < Date(2026,3,7)"_s;
    const QString before = RunText(u"Setup.rpx"_s, formula);
    QByteArray layout = FileBytes(Path(u"Setup.rpx"_s));
    layout.replace("\"Ready by\"", "\"Finished at\"").replace("\"title\": \"Setup\"", "\"title\": \"Our own sheet\"");
    WriteLayout(u"Setup.rpx"_s, layout);
    const QString after = RunText(u"Setup.rpx"_s, formula);
    EXPECT_TRUE(before.startsWith(u"Setup\r\n"_s) && before.contains(u"\tReady by\t"_s)) << before.toStdString();
    EXPECT_TRUE(after.startsWith(u"Our own sheet\r\n"_s) && after.contains(u"\tFinished at\t"_s));
    layout.replace("\"Asset.Name\", \"Reservation.ID\"", "\"Asset.Nam\", \"Reservation.ID\"");
    WriteLayout(u"Setup.rpx"_s, layout);
    EXPECT_TRUE(Failure([&] { RunText(u"Setup.rpx"_s, formula); }).contains(u"Setup.rpx is wrong in line 1"_s));
}

TEST_F(DocumentsTest, LettersAreApartInTextAndHtml) {
    store_->Run(u"UPDATE Reservation SET FirstName = '', Organization = NULL WHERE ID = 1"_s);
    const QString formula = u"{Reservation.ID} = 1 Or {Reservation.ID} = 2"_s;
    const QString text = RunText(u"Reminder.rpx"_s, formula);
    // Nothing is left of what is empty, and the first letter begins below the title.
    EXPECT_TRUE(text.contains(u"=\r\n\r\nAbel\r\n\r\n"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"\r\nDear Abel,\r\n"_s)) << text.toStdString();
    EXPECT_EQ(text.count(QString(50, u'-')), 1);
    Run(print::Target::HtmlFile, u"Reminder.rpx"_s, formula);
    const QByteArray html = delivery_.delivered;
    EXPECT_EQ(html.count("break-before:page"), 1) << html.toStdString();
    EXPECT_FALSE(html.contains("<p></p>")) << html.toStdString();
    EXPECT_EQ(html.count("<table>"), 2) << html.toStdString();
    EXPECT_EQ(html.count("<table>"), html.count("</table>"));
    Run(print::Target::HtmlFile, u"Setup.rpx"_s, u"{Reservation.Start} < Date(2026,3,7)"_s);
    EXPECT_EQ(delivery_.delivered.count("<h2 style=\"break-before:page\">"), delivery_.delivered.count("<h2") - 1);
    EXPECT_GT(delivery_.delivered.count("<h2"), 1);
}

TEST_F(DocumentsTest, EscapesWhatItPutsIntoHtml) {
    store_->Run(u"UPDATE Asset SET Name = '<Board & Room>' WHERE AssetID = 12"_s);
    WriteLayout(u"htmlpre.txt"_s, "PRE<b>");
    WriteLayout(u"htmlpost.txt"_s, "POST");
    Run(print::Target::HtmlFile, u"Setup.rpx"_s, u"{Reservation.ID} = 1"_s);
    const QByteArray html = delivery_.delivered;
    EXPECT_TRUE(html.startsWith("PRE<b><h1>Setup</h1>") && html.endsWith("POST")) << html.toStdString();
    EXPECT_TRUE(html.contains("<td><b>&lt;Board &amp; Room&gt;</b>")) << html.toStdString();
    EXPECT_TRUE(html.contains("<li>\u00dcn\u00efcode &amp; &lt;b&gt;bold&lt;/b&gt;</li>")) << html.toStdString();
    EXPECT_EQ(html.count("<table>"), html.count("</table>"));
    EXPECT_EQ(html.count("<td"), html.count("</td>"));
    EXPECT_EQ(html.count("<tr>"), html.count("</tr>"));
    // Columns have the layout's widths and places.
    EXPECT_TRUE(html.contains("<th style=\"width:3.7%;text-align:left\"></th>")) << html.toStdString();
    EXPECT_TRUE(html.contains("text-align:center\">Persons</th>")) << html.toStdString();

    Run(print::Target::Mail, u"Reminder.rpx"_s, u"{Reservation.ID} = 1"_s);
    EXPECT_TRUE(delivery_.delivered.startsWith("mail:Reminder\r\n"));
    EXPECT_TRUE(delivery_.delivered.contains("Dear Anna Abel,\r\n"));
}

} // namespace
} // namespace velmora::layouts
