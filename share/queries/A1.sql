PARAMETERS RStart DateTime, REnd DateTime;
SELECT AreaName, EventType, Organization, Perm, Name
FROM
   (SELECT Asset.AssetID, [Asset/Area].AreaName, Chosen.Organization, Asset.Name,
        IIf(Chosen.ID Is Null, (SELECT Min(Allowed.EventType) FROM [Asset/Event] AS Allowed
                                WHERE Allowed.AssetID = Asset.AssetID), Chosen.EventType) AS EventType,
        IIf(Chosen.ID Is Null, -2, IIf(Chosen.Permanent, -1, 0)) AS Perm
    FROM (Asset LEFT JOIN [Asset/Area] ON [Asset/Area].AssetID = Asset.AssetID) LEFT JOIN
    (SELECT Mine.ID, Mine.Asset, Mine.LastName, Mine.FirstName, Mine.EventType, Mine.Organization, Mine.Permanent
     FROM Reservation AS Mine LEFT JOIN
        (SELECT DISTINCT ID, Asset, Start, IIf(Permanent, 0, 1) AS Rank
         FROM Reservation
         WHERE End > RStart And Start < REnd
            And StrComp(Nz(EventType, ""), "UNUSED", 0) <> 0 And StrComp(Nz(EventType, ""), "UNAVAILABLE", 0) <> 0) AS Better
        ON Better.Asset = Mine.Asset And
            (Better.Rank < IIf(Mine.Permanent, 0, 1) Or Better.Rank = IIf(Mine.Permanent, 0, 1) And
                (Better.Start < Mine.Start Or Better.Start = Mine.Start And Better.ID < Mine.ID))
     WHERE Mine.End > RStart And Mine.Start < REnd
        And StrComp(Nz(Mine.EventType, ""), "UNUSED", 0) <> 0 And StrComp(Nz(Mine.EventType, ""), "UNAVAILABLE", 0) <> 0
        And Better.ID Is Null) AS Chosen
    ON Chosen.Asset = Asset.AssetID
    WHERE Asset.Location And StrComp(Left(Nz(Asset.Name, ""), 6), "Unused", 0) <> 0) AS Places
ORDER BY Nz(AreaName, ""), Nz(EventType, ""), Nz(Organization, ""), Perm, Name, AssetID
