#include "layouts/LayoutChoice.h"
#include "layouts/LayoutWalk.h"
#include "tests/layouts/LayoutFixture.h"

#include <map>

namespace velmora::layouts {
namespace {

class DocumentsTest : public LayoutFixture {
protected:
    // Writes a layout with these keys besides the title.
    void WriteKeys(QString keys) {
        if (!keys.contains(u"\"tables\""_s)) {
            keys.prepend(u"\"tables\": [{\"table\": \"Reservation\"}, {\"table\": \"Asset\", "
                         "\"on\": \"{Reservation.Asset} = {Asset.AssetID}\"}],\n"_s);
        }
        WriteLayout(u"Mine.rpx"_s, u"{\"title\": \"Mine\", %1}"_s.arg(keys).toUtf8());
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
    for (const QStringList& each : TestRows(u"layouts/counts.txt"_s)) {
        request.layout = each.at(0).toShort();
        for (const int options : {0, 1, 2, 3, 4, 5, 6, 7}) {
            request.completionFilter = (options & 1) != 0;
            request.excludeConferenceRooms = (options & 2) != 0;
            const int days = (options & 4) != 0 ? 5 : 1;
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
    const std::map<QString, print::Target> targets = {
        {u"text"_s, print::Target::TextFile}, {u"html"_s, print::Target::HtmlFile}, {u"mail"_s, print::Target::Mail}};
    WriteLayout(u"htmlpre.txt"_s, "PRE<b>");
    WriteLayout(u"htmlpost.txt"_s, "POST");
    for (const QString& block : TestText(u"layouts/documents.txt"_s).split(u"\n@ "_s).mid(1)) {
        const QStringList head = block.section(u'\n', 0, 0).split(u" |"_s);
        QString file = u"Mine.rpx"_s;
        QStringList keys;
        for (const QString& line : block.section(u"\n=>"_s, 0, 0).split(u'\n').mid(1)) {
            if (line.startsWith(u"sql: ")) {
                store_->Run(line.sliced(5));
            } else if (line.startsWith(u"file: ")) {
                file = line.sliced(6);
            } else {
                keys.append(line);
            }
        }
        WriteKeys(keys.join(u'\n'));
        Run(targets.at(head.at(1).trimmed()), file, head.at(2).trimmed());
        QString found = QString::fromUtf8(delivery_.delivered).remove(u'\r');
        found.replace(QString(50, u'='), u"="_s).replace(QString(50, u'-'), u"-"_s);
        EXPECT_EQ(found.toStdString(), block.section(u"\n=>\n"_s, 1).trimmed().toStdString()) << head[0].toStdString();
    }
}

TEST_F(DocumentsTest, FillsInTexts) {
    store_->Run(
        u"UPDATE Reservation SET Start = '2026-03-06 13:05:00', \"End\" = '2026-03-07 00:00:00', Permanent = 1, "
        "Attendees = 12 WHERE ID = 1; UPDATE Asset SET LocationLvl = NULL"_s);
    const QString first =
        u"{Reservation.ID} = 1 And {Reservation.Start} >= Date(2026,3,6) And {Reservation.Start} < Date(2026,3,7)"_s;
    for (const QStringList& each : TestRows(u"layouts/templates.txt"_s)) {
        WriteKeys(u"\"columns\": [{\"value\": \"%1\"}]"_s.arg(each.at(0)));
        EXPECT_EQ(RunText(u"Mine.rpx"_s, first).section(u"\r\n"_s, 2, 2).toStdString(), each.at(1).toStdString())
            << each[0].toStdString();
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

} // namespace
} // namespace velmora::layouts
