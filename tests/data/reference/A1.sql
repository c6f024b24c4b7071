WITH o AS (SELECT *, row_number() OVER (PARTITION BY Asset ORDER BY ifnull(Permanent, 0) <> 0 DESC, Start,
ID) n FROM Reservation NOT INDEXED WHERE "End" > :s AND Start < :e AND ifnull(EventType, '') COLLATE BINARY
NOT IN ('UNUSED', 'UNAVAILABLE')) SELECT AreaName, CASE WHEN o.ID IS NULL THEN (SELECT EventType FROM
"Asset/Event" t WHERE t.AssetID = a.AssetID ORDER BY EventType LIMIT 1) ELSE o.EventType END t,
o.Organization, CASE WHEN o.ID IS NULL THEN -2 WHEN ifnull(o.Permanent, 0) <> 0 THEN -1 ELSE 0 END p, a.Name
FROM Asset a LEFT JOIN "Asset/Area" x ON x.AssetID = a.AssetID LEFT JOIN o ON o.n = 1 AND o.Asset = a.AssetID
WHERE a.Location <> 0 AND ifnull(a.Name, '') NOT GLOB 'Unused*' ORDER BY ifnull(AreaName, '') COLLATE NOCASE,
ifnull(t, '') COLLATE NOCASE, ifnull(o.Organization, '') COLLATE NOCASE, p, a.Name, a.AssetID
