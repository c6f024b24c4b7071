#include "tests/reports/ReportsFixture.h"

namespace velmora {
namespace {

// One run of a report. The expected text is the file tests/reports/expected/<name>; a run of the tests with
// VELMORA_UPDATE_EXPECTED set writes the files anew, to be read before they are committed.
struct ReportCase {
    const char* name;
    ReportRequest request;
    // Day of March 2026 on which the report runs.
    int today = 5;
};

constexpr DaySelection current{.choice = DayChoice::CurrentDay};
const DaySelection march10To12{DayChoice::OtherDay, MakeDate(2026, 3, 10), 3};

OccupancyRequest Occupants(const char* startupArgument = "") {
    return {.days = current, .startupArgument = QString::fromLatin1(startupArgument)};
}

OccupancyRequest Directory(const char* startupArgument = "") {
    return {OccupancyList::Directory, current, false, false, QString::fromLatin1(startupArgument)};
}

OccupancyRequest WithUnreserved(OccupancyRequest request) {
    request.includeUnreserved = true;
    return request;
}

OccupancyRequest NonPermanent(OccupancyRequest request) {
    request.nonPermanent = true;
    return request;
}

OccupancyRequest For(const DaySelection& days, OccupancyRequest request) {
    request.days = days;
    return request;
}

ExceptionRequest Exception(ExceptionType type, const char* startupArgument = "") {
    return {.type = type, .date = MakeDate(2026, 3, 5), .startupArgument = QString::fromLatin1(startupArgument)};
}

UsageRequest Usage(UsageBreakdown breakdown, bool detail = false) {
    return {breakdown, MakeDate(2026, 3, 5), detail};
}

std::vector<ReportCase> TableCases() {
    using enum ExceptionType;
    const DaySelection nextDay;
    ExceptionRequest withoutConferenceRooms = Exception(NotCheckedIn);
    withoutConferenceRooms.excludeConferenceRooms = true;
    return {
        {"occupant.txt", Occupants()},
        {"occupant.htm", WithUnreserved(Occupants())},
        {"occupant-unreserved.txt", WithUnreserved(Occupants())},
        {"occupant-non-permanent.txt", NonPermanent(Occupants())},
        {"occupant-prefix.txt", WithUnreserved(Occupants("B2"))},
        {"occupant-prefix-blank.txt", Occupants(" B2")},
        {"occupant-friday.txt", For(nextDay, Occupants()), 6},
        {"occupant-other.txt", For(march10To12, Occupants())},
        {"directory.txt", Directory()},
        {"directory.htm", WithUnreserved(Directory())},
        {"directory-unreserved.txt", WithUnreserved(Directory())},
        {"directory-non-permanent.txt", NonPermanent(Directory())},
        {"directory-prefix.txt", WithUnreserved(Directory(" B2 "))},
        {"directory-friday.txt", For(nextDay, Directory()), 6},
        {"directory-other.txt", For(march10To12, Directory())},
        {"exception-space.txt", Exception(SpaceType)},
        {"exception-area1.txt", Exception(FirstArea)},
        {"exception-area2.txt", Exception(SecondArea)},
        {"exception-area2.htm", Exception(SecondArea)},
        {"exception-area3.txt", Exception(ThirdArea)},
        {"exception-not-checked-in.txt", Exception(NotCheckedIn)},
        {"exception-not-checked-in-conference.txt", withoutConferenceRooms},
        {"exception-not-checked-in-prefix.txt", Exception(NotCheckedIn, "B2")},
    };
}

std::vector<ReportCase> UsageCases() {
    using enum UsageBreakdown;
    return {
        {"usage-location.txt", Usage(Locations)},
        {"usage-location-detail.txt", Usage(Locations, true)},
        {"usage-location-detail.htm", Usage(Locations, true)},
        {"usage-area1.txt", Usage(FirstArea)},
        {"usage-area1-detail.txt", Usage(FirstArea, true)},
        {"usage-area2.txt", Usage(SecondArea)},
        {"usage-area3-detail.txt", Usage(ThirdArea, true)},
    };
}

class Desk : public ReportsFixture {
public:
    void TestBody() override {}

    QByteArray PrintCase(const ReportCase& c) {
        fakes_.clock.now = *MakeDateTime({2026, 3, c.today, 14, 15, 0});
        settings_.target = QByteArray(c.name).endsWith(".htm") ? DeliveryTarget::HtmlFile : DeliveryTarget::TextFile;
        const QByteArray text = Print(c.request);
        ExpectIdle();
        EXPECT_EQ(delivery_.delivered.size(), 1U);
        return text;
    }
};

void ExpectTexts(const std::vector<ReportCase>& cases) {
    const bool update = qEnvironmentVariableIsSet("VELMORA_UPDATE_EXPECTED");
    for (const ReportCase& c : cases) {
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

TEST(ReportTextsTest, EveryTableToTheByte) {
    ExpectTexts(TableCases());
}

TEST(ReportTextsTest, EveryUsageToTheByte) {
    ExpectTexts(UsageCases());
}

} // namespace
} // namespace velmora
