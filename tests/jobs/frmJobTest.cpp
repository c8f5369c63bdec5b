#include "JobScreen.h"
#include "platform/controls/ListView.h"
#include "platform/values/Literals.h"

#include <QProcess>

using screen::Answer;
using screen::Buttons;

namespace {

class Jobs : public JobScreen {};

TEST_P(Jobs, ASaveMovesNotesAndScheduleAndDropsWhatWasRemoved) {
    openJobs();
    edit();
    insertBefore(0);
    EXPECT_EQ(bars(), QStringList({s(u"2|bar 1"), s(u"3|bar 2"), s(u"4|bar 3")}));
    removeRow(2, u"Milling");
    EXPECT_EQ(bars(), QStringList({s(u"2|bar 1"), s(u"0|bar 2"), s(u"3|bar 3")}));
    EXPECT_EQ(notes(m_job), QStringList({s(u"0|note 2"), s(u"2|note 1"), s(u"3|note 3")}));
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"BROWSE"));
    EXPECT_EQ(bound(m_job),
              QStringList({s(u"1|Turning|"), s(u"2|Boring|note 1"), s(u"3|Plating|note 3")}));
    EXPECT_EQ(notes(m_job).size(), 2);
    EXPECT_EQ(bars(), QStringList({s(u"2|bar 1"), s(u"3|bar 3")}));
    EXPECT_EQ(rows(s(u"SELECT JobShopCost, InvoiceTotal FROM Job")), QStringList(s(u"10|100")));
}

TEST_P(Jobs, TabGoesThroughTheJobAsItReads) {
    openJobs();
    edit();
    EXPECT_EQ(
        tabOrder().join(u' '),
        s(u"dbcCustomer txtPONo txtPartno txtDescription txtJobDateIn txtJobDueDate "
          u"txtQuantity txtJobShopRate chkSequential chkShipped txtShipDate qt_tabwidget_tabbar "
          u"txtMaterial sprOper cmdOper(0) cmdOper(1) cmdOperRate(0) cmdOperRate(1) "
          u"sprMisc cmdMisc(0) cmdMisc(1) txtInvoiceEach cmdSave cmdCancel"));
    cancel();
}

TEST_P(Jobs, CancelBringsNotesBackButNotTheSchedule) {
    openJobs();
    edit();
    removeRow(1, u"Milling");
    insertBefore(0);
    type(s(u"txtDescription"), s(u"typed in vain"));
    cancel();
    EXPECT_EQ(bound(m_job),
              QStringList({s(u"1|Boring|note 1"), s(u"2|Milling|note 2"), s(u"3|Plating|note 3")}));
    EXPECT_EQ(notes(m_job), QStringList({s(u"1|note 1"), s(u"2|note 2"), s(u"3|note 3")}));
    EXPECT_EQ(bars(), QStringList({s(u"2|bar 1"), s(u"0|bar 2"), s(u"3|bar 3")}));
    EXPECT_EQ(text(s(u"txtDescription")), QString());

    edit();
    save();
    EXPECT_EQ(bars(), QStringList({s(u"2|bar 1"), s(u"3|bar 3")}));
}

TEST_P(Jobs, TheRowInsertedIsTheOneSelectedInASortedList) {
    const qint64 other = job(m_acme, s(u"other"), 1);
    jobOper(other, 1, m_operations[1]);
    openJobs();
    edit();
    whenShown(s(u"frmInsOper"), [this] {
        control<controls::ListView>(s(u"lstOper"))->sortByColumn(0, Qt::DescendingOrder);
        EXPECT_EQ(cell(s(u"lstOper"), 0, 0), s(u"Turning"));
        selectRow(s(u"lstOper"), 0);
        press(s(u"cmdOK"));
    });
    press(s(u"cmdOper(0)"));
    EXPECT_EQ(cell(s(u"sprOper"), 1, descriptionColumn), s(u"Turning"));
    cancel();
}

