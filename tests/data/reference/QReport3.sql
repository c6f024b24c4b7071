SELECT a.AssetID, a.Name, CASE WHEN a.Location IS NOT NULL THEN a.Location <> 0 END, r.EventType, r.Name,
r.Start, r."End", r.Organization, r.Permanent <> 0, r.Attendees, r.LastName, r.FirstName, (SELECT Storage
FROM Person p WHERE p.LastName = r.LastName AND p.FirstName = r.FirstName), (SELECT Extension FROM Person p
WHERE p.LastName = r.LastName AND p.FirstName = r.FirstName), a.DefaultExtension, a.Jack, a.Port,
a.StationType, a.SwitchInterface, r.ID, r.SLockStart <> 0, r.SLockEnd <> 0, r.TLockStart <> 0, r.TLockEnd <>
0 FROM Reservation r NOT INDEXED, Asset a WHERE a.AssetID = r.Asset AND (Start >= :s AND Start < :e) ORDER BY
Start, a.Name, ID
