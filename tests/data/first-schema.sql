-- The shared database of a site as programs of the first version made it, one SQLite 3 file.
--
-- Declared types tell the programs how to read a column: TEXT, INTEGER and SMALLINT (whole numbers of 32 and 16 bits),
-- BOOLEAN (0 or 1; any other non-zero number counts as true), DATETIME (text "YYYY-MM-DD HH:MM:SS", always with the
-- time) and REAL (money). Empty is NULL. Text compares without regard to the case of the letters A to Z.

CREATE TABLE Asset (
    AssetID INTEGER PRIMARY KEY,
    Name TEXT COLLATE NOCASE,
    Description TEXT COLLATE NOCASE,
    Location BOOLEAN DEFAULT 0,
    LocationLvl SMALLINT,
    LocationX SMALLINT,
    LocationY SMALLINT,
    Jack TEXT COLLATE NOCASE,
    Port TEXT COLLATE NOCASE,
    StationType TEXT COLLATE NOCASE,
    SwitchInterface TEXT COLLATE NOCASE,
    DefaultExtension TEXT COLLATE NOCASE
);
CREATE UNIQUE INDEX AssetName ON Asset (Name);

CREATE TABLE Reservation (
    ID INTEGER PRIMARY KEY,
    Asset SMALLINT,
    Start DATETIME,
    "End" DATETIME,
    Name TEXT COLLATE NOCASE,
    EventType TEXT COLLATE NOCASE,
    LastName TEXT COLLATE NOCASE,
    FirstName TEXT COLLATE NOCASE,
    Organization TEXT COLLATE NOCASE,
    Attendees INTEGER,
    Permanent BOOLEAN DEFAULT 0,
    Link INTEGER,
    SLockStart BOOLEAN DEFAULT 0,
    SLockEnd BOOLEAN DEFAULT 0,
    TLockStart BOOLEAN DEFAULT 0,
    TLockEnd BOOLEAN DEFAULT 0,
    TextStart TEXT COLLATE NOCASE,
    TextEnd TEXT COLLATE NOCASE
);
CREATE INDEX ReservationAsset ON Reservation (Asset, "End", Start);
CREATE INDEX ReservationPerson ON Reservation (LastName, FirstName, "End", Start);
CREATE INDEX ReservationLink ON Reservation (EventType, Link);
-- A text that asks for what overlaps a day (End > ... And Start < ...) must walk from the day into the future, not from
-- the beginning of the history. Both indexes suit it, and between equals (as wide, as far as it can tell) the store
-- takes the one that was made last.
CREATE INDEX ReservationStart ON Reservation (Start, "End");
CREATE INDEX ReservationEnd ON Reservation ("End", Start);

CREATE TABLE Person (
    LastName TEXT COLLATE NOCASE NOT NULL,
    FirstName TEXT COLLATE NOCASE NOT NULL,
    EventType TEXT COLLATE NOCASE,
    Area TEXT COLLATE NOCASE,
    Area2 TEXT COLLATE NOCASE,
    Area3 TEXT COLLATE NOCASE,
    Phone TEXT COLLATE NOCASE,
    Extension TEXT COLLATE NOCASE,
    Storage TEXT COLLATE NOCASE,
    SecretaryLast TEXT COLLATE NOCASE,
    SecretaryFirst TEXT COLLATE NOCASE,
    Code1 TEXT COLLATE NOCASE,
    Code2 TEXT COLLATE NOCASE,
    Code3 TEXT COLLATE NOCASE,
    PRIMARY KEY (LastName, FirstName)
);
CREATE INDEX PersonEventType ON Person (EventType);
CREATE INDEX PersonArea ON Person (Area);
CREATE INDEX PersonArea2 ON Person (Area2);
CREATE INDEX PersonArea3 ON Person (Area3);

CREATE TABLE "Asset/Event" (
    AssetID SMALLINT NOT NULL,
    EventType TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (AssetID, EventType)
);
CREATE TABLE "Asset/Area" (
    AssetID SMALLINT NOT NULL,
    AreaName TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (AssetID, AreaName)
);
CREATE TABLE "Asset/Organization" (
    AssetID SMALLINT NOT NULL,
    Organization TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (AssetID, Organization)
);
CREATE TABLE "Asset/Person" (
    AssetID SMALLINT NOT NULL,
    LastName TEXT COLLATE NOCASE NOT NULL,
    FirstName TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (AssetID, LastName, FirstName)
);
CREATE TABLE "Asset/StandardNote" (
    AssetID SMALLINT NOT NULL,
    StandardNote TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (AssetID, StandardNote)
);
CREATE TABLE "Event/StandardNote" (
    EventType TEXT COLLATE NOCASE NOT NULL,
    StandardNote TEXT COLLATE NOCASE NOT NULL,
    PRIMARY KEY (EventType, StandardNote)
);

CREATE TABLE Note (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Reservation INTEGER,
    Name TEXT COLLATE NOCASE,
    NoteCategory TEXT COLLATE NOCASE,
    Note TEXT COLLATE NOCASE,
    Cost REAL,
    Confirm BOOLEAN DEFAULT 0,
    Completed BOOLEAN DEFAULT 0,
    CompletedTime DATETIME,
    CompletedBy TEXT COLLATE NOCASE
);
CREATE INDEX NoteReservation ON Note (Reservation);
CREATE INDEX NoteNoteCategory ON Note (NoteCategory);

CREATE TABLE NoteCategory (
    Name TEXT COLLATE NOCASE NOT NULL PRIMARY KEY
);

CREATE TABLE StandardNotes (
    Name TEXT COLLATE NOCASE NOT NULL PRIMARY KEY,
    NoteCategory TEXT COLLATE NOCASE,
    Note TEXT COLLATE NOCASE,
    Cost REAL
);

CREATE TABLE RequestNote (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    RequestID INTEGER,
    Name TEXT COLLATE NOCASE,
    NoteCategory TEXT COLLATE NOCASE,
    Note TEXT COLLATE NOCASE,
    Cost REAL
);
CREATE INDEX RequestNoteRequestID ON RequestNote (RequestID);

CREATE TABLE WorkOrder (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Requested DATETIME,
    Completed BOOLEAN DEFAULT 0,
    Asset SMALLINT,
    Description TEXT COLLATE NOCASE,
    RequestedBy TEXT COLLATE NOCASE
);
CREATE INDEX WorkOrderRequested ON WorkOrder (Requested);

CREATE TABLE PrintAttributes (
    Caption TEXT COLLATE NOCASE,
    PrintAttributes INTEGER
);

CREATE TABLE StoredQuery (
    Name TEXT COLLATE NOCASE NOT NULL PRIMARY KEY,
    Text TEXT NOT NULL
);
