#include "reports/RequestJson.h"

#include "base/Error.h"
#include "platform/mail/OutgoingMail.h"
#include "reports/RequestFields.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

QString DayText(Date day) {
    constexpr qsizetype sizeOfDay = 10;
    return StorageText(StartOfDay(day)).left(sizeOfDay);
}

std::optional<Date> ParseDay(const QString& text) {
    constexpr qsizetype sizeOfDay = 10;
    const auto moment = text.size() == sizeOfDay ? ParseStorageText(text) : std::nullopt;
    return moment ? std::optional(DateOf(*moment)) : std::nullopt;
}

class Writer : public FieldVisitor {
public:
    void Flag(const char* name, bool& value, const char*) override {
        if (value) {
            Put(name, true);
        }
    }
    void Count(const char* name, int& value, const char*) override { Put(name, value); }
    void Day(const char* name, std::optional<Date>& value, const char*) override {
        if (value) {
            Put(name, DayText(*value));
        }
    }
    void Text(const char* name, QString& value, const char*) override {
        if (!value.isEmpty()) {
            Put(name, value);
        }
    }
    void Recipients(const char* name, std::vector<MailRecipient>& value, const char*) override {
        QJsonArray list;
        for (const MailRecipient& each : value) {
            list.append(mail::RecipientList({each}));
        }
        if (!list.isEmpty()) {
            Put(name, list);
        }
    }
    bool BelongTo(const char*, const char*, bool isChosen, const QStringList&) override { return isChosen; }

    QJsonObject object;

private:
    void ChooseIndex(const char* name, const QStringList& names, int& index, bool, const char*) override {
        if (index >= 0) {
            Put(name, names[index]);
        }
    }
    void Put(const char* name, const QJsonValue& value) { object.insert(QLatin1StringView(name), value); }
};

class Reader : public FieldVisitor {
public:
    Reader(const QJsonObject& object, const QString& keyPrefix) : object_(object), keyPrefix_(keyPrefix) {}

    void Flag(const char* name, bool& value, const char*) override {
        const QJsonValue given = Take(name);
        if (!given.isUndefined() && !given.isBool()) {
            Refuse(name, u"is true or false"_s, given);
        }
        value = given.toBool(value);
    }
    void Count(const char* name, int& value, const char*) override {
        const QJsonValue given = Take(name);
        const double number = given.toDouble();
        if (!given.isUndefined() && (number < 1 || number > mostDays || number != std::floor(number))) {
            Refuse(name, u"takes a number of at least 1 and at most %1"_s.arg(mostDays), given);
        }
        value = given.isUndefined() ? value : static_cast<int>(number);
    }
    void Day(const char* name, std::optional<Date>& value, const char*) override {
        const QJsonValue given = Take(name);
        if (given.isUndefined()) {
            throw Wrong(Key(name) + u" YYYY-MM-DD is missing"_s);
        }
        value = ParseDay(given.toString());
        if (!value) {
            Refuse(name, u"takes a day as YYYY-MM-DD"_s, given);
        }
    }
    void Text(const char* name, QString& value, const char*) override {
        const QJsonValue given = Take(name);
        if (!given.isUndefined() && given.toString().isEmpty()) {
            throw Wrong(Key(name) + u" needs a value that is not empty"_s);
        }
        value = given.toString(value);
    }
    void Recipients(const char* name, std::vector<MailRecipient>& value, const char*) override {
        const QJsonValue given = Take(name);
        if (!given.isUndefined() && !given.isArray()) {
            Refuse(name, u"is a list of addresses"_s, given);
        }
        for (const auto& each : given.toArray()) {
            try {
                for (const MailRecipient& recipient : mail::ParseRecipients(each.toString())) {
                    value.push_back(recipient);
                }
            } catch (const Error& error) {
                throw Wrong(Key(name) + u": "_s + error.Description());
            }
        }
    }
    bool BelongTo(const char* choice, const char* chosen, bool isChosen, const QStringList& fields) override {
        for (const QString& field : fields) {
            if (!isChosen && object_.contains(field)) {
                throw Wrong(u"%1%2 belongs to %3 %4"_s.arg(keyPrefix_, field, Key(choice), QLatin1StringView(chosen)));
            }
        }
        return isChosen;
    }
    QString Kind() { return Take("kind").toString(); }
    // Call it behind the last field: what was not asked for is unknown.
    void Finish() const {
        for (const QString& key : object_.keys()) {
            if (!known_.contains(key)) {
                throw Wrong(u"\"%1\" is unknown; there are %2"_s.arg(key, known_.join(u", "_s)));
            }
        }
    }

