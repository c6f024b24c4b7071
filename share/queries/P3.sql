PARAMETERS RStart DateTime, REnd DateTime;
SELECT Area3, Organization, EventType, Perm, LastName, FirstName, Name
FROM
   (SELECT Occupant.Area3, Chosen.Organization, Occupant.LastName, Occupant.FirstName, Asset.Name,
        IIf(Chosen.ID Is Null, Occupant.EventType, Chosen.EventType) AS EventType,
        IIf(Chosen.ID Is Null, -2, IIf(Chosen.Permanent, -1, 0)) AS Perm
    FROM ((SELECT DISTINCT Person.LastName, Person.FirstName, Person.Area3, Person.EventType,
               (SELECT TOP 1 Mine.ID
                FROM (SELECT DISTINCT ID, LastName, FirstName, Start, IIf(Permanent, 0, 1) AS Rank
                      FROM Reservation
                      WHERE End > RStart And Start < REnd
                          And StrComp(Nz(EventType, ""), "UNUSED", 0) <> 0
                          And StrComp(Nz(EventType, ""), "UNAVAILABLE", 0) <> 0) AS Mine
                WHERE Mine.LastName = Person.LastName And Mine.FirstName = Person.FirstName
                ORDER BY Mine.Rank, Mine.Start, Mine.ID) AS Best
           FROM Person) AS Occupant
        LEFT JOIN Reservation AS Chosen ON Chosen.ID = Occupant.Best)
        LEFT JOIN Asset ON Asset.AssetID = Chosen.Asset) AS Persons
ORDER BY Nz(Area3, ""), Nz(Organization, ""), Nz(EventType, ""), Perm, LastName, FirstName