TEST_P(Jobs, BookedTimeHoldsOperationAndJob) {
    time(m_job, m_operations[0], s(u"1.5"));
    openJobs();
    edit();
    control<controls::Grid>(s(u"sprOper"))->setActiveRow(0);
    expectBoxContaining(s(u"Time Management record(s) exists for this job operation."));
    press(s(u"cmdOper(1)"));
    EXPECT_EQ(rowCount(s(u"sprOper")), 3);
    auto* grid = control<controls::Grid>(s(u"sprOper"));
    EXPECT_TRUE(grid->isCellLocked(0, timeColumn));
    EXPECT_FALSE(grid->isCellLocked(2, timeColumn));
    EXPECT_FALSE(grid->isCellLocked(0, estimatedColumn));
    setCell(s(u"sprOper"), 2, timeColumn, s(u"250"));
    EXPECT_EQ(text(s(u"lblCalc_OutContr")), s(u"250.00"));
    save();
    EXPECT_EQ(rows(s(u"SELECT OperTime_Amount FROM JobOper ORDER BY SeqNo")),
              QStringList({s(u"1.5"), s(u"0"), s(u"250")}));
    EXPECT_EQ(text(s(u"lblTotalHours")), s(u"1.50"));
    EXPECT_EQ(text(s(u"lblJobShopCost")), s(u"32.5000"));

    expectBoxContaining(s(u"Time Management records exist for this job."));
    press(s(u"cmdDelete"));
    database().execute(s(u"DELETE * FROM Timelog"));
    database().execute(u"INSERT INTO JobShip (JobNo, Quantity) VALUES(%1,1)"_s.arg(m_job));
    job(m_acme, s(u"other"), 1);
    expectBox(s(u"You are about to delete the current Job. Are you sure?"), Answer::Yes,
              s(u"Delete"));
    press(s(u"cmdDelete"));
    for (const char16_t* table : {u"JobOper", u"JobOperNote", u"JobMiscCost"})
        EXPECT_FALSE(database().hasRows(s(u"SELECT * FROM ") + s(table)));
    EXPECT_EQ(rows(s(u"SELECT PartNo FROM Job")), QStringList(s(u"other")));
    EXPECT_TRUE(database().hasRows(s(u"SELECT * FROM JobShip")));
    EXPECT_EQ(bars().size(), 3);
}

TEST_P(Jobs, AShippedJobLeavesTheActiveView) {
    const qint64 next = job(m_acme, s(u"next"), 1);
    jobOper(next, 1, m_operations[0]);
    const qint64 part = job(m_acme, s(u"sub"), 1);
    jobOper(part, 1, m_operations[0]);
    database().execute(
        u"UPDATE Job SET AssemblyJobNo = %1 WHERE JobNo = %2"_s.arg(m_job).arg(part));
    core::RecordScreen* screen = openJobs();
    ASSERT_TRUE(screen->goToRecord(m_job));
    EXPECT_EQ(text(s(u"lblAssembly")), s(u"ASSY"));
    edit();
    EXPECT_TRUE(isLocked(s(u"txtShipDate")));
    check(s(u"chkShipped"));
    expectBox(s(u"You may not ship a job on which other active jobs are dependent.\r\nPlease "
                u"check the assembly tree."));
    save();
    cancel();

    ASSERT_TRUE(screen->goToRecord(next));
    edit();
    check(s(u"chkShipped"));
    EXPECT_FALSE(isLocked(s(u"txtShipDate")));
    save();
    EXPECT_EQ(rows(u"SELECT ShipDate FROM Job WHERE Shipped = True"_s),
              QStringList(s(u"3/9/2026")));
    EXPECT_NE(screen->currentKey(), next);
    EXPECT_NE(screen->currentKey(), 0);

    const qint64 before = screen->currentKey();
    const auto find = [&](qint64 number) {
        whenShown(s(u"frmJobFind"), [this, number] {
            EXPECT_EQ(form().windowTitle(), s(u"Find Job"));
            type(s(u"txtNo"), QString::number(number));
            press(s(u"cmdOK"));
        });
        press(s(u"cmdFind"));
    };
    expectBox(u"Job No. %1 is an Inactive Job!"_s.arg(next));
    find(next);
    expectBox(s(u"Job No. 98765 does not exist!"));
    find(98765);
    EXPECT_EQ(screen->currentKey(), before);
    press(s(u"optShow(1)"));
    EXPECT_EQ(screen->currentKey(), before);
    find(next);
    EXPECT_EQ(screen->currentKey(), next);
    EXPECT_TRUE(isChecked(s(u"chkShipped")));

    whenShown(s(u"frmJobFind"), [this] {
        type(s(u"txtNo"), s(u"12-3"));
        press(s(u"cmdOK"));
    });
    whenShown(s(u"frmJobFound"), [this] {
        EXPECT_EQ(rowCount(s(u"sprFound")), 1);
        press(s(u"cmdSelect"));
    });
    press(s(u"cmdGotoPart"));
    EXPECT_EQ(screen->currentKey(), m_job);
}

