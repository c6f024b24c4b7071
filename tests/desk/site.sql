-- A small site in the store's own SQL. The tests' clock shows Thursday, March 5, 2026, 2:15 PM unless a case says
-- otherwise, so that the next working day is Friday, March 6.

INSERT INTO Asset (AssetID, Name, Description, Location, Jack, Port, StationType, SwitchInterface, DefaultExtension) VALUES
(12, 'Boardroom', 'Main boardroom', 1, 'J-12', 'P-12', 'Digital <2>', 'SW & 1', '4012'),
(255, 'C255', NULL, 1, NULL, NULL, NULL, NULL, NULL),
(256, 'C256', NULL, 1, NULL, 'P-256', NULL, NULL, NULL),
(300, 'B12', 'Office', 1, '', 'P-300', '', 'SW-2', ''),
(301, 'Unused 301', NULL, 1, NULL, NULL, NULL, NULL, NULL),
(302, 'unused corner', NULL, 1, NULL, NULL, NULL, NULL, NULL),
(303, 'Projector', NULL, 0, NULL, NULL, NULL, NULL, NULL),
(304, 'A12', NULL, NULL, NULL, NULL, NULL, NULL, '4304'),
(305, NULL, NULL, 1, NULL, NULL, NULL, NULL, NULL),
(306, 'B1 "Æther"', NULL, 1, NULL, NULL, NULL, NULL, NULL),
(900, 'Guest Phone 1', 'Guest Extension, first floor', 0, 'J-900', NULL, 'Analog', NULL, NULL),
(901, 'Guest Phone 2', NULL, 0, NULL, 'P-901', NULL, NULL, NULL);

INSERT INTO Person (LastName, FirstName, Phone, Extension, Storage, SecretaryLast, SecretaryFirst, Code1, Code2, Code3) VALUES
('Abel', 'Anna', '555-0101', '101', 'Cage 4', 'Smith', 'Sam', 'c1', 'c2', 'c3'),
('Baker', 'Bob', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),
('O"Hara', 'Jo "Jo"', '555-0103', NULL, '', 'Only', '', NULL, NULL, NULL);

INSERT INTO Reservation (ID, Asset, Start, "End", Name, EventType, LastName, FirstName, Organization, Attendees,
    Permanent, Link, SLockStart, SLockEnd, TLockStart, TLockEnd) VALUES
-- Friday, March 6
(1, 12, '2026-03-06 09:00:00', '2026-03-06 17:00:00', 'Budget <Q1> & more', 'Conference', 'Abel', 'Anna', 'Finance', 12, 0, NULL, 0, 0, 0, 0),
(2, 12, '2026-03-06 18:00:00', '2026-03-07 00:00:00', 'Reception', 'Conference', 'Baker', 'Bob', NULL, NULL, 0, NULL, 0, 0, 0, 0),
(3, 255, '2026-03-06 08:00:00', '2026-03-06 08:30:15', 'Conference 255', 'Training', 'Nobody', 'Known', 'HR', 3, 0, NULL, 1, 1, 0, 0),
(4, 256, '2026-03-06 00:00:00', '2026-03-08 00:30:00', 'Past midnight', NULL, NULL, NULL, 'HR', 0, NULL, NULL, 0, 0, 1, 1),
(5, 300, '2026-03-06 09:00:00', '2026-03-06 10:00:00', 'Move', 'Office', 'O"Hara', 'Jo "Jo"', 'Legal', 1, 1, NULL, 0, 0, 0, 0),
(6, 301, '2026-03-06 09:00:00', '2026-03-06 10:00:00', 'Never listed 1', 'Office', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(7, 302, '2026-03-06 09:00:00', '2026-03-06 10:00:00', 'Lower case', 'unused', 'Abel', 'Anna', 'X', 1, 0, NULL, NULL, NULL, NULL, NULL),
(8, 303, '2026-03-06 09:00:00', '2026-03-06 10:00:00', 'Never listed 2', 'Thing', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(9, 304, '2026-03-06 09:30:00', '2026-03-06 10:00:00', 'No location flag', 'Office', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(10, 305, '2026-03-06 09:45:00', '2026-03-06 10:00:00', NULL, 'Office', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(11, 300, '2026-03-06 11:00:00', '2026-03-06 12:00:00', 'Never listed 3', 'UNUSED', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(12, 300, '2026-03-06 13:00:00', '2026-03-06 14:00:00', 'Unavailable', 'UNAVAILABLE', 'Abel', 'Anna', 'X', 1, 0, NULL, 0, 0, 0, 0),
(13, 306, '2026-03-06 13:00:00', '2026-03-09 17:00:00', 'Weekend', 'Office', 'Baker', 'Bob', 'X', 1, 0, NULL, 0, 0, 0, 0),
-- guest extensions of number 1, on the same day
(20, 901, '2026-03-06 09:00:00', '2026-03-06 17:00:00', 'Second phone', 'Guest Extension', 'Abel', 'Anna', 'Finance', 1, 0, 1, 0, 0, 0, 0),
(19, 900, '2026-03-06 09:00:00', '2026-03-06 17:00:00', 'First phone', 'Guest Extension', 'Abel', 'Anna', 'Finance', 1, 0, 1, 0, 0, 0, 0),
-- a guest extension of number 5 whose asset is gone
(21, 999, '2026-03-06 09:00:00', '2026-03-06 17:00:00', 'Lost phone', 'Guest Extension', 'Abel', 'Anna', 'Finance', 1, 0, 5, 0, 0, 0, 0),
-- today, and ends around midnight
(30, 12, '2026-03-05 10:00:00', '2026-03-05 11:00:00', 'Today', 'Conference', 'Abel', 'Anna', 'Finance', 2, 0, NULL, 0, 0, 0, 0),
(31, 12, '2026-03-04 10:00:00', '2026-03-06 00:00:00', 'Ends at today''s midnight', 'Conference', 'Baker', 'Bob', 'Finance', 2, 0, NULL, 0, 0, 0, 0),
-- Saturday, Sunday and Monday
(40, 12, '2026-03-07 10:00:00', '2026-03-08 12:00:00', 'Saturday', 'Conference', 'Baker', 'Bob', 'Finance', 2, 0, NULL, 0, 1, 0, 1),
(41, 12, '2026-03-09 10:00:00', '2026-03-09 12:00:00', 'Monday', 'Conference', 'Baker', 'Bob', 'Finance', 2, 0, NULL, 1, 0, 1, 0);

INSERT INTO Note (ID, Reservation, Name, NoteCategory, Note) VALUES
(1, 1, 'Chairs', 'Setup', '12 chairs' || char(13, 10) || 'in a circle'),
(2, 1, 'Lunch', 'Catering', NULL),
(3, 1, NULL, NULL, 'Ünïcode & <b>bold</b>'),
(4, 5, 'Desk', 'Setup', 'Two desks');

INSERT INTO PrintAttributes (Caption, PrintAttributes) VALUES ('Jack', 1), ('Jack', 8), (NULL, 4);
