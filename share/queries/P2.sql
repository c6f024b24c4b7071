PARAMETERS RStart DateTime, REnd DateTime;
SELECT Area2, Organization, EventType, Perm, LastName, FirstName, Name
FROM
   (SELECT Person.Area2, Chosen.Organization, Person.LastName, Person.FirstName, Asset.Name,
        IIf(Chosen.ID Is Null, Person.EventType, Chosen.EventType) AS EventType,
        IIf(Chosen.ID Is Null, -2, IIf(Chosen.Permanent, -1, 0)) AS Perm
    FROM (Person LEFT JOIN
    (SELECT Mine.ID, Mine.Asset, Mine.LastName, Mine.FirstName, Mine.EventType, Mine.Organization, Mine.Permanent
     FROM Reservation AS Mine LEFT JOIN
        (SELECT DISTINCT ID, LastName, FirstName, Start, IIf(Permanent, 0, 1) AS Rank
         FROM Reservation
         WHERE End > RStart And Start < REnd
            And StrComp(Nz(EventType, ""), "UNUSED", 0) <> 0 And StrComp(Nz(EventType, ""), "UNAVAILABLE", 0) <> 0) AS Better
        ON Better.LastName = Mine.LastName And Better.FirstName = Mine.FirstName And
            (Better.Rank < IIf(Mine.Permanent, 0, 1) Or Better.Rank = IIf(Mine.Permanent, 0, 1) And
                (Better.Start < Mine.Start Or Better.Start = Mine.Start And Better.ID < Mine.ID))
     WHERE Mine.End > RStart And Mine.Start < REnd
        And StrComp(Nz(Mine.EventType, ""), "UNUSED", 0) <> 0 And StrComp(Nz(Mine.EventType, ""), "UNAVAILABLE", 0) <> 0
        And Better.ID Is Null) AS Chosen
    ON Chosen.LastName = Person.LastName And Chosen.FirstName = Person.FirstName)
    LEFT JOIN Asset ON Asset.AssetID = Chosen.Asset) AS Persons
ORDER BY Nz(Area2, ""), Nz(Organization, ""), Nz(EventType, ""), Perm, LastName, FirstName