TEST_P(Jobs, ARowThatIsMovedOrComesBackKeepsItsNoteAndItsBars) {
    database().execute(
        u"UPDATE JobOperSchedule SET OperNo = %1 WHERE SeqNo = 2"_s.arg(m_operations[1]));
    openJobs();
    edit();
    removeRow(1, u"Milling");
    EXPECT_EQ(bars(), QStringList({s(u"1|bar 1"), s(u"0|bar 2"), s(u"2|bar 3")}));
    go(s(u"sprOper"));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bars(), QStringList({s(u"1|bar 1"), s(u"2|bar 2"), s(u"3|bar 3")}));
    control<controls::Grid>(s(u"sprOper"))->setActiveRow(0);
    key(Qt::Key_Down, Qt::AltModifier);
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(bars(), QStringList({s(u"3|bar 1"), s(u"1|bar 2"), s(u"2|bar 3")}));
    save();
    EXPECT_EQ(bound(m_job),
              QStringList({s(u"1|Milling|note 2"), s(u"2|Plating|note 3"), s(u"3|Boring|note 1")}));
}

TEST_P(Jobs, ACopyStartsAnewWithItsNotesJoined) {
    defaultNote(m_operations[0], s(u"Default"));
    database().execute(u"UPDATE JobOper SET Status = 'F', EstOper = 3.5"_s);
    database().execute(u"UPDATE Job SET EstNo = 77"_s);
    time(m_job, m_operations[0], s(u"2"));
    core::RecordScreen* screen = openJobs();
    edit();
    EXPECT_TRUE(control<controls::Grid>(s(u"sprOper"))->isCellLocked(0, estimatedColumn));
    cancel();
    whenShown(s(u"frmJobNew"), [this] {
        EXPECT_FALSE(isEnabled(s(u"chkCopyEstTimeAmt")));
        press(s(u"Option3"));
        check(s(u"chkCarryCus"));
        check(s(u"chkNotes"));
        check(s(u"chkDefault"));
        check(s(u"chkCopyEstTimeAmt"));
        press(s(u"cmdOK"));
    });
    expectBox(s(u"You are about to copy the current Job into a new Job. Are you sure?"),
              Answer::Yes);
    press(s(u"cmdNew"));
    EXPECT_EQ(text(s(u"lblJobNo")), s(u"New"));
    EXPECT_EQ(text(s(u"lblEstNo")), QString());
    EXPECT_EQ(screen->mode(), s(u"Add"));
    EXPECT_EQ(notes(0), QStringList({s(u"1|Default\r\nnote 1"), s(u"2|note 2"), s(u"3|note 3")}));
    removeRow(1, u"Milling");
    EXPECT_EQ(notes(0), QStringList({s(u"1|Default\r\nnote 1"), s(u"2|note 3")}));
    insertBefore(1);
    EXPECT_EQ(notes(0), QStringList({s(u"1|Default\r\nnote 1"), s(u"3|note 3")}));
    EXPECT_EQ(bars(), QStringList({s(u"1|bar 1"), s(u"2|bar 2"), s(u"3|bar 3")}))
        << "the schedule moves with a saved job only";
    removeRow(1, u"Milling");
    save();
    const qint64 copy = screen->currentKey();
    EXPECT_NE(copy, m_job);
    EXPECT_EQ(bound(copy), QStringList({s(u"1|Boring|Default\r\nnote 1"), s(u"2|Plating|note 3")}));
    EXPECT_EQ(rows(u"SELECT OperTime_Amount, Status, EstOper FROM JobOper WHERE "
                   "JobNo = %1 ORDER BY SeqNo"_s.arg(copy)),
              QStringList({s(u"0| |3.5"), s(u"0| |3.5")}));
    EXPECT_EQ(rows(u"SELECT PONo, CustID, EstNo, JobDateIn FROM Job WHERE JobNo = %1"_s.arg(copy)),
              QStringList(u"PO-7|%1|0|3/9/2026"_s.arg(m_acme)));
    EXPECT_EQ(notes(m_job).size(), 3);
}

