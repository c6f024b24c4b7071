#include "tests/desk/DeskFixture.h"

#include "base/Translate.h"
#include "tests/support/Folders.h"

namespace velmora {
namespace {

// One run of the daily report. The expected text is the file tests/reports/expected/<name>; a run of the tests with
// VELMORA_UPDATE_EXPECTED set writes the files anew, to be read before they are committed.
struct ReportCase {
    const char* name;
    DailyVariant variant;
    DayChoice day;
    std::function<void(DailyRequest&)> options = [](DailyRequest&) {};
    const char* startupArgument = "";
    // Day of March 2026 on which the report runs.
    int today = 5;
};

void Everything(DailyRequest& request) {
    request.includeNotes = true;
    request.includePhone = true;
}

std::vector<ReportCase> ReportCases() {
    using enum DailyVariant;
    using enum DayChoice;
    const auto otherDay = [](int day, int number) {
        return [=](DailyRequest& request) {
            request.brief = true;
            request.days.otherDate = MakeDate(2026, 3, day);
            request.days.number = number;
        };
    };
    const auto excludes = [](DailyRequest& request) {
        request.brief = true;
        request.excludeConferenceRooms = true;
        request.excludeCompletedMoves = true;
    };
    const auto onePage = [](DailyRequest& request) {
        request.brief = true;
        request.onePage = true;
    };
    return {
        {"starts-next.txt", Starts, NextWorkingDay},
        {"starts-next-everything.txt", Starts, NextWorkingDay, Everything},
        {"starts-next-everything.htm", Starts, NextWorkingDay, Everything},
        {"starts-next-brief-everything.txt", Starts, NextWorkingDay,
         [](DailyRequest& request) {
             Everything(request);
             request.brief = true;
         }},
        {"starts-next-brief.htm", Starts, NextWorkingDay, [](DailyRequest& request) { request.brief = true; }},
        {"starts-next-excludes.txt", Starts, NextWorkingDay, excludes},
        {"starts-next-phones-done.txt", Starts, NextWorkingDay,
         [](DailyRequest& request) {
             request.brief = true;
             request.excludeCompletedPhones = true;
         }},
        {"starts-next-one-page.txt", Starts, NextWorkingDay, onePage},
        {"starts-next-prefix.txt", Starts, NextWorkingDay, [](DailyRequest& request) { request.brief = true; }, "B1"},
        {"starts-friday.txt", Starts, NextWorkingDay, [](DailyRequest& request) { request.brief = true; }, "", 6},
        {"ends-next.txt", Ends, NextWorkingDay},
        {"ends-friday-excludes.txt", Ends, NextWorkingDay, excludes, "", 6},
        {"starts-current.txt", Starts, CurrentDay, Everything},
        {"ends-current.txt", Ends, CurrentDay, Everything},
        {"starts-other.txt", Starts, OtherDay, otherDay(7, 3)},
        {"ends-other.txt", Ends, OtherDay, otherDay(8, 1)},
        {"combined-next.txt", Combined, NextWorkingDay, Everything},
        {"combined-next-one-page.htm", Combined, NextWorkingDay, onePage},
        {"combined-next-done.txt", Combined, NextWorkingDay,
         [](DailyRequest& request) {
             request.brief = true;
             request.excludeCompletedMoves = true;
             request.excludeCompletedPhones = true;
         }},
        {"combined-current.txt", Combined, CurrentDay, [](DailyRequest& request) { request.brief = true; }},
        {"combined-other-none.txt", Combined, OtherDay, otherDay(20, 2)},
    };
}

class Desk : public DeskFixture {
public:
    void TestBody() override {}

    QByteArray PrintCase(const ReportCase& c) {
        fakes_.clock.now = *MakeDateTime({2026, 3, c.today, 14, 15, 0});
        fakes_.program.Part<TranslationDictionary>().Add(u"PersonCode2"_s, u"Badge"_s);
        settings_.target = QByteArray(c.name).endsWith(".htm") ? DeliveryTarget::HtmlFile : DeliveryTarget::TextFile;
        DailyRequest request{.variant = c.variant, .days = {.choice = c.day}};
        request.startupArgument = QString::fromLatin1(c.startupArgument);
        c.options(request);
        const QByteArray text = Print(request);
        ExpectIdle();
        EXPECT_EQ(delivery_.delivered.size(), 1U);
        return text;
    }
};

TEST(DailyReportTest, EveryCaseToTheByte) {
    const bool update = qEnvironmentVariableIsSet("VELMORA_UPDATE_EXPECTED");
    for (const ReportCase& c : ReportCases()) {
        const QByteArray text = Desk().PrintCase(c);
        const QString path = TestDataFolder() + QStringLiteral("/reports/expected/") + QString::fromLatin1(c.name);
        if (update) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(text);
        }
        EXPECT_EQ(text.toStdString(), FileBytes(path).toStdString()) << c.name;
    }
}

} // namespace
} // namespace velmora
