INSERT INTO Asset (AssetID, Name, Description, Location, LocationLvl, Jack) VALUES
    (1, 'Board Room', 'Seats 12', 1, 3, 'J1'),
    (2, 'conference a', NULL, -1, 1, ''),
    (3, 'Conference B', 'Guest Extension', 0, NULL, NULL),
    (256, 'Unused 1', '', 1, 2, 'J2'),
    (300, 'Kiosk', '100% dry_run', NULL, 2, 'J10'),
    (301, NULL, 'Süd-Flügel', 0, 0, 'j3');
INSERT INTO Reservation (ID, Asset, Start, "End", Name, EventType, LastName, FirstName, Organization, Attendees, Permanent, Link, SLockStart) VALUES
    (10, 1, '2026-03-07 08:00:00', '2026-03-07 10:30:00', 'Kick-off', 'Meeting', 'Adams', 'Ann', 'North', 8, 0, NULL, 0),
    (11, 1, '2026-03-07 13:00:00', '2026-03-08 00:00:00', 'Review', 'Meeting', 'brown', 'Bob', NULL, 4, -1, NULL, 1),
    (12, 2, '2026-03-08 09:15:30', '2026-03-09 09:15:30', NULL, 'UNUSED', 'Adams', 'Ann', 'South', NULL, 1, 10, -1),
    (13, 300, '2026-02-28 00:00:00', '2026-12-31 23:59:59', 'Desk', 'Guest Extension', 'Clark', NULL, 'north', 1, NULL, 11, NULL),
    (14, 999, '2026-03-07 08:00:00', '2026-03-07 09:00:00', 'Lost', NULL, NULL, NULL, NULL, 2, 0, NULL, 0);
INSERT INTO Person (LastName, FirstName, EventType, Area, Extension, Storage) VALUES
    ('Adams', 'Ann', 'Office', 'North Wing', '4711', 'S1'),
    ('Brown', 'Bob', NULL, 'north wing', '12', NULL),
    ('Clark', 'Cy', 'Desk', NULL, '100', 'S2');
INSERT INTO "Asset/Event" VALUES (1, 'Meeting'), (1, 'Board'), (2, 'Meeting');
INSERT INTO "Asset/Area" VALUES (1, 'East'), (2, 'West');
INSERT INTO NoteCategory VALUES ('Food'), ('Rooms');
INSERT INTO StandardNotes VALUES ('Coffee', 'Food', 'Coffee for all', 2.5), ('Tea', 'food', NULL, 2.0), ('Chairs', 'Rooms', 'More chairs', NULL);
INSERT INTO "Asset/StandardNote" VALUES (1, 'Coffee'), (1, 'Tea'), (2, 'Chairs');
INSERT INTO Note (ID, Reservation, Name, NoteCategory, Note, Cost, Completed) VALUES
    (1, 10, 'Coffee', 'Food', 'two pots', 5.0, 1),
    (2, 10, 'Chairs', 'Rooms', NULL, NULL, 0),
    (3, 11, 'Tea', 'FOOD', '', 2.5, NULL);
INSERT INTO PrintAttributes VALUES ('b', 2), ('a', 1);