TEST_P(Jobs, ANewJobIsCheckedFieldByField) {
    defaultNote(m_operations[3], s(u"Coolant on"));
    core::RecordScreen* screen = openJobs();
    whenShown(s(u"frmJobNew"), [this] {
        press(s(u"Option2"));
        press(s(u"cmdOK"));
    });
    whenShown(s(u"frmSelOper"), [this] {
        selectRow(s(u"lvwAvail"), 3);
        doubleClickRow(s(u"lvwAvail"), 3);
        press(s(u"cmdOK"));
    });
    press(s(u"cmdNew"));
    EXPECT_EQ(cell(s(u"sprOper"), 0, descriptionColumn), s(u"Turning"));
    EXPECT_TRUE(control<controls::Grid>(s(u"sprOper"))->hasPicture(0, noteColumn));
    EXPECT_EQ(text(s(u"txtJobShopRate")), s(u"60.00"));

    const auto refused = [this](const char16_t* message, const char16_t* field) {
        expectBox(s(message));
        save();
        EXPECT_EQ(focusName(), s(field));
    };
    refused(u"Please enter a PO No.", u"txtPONo");
    type(s(u"txtPONo"), s(u"PO-8"));
    refused(u"Please enter Part No.", u"txtPartno");
    type(s(u"txtPartno"), s(u"77-A"));
    refused(u"Please enter a Quantity greater than 0", u"txtQuantity");
    type(s(u"txtQuantity"), s(u"4"));
    refused(u"Please select a Customer", u"dbcCustomer");
    choose(s(u"dbcCustomer"), s(u"Acme"));
    refused(u"Please enter Due Date!", u"txtJobDueDate");
    type(s(u"txtJobDueDate"), s(u"3/30/2026"));
    type(s(u"txtInvoiceEach"), s(u"12.5"));
    leave();
    EXPECT_EQ(text(s(u"lblInvoiceTotal")), s(u"50.00"));
    save();
    EXPECT_EQ(bound(screen->currentKey()), QStringList(s(u"1|Turning|Coolant on")));
    EXPECT_EQ(rows(s(u"SELECT PONo, Quantity, InvoiceTotal, JobShopRate FROM Job WHERE PartNo = "
                     u"'77-A'")),
              QStringList(s(u"PO-8|4|50|60")));
}

