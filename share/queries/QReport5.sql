PARAMETERS RStart DateTime, REnd DateTime;
SELECT * FROM DailyReservations
WHERE (Start >= RStart And Start < REnd) Or (End > RStart And End <= REnd)
ORDER BY Asset.Name, Start, ID
