CREATE INDEX Items_Description_Pieces ON Items USING gin ((Description::text) gin_trgm_ops);
CREATE INDEX Items_PartNumber_Pieces ON Items USING gin ((PartNumber::text) gin_trgm_ops);
CREATE INDEX SpareParts_SPartNo_Pieces ON SpareParts USING gin ((SPartNo::text) gin_trgm_ops);