TEST_P(Jobs, WhoMayNotSeeMoneyLosesNoneOfIt) {
    database().execute(s(u"UPDATE JobOper SET OperShopRate = 45 WHERE SeqNo = 1"));
    core::shared().CurrentUserName = s(u"pat");
    core::shared().CurrentUserNo = 4711;
    openJobs();
    for (const char16_t* name : {u"txtJobShopRate", u"txtInvoiceEach", u"lblInvoiceTotal",
                                 u"lblJobShopCost", u"lblQtyQuotedPrice", u"lblCalc_Fixed"})
        EXPECT_FALSE(isVisible(s(name)));
    EXPECT_TRUE(isVisible(s(u"lblTotalHours")));
    edit();
    type(s(u"txtDescription"), s(u"changed"));
    save();
    EXPECT_EQ(rows(s(u"SELECT Description, JobShopRate, InvoiceEach FROM Job")),
              QStringList(s(u"changed|50|10")));
    EXPECT_EQ(rows(s(u"SELECT OperTime_Amount, OperShopRate FROM JobOper ORDER BY SeqNo")),
              QStringList({s(u"0|45"), s(u"0|0"), s(u"100|0")}));
}

TEST_P(Jobs, AnotherStationsDeletionIsToldOnSave) {
    openJobs();
    edit();
    anotherStation()->execute(u"DELETE FROM Job WHERE JobNo = %1"_s.arg(m_job));
    expectBoxContaining(s(u"3167"));
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"EDIT"));
    EXPECT_EQ(bound(m_job).size(), 3);
    expectBoxContaining(s(u"Would you like to save"), Answer::No);
    form().unload();
}

TEST_P(Jobs, WhatTheFloorAndInventoryWriteMeanwhileStays) {
    const qint64 bolts = item(s(u"Bolts")), nuts = item(s(u"Nuts")), oil = item(s(u"Oil"));
    for (const qint64 one : {bolts, nuts})
        jobCost(m_job, one, s(u"4"));
    openJobs();
    edit();
    type(s(u"txtDescription"), s(u"Bracket, milled"));
    removeRow(2, u"Plating");
    control<controls::Grid>(s(u"sprMisc"))->setActiveRow(1);
    expectBox(s(u"Delete item Nuts?"), Answer::Yes);
    press(s(u"cmdMisc(1)"));

    const auto other = anotherStation();
    const QString where = u" WHERE JobNo = "_s + QString::number(m_job);
    const auto book = [&](qint64 operNo, const char16_t* hours, const char16_t* status) {
        other->execute(u"INSERT INTO Timelog (EmpID, JobNo, OperNo, AccumTime, "
                       "Status) VALUES(1,%1,%2,%3,'%4')"_s.arg(m_job)
                           .arg(operNo)
                           .arg(s(hours), s(status)));
        other->execute(u"UPDATE JobOper SET OperTime_Amount = OperTime_Amount + %1, "
                       "Status = '%2', OperLocated = 1"_s.arg(s(hours), s(status)) +
                       where + u" AND OperNo = "_s + QString::number(operNo));
    };
    book(m_operations[0], u"1.25", u"F");
    book(m_operations[1], u"0.5", u"D");
    other->execute(u"UPDATE JobMiscCost SET Quantity = Quantity + 3, CostAmount = "
                   "UnitPrice * (Quantity + 3)"_s +
                   where);
    other->execute(u"INSERT INTO JobMiscCost (JobNo, ItemNo, UnitofMeasure, "
                   "UnitPrice, Quantity, CostAmount) VALUES(%1,%2,'GAL',6,2,12)"_s.arg(m_job)
                       .arg(oil));
    other->execute(u"UPDATE Job SET PONo = 'PO-8', OrderRequired = True"_s + where);

    save();
    EXPECT_EQ(rows(u"SELECT OperTime_Amount, Status, OperLocated FROM JobOper"_s + where +
                   u" ORDER BY SeqNo"_s),
              (QStringList{s(u"1.25|F|1"), s(u"0.5|D|1")}));
    EXPECT_EQ(rows(u"SELECT UnitPrice, Quantity, CostAmount FROM JobMiscCost"_s + where +
                   u" ORDER BY ItemNo"_s),
              (QStringList{s(u"1|7|7"), s(u"1|3|3"), s(u"6|2|12")}))
        << "of the item removed here stays what was issued since";
    // (1.75 hours at 50 + 22 of fixed costs) over 10 pieces.
    EXPECT_EQ(rows(u"SELECT Description, PONo, OrderRequired, TotalHours, "
                   "JobShopCost FROM Job"_s +
                   where),
              QStringList(s(u"Bracket, milled|PO-8|True|1.75|10.95")));
    EXPECT_EQ(text(s(u"txtPONo")), s(u"PO-8"));
}

