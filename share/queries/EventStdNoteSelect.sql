SELECT [Event/StandardNote].EventType, StandardNotes.*
FROM [Event/StandardNote] INNER JOIN StandardNotes ON StandardNotes.Name = [Event/StandardNote].StandardNote
