SELECT [Asset/StandardNote].AssetID, StandardNotes.*
FROM [Asset/StandardNote] INNER JOIN StandardNotes ON StandardNotes.Name = [Asset/StandardNote].StandardNote
