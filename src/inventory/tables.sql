CREATE TABLE Items (
    ID COUNTER PRIMARY KEY,
    Description TEXT(255),
    PartNumber TEXT(60),
    Manufacturer TEXT(255),
    Units TEXT(20),
    Quantity LONG,
    PricePer CURRENCY,
    FlagQuantity LONG,
    [Type] LONG,
    Location LONG
);

CREATE TABLE ItemTypes (
    ID COUNTER PRIMARY KEY,
    Description TEXT(255),
    Parent LONG
);

CREATE TABLE ItemLocations (
    ID COUNTER PRIMARY KEY,
    Description TEXT(255),
    Parent LONG
);

CREATE TABLE ItemIssue (
    ID COUNTER PRIMARY KEY,
    ItemID LONG,
    Quantity LONG,
    Employee LONG,
    [Date] DATETIME,
    IssueTo LONG,
    [Type] TEXT(255)
);

CREATE TABLE ItemReStock (
    ID COUNTER PRIMARY KEY,
    ItemID LONG,
    Quantity LONG,
    Employee LONG,
    [Date] DATETIME,
    [Type] TEXT(255),
    [Number] LONG,
    Vendor LONG
);

CREATE TABLE ItemQuery (
    ID LONG
);

CREATE TABLE SpareParts (
    [Index] COUNTER PRIMARY KEY,
    SCustID LONG,
    SLocation TEXT(60),
    SPartNo TEXT(60),
    SJobNo LONG,
    SPoNo TEXT(40),
    SSpareQty LONG,
    SJobQty LONG,
    SparePrice CURRENCY,
    SpareTotPrice CURRENCY,
    SEmpID LONG,
    SDate DATETIME,
    Notes MEMO
);

CREATE INDEX Items_Type ON Items (Type);
CREATE INDEX Items_Location ON Items (Location);
CREATE INDEX Items_PartNumber ON Items (PartNumber);
CREATE INDEX Items_Description ON Items (Description);
CREATE INDEX Items_Manufacturer ON Items (Manufacturer);
CREATE INDEX ItemTypes_Parent ON ItemTypes (Parent);
CREATE INDEX ItemLocations_Parent ON ItemLocations (Parent);
CREATE INDEX ItemIssue_ItemID ON ItemIssue (ItemID);
CREATE INDEX ItemIssue_IssueTo ON ItemIssue (IssueTo);
CREATE INDEX ItemIssue_Date ON ItemIssue ([Date]);
CREATE INDEX ItemReStock_ItemID ON ItemReStock (ItemID);
CREATE INDEX ItemReStock_Date ON ItemReStock ([Date]);
CREATE INDEX SpareParts_SCustID ON SpareParts (SCustID);
CREATE INDEX SpareParts_SPartNo ON SpareParts (SPartNo);
CREATE INDEX SpareParts_SJobNo ON SpareParts (SJobNo);
