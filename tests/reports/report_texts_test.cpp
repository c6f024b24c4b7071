#include "reports/RequestJson.h"
#include "tests/desk/DeskFixture.h"

#include "base/Translate.h"
#include "tests/support/Folders.h"

#include <QJsonDocument>

namespace velmora {
namespace {

// The daily list has a site of its own.
class Desk : public DeskFixture {
public:
    explicit Desk(bool isDaily) : DeskFixture({}, isDaily ? u"/desk/site.sql"_s : u"/reports/site.sql"_s) {}
    void TestBody() override {}

    QByteArray PrintCase(const ReportRequest& request, int today, bool asHtml) {
        fakes_.clock.now = *MakeDateTime({2026, 3, today, 14, 15, 0});
        fakes_.program.Part<TranslationDictionary>().Add(u"PersonCode2"_s, u"Badge"_s);
        settings_.target = asHtml ? DeliveryTarget::HtmlFile : DeliveryTarget::TextFile;
        const QByteArray text = Print(request);
        ExpectIdle();
        EXPECT_EQ(delivery_.delivered.size(), 1U);
        return text;
    }
};

// The cases are those of reports.txt. A run with VELMORA_UPDATE_EXPECTED set writes the expected texts anew, to be read
// before they are committed.
TEST(ReportTextsTest, EveryReportToTheByte) {
    const QString folder = TestDataFolder() + u"/reports/"_s;
    QSet<QString> names;
    for (const QString& line : TestText(u"reports/reports.txt"_s).split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        const QString name = line.section(u' ', 0, 0);
        const QByteArray json = line.section(u' ', 2).toUtf8();
        const ReportRequest request = RequestFromJson(QJsonDocument::fromJson(json).object());
        const bool isDaily = std::holds_alternative<DailyRequest>(request);
        const QByteArray text =
            Desk(isDaily).PrintCase(request, line.section(u' ', 1, 1).toInt(), name.endsWith(u".htm"_s));
        const QString path = folder + u"expected/"_s + name;
        if (qEnvironmentVariableIsSet("VELMORA_UPDATE_EXPECTED")) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(text);
        }
        EXPECT_EQ(text.toStdString(), FileBytes(path).toStdString()) << name.toStdString();
        names += name;
    }
    const QStringList files = QDir(folder + u"expected"_s).entryList(QDir::Files);
    EXPECT_EQ(names, QSet<QString>(files.begin(), files.end()));
}

} // namespace
} // namespace velmora
