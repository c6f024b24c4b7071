#include "layouts/LayoutChoice.h"
#include "layouts/LayoutWalk.h"
#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class DocumentsTest : public LayoutFixture {
protected:
    // Runs a layout with these keys besides title and tables, as text lines.
    std::string Lines(const QByteArray& keys, const QString& formula = {}) {
        WriteLayout(u"Mine.rpx"_s,
                    "{\"title\": \"Mine\", \"tables\": [{\"table\": \"Reservation\"}, {\"table\": \"Asset\", "
                    "\"on\": \"{Reservation.Asset} = {Asset.AssetID}\"}],\n" +
                        keys + "}");
        return RunText(u"Mine.rpx"_s, formula).remove(u'\r').toStdString();
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
    struct Case {
        qint16 index;
        QString base;
        QString completed;
        bool excludesConference;
    };
    const QString joined = u"SELECT Count(*) FROM Reservation JOIN Asset ON Asset = AssetID WHERE "_s;
    const QString starts = joined + u"Start >= :s AND Start < :e"_s;
    const QString ends = joined + u"\"End\" > :s AND \"End\" <= :e"_s;
    const QString overlaps = joined + u"\"End\" > :s AND Start < :e"_s;
    const QString named = u" AND LastName <> ''"_s;
    const std::vector<Case> cases = {
        {1, u"SELECT Count(*) FROM WorkOrder WHERE Requested >= :s AND Requested < :e"_s, u" AND Completed = 0"_s,
         false},
        {2, starts, u" AND SLockStart = 0"_s, true},
        {3, ends, u" AND SLockEnd = 0"_s, true},
        {4, starts, u" AND TLockStart = 0"_s, true},
        {5, ends, u" AND TLockEnd = 0"_s, true},
        {6, overlaps, u" AND Permanent = 0"_s, true},
        {7, joined + u"\"End\" > :s AND \"End\" < :e"_s + named, u" AND Permanent = 0"_s, true},
        {9, overlaps + named, QString(), false},
    };
    LayoutRequest request;
    for (const int days : {1, 5}) {
        request.start = MakeDate(2026, 3, 5);
        request.end = MakeDate(2026, 3, 5 + static_cast<unsigned>(days));
        for (const Case& c : cases) {
            for (const bool completed : {false, true}) {
                for (const bool conference : {false, true}) {
                    request.layout = c.index;
                    request.completionFilter = completed;
                    request.excludeConferenceRooms = conference;
                    const QString sql = c.base + (completed ? c.completed : QString()) +
                                        (conference && c.excludesConference ? u" AND AssetID >= 256"_s : QString());
                    const QString expected = store_->Rows(sql, StorageText(StartOfDay(*request.start)),
                                                          StorageText(StartOfDay(*request.end)))[0];
                    EXPECT_EQ(QString::number(Count(request)), expected) << sql.toStdString();
                    // A day without any says nothing about the filters.
                    EXPECT_TRUE(days == 1 || conference || expected.toInt() > 0) << sql.toStdString();
                }
            }
        }
    }
}

TEST_F(DocumentsTest, GroupsAndCounts) {
    store_->Run(u"INSERT INTO WorkOrder (ID, Requested, RequestedBy) VALUES (6, '2026-03-05 08:00:00', 'anna'), "
                "(7, '2026-03-06 08:00:00', 'ANNA')"_s);
    WriteLayout(u"Mine.rpx"_s, R"json({"title": "Mine", "tables": [{"table": "WorkOrder"}],
        "groups": [{"by": "WorkOrder.RequestedBy", "none": "Nobody", "heading": "For {WorkOrder.RequestedBy}",
                    "footer": "{Count} of them"},
                   {"by": "WorkOrder.Requested", "unit": "day", "heading": "on {WorkOrder.Requested:date}",
                    "footer": "({Count})"}],
        "sort": ["WorkOrder.ID descending"], "total": "All {Count}", "columns": [{"value": "{WorkOrder.ID}"}]})json");
    // What belongs together stands together whatever the order of the numbers.
    const QString expected = u"Mine|=|-|Nobody|-|on 3/5/2026|2|(1)|-|on 3/6/2026|3|(1)|2 of them|"
                             "-|For anna|-|on 3/5/2026|6|1|(2)|-|on 3/6/2026|7|(1)|3 of them|"
                             "-|For X|-|on 3/5/2026|4|(1)|1 of them|-|For Y|-|on 3/5/2026|5|(1)|1 of them|=|All 7"_s;
    EXPECT_EQ(RunText(u"Mine.rpx"_s, {})
                  .replace(QString(50, u'='), u"="_s)
                  .replace(QString(50, u'-'), u"-"_s)
                  .replace(u"\r\n"_s, u"|"_s)
                  .toStdString(),
              expected.toStdString());
}

