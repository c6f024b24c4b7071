#include "bench/BenchSite.h"

#include "bench/BareStore.h"

#include <QFile>

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace velmora::bench {

namespace {

constexpr int assets = 300;

constexpr std::array<const char16_t*, 12> lastNames = {u"Abernathy", u"Bauer",   u"Castellano",  u"Dvořák",
                                                       u"Eriksson",  u"Fairley", u"Goldschmidt", u"Huang",
                                                       u"Ivanova",   u"Jansen",  u"Kowalski",    u"Lindqvist"};
constexpr std::array<const char16_t*, 8> firstNames = {u"Anna",  u"Bertram", u"Chloé", u"Daniel",
                                                       u"Elena", u"Frank",   u"Grace", u"Henrik"};

void BindText(sqlite3_stmt* statement, int place, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    sqlite3_bind_text(statement, place, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

QString Moment(int minutes) {
    const int day = minutes / 1440;
    return u"%1-%2-%3 %4:%5:00"_s.arg(2024 + day / 336)
        .arg(day % 336 / 28 + 1, 2, 10, QChar(u'0'))
        .arg(day % 28 + 1, 2, 10, QChar(u'0'))
        .arg(minutes / 60 % 24, 2, 10, QChar(u'0'))
        .arg(minutes % 60, 2, 10, QChar(u'0'));
}

void AddAssets(BareStore& store) {
    sqlite3_stmt* insert = store.Prepare(
        "INSERT INTO Asset (AssetID, Name, Description, Location, LocationLvl, LocationX, LocationY, Jack, Port, "
        "StationType, SwitchInterface, DefaultExtension) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)");
    for (int i = 1; i <= assets; ++i) {
        sqlite3_bind_int(insert, 1, i);
        BindText(insert, 2, u"Room %1"_s.arg(i, 4));
        BindText(insert, 3, u"Office on the east side, seats %1"_s.arg(i % 12 + 1));
        sqlite3_bind_int(insert, 4, i % 5 != 0);
        for (int place = 5; place <= 7; ++place) {
            sqlite3_bind_int(insert, place, i * place % 400);
        }
        BindText(insert, 8, u"J-%1"_s.arg(i));
        BindText(insert, 9, u"%1/%2"_s.arg(i % 48).arg(i % 7));
        BindText(insert, 10, u"8410"_s);
        BindText(insert, 11, u"SW%1"_s.arg(i % 9));
        BindText(insert, 12, QString::number(4000 + i));
        store.Step(insert);
        sqlite3_reset(insert);
    }
}

void AddPersons(BareStore& store) {
    sqlite3_stmt* insert = store.Prepare(
        "INSERT INTO Person (LastName, FirstName, EventType, Area, Area2, Phone, Extension, Storage, SecretaryLast, "
        "SecretaryFirst, Code1) VALUES (?1, ?2, 'Office', ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)");
    for (int i = 0; i < benchPersons; ++i) {
        BindText(insert, 1, LastNameOf(i));
        BindText(insert, 2, FirstNameOf(i));
        BindText(insert, 3, u"Area %1"_s.arg(i % 40));
        BindText(insert, 4, u"Area %1"_s.arg(i % 17));
        BindText(insert, 5, u"555-01%1"_s.arg(i % 100, 2, 10, QChar(u'0')));
        BindText(insert, 6, QString::number(2000 + i));
        BindText(insert, 7, u"Cabinet %1"_s.arg(i % 250));
        BindText(insert, 8, LastNameOf(i / 9));
        BindText(insert, 9, FirstNameOf(i / 9));
        BindText(insert, 10, u"C%1"_s.arg(i % 13));
        store.Step(insert);
        sqlite3_reset(insert);
    }
}

void AddReservations(BareStore& store) {
    sqlite3_stmt* insert = store.Prepare(
        "INSERT INTO Reservation (ID, Asset, Start, \"End\", Name, EventType, LastName, FirstName, Organization, "
        "Attendees, Permanent, SLockStart, SLockEnd) VALUES (?1, ?2, ?3, ?4, ?5, 'Meeting', ?6, ?7, ?8, ?9, ?10, ?11, "
        "?12)");
    for (int i = 1; i <= benchReservations; ++i) {
        const int person = i * 7 % benchPersons;
        sqlite3_bind_int(insert, 1, i);
        sqlite3_bind_int(insert, 2, i * 13 % assets + 1);
        BindText(insert, 3, Moment(i * 17));
        BindText(insert, 4, Moment(i * 17 + 90));
        BindText(insert, 5, u"Planning meeting %1"_s.arg(i));
        BindText(insert, 6, LastNameOf(person));
        BindText(insert, 7, FirstNameOf(person));
        BindText(insert, 8, u"Organization %1"_s.arg(i % 60));
        sqlite3_bind_int(insert, 9, i % 40);
        sqlite3_bind_int(insert, 10, i % 20 == 0);
        sqlite3_bind_int(insert, 11, i % 3 != 0);
        sqlite3_bind_int(insert, 12, i % 4 != 0);
        store.Step(insert);
        sqlite3_reset(insert);
    }
}

} // namespace

QString LastNameOf(int index) {
    return u"%1-%2"_s.arg(QStringView(lastNames[static_cast<std::size_t>(index) % lastNames.size()])).arg(index / 4);
}

QString FirstNameOf(int index) {
    return QStringView(firstNames[static_cast<std::size_t>(index) % firstNames.size()]).toString();
}

void MakeBenchSite(const QString& path) {
    QFile schema(QStringLiteral(VELMORA_SCHEMA));
    if (!schema.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Cannot read %s\n", qPrintable(schema.fileName()));
        std::exit(1);
    }
    BareStore store(path);
    store.Run(schema.readAll().toStdString());
    store.Run("BEGIN");
    AddAssets(store);
    AddPersons(store);
    AddReservations(store);
    store.Run("COMMIT");
}

} // namespace velmora::bench
