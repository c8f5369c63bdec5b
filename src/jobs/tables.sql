CREATE TABLE Job (
    JobNo COUNTER PRIMARY KEY,
    CustID LONG,
    PONo TEXT(40),
    Description TEXT(255),
    PartNo TEXT(60),
    Material MEMO,
    TravelerNotes MEMO,
    JobNotes MEMO,
    Quantity LONG,
    JobShopRate CURRENCY,
    OneShopRate YESNO,
    OrderRequired YESNO,
    QtyQuotedPrice CURRENCY,
    JobDateIn DATETIME,
    JobDueDate DATETIME,
    TotalHours DOUBLE,
    JobShopCost CURRENCY,
    InvoiceEach CURRENCY,
    InvoiceTotal CURRENCY,
    Shipped YESNO,
    ShipDate DATETIME,
    EstNo LONG DEFAULT 0,
    AssemblyJobNo LONG DEFAULT 0,
    ScheduleZoom INTEGER,
    SchedulePeriod INTEGER
);

CREATE TABLE JobOper (
    ID COUNTER PRIMARY KEY,
    JobNo LONG,
    SeqNo INTEGER,
    OperNo LONG,
    OperTime_Amount DOUBLE DEFAULT 0,
    OperShopRate CURRENCY,
    OperLocated INTEGER DEFAULT 0,
    Status TEXT(1),
    EstOper DOUBLE
);

CREATE TABLE JobMiscCost (
    JobNo LONG,
    ItemNo LONG,
    UnitofMeasure TEXT(20),
    UnitPrice CURRENCY,
    Quantity CURRENCY,
    CostAmount CURRENCY
);

CREATE TABLE JobOperNote (
    ID LONG DEFAULT 0,
    JobNo LONG DEFAULT 0,
    SeqNo INTEGER DEFAULT 0,
    OperNotes MEMO
);

CREATE TABLE JobShip (
    JobShipID COUNTER PRIMARY KEY,
    JobNo LONG,
    ShippedDate DATETIME,
    Quantity LONG,
    ShippedByEmpID LONG
);

CREATE INDEX Job_CustID ON Job (CustID);
CREATE INDEX Job_PONo ON Job (PONo);
CREATE INDEX Job_PartNo ON Job (PartNo);
CREATE INDEX Job_EstNo ON Job (EstNo);
CREATE INDEX Job_Shipped_JobNo ON Job (Shipped, JobNo);
CREATE INDEX Job_JobDueDate ON Job (JobDueDate);
CREATE INDEX Job_ShipDate ON Job (ShipDate);
CREATE INDEX Job_JobDateIn ON Job (JobDateIn);
CREATE INDEX Job_AssemblyJobNo ON Job (AssemblyJobNo);
CREATE INDEX JobOper_JobNo_SeqNo ON JobOper (JobNo, SeqNo);
CREATE INDEX JobOper_OperNo_JobNo ON JobOper (OperNo, JobNo);
CREATE INDEX JobMiscCost_JobNo_ItemNo ON JobMiscCost (JobNo, ItemNo);
CREATE INDEX JobMiscCost_ItemNo ON JobMiscCost (ItemNo);
CREATE INDEX JobOperNote_JobNo_SeqNo ON JobOperNote (JobNo, SeqNo);
CREATE INDEX JobOperNote_SeqNo ON JobOperNote (SeqNo);
CREATE INDEX JobOperNote_ID ON JobOperNote (ID);
CREATE INDEX JobShip_JobNo ON JobShip (JobNo);
