#include "tests/reports/ReportsFixture.h"

namespace velmora {
namespace {

// One run of a report. The expected text is the file tests/reports/expected/<name>; a run of the tests with
// VELMORA_UPDATE_EXPECTED set writes the files anew, to be read before they are committed.
struct ReportCase {
    const char* name;
    PrintRoutine print;
    std::function<void(DeskState&)> options = [](DeskState&) {};
    const char* startupArgument = "";
    // Day of March 2026 on which the report runs.
    int today = 5;
};

std::function<void(DeskState&)> Exception(qint16 kind, bool withoutConferenceRooms = false) {
    return [=](DeskState& state) {
        state.optException = kind;
        state.chkConferenceDaily = withoutConferenceRooms;
    };
}

std::function<void(DeskState&)> Usage(qint16 breakdown, bool detail = false) {
    return [=](DeskState& state) {
        state.OptUsage = breakdown;
        state.chkUsageDetail = detail;
    };
}

void OtherDays(DeskState& state) {
    state.optDay = 2;
    state.dtcOtherDate = MakeDate(2026, 3, 10);
    state.Label12 = 3;
}

std::vector<ReportCase> TableCases() {
    const auto includeEmpty = [](DeskState& state) { state.chkIncludeEmpty = true; };
    const auto nonPermanent = [](DeskState& state) { state.chkNonPermanent = true; };
    const auto nextDay = [](DeskState& state) { state.optDay = 0; };
    return {
        {"occupant.txt", &PrintOccupantReport},
        {"occupant.htm", &PrintOccupantReport, includeEmpty},
        {"occupant-unreserved.txt", &PrintOccupantReport, includeEmpty},
        {"occupant-non-permanent.txt", &PrintOccupantReport, nonPermanent},
        {"occupant-prefix.txt", &PrintOccupantReport, includeEmpty, "B2"},
        {"occupant-prefix-blank.txt", &PrintOccupantReport, {}, " B2"},
        {"occupant-friday.txt", &PrintOccupantReport, nextDay, "", 6},
        {"occupant-other.txt", &PrintOccupantReport, OtherDays},
        {"directory.txt", &PrintDirectoryReport},
        {"directory.htm", &PrintDirectoryReport, includeEmpty},
        {"directory-unreserved.txt", &PrintDirectoryReport, includeEmpty},
        {"directory-non-permanent.txt", &PrintDirectoryReport, nonPermanent},
        {"directory-prefix.txt", &PrintDirectoryReport, includeEmpty, " B2 "},
        {"directory-friday.txt", &PrintDirectoryReport, nextDay, "", 6},
        {"directory-other.txt", &PrintDirectoryReport, OtherDays},
        {"exception-space.txt", &PrintExceptionReport, Exception(0)},
        {"exception-area1.txt", &PrintExceptionReport, Exception(1)},
        {"exception-area2.txt", &PrintExceptionReport, Exception(2)},
        {"exception-area2.htm", &PrintExceptionReport, Exception(2)},
        {"exception-area3.txt", &PrintExceptionReport, Exception(3)},
        {"exception-not-checked-in.txt", &PrintExceptionReport, Exception(4)},
        {"exception-not-checked-in-conference.txt", &PrintExceptionReport, Exception(4, true)},
        {"exception-not-checked-in-prefix.txt", &PrintExceptionReport, Exception(4), "B2"},
    };
}

std::vector<ReportCase> UsageCases() {
    return {
        {"usage-location.txt", &PrintUsageReport, Usage(0)},
        {"usage-location-detail.txt", &PrintUsageReport, Usage(0, true)},
        {"usage-location-detail.htm", &PrintUsageReport, Usage(0, true)},
        {"usage-area1.txt", &PrintUsageReport, Usage(1)},
        {"usage-area1-detail.txt", &PrintUsageReport, Usage(1, true)},
        {"usage-area2.txt", &PrintUsageReport, Usage(2)},
        {"usage-area3-detail.txt", &PrintUsageReport, Usage(3, true)},
    };
}

// A desk that was started with an argument.
class Desk : public ReportsFixture {
public:
    explicit Desk(const QString& startupArgument) : ReportsFixture(startupArgument) {}
    void TestBody() override {}

    QByteArray PrintCase(const ReportCase& c) {
        fakes_.clock.now = *MakeDateTime({2026, 3, c.today, 14, 15, 0});
        state_.PrinterControl1.Destination = QByteArray(c.name).endsWith(".htm") ? 4 : 3;
        if (c.options) {
            c.options(state_);
        }
        const QByteArray text = Print(c.print);
        ExpectIdle();
        EXPECT_EQ(delivery_.delivered.size(), 1U);
        return text;
    }
};

void ExpectTexts(const std::vector<ReportCase>& cases) {
    const bool update = qEnvironmentVariableIsSet("VELMORA_UPDATE_EXPECTED");
    for (const ReportCase& c : cases) {
        const QByteArray text = Desk(QString::fromLatin1(c.startupArgument)).PrintCase(c);
        const QString path = TestDataFolder() + QStringLiteral("/reports/expected/") + QString::fromLatin1(c.name);
        if (update) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(text);
        }
        EXPECT_EQ(text.toStdString(), FileBytes(path).toStdString()) << c.name;
    }
}

TEST(ReportTextsTest, EveryTableToTheByte) {
    ExpectTexts(TableCases());
}

TEST(ReportTextsTest, EveryUsageToTheByte) {
    ExpectTexts(UsageCases());
}

} // namespace
} // namespace velmora