TEST_P(Jobs, TheOfficeSavesAgainAndAgainWhileTheFloorWorks) {
    const qint64 bolts = item(s(u"Bolts"));
    jobCost(m_job, bolts, s(u"4"));
    openJobs();
    QProcess floor;
    floor.start(QStringLiteral(MIRSA_FLOOR_STATION),
                {core::shared().DatabasePath, QString::number(m_job),
                 QString::number(m_operations[0]), QString::number(bolts)});
    ASSERT_TRUE(floor.waitForReadyRead(20000)) << floor.readAllStandardError().toStdString();
    for (int saves = 1; saves <= 12; ++saves) {
        edit();
        type(s(u"txtDescription"), s(u"Edition %1").arg(saves));
        // Rows that the floor doesn't write come, go and change places around those that it does.
        if (saves % 2 == 1)
            insertBefore(0);
        else
            removeRow(0, u"Turning");
        save();
        ASSERT_EQ(text(s(u"lblJobMode")), s(u"BROWSE"));
    }
    floor.closeWriteChannel();
    ASSERT_TRUE(floor.waitForFinished(20000));
    ASSERT_EQ(floor.exitCode(), 0) << floor.readAllStandardError().toStdString();
    edit();
    save();

    const auto booked = static_cast<int>(floor.readAllStandardOutput().count('\n'));
    EXPECT_GT(booked, 12);
    const double hours = booked * 0.25;
    const QString where = u" WHERE JobNo = "_s + QString::number(m_job);
    EXPECT_EQ(rows(u"SELECT COUNT(*), SUM(AccumTime) FROM Timelog"_s + where),
              QStringList(s(u"%1|%2").arg(booked).arg(hours)));
    EXPECT_EQ(rows(u"SELECT OperTime_Amount, Status FROM JobOper"_s + where + u" ORDER BY SeqNo"_s),
              (QStringList{s(u"%1|F").arg(hours), s(u"0| "), s(u"100| ")}));
    EXPECT_EQ(rows(u"SELECT Quantity, CostAmount FROM JobMiscCost"_s + where),
              QStringList(s(u"%1|%1").arg(4 + booked)));
    // The hours at 50, 100 outside and the fixed cost, over 10 pieces.
    const double cost = (hours * 50 + 100 + 4 + booked) / 10;
    EXPECT_EQ(rows(u"SELECT Description, TotalHours, JobShopCost FROM Job"_s + where),
              QStringList(s(u"Edition 12|%1|%2").arg(hours, 0, 'g', 12).arg(cost, 0, 'g', 12)));
}

TEST_P(Jobs, WhatCannotBeJoinedIsRefusedAndNothingIsLost) {
    openJobs();
    edit();
    removeRow(0, u"Boring");
    time(m_job, m_operations[0], s(u"2"));
    expectBox(s(u"Time has been booked on the operation Boring since you removed it.\r\nPlease "
                u"insert it again."),
              Answer::Ok);
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"EDIT"));
    cancel();
    edit();
    type(s(u"txtPONo"), s(u"PO-9"));
    database().execute(s(u"UPDATE JobOper SET SeqNo = SeqNo + 1 WHERE SeqNo > 1"));
    jobOper(m_job, 2, m_operations[3]);
    removeRow(2, u"Plating");
    expectBoxContaining(s(u"The list of operations has been changed at another station since you "
                          u"opened this record.\r\nThere: Boring, Turning, Milling, Plating\r\n"
                          u"Here: Boring, Milling"),
                        Answer::No);
    save();
    EXPECT_EQ(cells(s(u"sprOper")).size(), 2);
    expectBoxContaining(s(u"Do you want to load the lines again"), Answer::Yes);
    save();
    EXPECT_EQ(cells(s(u"sprOper")).size(), 4);
    EXPECT_EQ(text(s(u"txtPONo")), s(u"PO-9"));
    save();
    EXPECT_EQ(bound(m_job), QStringList({s(u"1|Boring|note 1"), s(u"2|Turning|"),
                                         s(u"3|Milling|note 2"), s(u"4|Plating|note 3")}));
    EXPECT_EQ(rows(u"SELECT PONo FROM Job"_s), QStringList(s(u"PO-9")));
}

