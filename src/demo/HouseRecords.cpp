#include "demo/Calendar.h"
#include "demo/House.h"
#include "demo/WordFile.h"

#include <algorithm>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

class NoteWriter {
public:
    NoteWriter(const House& house, Random& random, RowSink& sink)
        : today_(StartOfDay(house.options.today)), staff_(house.staff), random_(random), sink_(sink) {
        const WordFile words(QStringLiteral("notes.txt"));
        notes_ = words.Rows(QStringLiteral("notes"));
        finishers_ = words.Entries(QStringLiteral("finished by"));
        sink_.BeginTable("Note", "Reservation Name NoteCategory Note Cost Confirm Completed CompletedTime CompletedBy");
    }

    void Write(const WrittenReservation& reservation) {
        const QStringList& note = random_.Pick(notes_);
        const bool done = reservation.start < today_ && random_.Below(3) < 2;
        const bool confirm = random_.Percent(25);
        const bool costs = note[0] == QLatin1String("Catering") && random_.Percent(50);
        const DateTime doneAt = DoneAt(reservation.start);
        sink_.Add({reservation.id, note[1], note[0], Filled(note[2]),
                   costs ? Value(random_.Between(12, 240) * 0.5) : Value(), confirm, done,
                   done ? Value(doneAt) : Value(), done ? Value(random_.Pick(finishers_)) : Value()});
    }

private:
    // Shortly before the start; for an early one on the afternoon before.
    DateTime DoneAt(DateTime start) {
        if (Fields(start).hour >= 9) {
            return start - minutes(random_.Between(6, 90));
        }
        return StartOfDay(DateOf(start)) - days(1) + minutes(14 * 60 + random_.Below(180));
    }

    QString Filled(QString text) {
        if (!text.contains(u'{')) {
            return text;
        }
        const QString hour =
            QStringLiteral("%1:%2").arg(8 + random_.Below(11)).arg(random_.Below(4) * 15, 2, 10, QLatin1Char('0'));
        text.replace(QLatin1String("{hour}"), hour);
        text.replace(QLatin1String("{count}"), QString::number(4 + random_.Below(32)));
        text.replace(QLatin1String("{person}"), random_.Pick(staff_.persons).firstName);
        text.replace(QLatin1String("{building}"), QStringLiteral("B%1").arg(1 + random_.Below(2)));
        return text;
    }

    DateTime today_;
    const Staff& staff_;
    Random& random_;
    RowSink& sink_;
    std::vector<QStringList> notes_;
    QStringList finishers_;
};

Value Money(const QString& text) {
    return text.isEmpty() ? Value() : Value(text.toDouble());
}

void WriteLinks(const WordFile& words, const House& house, Random& random, RowSink& sink) {
    sink.BeginTable("Event/StandardNote", "EventType StandardNote");
    QHash<QString, QStringList> notesOfType;
    for (const QStringList& link : words.Rows(QStringLiteral("of event types"))) {
        sink.Add({link[0], link[1]});
        notesOfType[link[0]].append(link[1]);
    }
    sink.BeginTable("Asset/StandardNote", "AssetID StandardNote");
    for (const Asset& asset : house.assets) {
        const QStringList& types = house.kinds.Of(asset.kind).spaceTypes;
        if (asset.seats < 3 || types.isEmpty()) {
            continue;
        }
        for (const QString& note : notesOfType.value(types.front())) {
            if (random.Percent(60)) {
                sink.Add({asset.id, note});
            }
        }
    }
}

void WriteRequests(int requests, const std::vector<QStringList>& standard, Random& random, RowSink& sink) {
    sink.BeginTable("RequestNote", "RequestID Name NoteCategory Note Cost");
    for (int request = 1; request <= requests; ++request) {
        for (int n = random.Between(1, 3); n > 0; --n) {
            const QStringList& note = random.Pick(standard);
            sink.Add({request, note[0], note[1], TextOrEmpty(note[3]), Money(note[2])});
        }
    }
}

} // namespace

