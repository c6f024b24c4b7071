PARAMETERS RStart DateTime, REnd DateTime;
SELECT * FROM DailyReservations
WHERE Start >= RStart And Start < REnd
ORDER BY Start, Asset.Name, ID