TEST_P(Jobs, ASaveLeavesWhatAnotherOfficeDidMeanwhile) {
    const qint64 bolts = item(s(u"Bolts")), nuts = item(s(u"Nuts"));
    for (const qint64 one : {bolts, nuts})
        jobCost(m_job, one, s(u"4"));
    const QString identities =
        u"SELECT ID FROM JobOper WHERE JobNo = %1 ORDER BY SeqNo"_s.arg(m_job);
    const QStringList before = rows(identities);
    openJobs();
    edit();
    type(s(u"txtDescription"), s(u"Bracket"));
    const auto other = anotherStation();
    other->execute(s(u"UPDATE JobOper SET OperShopRate = 45, EstOper = 2.5 WHERE SeqNo = 2"));
    other->execute(u"UPDATE JobMiscCost SET UnitofMeasure = 'BOX', UnitPrice = 2, CostAmount = 8 "
                   "WHERE ItemNo = %1"_s.arg(bolts));
    other->execute(u"DELETE FROM JobMiscCost WHERE ItemNo = %1"_s.arg(nuts));
    save();
    EXPECT_EQ(rows(u"SELECT OperShopRate, EstOper FROM JobOper WHERE SeqNo = 2"_s),
              QStringList(s(u"45|2.5")));
    EXPECT_EQ(rows(u"SELECT ItemNo, UnitofMeasure, Quantity, CostAmount FROM JobMiscCost"_s),
              QStringList(u"%1|BOX|4|8"_s.arg(bolts)));
    edit();
    setCell(s(u"sprOper"), 2, timeColumn, s(u"125"));
    save();
    EXPECT_EQ(rows(identities), before) << "the floor's statements go on meeting the rows";
}

TEST_P(Jobs, NothingActiveAtAnyLevelBelowMayBeLeftBehind) {
    const qint64 middle = job(m_acme, s(u"middle"), 1, true);
    const qint64 deep = job(m_acme, s(u"deep"), 1);
    const auto under = [this](qint64 part, qint64 parent) {
        database().execute(
            u"UPDATE Job SET AssemblyJobNo = %1 WHERE JobNo = %2"_s.arg(parent).arg(part));
    };
    under(middle, m_job);
    under(deep, middle);
    under(m_job, deep); // a loop, as only another program can make one
    core::RecordScreen* screen = openJobs();
    ASSERT_TRUE(screen->goToRecord(m_job));
    edit();
    check(s(u"chkShipped"));
    expectBoxContaining(s(u"You may not ship a job"));
    save();
    database().execute(u"UPDATE Job SET Shipped = True WHERE JobNo = %1"_s.arg(deep));
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"BROWSE"));
}

TEST_P(Jobs, AFailedSaveKeepsTheJobAndWhatWasTyped) {
    openJobs();
    edit();
    type(s(u"txtDescription"), s(u"kept on screen"));
    database().execute(s(u"DROP TABLE JobMiscCost"));
    expectBoxContaining(s(u"\r\nDelete JobMiscCost"));
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"EDIT"));
    EXPECT_EQ(text(s(u"txtDescription")), s(u"kept on screen"));
    EXPECT_EQ(bound(m_job).size(), 3);
    expectBoxContaining(s(u"Would you like to save"), Answer::No);
    form().unload();
}

MIRSA_BOTH_ENGINES(Jobs);

} // namespace
