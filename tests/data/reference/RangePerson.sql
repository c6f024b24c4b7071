SELECT p.LastName, p.FirstName, (SELECT Name FROM Asset WHERE AssetID = r.Asset), Phone, Extension,
r.Organization, r.EventType, r.Start, r."End", r.Permanent <> 0 FROM Person p LEFT JOIN Reservation r ON
r.LastName = p.LastName AND r.FirstName = p.FirstName AND r."End" > :s AND r.Start < :e ORDER BY p.LastName,
p.FirstName, r.Start, r.ID
