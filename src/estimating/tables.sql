CREATE TABLE Operation (
    OperNo COUNTER PRIMARY KEY,
    Description TEXT(255),
    OperType TEXT(1),
    OperShopRate CURRENCY,
    operdepartment_id LONG
);

CREATE TABLE OperDepartment (
    id COUNTER PRIMARY KEY,
    department TEXT(255)
);

CREATE TABLE OperNote (
    OperNo LONG,
    [Note] MEMO
);

CREATE TABLE Estimate (
    EstNo COUNTER PRIMARY KEY,
    CustID LONG,
    RFQNo TEXT(40),
    PONo TEXT(40),
    Description TEXT(255),
    PartNo TEXT(60),
    Material MEMO,
    Quantity LONG,
    EstDate DATETIME,
    EstShopRate CURRENCY,
    OneShopRate YESNO,
    QtyBreakA DOUBLE,
    QtyBreakB DOUBLE,
    QtyBreakC DOUBLE,
    QtyBreakD DOUBLE,
    QtyBreakE DOUBLE,
    QtyDiscountA DOUBLE,
    QtyDiscountB DOUBLE,
    QtyDiscountC DOUBLE,
    QtyDiscountD DOUBLE,
    QtyDiscountE DOUBLE,
    QtyPriceA CURRENCY,
    QtyPriceB CURRENCY,
    QtyPriceC CURRENCY,
    QtyPriceD CURRENCY,
    QtyPriceE CURRENCY,
    QtyQPA CURRENCY,
    QtyQPB CURRENCY,
    QtyQPC CURRENCY,
    QtyQPD CURRENCY,
    QtyQPE CURRENCY,
    QtyTotalA CURRENCY,
    QtyTotalB CURRENCY,
    QtyTotalC CURRENCY,
    QtyTotalD CURRENCY,
    QtyTotalE CURRENCY,
    EstNotes MEMO,
    TravelerNotes MEMO,
    JobNotes MEMO,
    AssemblyEstno LONG DEFAULT 0
);

CREATE TABLE RfqNotes (
    CustID LONG,
    RFQNo TEXT(40),
    rfqnotes MEMO
);

CREATE TABLE EstOper (
    ID COUNTER PRIMARY KEY,
    EstNo LONG,
    SeqNo INTEGER,
    OperNo LONG,
    OperTime_Amount DOUBLE,
    OperShopRate CURRENCY
);

CREATE TABLE EstMiscCost (
    EstNo LONG,
    ItemNo LONG,
    UnitofMeasure TEXT(20),
    UnitPrice CURRENCY,
    Quantity CURRENCY,
    CostAmount CURRENCY
);

CREATE TABLE EstOperNote (
    ID LONG DEFAULT 0,
    EstNo LONG DEFAULT 0,
    SeqNo INTEGER DEFAULT 0,
    OperNotes MEMO
);

CREATE TABLE MiscItems (
    ItemNo COUNTER PRIMARY KEY,
    Description TEXT(255),
    UnitOfMeasure TEXT(11),
    UnitPrice CURRENCY
);

CREATE TABLE DefaultSet (
    SetNo COUNTER PRIMARY KEY,
    SetDescription TEXT(255)
);

CREATE TABLE DefaultSetOper (
    SetNo LONG,
    OperNo LONG,
    SeqNo INTEGER
);

CREATE INDEX Operation_Description ON Operation (Description);
CREATE INDEX Operation_operdepartment_id ON Operation (operdepartment_id);
CREATE INDEX OperNote_OperNo ON OperNote (OperNo);
CREATE INDEX Estimate_CustID_RFQNo ON Estimate (CustID, RFQNo);
CREATE INDEX Estimate_EstDate ON Estimate (EstDate);
CREATE INDEX Estimate_PartNo ON Estimate (PartNo);
CREATE INDEX Estimate_AssemblyEstno ON Estimate (AssemblyEstno);
CREATE INDEX RfqNotes_CustID_RFQNo ON RfqNotes (CustID, RFQNo);
CREATE INDEX EstOper_EstNo_SeqNo ON EstOper (EstNo, SeqNo);
CREATE INDEX EstOper_OperNo ON EstOper (OperNo);
CREATE INDEX EstMiscCost_EstNo_ItemNo ON EstMiscCost (EstNo, ItemNo);
CREATE INDEX EstMiscCost_ItemNo ON EstMiscCost (ItemNo);
CREATE INDEX EstOperNote_EstNo_SeqNo ON EstOperNote (EstNo, SeqNo);
CREATE INDEX EstOperNote_SeqNo ON EstOperNote (SeqNo);
CREATE INDEX EstOperNote_ID ON EstOperNote (ID);
CREATE INDEX MiscItems_Description ON MiscItems (Description);
CREATE INDEX DefaultSetOper_SetNo_SeqNo ON DefaultSetOper (SetNo, SeqNo);
CREATE INDEX DefaultSetOper_OperNo ON DefaultSetOper (OperNo);
