PARAMETERS RStart DateTime, REnd DateTime;
SELECT * FROM DailyReservations
WHERE End > RStart And End <= REnd
ORDER BY End, Asset.Name, ID
