WITH o AS (SELECT *, row_number() OVER (PARTITION BY LastName, FirstName ORDER BY ifnull(Permanent, 0) <> 0
DESC, Start, ID) n FROM Reservation NOT INDEXED WHERE "End" > :s AND Start < :e AND ifnull(EventType, '')
COLLATE BINARY NOT IN ('UNUSED', 'UNAVAILABLE')) SELECT p.Area2, o.Organization, CASE WHEN o.ID IS NULL THEN
p.EventType ELSE o.EventType END t, CASE WHEN o.ID IS NULL THEN -2 WHEN ifnull(o.Permanent, 0) <> 0 THEN -1
ELSE 0 END, p.LastName, p.FirstName, (SELECT Name FROM Asset WHERE AssetID = o.Asset) FROM Person p LEFT JOIN
o ON o.n = 1 AND o.LastName = p.LastName AND o.FirstName = p.FirstName ORDER BY ifnull(p.Area2, '') COLLATE
NOCASE, ifnull(o.Organization, '') COLLATE NOCASE, ifnull(t, '') COLLATE NOCASE, 4, p.LastName, p.FirstName