    static Error Wrong(const QString& reason) { return ProgramError(ErrorNumber::InvalidCall, reason); }

private:
    static constexpr int mostDays = 3'000'000;

    void ChooseIndex(const char* name, const QStringList& names, int& index, bool required, const char*) override {
        const QJsonValue given = Take(name);
        const QString choices = names.join(u" or "_s);
        if (given.isUndefined() && required) {
            throw Wrong(Key(name) + u' ' + choices + u" is missing"_s);
        }
        index = given.isUndefined() ? index : static_cast<int>(names.indexOf(given.toString()));
        if (!given.isUndefined() && index < 0) {
            Refuse(name, u"is "_s + choices, given);
        }
    }
    QJsonValue Take(const char* name) {
        known_ += QString::fromLatin1(name);
        return object_.value(QLatin1StringView(name));
    }
    QString Key(const char* name) const { return keyPrefix_ + QLatin1StringView(name); }
    [[noreturn]] void Refuse(const char* name, const QString& takes, const QJsonValue& given) const {
        throw Wrong(u"%1 %2, not \"%3\""_s.arg(Key(name), takes, given.toVariant().toString()));
    }

    const QJsonObject& object_;
    const QString keyPrefix_;
    QStringList known_;
};

// A report reads the days behind its first one, and the last of them has one behind it.
void CheckDays(const std::optional<Date>& first, int number) {
    if (first && *first > *MakeDate(9999, 12, 31) - std::chrono::days(number)) {
        throw Reader::Wrong(
            u"A report of %1 days from %2 on goes beyond the year 9999"_s.arg(number).arg(DayText(*first)));
    }
}

void CheckDays(const ReportRequest& request, const QString& keyPrefix) {
    std::visit(
        [&](const auto& each) {
            if constexpr (requires { each.days; }) {
                CheckDays(each.days.otherDate, each.days.number);
            } else if constexpr (requires { each.date; }) {
                CheckDays(each.date, 1);
            } else if (*each.end <= *each.start) {
                throw Reader::Wrong(u"%1end is the day after the last one: it comes after %1start"_s.arg(keyPrefix));
            }
        },
        request);
}

} // namespace

QJsonObject ToJson(ReportRequest request) {
    const std::vector<ReportKind> kinds = ReportKinds();
    const auto kind = std::ranges::find_if(kinds, [&request](const ReportKind& each) {
        // Occupants and directory are kinds of one request.
        const auto* list = std::get_if<OccupancyRequest>(&request);
        return each.request.index() == request.index() &&
               (list == nullptr || std::get<OccupancyRequest>(each.request).list == list->list);
    });
    Writer writer;
    writer.object.insert(u"kind"_s, QLatin1StringView(kind->name));
    VisitFields(request, writer);
    return writer.object;
}

QJsonObject ToJson(Delivery delivery) {
    Writer writer;
    VisitFields(delivery, writer);
    return writer.object;
}

ReportRequest RequestFromJson(const QJsonObject& object, const QString& keyPrefix) {
    Reader reader(object, keyPrefix);
    const QString name = reader.Kind();
    for (const ReportKind& kind : ReportKinds()) {
        if (name == QLatin1StringView(kind.name)) {
            ReportRequest request = kind.request;
            VisitFields(request, reader);
            reader.Finish();
            CheckDays(request, keyPrefix);
            return request;
        }
    }
    throw Reader::Wrong(u"There is no report of the kind \"%1\""_s.arg(name));
}

Delivery DeliveryFromJson(const QJsonObject& object, const QString& keyPrefix) {
    Reader reader(object, keyPrefix);
    Delivery delivery;
    VisitFields(delivery, reader);
    reader.Finish();
    return delivery;
}

} // namespace velmora
