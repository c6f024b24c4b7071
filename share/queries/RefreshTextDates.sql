UPDATE Reservation
SET TextStart = IIf(Start Is Null, Null, Format(Start)), TextEnd = IIf(End Is Null, Null, Format(End))
WHERE StrComp(Nz(TextStart, ""), Nz(Format(Start), ""), 0) <> 0
    Or StrComp(Nz(TextEnd, ""), Nz(Format(End), ""), 0) <> 0
