#include "demo/Notes.h"

#include "demo/WordFile.h"

#include <algorithm>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

class NoteWriter {
public:
    NoteWriter(const Options& options, const Staff& staff, Random random, RowSink& sink)
        : today_(StartOfDay(options.today)), staff_(staff), random_(random), sink_(sink) {
        const WordFile words = WordFile::Load(QStringLiteral("notes.txt"));
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
        sink_.Add({Value(reservation.id), Value(note[1]), Value(note[0]), Value(Filled(note[2])),
                   costs ? Value(random_.Between(12, 240) * 0.5) : Value(), Value(confirm), Value(done),
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
    Random random_;
    RowSink& sink_;
    std::vector<QStringList> notes_;
    QStringList finishers_;
};

Value Money(const QString& text) {
    return text.isEmpty() ? Value() : Value(text.toDouble());
}

Value TextOrEmpty(const QString& text) {
    return text.isEmpty() ? Value() : Value(text);
}

void WriteLinks(const WordFile& words, const std::vector<Asset>& assets, Random& random, RowSink& sink) {
    sink.BeginTable("Event/StandardNote", "EventType StandardNote");
    QHash<QString, QStringList> notesOfType;
    for (const QStringList& link : words.Rows(QStringLiteral("of event types"))) {
        sink.Add({Value(link[0]), Value(link[1])});
        notesOfType[link[0]].append(link[1]);
    }
    sink.BeginTable("Asset/StandardNote", "AssetID StandardNote");
    const KindTable kinds;
    for (const Asset& asset : assets) {
        const QStringList& types = kinds.Of(asset.kind).spaceTypes;
        if (asset.seats < 3 || types.isEmpty()) {
            continue;
        }
        for (const QString& note : notesOfType.value(types.front())) {
            if (random.Percent(60)) {
                sink.Add({Value(asset.id), Value(note)});
            }
        }
    }
}

void WriteRequests(const Scale& scale, const std::vector<QStringList>& standard, Random& random, RowSink& sink) {
    sink.BeginTable("RequestNote", "RequestID Name NoteCategory Note Cost");
    for (int request = 1; request <= scale.requests; ++request) {
        for (int n = random.Between(1, 3); n > 0; --n) {
            const QStringList& note = random.Pick(standard);
            sink.Add({Value(request), Value(note[0]), Value(note[1]), TextOrEmpty(note[3]), Money(note[2])});
        }
    }
}

} // namespace

void WriteNotes(const Options& options, const std::vector<WrittenReservation>& reservations, const Staff& staff,
                Random random, RowSink& sink) {
    NoteWriter writer(options, staff, random, sink);
    for (const WrittenReservation& reservation : reservations) {
        for (int n = random.Percent(70) ? 1 : random.Between(2, 3); n > 0; --n) {
            writer.Write(reservation);
        }
    }
}

void WriteStandardNotes(const Scale& scale, const std::vector<Asset>& assets, Random random, RowSink& sink) {
    const WordFile words = WordFile::Load(QStringLiteral("standard-notes.txt"));
    const std::vector<QStringList> standard = words.Rows(QStringLiteral("standard notes"));
    QStringList categories;
    for (const QStringList& note : standard) {
        if (!categories.contains(note[1])) {
            categories.append(note[1]);
        }
    }
    sink.BeginTable("NoteCategory", "Name");
    for (const QString& category : categories) {
        sink.Add({Value(category)});
    }
    sink.BeginTable("StandardNotes", "Name NoteCategory Note Cost");
    for (const QStringList& note : standard) {
        sink.Add({Value(note[0]), Value(note[1]), TextOrEmpty(note[3]), Money(note[2])});
    }
    WriteLinks(words, assets, random, sink);
    WriteRequests(scale, standard, random, sink);
}

} // namespace velmora::demo
