CREATE TABLE RFQ (
    PONumber COUNTER PRIMARY KEY,
    Title TEXT(80),
    PODate DATETIME,
    ReqDate DATETIME,
    Complete YESNO,
    Ship2Name TEXT(80),
    Ship2Address1 TEXT(60),
    Ship2Address2 TEXT(60),
    Ship2Address3 TEXT(60),
    Ship2City TEXT(40),
    Ship2State TEXT(40),
    Ship2Zip TEXT(15),
    Ship2Country TEXT(40),
    Ship2Email TEXT(80)
);

CREATE TABLE RFQVendor (
    VOrderKey TEXT(24) PRIMARY KEY,
    OrderNumber LONG,
    VendorID LONG,
    Company TEXT(80),
    MailAddress1 TEXT(60),
    MailAddress2 TEXT(60),
    MailAddress3 TEXT(60),
    MailCity TEXT(40),
    MailState TEXT(40),
    MailZip TEXT(15),
    MailCountry TEXT(40),
    Contact TEXT(60),
    Phone TEXT(30),
    Fax TEXT(30),
    Terms TEXT(60),
    Shipping TEXT(60),
    FOB TEXT(60),
    Email TEXT(80),
    Notes MEMO
);

CREATE TABLE RFQItem (
    ItemKey TEXT(30) PRIMARY KEY,
    VOrderKey TEXT(24),
    OrderNumber LONG,
    VendorID LONG,
    ItemNumber INTEGER,
    Quantity LONG,
    PartNumber TEXT(60),
    Description TEXT(255),
    Manufacturer TEXT(255),
    DeliverySchedule MEMO,
    [Type] TEXT(255),
    UnitPrice CURRENCY,
    ItemTotal CURRENCY,
    ItemNotes MEMO,
    Estimate LONG,
    Job LONG,
    UnitOfMeasure TEXT(20)
);

CREATE TABLE PO (
    PONumber COUNTER PRIMARY KEY,
    Title TEXT(80),
    PODate DATETIME,
    ReqDate DATETIME,
    Complete YESNO,
    Ship2Name TEXT(80),
    Ship2Address1 TEXT(60),
    Ship2Address2 TEXT(60),
    Ship2Address3 TEXT(60),
    Ship2Country TEXT(40),
    Ship2City TEXT(40),
    Ship2State TEXT(40),
    Ship2Zip TEXT(15),
    Ship2Email TEXT(80),
    Active YESNO
);

CREATE TABLE POVendor (
    OrderNumber LONG,
    VendorID LONG,
    Company TEXT(80),
    MailAddress1 TEXT(60),
    MailAddress2 TEXT(60),
    MailAddress3 TEXT(60),
    MailCountry TEXT(40),
    MailCity TEXT(40),
    MailState TEXT(40),
    MailZip TEXT(15),
    Contact TEXT(60),
    Terms TEXT(60),
    Shipping TEXT(60),
    FOB TEXT(60),
    Phone TEXT(30),
    Fax TEXT(30),
    Notes MEMO,
    Email TEXT(80)
);

CREATE TABLE POItem (
    ID COUNTER PRIMARY KEY,
    ItemKey TEXT(30),
    PONumber LONG,
    ItemNumber INTEGER,
    Quantity LONG,
    ReceivedQuantity LONG DEFAULT 0,
    PartNumber TEXT(60),
    Description TEXT(255),
    Manufacturer TEXT(255),
    DeliverySchedule MEMO,
    ItemNotes MEMO,
    [Type] TEXT(255),
    Estimate LONG DEFAULT 0,
    Job LONG DEFAULT 0,
    UnitOfMeasure TEXT(20),
    UnitPrice CURRENCY,
    ItemTotal CURRENCY
);

CREATE TABLE POReceived (
    ID COUNTER PRIMARY KEY,
    ItemID LONG,
    PONumber LONG,
    QtyRecvd LONG,
    [Date] DATETIME,
    EmpID LONG,
    StockInventory YESNO
);

CREATE INDEX RFQVendor_OrderNumber ON RFQVendor (OrderNumber);
CREATE INDEX RFQVendor_VendorID ON RFQVendor (VendorID);
CREATE INDEX RFQItem_VOrderKey ON RFQItem (VOrderKey);
CREATE INDEX RFQItem_OrderNumber ON RFQItem (OrderNumber);
CREATE INDEX RFQItem_PartNumber ON RFQItem (PartNumber);
CREATE INDEX RFQItem_Job ON RFQItem (Job);
CREATE INDEX RFQItem_Estimate ON RFQItem (Estimate);
CREATE INDEX RFQItem_Manufacturer ON RFQItem (Manufacturer);
CREATE INDEX PO_Active ON PO (Active);
CREATE INDEX PO_PODate ON PO (PODate);
CREATE INDEX POVendor_OrderNumber ON POVendor (OrderNumber);
CREATE INDEX POVendor_VendorID ON POVendor (VendorID);
CREATE INDEX POItem_PONumber_ItemNumber ON POItem (PONumber, ItemNumber);
CREATE INDEX POItem_ItemKey ON POItem (ItemKey);
CREATE INDEX POItem_PartNumber ON POItem (PartNumber);
CREATE INDEX POItem_Job ON POItem (Job);
CREATE INDEX POItem_Estimate ON POItem (Estimate);
CREATE INDEX POItem_Manufacturer ON POItem (Manufacturer);
CREATE INDEX POReceived_PONumber ON POReceived (PONumber);
CREATE INDEX POReceived_ItemID ON POReceived (ItemID);
CREATE INDEX POReceived_Date ON POReceived ([Date]);
