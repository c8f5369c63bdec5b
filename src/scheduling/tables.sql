CREATE TABLE JobOperSchedule (
    ID COUNTER PRIMARY KEY,
    JobNo LONG,
    SeqNo INTEGER,
    OperNo LONG,
    Description TEXT(255),
    TextAlign INTEGER,
    StartDate DATETIME,
    StartTime TEXT(11),
    EndDate DATETIME,
    EndTime TEXT(11)
);

CREATE TABLE ScheduleView (
    JobNo LONG
);

CREATE INDEX JobOperSchedule_JobNo_SeqNo ON JobOperSchedule (JobNo, SeqNo);
CREATE INDEX JobOperSchedule_SeqNo ON JobOperSchedule (SeqNo);
CREATE INDEX JobOperSchedule_StartDate ON JobOperSchedule (StartDate);
CREATE INDEX ScheduleView_JobNo ON ScheduleView (JobNo);
