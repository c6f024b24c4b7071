PARAMETERS RStart DateTime, REnd DateTime;
SELECT Asset.Name, Asset.Location, Reservation.Start, Reservation.End, Reservation.Permanent, Reservation.EventType,
    Reservation.LastName, Reservation.FirstName, Reservation.Organization
FROM Asset LEFT JOIN
    (SELECT DISTINCT ID, Asset, Start, End, Permanent, EventType, LastName, FirstName, Organization
     FROM Reservation
     WHERE End > RStart And Start < REnd) AS Reservation
    ON Reservation.Asset = Asset.AssetID
ORDER BY Asset.Name, Reservation.Start, Reservation.ID, Asset.AssetID
