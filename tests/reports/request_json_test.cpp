#include "reports/RequestJson.h"

#include "base/Error.h"
#include "tests/support/Folders.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

QJsonObject Object(const QByteArray& json) {
    return QJsonDocument::fromJson(json).object();
}

QByteArray Bytes(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

const std::optional<Date> tuesday = MakeDate(2026, 3, 10);

TEST(RequestJsonTest, EveryKindOfRequestComesBackAsItWas) {
    const std::pair<ReportRequest, const char*> cases[] = {
        {DailyRequest(), R"({"day":"next","kind":"daily","list":"starts"})"},
        {DailyRequest{DailyVariant::Combined,
                      {DayChoice::OtherDay, tuesday, 3},
                      true,
                      true,
                      true,
                      true,
                      true,
                      true,
                      true,
                      u"B\"1 Æ"_s},
         R"({"brief":true,"date":"2026-03-10","day":"other","days":3,"exclude-completed-moves":true,)"
         R"("exclude-completed-phones":true,"exclude-conference-rooms":true,"include-notes":true,)"
         R"("include-phone":true,"kind":"daily","list":"combined","one-page":true,"startup-argument":"B\"1 Æ"})"},
        {OccupancyRequest{.days = {.choice = DayChoice::CurrentDay}}, R"({"day":"current","kind":"occupant"})"},
        {OccupancyRequest{OccupancyList::Directory, {}, true, true, u"A"_s},
         R"({"day":"next","include-unreserved":true,"kind":"directory","non-permanent":true,"startup-argument":"A"})"},
        {ExceptionRequest{ExceptionType::NotCheckedIn, tuesday, true, u"C"_s},
         R"({"date":"2026-03-10","exclude-conference-rooms":true,"kind":"exception","startup-argument":"C",)"
         R"("type":"not-checked-in"})"},
        {UsageRequest{UsageBreakdown::ThirdArea, tuesday, true},
         R"({"by":"area3","date":"2026-03-10","detail":true,"kind":"usage"})"},
        {LayoutRequest{9, tuesday, MakeDate(2026, 4, 1), true, true},
         R"({"completion-filter":true,"end":"2026-04-01","exclude-conference-rooms":true,"kind":"layout",)"
         R"("report":"directory","start":"2026-03-10"})"},
    };
    for (const auto& [request, json] : cases) {
        EXPECT_EQ(Bytes(ToJson(request)).toStdString(), json);
        EXPECT_EQ(RequestFromJson(Object(json)), request) << json;
    }
}

TEST(RequestJsonTest, ADeliveryComesBackAsItWas) {
    const std::pair<Delivery, const char*> cases[] = {
        {Delivery(), R"({"to":"preview"})"},
        {Delivery{.target = DeliveryTarget::Mail, .recipients = {{u"ann@example.org"_s, u"Ann"_s}, {u"b@c"_s, {}}}},
         R"({"mail-to":["\"Ann\" <ann@example.org>","b@c"],"to":"mail"})"},
        {Delivery{DeliveryTarget::PdfFile, u"Lobby"_s, u"Liberation Sans"_s, Orientation::Landscape, qint16(0), true,
                  u"list.pdf"_s},
         R"({"continuous":true,"font":"Liberation Sans","leader":"none","orientation":"landscape",)"
         R"("output":"list.pdf","printer":"Lobby","to":"pdf"})"},
    };
    for (const auto& [delivery, json] : cases) {
        EXPECT_EQ(Bytes(ToJson(delivery)).toStdString(), json);
        EXPECT_EQ(DeliveryFromJson(Object(json)), delivery) << json;
    }
}

TEST(RequestJsonTest, WhatIsWrongIsNamed) {
    const auto refusal = [](const QByteArray& json) {
        try {
            RequestFromJson(Object(json), u"--"_s);
        } catch (const Error& error) {
            return error.Description();
        }
        return QString();
    };
    for (const QStringList& row : TestRows(u"reports/refused_requests.txt"_s)) {
        const QString error = refusal(row[0].toUtf8());
        EXPECT_TRUE(error.contains(row[1])) << row[0].toStdString() << ": " << error.toStdString();
    }
    EXPECT_THROW(DeliveryFromJson(Object(R"({"to":"mail","mail-to":["nobody"]})")), Error);
    EXPECT_THROW(DeliveryFromJson(Object(R"({"to":"mail","mail-to":"a@b"})")), Error);
    EXPECT_THROW(DeliveryFromJson(Object(R"({"to":"text","output":""})")), Error);
}

} // namespace
} // namespace velmora
