PARAMETERS RStart DateTime, REnd DateTime;
SELECT AreaName, EventType, Organization, Perm, Name
FROM
   (SELECT Place.AssetID, [Asset/Area].AreaName, Chosen.Organization, Place.Name,
        IIf(Chosen.ID Is Null, (SELECT Min(Allowed.EventType) FROM [Asset/Event] AS Allowed
                                WHERE Allowed.AssetID = Place.AssetID), Chosen.EventType) AS EventType,
        IIf(Chosen.ID Is Null, -2, IIf(Chosen.Permanent, -1, 0)) AS Perm
    FROM ((SELECT DISTINCT Asset.AssetID, Asset.Name,
               (SELECT TOP 1 Mine.ID
                FROM (SELECT DISTINCT ID, Asset, Start, IIf(Permanent, 0, 1) AS Rank
                      FROM Reservation
                      WHERE End > RStart And Start < REnd
                          And StrComp(Nz(EventType, ""), "UNUSED", 0) <> 0
                          And StrComp(Nz(EventType, ""), "UNAVAILABLE", 0) <> 0) AS Mine
                WHERE Mine.Asset = Asset.AssetID
                ORDER BY Mine.Rank, Mine.Start, Mine.ID) AS Best
           FROM Asset
           WHERE Asset.Location And StrComp(Left(Nz(Asset.Name, ""), 6), "Unused", 0) <> 0) AS Place
        LEFT JOIN [Asset/Area] ON [Asset/Area].AssetID = Place.AssetID)
        LEFT JOIN Reservation AS Chosen ON Chosen.ID = Place.Best) AS Places
ORDER BY Nz(AreaName, ""), Nz(EventType, ""), Nz(Organization, ""), Perm, Name, AssetID
