PARAMETERS RStart DateTime, REnd DateTime;
SELECT Asset.AssetID, Asset.Name, Asset.Location, Reservation.EventType, Reservation.Name,
    Reservation.Start, Reservation.End, Reservation.Organization, Reservation.Permanent, Reservation.Attendees,
    Reservation.LastName, Reservation.FirstName, Person.Storage, Person.Extension, Asset.DefaultExtension,
    Asset.Jack, Asset.Port, Asset.StationType, Asset.SwitchInterface, Reservation.ID,
    Reservation.SLockStart, Reservation.SLockEnd, Reservation.TLockStart, Reservation.TLockEnd
FROM (Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset)
    LEFT JOIN Person ON Person.LastName = Reservation.LastName And Person.FirstName = Reservation.FirstName
WHERE Reservation.Start >= RStart And Reservation.Start < REnd
ORDER BY Reservation.Start, Asset.Name, Reservation.ID
