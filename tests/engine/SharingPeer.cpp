// Another copy of the program, for the tests of several at work on one file. Says "ready" on its standard output where
// it stands still, and goes on at the next line of its standard input. Ends with the number of the engine error, 0
// without one.
#include "engine/Database.h"

#include <QCoreApplication>
#include <QThread>

#include <sqlite3.h>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;
using namespace velmora::engine;

namespace {

void StandStill() {
    std::puts("ready");
    std::fflush(stdout);
    static_cast<void>(std::getchar());
}

std::unique_ptr<Recordset> OpenReservation(Database& database) {
    return database.OpenRecordset(u"Select * from Reservation where ID = 1", RecordsetKind::Updatable);
}

void Edit(Database& database, const QByteArray& field, int value) {
    const auto row = OpenReservation(database);
    row->Edit();
    row->Set({field.constData(), static_cast<std::size_t>(field.size())}, value);
    StandStill();
    row->Update();
}

void Delete(Database& database) {
    const auto row = OpenReservation(database);
    StandStill();
    row->Delete();
}

// Adds one to the head count as often as asked, each time by reading and writing, again when another one was first.
void Count(Database& database, int times) {
    const auto row = OpenReservation(database);
    StandStill();
    for (int done = 0; done < times;) {
        row->Edit();
        row->Set("Attendees", (*row)["Attendees"].ToInteger() + 1);
        try {
            row->Update();
            ++done;
        } catch (const EngineError& error) {
            if (error.Kind() != EngineErrorNumber::RecordChanged) {
                throw;
            }
            row->CancelUpdate();
        }
    }
}

// Writes pairs of notes, each pair in one transaction, until it is killed.
void Hammer(Database& database) {
    std::puts("ready");
    std::fflush(stdout);
    const QString filler(3000, u'x');
    for (qint64 pair = 0;; ++pair) {
        Transaction transaction(database);
        const auto notes = database.OpenRecordset(u"Select * from [Note] where ID = 0", RecordsetKind::Updatable);
        for (int half = 0; half < 2; ++half) {
            notes->AddNew();
            notes->Set("Reservation", pair);
            notes->Set("Note", filler);
            notes->Update();
        }
        database.Execute(QString(u"Update Reservation set Attendees = "_s + QString::number(pair)));
        transaction.Commit();
    }
}

// Keeps reading: holds the lock that lets other users read but not finish writing. For a time, or until told to go on.
void HoldRead(const QByteArray& path, int milliseconds) {
    sqlite3* store = nullptr;
    sqlite3_open(path.constData(), &store);
    sqlite3_exec(store, "BEGIN; SELECT * FROM Reservation", nullptr, nullptr, nullptr);
    if (milliseconds > 0) {
        std::puts("ready");
        std::fflush(stdout);
        QThread::msleep(static_cast<unsigned long>(milliseconds));
    } else {
        StandStill();
    }
    sqlite3_close(store);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString task = arguments.value(2);
    try {
        if (task == u"hold-read") {
            HoldRead(arguments.value(1).toUtf8(), arguments.value(3).toInt());
            return 0;
        }
        const auto database = Database::Open(arguments.value(1));
        if (task == u"edit") {
            Edit(*database, arguments.value(3).toUtf8(), arguments.value(4).toInt());
        } else if (task == u"delete") {
            Delete(*database);
        } else if (task == u"count") {
            Count(*database, arguments.value(3).toInt());
        } else {
            Hammer(*database);
        }
    } catch (const EngineError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return error.Number() & 0xff;
    }
    return 0;
}
