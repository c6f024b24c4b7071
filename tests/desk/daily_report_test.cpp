#include "tests/desk/DeskFixture.h"

#include "base/Translate.h"
#include "tests/support/Folders.h"

namespace velmora {
namespace {

// One run of the daily report. The expected text is the file tests/desk/expected/<name>; a run of the tests with
// VELMORA_UPDATE_EXPECTED set writes the files anew, to be read before they are committed.
struct ReportCase {
    const char* name;
    qint16 mode;
    std::function<void(DeskState&)> options = [](DeskState&) {};
    const char* startupArgument = "";
    // Day of March 2026 on which the report runs.
    int today = 5;
};

void Everything(DeskState& state) {
    state.chkIncludeNotes = true;
    state.chkIncludePhone = true;
}

std::vector<ReportCase> ReportCases() {
    const auto otherDay = [](int day, int number) {
        return [=](DeskState& state) {
            state.chkBrief = true;
            state.dtcOtherDate = MakeDate(2026, 3, day);
            state.Label12 = number;
        };
    };
    const auto excludes = [](DeskState& state) {
        state.chkBrief = true;
        state.chkConferenceDaily = true;
        state.chkCompletedMoves = true;
    };
    const auto onePage = [](DeskState& state) {
        state.chkBrief = true;
        state.chkOnePage = true;
    };
    return {
        {"starts-next.txt", 0},
        {"starts-next-everything.txt", 0, Everything},
        {"starts-next-everything.htm", 0, Everything},
        {"starts-next-brief-everything.txt", 0,
         [](DeskState& state) {
             Everything(state);
             state.chkBrief = true;
         }},
        {"starts-next-brief.htm", 0, [](DeskState& state) { state.chkBrief = true; }},
        {"starts-next-excludes.txt", 0, excludes},
        {"starts-next-phones-done.txt", 0,
         [](DeskState& state) {
             state.chkBrief = true;
             state.chkCompletedPhones = true;
         }},
        {"starts-next-one-page.txt", 0, onePage},
        {"starts-next-prefix.txt", 0, [](DeskState& state) { state.chkBrief = true; }, "B1"},
        {"starts-friday.txt", 0, [](DeskState& state) { state.chkBrief = true; }, "", 6},
        {"ends-next.txt", 1},
        {"ends-friday-excludes.txt", 1, excludes, "", 6},
        {"starts-current.txt", 2, Everything},
        {"ends-current.txt", 3, Everything},
        {"starts-other.txt", 4, otherDay(7, 3)},
        {"ends-other.txt", 5, otherDay(8, 1)},
        {"combined-next.txt", 8, Everything},
        {"combined-next-one-page.htm", 8, onePage},
        {"combined-next-done.txt", 8,
         [](DeskState& state) {
             state.chkBrief = true;
             state.chkCompletedMoves = true;
             state.chkCompletedPhones = true;
         }},
        {"combined-current.txt", 10, [](DeskState& state) { state.chkBrief = true; }},
        {"combined-other-none.txt", 12, otherDay(20, 2)},
    };
}

// A desk that was started with an argument.
class Desk : public DeskFixture {
public:
    explicit Desk(const QString& startupArgument) : DeskFixture(startupArgument) {}
    void TestBody() override {}

    QByteArray Print(const ReportCase& c) {
        fakes_.clock.now = *MakeDateTime({2026, 3, c.today, 14, 15, 0});
        fakes_.program.Part<TranslationDictionary>().Add(u"PersonCode2"_s, u"Badge"_s);
        state_.ReportDayMode = c.mode;
        state_.PrinterControl1.Destination = QByteArray(c.name).endsWith(".htm") ? 4 : 3;
        c.options(state_);
        const QByteArray text = Run();
        ExpectIdle();
        EXPECT_EQ(delivery_.delivered.size(), 1U);
        return text;
    }
};

TEST(DailyReportTest, EveryCaseToTheByte) {
    const bool update = qEnvironmentVariableIsSet("VELMORA_UPDATE_EXPECTED");
    for (const ReportCase& c : ReportCases()) {
        const QByteArray text = Desk(QString::fromLatin1(c.startupArgument)).Print(c);
        const QString path = TestDataFolder() + QStringLiteral("/desk/expected/") + QString::fromLatin1(c.name);
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
