CREATE TABLE Sign_in (
    ID COUNTER PRIMARY KEY,
    EmpID LONG,
    Sign_in DATETIME,
    Sign_out DATETIME
);

CREATE TABLE Timelog (
    ID COUNTER PRIMARY KEY,
    EmpID LONG,
    JobNo LONG,
    OperNo LONG,
    SignID LONG,
    CotrNo LONG,
    AccumTime DOUBLE,
    Status TEXT(1),
    StartDate DATETIME,
    SuspDate DATETIME,
    FinishDate DATETIME,
    PartsQty DOUBLE,
    PartsScrap DOUBLE,
    SupervID LONG
);

CREATE TABLE Shifts (
    ID COUNTER PRIMARY KEY,
    Description TEXT(255),
    EarliestSignIn DATETIME,
    LatestSignOut DATETIME
);

CREATE TABLE ShiftsTimer (
    ShiftsID LONG,
    RunTime TEXT(11),
    RunType TEXT(10)
);

CREATE INDEX Sign_in_EmpID_Sign_in ON Sign_in (EmpID, Sign_in);
CREATE INDEX Sign_in_Sign_in ON Sign_in (Sign_in);
CREATE INDEX Timelog_JobNo_OperNo ON Timelog (JobNo, OperNo);
CREATE INDEX Timelog_EmpID_StartDate ON Timelog (EmpID, StartDate);
CREATE INDEX Timelog_SignID ON Timelog (SignID);
CREATE INDEX Timelog_OperNo ON Timelog (OperNo);
CREATE INDEX Timelog_CotrNo ON Timelog (CotrNo);
CREATE INDEX Timelog_StartDate ON Timelog (StartDate);
CREATE INDEX Timelog_Status_EmpID ON Timelog (Status, EmpID);
CREATE INDEX ShiftsTimer_ShiftsID ON ShiftsTimer (ShiftsID);