TEST_F(DocumentsTest, KnowsWhatBelongsTogether) {
    store_->Run(u"UPDATE Reservation SET Organization = NULL WHERE ID = 1; UPDATE Reservation SET Organization = '' "
                u"WHERE ID = 2;"
                "UPDATE Reservation SET Organization = 'legal', Start = '2026-03-06 00:00:00', \"End\" = '2026-03-07 "
                "00:00:00' WHERE ID = 5;"
                "UPDATE Reservation SET Organization = 'LEGAL', \"End\" = '2026-03-06 18:00:00' WHERE ID = 30;"
                "UPDATE Reservation SET Organization = 'Äon' WHERE ID = 31"_s);
    const QString five =
        u"{Reservation.ID} = 1 Or {Reservation.ID} = 2 Or {Reservation.ID} = 5 Or {Reservation.ID} = 30 Or "
        "{Reservation.ID} = 31"_s;
    const auto headings = [&](const QByteArray& group) {
        QStringList found;
        const std::string text =
            Lines("\"groups\": [{" + group + "}], \"columns\": [{\"value\": \"{Reservation.ID}\"}]", five);
        for (const QString& line : QString::fromStdString(text).split(u'\n')) {
            if (line.startsWith(u'#')) {
                found += line;
            }
        }
        return found.join(u' ').toStdString();
    };
    // Empty and missing are one group, and so are spellings that the database takes for equal.
    EXPECT_EQ(
        headings(R"("by": "Reservation.Organization", "none": "#none", "heading": "#{Reservation.Organization}")"),
        "#none #legal #Äon");
    EXPECT_EQ(
        headings(
            R"("by": "Reservation.Organization", "unit": "initial", "none": "#none", "heading": "#{Reservation.Organization:initial}")"),
        "#none #L #Ä");
    // Exactly midnight closes the day before.
    EXPECT_EQ(
        headings(R"("by": "Reservation.End", "unit": "closing day", "heading": "#{Reservation.End:closing date}")"),
        "#3/5/2026 #3/6/2026");
}

TEST_F(DocumentsTest, WritesTextsAndFormats) {
    store_->Run(
        u"UPDATE Reservation SET Start = '2026-03-06 13:05:00', \"End\" = '2026-03-07 00:00:00', Permanent = 1, "
        "Attendees = 12 WHERE ID = 1; UPDATE Asset SET LocationLvl = NULL"_s);
    const std::pair<const char*, const char*> cases[] = {
        {"{Reservation.Start}", "3/6/2026 1:05 PM"},
        {"{Reservation.Start:date}", "3/6/2026"},
        {"{Reservation.Start:long date}", "Friday, March 6, 2026"},
        {"{Reservation.Start:weekday}", "Friday"},
        {"{Reservation.Start:time}", "1:05 PM"},
        {"{Reservation.End:closing date} {Reservation.End:closing time}", "3/6/2026 midnight"},
        {"{Reservation.End:closing long date}", "Friday, March 6, 2026"},
        {"{Reservation.End}", "3/7/2026"},
        {"{Reservation.Attendees:money}", "12.00"},
        {"{Reservation.Permanent} {reservation.permanent:if for good}", "Yes for good"},
        {"{Reservation.SLockStart:if done}.", "."},
        {"{Reservation.LastName:initial}", "A"},
        {"a[, level {Asset.LocationLvl}]b[ ({Asset.AssetID})]", "ab (12)"},
        // What is empty leaves no separator behind.
        {"<{Asset.LocationLvl} {Reservation.LastName}>", "< Abel>"},
        {"{Asset.LocationLvl}[, {Reservation.LastName}]", "Abel"},
        {"{Asset.LocationLvl}, {Asset.LocationLvl} {Reservation.LastName}, {Asset.LocationLvl}, {Reservation.ID}",
         "Abel, 1"},
        {"Level {Asset.LocationLvl}", "Level"},
        {"Dear {Asset.LocationLvl} {Reservation.LastName},", "Dear Abel,"},
        {"a, b[, {Asset.LocationLvl}], {Reservation.ID}, ", "a, b, 1,"},
        {"{{x}} [[y]] {Today}", "{x} [y] Thursday, March 5, 2026"},
        {"{Now}", "3/5/2026 2:15 PM"},
        {"{Period}", "Friday, March 6, 2026"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string written = Lines(
            QByteArray("\"columns\": [{\"value\": \"") + text + "\"}]",
            u"{Reservation.ID} = 1 And {Reservation.Start} >= Date(2026,3,6) And {Reservation.Start} < Date(2026,3,7)"_s);
        EXPECT_EQ(QString::fromStdString(written).section(u'\n', 2, 2).toStdString(), expected) << text;
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

TEST_F(DocumentsTest, ListsTheRecordsBelowARecord) {
    const std::string text = Lines(
        R"("columns": [{"heading": "Nr", "value": "{Reservation.ID}"}, {"tick": "Reservation.SLockStart"}, {"blank": true}],
           "details": {"table": "Note", "field": "Note.Reservation", "equals": "Reservation.ID",
                       "select": "{Note.NoteCategory} = 'Setup'", "sort": ["Note.ID descending"], "text": "{Note.Name}: {Note.Note}"},
           "empty": "None at all", "sort": ["Reservation.ID"])",
        u"{Reservation.ID} <= 5"_s);
    EXPECT_NE(text.find("Nr\t\t\n1\t[ ]\t________\n\t- Chairs: 12 chairs in a circle\n2\t"), std::string::npos) << text;
    EXPECT_NE(text.find("\n3\t[x]\t________\n4\t[ ]\t________\n5\t[ ]\t________\n\t- Desk: Two desks\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("Lunch"), std::string::npos);
    EXPECT_NE(Lines(R"("columns": [{"value": "x"}], "empty": "None at all", "total": "{Count}")", u"No"_s)
                  .find("\nNone at all"),
              std::string::npos);
}

TEST_F(DocumentsTest, LeavesOutOnlyWhatRepeatsFromTheLeft) {
    const std::string text = Lines(
        R"("columns": [{"value": "{Reservation.LastName}", "repeat": false}, {"value": "{Reservation.Attendees}"},
                       {"value": "{Reservation.Permanent}", "repeat": false}], "sort": ["Reservation.LastName", "Reservation.ID"])",
        u"{Reservation.ID} = 30 Or {Reservation.ID} = 31 Or {Reservation.ID} = 40 Or {Reservation.ID} = 41"_s);
    const QStringList lines = QString::fromStdString(text).split(u'\n').mid(2, 4);
    EXPECT_EQ(lines, (QStringList{u"Abel\t2\tNo"_s, u"Baker\t2\tNo"_s, u"\t2\t"_s, u"\t2\t"_s}));
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

TEST_F(DocumentsTest, JoinsATableTwiceAndKeepsRowsWithoutAPartner) {
    WriteLayout(u"Mine.rpx"_s, R"({"title": "T", "tables": [{"table": "Person"},
        {"table": "Person", "as": "Same", "optional": true, "on": "{Person.LastName} = {Same.LastName} And {Same.Phone} = '555-0101'"}],
        "sort": ["Person.LastName"], "columns": [{"value": "{Person.LastName}-{Same.LastName}"}]})");
    EXPECT_EQ(RunText(u"Mine.rpx"_s, u"{Person.LastName} < 'C'"_s).section(u"\r\n"_s, 2, 3), u"Abel-Abel\r\nBaker-"_s);
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
