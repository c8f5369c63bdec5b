CREATE TABLE Reports (
    [Name] TEXT(80),
    Description TEXT(255),
    Module TEXT(30),
    FileName TEXT(80),
    OEM INTEGER DEFAULT 0,
    [Default] YESNO
);

CREATE INDEX Reports_Module ON Reports (Module);
