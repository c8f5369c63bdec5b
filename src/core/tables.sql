CREATE TABLE Users (
    ID COUNTER PRIMARY KEY,
    UserID TEXT(10),
    username TEXT(30),
    password TEXT(10),
    usergroupid LONG DEFAULT 0
);

CREATE TABLE [Groups] (
    groupid COUNTER PRIMARY KEY,
    groupname TEXT(30)
);

CREATE TABLE SecurityObjects (
    objectid LONG PRIMARY KEY,
    objectname TEXT(80),
    securitycode TEXT(255),
    displayorder LONG
);

CREATE TABLE SecurityUsers (
    id LONG,
    objectID LONG
);

CREATE TABLE SecurityGroups (
    groupid LONG,
    objectID LONG
);

CREATE TABLE SystemSettings (
    CompanyName TEXT(80),
    CompanyAddress1 TEXT(60),
    CompanyAddress2 TEXT(60),
    CompanyCity TEXT(40),
    CompanyState TEXT(40),
    companycountry TEXT(40),
    companyzip TEXT(15),
    CompanyPhone TEXT(30),
    CompanyFax TEXT(30),
    CompanyEmail TEXT(80),
    Terms TEXT(60),
    FOB TEXT(60),
    Shipping TEXT(60),
    qteHeader TEXT(255),
    qtevmessage TEXT(255),
    vTerms TEXT(60),
    vFOB TEXT(60),
    vShipping TEXT(60),
    poshiptoname TEXT(80),
    poshiptoaddress1 TEXT(60),
    poshiptoaddress2 TEXT(60),
    poshiptoaddress3 TEXT(60),
    poshiptocity TEXT(40),
    poshiptostate TEXT(40),
    poshiptoemail TEXT(80),
    poshiptocountry TEXT(40),
    poshiptozip TEXT(15),
    EstOneRate CURRENCY,
    jobonerate CURRENCY,
    ArchiveMonths INTEGER,
    Securityon YESNO,
    SecurityCode TEXT(2),
    partsqtyon YESNO,
    HoursOverPercent INTEGER DEFAULT 25,
    LargeNumbers YESNO,
    JournalDays INTEGER DEFAULT 365,
    PapersFolder TEXT(255)
);

CREATE TABLE History (
    ID COUNTER PRIMARY KEY,
    [Type] TEXT(255),
    Job LONG,
    Est LONG,
    RFQ TEXT(255),
    PO TEXT(255)
);

CREATE TABLE UnitOfMeasure (
    [index] COUNTER PRIMARY KEY,
    code TEXT(40),
    description TEXT(255)
);

CREATE TABLE LineItemType (
    [index] COUNTER PRIMARY KEY,
    Code TEXT(40),
    Description TEXT(255)
);

CREATE TABLE Terms (
    [index] COUNTER PRIMARY KEY,
    description TEXT(255),
    netdue LONG,
    QBSent INTEGER DEFAULT 0
);

CREATE TABLE ScrapReasons (
    id COUNTER PRIMARY KEY,
    description TEXT(255)
);

CREATE TABLE Manufacturer (
    ID COUNTER PRIMARY KEY,
    Company TEXT(80)
);

CREATE TABLE Country (
    id COUNTER PRIMARY KEY,
    country TEXT(40),
    code TEXT(40)
);

CREATE TABLE States (
    id COUNTER PRIMARY KEY,
    description TEXT(255),
    code TEXT(40)
);

CREATE TABLE Journal (
    ID COUNTER PRIMARY KEY,
    [At] DATETIME,
    Who TEXT(60),
    TableName TEXT(30),
    RowKey TEXT(40),
    Record LONG,
    [Action] TEXT(1),
    Changes MEMO
);

CREATE TABLE Writer (
    ID LONG PRIMARY KEY,
    Who TEXT(60),
    [At] DATETIME
);

CREATE TABLE Papers (
    ID COUNTER PRIMARY KEY,
    Kind TEXT(10),
    Record LONG,
    FileName TEXT(255),
    Hash TEXT(64),
    Bytes LONG,
    Behind YESNO,
    Added DATETIME,
    AddedBy TEXT(60)
);

CREATE INDEX Papers_Record_Kind ON Papers (Record, Kind);
DROP INDEX Journal_Record_TableName;
CREATE INDEX Journal_Record ON Journal (Record);
CREATE INDEX Journal_At ON Journal ([At]);
CREATE INDEX Users_UserID ON Users (UserID);
CREATE INDEX SecurityUsers_id ON SecurityUsers (id);
CREATE INDEX SecurityGroups_groupid ON SecurityGroups (groupid);