void WriteOwners(const House& house, RowSink& sink) {
    Random random = house.Draws(House::Subject::Owners);
    std::vector<std::pair<int, const Person*>> owners;
    for (const Asset& asset : house.assets) {
        const bool owned =
            asset.kind == AssetKind::Lab || asset.kind == AssetKind::Equipment || asset.kind == AssetKind::TrainingRoom;
        if (owned || (asset.kind == AssetKind::MeetingRoom && random.Percent(25))) {
            owners.emplace_back(asset.id, &random.Pick(house.staff.persons));
        }
    }
    sink.BeginTable("Asset/Organization", "AssetID Organization");
    for (const auto& [asset, person] : owners) {
        sink.Add({asset, person->organization});
    }
    sink.BeginTable("Asset/Person", "AssetID LastName FirstName");
    for (const auto& [asset, person] : owners) {
        if (random.Percent(80)) {
            sink.Add({asset, person->lastName, person->firstName});
        }
    }
}

void WriteWorkOrders(const House& house, RowSink& sink) {
    Random random = house.Draws(House::Subject::WorkOrders);
    const Date today = house.options.today;
    const QStringList descriptions = WordFile(QStringLiteral("work-orders.txt")).Entries(QStringLiteral("work orders"));
    // The last two years.
    std::vector<DateTime> requested;
    for (int n = 0; n < house.scale.workOrders; ++n) {
        const Date day = WorkingDayFrom(today + days(random.Between(-730, -3)));
        requested.push_back(StartOfDay(day) + minutes(7 * 60 + random.Below(600)));
    }
    std::sort(requested.begin(), requested.end());

    sink.BeginTable("WorkOrder", "Requested Completed Asset Description RequestedBy");
    for (const DateTime moment : requested) {
        const Asset& asset = random.Pick(house.assets);
        const Person& person = random.Pick(house.staff.persons);
        const bool past = moment < StartOfDay(today);
        const bool known = asset.kind != AssetKind::Gone && !random.Percent(4);
        sink.Add({moment, past && random.Below(3) < 2, known ? Value(asset.id) : Value(), random.Pick(descriptions),
                  person.firstName + u' ' + person.lastName});
    }
}

void WritePrintAttributes(RowSink& sink) {
    sink.BeginTable("PrintAttributes", "Caption PrintAttributes");
    const WordFile words(QStringLiteral("print-attributes.txt"));
    for (const QStringList& attribute : words.Rows(QStringLiteral("print attributes"))) {
        const QStringList styles = attribute[1].split(u' ');
        int bits = 0;
        int bit = 1;
        for (const char* style : {"bold", "italic", "underlined", "grey"}) {
            bits |= styles.contains(QLatin1String(style)) ? bit : 0;
            bit *= 2;
        }
        sink.Add({attribute[0], bits});
    }
}

void WriteNotes(const House& house, const std::vector<WrittenReservation>& reservations, RowSink& sink) {
    Random lengths = house.Draws(House::Subject::Notes);
    Random random = lengths;
    NoteWriter writer(house, random, sink);
    for (const WrittenReservation& reservation : reservations) {
        for (int n = lengths.Percent(70) ? 1 : lengths.Between(2, 3); n > 0; --n) {
            writer.Write(reservation);
        }
    }
}

void WriteStandardNotes(const House& house, RowSink& sink) {
    Random random = house.Draws(House::Subject::StandardNotes);
    const WordFile words(QStringLiteral("standard-notes.txt"));
    const std::vector<QStringList> standard = words.Rows(QStringLiteral("standard notes"));
    QStringList categories;
    for (const QStringList& note : standard) {
        if (!categories.contains(note[1])) {
            categories.append(note[1]);
        }
    }
    sink.BeginTable("NoteCategory", "Name");
    for (const QString& category : categories) {
        sink.Add({category});
    }
    sink.BeginTable("StandardNotes", "Name NoteCategory Note Cost");
    for (const QStringList& note : standard) {
        sink.Add({note[0], note[1], TextOrEmpty(note[3]), Money(note[2])});
    }
    WriteLinks(words, house, random, sink);
    WriteRequests(house.scale.requests, standard, random, sink);
}

} // namespace velmora::demo
