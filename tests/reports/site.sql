-- A small site in the store's own SQL for the management reports. The tests' clock shows Thursday, March 5, 2026,
-- 2:15 PM unless a case says otherwise; the day with most of the oddities is that day.

INSERT INTO Asset (AssetID, Name, Location) VALUES
(12, 'Boardroom', 1),
(256, 'C256', 1),
(257, 'C257', 1),
(300, 'B2-101', 1),
(301, 'B3-101', 1),
(302, 'Unused 4', 1),
(303, 'unused nook', 1),
(304, 'Projector', 0),
(305, NULL, 1),
(306, 'B2 "Æther" <1> & ''2''', 1),
(307, 'B2-102', 1),
(308, 'Flagless', NULL),
-- six unreserved locations in one group
(321, 'Desk 1', 1), (322, 'Desk 2', 1), (323, 'Desk 3', 1), (324, 'Desk 4', 1), (325, 'Desk 5', 1), (326, 'Desk 6', 1);

INSERT INTO "Asset/Event" VALUES
(12, 'Conference'), (257, 'Conference'), (300, 'Office'), (300, 'Archive'), (301, 'Office'), (307, 'Office'),
(321, 'Desk'), (322, 'Desk'), (323, 'Desk'), (324, 'Desk'), (325, 'Desk'), (326, 'Desk');
INSERT INTO "Asset/Area" VALUES
(12, 'North'), (12, 'South'), (300, 'North'), (301, 'South'), (306, 'O''Neil''s "Yard"'), (307, 'north'),
(321, 'West'), (322, 'West'), (323, 'West'), (324, 'West'), (325, 'West'), (326, 'West');

INSERT INTO Person (LastName, FirstName, EventType, Area, Area2, Area3, Phone, Extension) VALUES
('Abel', 'Anna', 'Office', 'North', 'South', NULL, '555-0101', '101'),
('Baker', 'Bob', NULL, NULL, '', 'North', '555-0102', NULL),
('Chen', 'Wei', 'Conference', 'South', 'South', 'South', NULL, NULL),
('Dunn', 'Dora', 'Office', 'North', 'North', 'North', '555-0104', '104'),
('Eve', 'Empty', 'Office', 'North', 'North', 'North', NULL, '105'),
('Frost', 'Fay', 'Office', 'West', 'West', 'West', '555-0106', ''),
('O"Hara', 'Jo "Jo"', 'Office', 'O''Neil''s "Yard"', NULL, NULL, '555-0107', '107'),
('O''Neil', 'Pat', 'Of"fice', '"', '''', '"''', '555-0108', '108');

INSERT INTO Reservation (ID, Asset, Start, "End", EventType, LastName, FirstName, Organization, Permanent, SLockStart) VALUES
-- Anna sits where she belongs but for her second area; the later reservation is not looked at
(1, 300, '2026-03-05 09:00:00', '2026-03-05 17:00:00', 'Office', 'Abel', 'Anna', 'Finance', 0, 0),
(2, 301, '2026-03-05 18:00:00', '2026-03-05 19:00:00', 'Conference', 'Abel', 'Anna', 'Finance', 0, 0),
-- Bob has no space type and no first area at all, and stays for good
(3, 301, '2024-01-08 08:00:00', '2030-01-01 00:00:00', 'Office', 'Baker', 'Bob', 'Legal', 1, 1),
-- two occupants of one room, one of them without a record; one checked in
(4, 12, '2026-03-05 10:00:00', '2026-03-05 11:00:00', 'Conference', 'Chen', 'Wei', 'Sales', 0, 1),
(5, 12, '2026-03-05 13:00:00', '2026-03-06 00:00:00', 'Conference', 'Nobody', 'Known', NULL, 0, 0),
-- a location that vanished, a reservation without one
(6, 999, '2026-03-05 09:00:00', '2026-03-05 10:00:00', 'Office', 'Dunn', 'Dora', 'Finance', 0, 0),
(7, NULL, '2026-03-05 09:00:00', '2026-03-05 10:00:00', 'Office', 'Eve', 'Empty', 'Finance', 0, 0),
-- names with quotes of both kinds, and a name in other letters than the record's
(8, 306, '2026-03-05 23:00:00', '2026-03-06 01:00:00', NULL, 'O"Hara', 'Jo "Jo"', 'R "&" D', 0, 0),
(9, 257, '2026-03-05 08:00:00', '2026-03-05 08:00:30', 'Conference', 'O''NEIL', 'pat', 'O''Neil <Sons>', 0, 0),
-- conference room by its number; types that count as no use; assets that are never listed
(10, 256, '2026-03-05 08:00:00', '2026-03-05 09:00:00', 'Conference', 'Nobody', 'Else', 'Sales', 0, 0),
(11, 307, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'UNAVAILABLE', NULL, NULL, 'House', 0, 0),
(12, 307, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'UNUSED', NULL, NULL, 'House', 0, 0),
(13, 302, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'Office', 'Abel', 'Aaron', 'House', 0, 0),
(14, 303, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'unavailable', 'Zed', NULL, 'House', 0, 0),
(15, 304, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'Thing', 'Abel', 'Aaron', 'House', 0, 0),
(16, 308, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'Office', 'Abel', 'Aaron', 'House', 0, 0),
(17, 305, '2026-03-05 08:00:00', '2026-03-05 18:00:00', 'Office', 'Abel', 'Aaron', 'House', NULL, NULL),
-- over before the day, or not begun on it
(20, 300, '2026-03-04 08:00:00', '2026-03-05 00:00:00', 'Office', 'Frost', 'Fay', 'Finance', 0, 0),
(21, 300, '2026-03-06 00:00:00', '2026-03-06 12:00:00', 'Office', 'Frost', 'Fay', 'Finance', 0, 0),
-- without dates they overlap no day
(22, 301, NULL, '2026-03-05 12:00:00', 'Office', 'Frost', 'Fay', 'Finance', 0, 0),
(23, 301, '2026-03-05 12:00:00', NULL, 'Office', 'Frost', 'Fay', 'Finance', 0, 0),
-- Monday, March 9
(30, 300, '2026-03-09 09:00:00', '2026-03-11 08:00:00', 'Office', 'Abel', 'Anna', 'Finance', 0, 0);
