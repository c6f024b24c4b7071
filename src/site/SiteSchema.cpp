#include "site/SiteSchema.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace velmora {

namespace {

using Column = engine::ColumnType;
using engine::propertyTable;
using engine::TableDefinition;

// Columns in runs of one type.
std::vector<engine::ColumnDefinition> Columns(std::initializer_list<std::pair<Column, QStringList>> runs) {
    std::vector<engine::ColumnDefinition> columns;
    for (const auto& [type, names] : runs) {
        for (const QString& name : names) {
            columns.push_back({name, type});
        }
    }
    return columns;
}

std::vector<TableDefinition> RoomsAndPersons() {
    return {
        {.name = u"Asset"_s,
         .columns = Columns(
             {{Column::Identity, {u"AssetID"_s}},
              {Column::Text, {u"Name"_s, u"Description"_s}},
              {Column::YesNo, {u"Location"_s}},
              {Column::SmallInteger, {u"LocationLvl"_s, u"LocationX"_s, u"LocationY"_s}},
              {Column::Text, {u"Jack"_s, u"Port"_s, u"StationType"_s, u"SwitchInterface"_s, u"DefaultExtension"_s}}}),
         .indexes = {{u"AssetName"_s, {u"Name"_s}, true}}},
        {.name = u"Reservation"_s,
         .columns =
             Columns({{Column::Identity, {u"ID"_s}},
                      {Column::SmallInteger, {u"Asset"_s}},
                      {Column::DateTime, {u"Start"_s, u"End"_s}},
                      {Column::Text, {u"Name"_s, u"EventType"_s, u"LastName"_s, u"FirstName"_s, u"Organization"_s}},
                      {Column::Integer, {u"Attendees"_s}},
                      {Column::YesNo, {u"Permanent"_s}},
                      {Column::Integer, {u"Link"_s}},
                      {Column::YesNo, {u"SLockStart"_s, u"SLockEnd"_s, u"TLockStart"_s, u"TLockEnd"_s}},
                      {Column::Text, {u"TextStart"_s, u"TextEnd"_s}}}),
         .indexes = {{u"ReservationAsset"_s, {u"Asset"_s, u"End"_s, u"Start"_s}},
                     {u"ReservationPerson"_s, {u"LastName"_s, u"FirstName"_s, u"End"_s, u"Start"_s}},
                     {u"ReservationLink"_s, {u"EventType"_s, u"Link"_s}},
                     // A text that asks for what overlaps a day (End > ... And Start < ...) must walk from the day into
                     // the future, not from the beginning of the history. The next two indexes suit it, and between
                     // equals (as wide, as far as it can tell) the store takes the one that was made last.
                     {u"ReservationStart"_s, {u"Start"_s, u"End"_s}},
                     {u"ReservationEnd"_s, {u"End"_s, u"Start"_s}}}},
        {.name = u"Person"_s,
         .columns = Columns({{Column::Text,
                              {u"LastName"_s, u"FirstName"_s, u"EventType"_s, u"Area"_s, u"Area2"_s, u"Area3"_s,
                               u"Phone"_s, u"Extension"_s, u"Storage"_s, u"SecretaryLast"_s, u"SecretaryFirst"_s,
                               u"Code1"_s, u"Code2"_s, u"Code3"_s}}}),
         .key = {u"LastName"_s, u"FirstName"_s},
         .indexes = {{u"PersonEventType"_s, {u"EventType"_s}},
                     {u"PersonArea"_s, {u"Area"_s}},
                     {u"PersonArea2"_s, {u"Area2"_s}},
                     {u"PersonArea3"_s, {u"Area3"_s}}}}};
}

// Which values may stand beside a location, and which standard notes belong to what.
std::vector<TableDefinition> AllowedPairs() {
    return {
        {.name = u"Asset/Event"_s,
         .columns = Columns({{Column::SmallInteger, {u"AssetID"_s}}, {Column::Text, {u"EventType"_s}}}),
         .key = {u"AssetID"_s, u"EventType"_s}},
        {.name = u"Asset/Area"_s,
         .columns = Columns({{Column::SmallInteger, {u"AssetID"_s}}, {Column::Text, {u"AreaName"_s}}}),
         .key = {u"AssetID"_s, u"AreaName"_s}},
        {.name = u"Asset/Organization"_s,
         .columns = Columns({{Column::SmallInteger, {u"AssetID"_s}}, {Column::Text, {u"Organization"_s}}}),
         .key = {u"AssetID"_s, u"Organization"_s}},
        {.name = u"Asset/Person"_s,
         .columns = Columns({{Column::SmallInteger, {u"AssetID"_s}}, {Column::Text, {u"LastName"_s, u"FirstName"_s}}}),
         .key = {u"AssetID"_s, u"LastName"_s, u"FirstName"_s}},
        {.name = u"Asset/StandardNote"_s,
         .columns = Columns({{Column::SmallInteger, {u"AssetID"_s}}, {Column::Text, {u"StandardNote"_s}}}),
         .key = {u"AssetID"_s, u"StandardNote"_s}},
        {.name = u"Event/StandardNote"_s,
         .columns = Columns({{Column::Text, {u"EventType"_s, u"StandardNote"_s}}}),
         .key = {u"EventType"_s, u"StandardNote"_s}}};
}

std::vector<TableDefinition> NotesAndOthers() {
    return {
        {.name = u"Note"_s,
         .columns = Columns({{Column::Sequence, {u"ID"_s}},
                             {Column::Integer, {u"Reservation"_s}},
                             {Column::Text, {u"Name"_s, u"NoteCategory"_s, u"Note"_s}},
                             {Column::Real, {u"Cost"_s}},
                             {Column::YesNo, {u"Confirm"_s, u"Completed"_s}},
                             {Column::DateTime, {u"CompletedTime"_s}},
                             {Column::Text, {u"CompletedBy"_s}}}),
         .indexes = {{u"NoteReservation"_s, {u"Reservation"_s}}, {u"NoteNoteCategory"_s, {u"NoteCategory"_s}}}},
        {.name = u"NoteCategory"_s, .columns = Columns({{Column::Text, {u"Name"_s}}}), .key = {u"Name"_s}},
        {.name = u"StandardNotes"_s,
         .columns = Columns({{Column::Text, {u"Name"_s, u"NoteCategory"_s, u"Note"_s}}, {Column::Real, {u"Cost"_s}}}),
         .key = {u"Name"_s}},
        {.name = u"RequestNote"_s,
         .columns = Columns({{Column::Sequence, {u"ID"_s}},
                             {Column::Integer, {u"RequestID"_s}},
                             {Column::Text, {u"Name"_s, u"NoteCategory"_s, u"Note"_s}},
                             {Column::Real, {u"Cost"_s}}}),
         .indexes = {{u"RequestNoteRequestID"_s, {u"RequestID"_s}}}},
        {.name = u"WorkOrder"_s,
         .columns = Columns({{Column::Sequence, {u"ID"_s}},
                             {Column::DateTime, {u"Requested"_s}},
                             {Column::YesNo, {u"Completed"_s}},
                             {Column::SmallInteger, {u"Asset"_s}},
                             {Column::Text, {u"Description"_s, u"RequestedBy"_s}}}),
         .indexes = {{u"WorkOrderRequested"_s, {u"Requested"_s}}}},
        {.name = u"PrintAttributes"_s,
         .columns = Columns({{Column::Text, {u"Caption"_s}}, {Column::Integer, {u"PrintAttributes"_s}}})},
        {.name = u"StoredQuery"_s,
         .columns = {{u"Name"_s, Column::Text}, {u"Text"_s, Column::ExactText, true}},
         .key = {u"Name"_s}}};
}

// This program's own.
std::vector<TableDefinition> OwnTables() {
    return {{.name = propertyTable.toString(),
             .columns = Columns({{Column::Text, {u"Name"_s, u"Value"_s}}}),
             .key = {u"Name"_s},
             .since = 2}};
}

} // namespace

engine::Schema SiteSchema() {
    engine::Schema schema;
    for (const auto& tables : {RoomsAndPersons(), AllowedPairs(), NotesAndOthers(), OwnTables()}) {
        schema.tables.insert(schema.tables.end(), tables.begin(), tables.end());
    }
    for (const TableDefinition& table : schema.tables) {
        schema.version = std::max(schema.version, table.since);
    }
    return schema;
}

} // namespace velmora
