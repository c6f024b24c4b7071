SELECT a.Name, CASE WHEN a.Location IS NOT NULL THEN a.Location <> 0 END, r.Start, r."End", r.Permanent <> 0,
r.EventType, r.LastName, r.FirstName, r.Organization FROM Asset a LEFT JOIN Reservation r ON r.Asset =
a.AssetID AND r."End" > :s AND r.Start < :e ORDER BY a.Name, r.Start, r.ID, a.AssetID
