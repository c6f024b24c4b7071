-- A small site around the day 2026-03-10 in which every row is there for a reason.
INSERT INTO Asset (AssetID, Name, Location, Jack, DefaultExtension) VALUES
    (1, 'Amsterdam', 1, '1-A', '3001'),
    (2, 'Unused 2', 1, NULL, NULL),
    (3, 'unused three', 1, NULL, NULL), -- lower case: no placeholder
    (4, NULL, 1, NULL, NULL),
    (300, 'B1-300', 1, NULL, '3300'),
    (301, 'B1-301', NULL, NULL, NULL),  -- nobody said whether it is a location
    (302, 'Ext. 1', 0, NULL, NULL),
    (303, 'b1-303', 2, NULL, NULL),     -- any number but 0 is true
    (400, 'Zürich', 1, NULL, NULL);     -- no area, no allowed type
INSERT INTO "Asset/Area" VALUES (1, 'North'), (1, 'South'), (3, 'North'), (300, 'north'), (303, ''), (301, 'North');
INSERT INTO "Asset/Event" VALUES (1, 'Meeting'), (1, 'Interview'), (2, 'Meeting'), (300, 'Office'), (303, 'Desk'),
    (3, 'workshop'), (3, 'Training');
INSERT INTO Person (LastName, FirstName, EventType, Area, Area2, Area3, Phone, Extension, Storage) VALUES
    ('Müller', 'Jürgen', 'Office', 'North', NULL, '', '49-1', '1', 'Locker 1'),
    ('O''Brien', 'Siobhán', NULL, NULL, 'West', 'Zone A', NULL, '2', NULL),
    ('Smith', 'Ann', 'Desk', '', 'west', 'Zone A', '49-3', NULL, 'Cellar'),
    ('Solo', 'Han', 'Lab work', 'South', 'East', 'Zone B', NULL, NULL, NULL),
    ('Nguyễn', '"Anh" Thị', 'Desk', 'North', 'West', NULL, NULL, '5', NULL);
INSERT INTO Reservation (ID, Asset, Start, "End", Name, EventType, LastName, FirstName, Organization, Attendees,
                         Permanent) VALUES
    -- at the edges of the day
    (11, 1, '2026-03-09 14:00:00', '2026-03-11 00:00:00', 'ends with the day', 'Conference', 'Müller', 'Jürgen', 'IT', 9, 0),
    (12, 1, '2026-03-09 08:00:00', '2026-03-10 00:00:00', 'ended before', 'Meeting', 'Müller', 'Jürgen', 'IT', 3, 0),
    (13, 1, '2026-03-11 00:00:00', '2026-03-11 01:00:00', 'starts after', 'Meeting', 'Müller', 'Jürgen', 'IT', 3, 0),
    (14, 1, '2026-03-10 00:00:00', '2026-03-10 00:30:00', 'starts with the day', 'Interview', 'Solo', 'Kim', '', 3, 0),
    -- names typed in capitals
    (10, 1, '2026-03-10 09:00:00', '2026-03-10 10:00:00', 'capitals', 'MEETING', 'SMITH', 'ANN', 'Sales', 4, 0),
    -- permanent before not permanent, markers do not count
    (15, 300, '2020-01-01 08:00:00', '2040-12-31 00:00:00', 'office', 'Office', 'Müller', 'Jürgen', NULL, 1, 1),
    (16, 300, '2019-05-01 08:00:00', '2026-03-10 09:00:00', 'earlier, not permanent', 'Meeting', 'Müller', 'Jürgen', 'IT', 2, 0),
    (17, 300, '2018-01-01 00:00:00', '2041-01-01 00:00:00', 'marker', 'UNUSED', 'Müller', 'Jürgen', NULL, NULL, 1),
    (18, 303, '2026-03-10 00:00:00', '2026-03-11 00:00:00', 'marker', 'UNAVAILABLE', 'Smith', 'Ann', NULL, NULL, 0),
    (19, 303, '2026-03-10 12:00:00', '2026-03-10 13:00:00', 'no marker', 'Unavailable', 'Nguyễn', '"Anh" Thị', 'Sales', 2, 0),
    -- empty fields
    (20, 4, '2026-03-10 09:00:00', '2026-03-10 10:00:00', NULL, NULL, NULL, NULL, NULL, NULL, NULL),
    (26, 1, NULL, '2026-03-10 12:00:00', 'no start', 'Meeting', 'Smith', 'Ann', 'IT', 2, 0),
    (27, 1, '2026-03-10 15:00:00', NULL, 'no end', 'Meeting', 'Smith', 'Ann', 'IT', 2, 0),
    -- assets without a row
    (21, 999, '2026-03-10 09:00:00', '2026-03-10 11:00:00', 'gone', 'Meeting', 'O''Brien', 'Siobhán', 'Legal', 2, 0),
    (22, NULL, '2026-03-10 09:00:00', '2026-03-10 11:00:00', 'nowhere', 'Meeting', 'O''Brien', 'Siobhán', 'Legal', 2, 0),
    -- the same start: the lower number is the first
    (24, 3, '2026-03-10 10:00:00', '2026-03-10 12:00:00', 'second', 'Meeting', 'Ghost', 'Casper', 'Second', 2, 0),
    (23, 3, '2026-03-10 10:00:00', '2026-03-10 11:00:00', 'first', 'Training', 'Ghost', 'Casper', 'First', 2, 0),
    (25, 302, '2020-01-01 08:00:00', '2040-12-31 00:00:00', 'line', 'Telephone', 'Nguyễn', '"Anh" Thị', NULL, NULL, 5),
    (28, 2, '2026-03-10 11:00:00', '2026-03-10 12:00:00', 'on a placeholder', 'Meeting', 'Ghost', 'Casper', NULL, 2, 0),
    (29, 301, '2026-03-10 08:00:00', '2026-03-10 09:30:00', 'a place?', 'Meeting', 'Smith', 'Ann', 'Sales', 2, 0);
UPDATE Reservation SET SLockStart = NULL, SLockEnd = NULL, TLockStart = NULL, TLockEnd = NULL WHERE ID = 20;
UPDATE Reservation SET SLockStart = 1, TLockEnd = 7 WHERE ID = 10;
