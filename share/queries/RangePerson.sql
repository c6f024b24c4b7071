PARAMETERS RStart DateTime, REnd DateTime;
SELECT Person.LastName, Person.FirstName, Asset.Name, Person.Phone, Person.Extension, Reservation.Organization,
    Reservation.EventType, Reservation.Start, Reservation.End, Reservation.Permanent
FROM (Person LEFT JOIN
    (SELECT DISTINCT ID, Asset, Start, End, Permanent, EventType, LastName, FirstName, Organization
     FROM Reservation
     WHERE End > RStart And Start < REnd) AS Reservation
    ON Reservation.LastName = Person.LastName And Reservation.FirstName = Person.FirstName)
    LEFT JOIN Asset ON Asset.AssetID = Reservation.Asset
ORDER BY Person.LastName, Person.FirstName, Reservation.Start, Reservation.ID
