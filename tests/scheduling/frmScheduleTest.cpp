#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "estimating/routing/Register.h"
#include "jobs/Screens.h"
#include "platform/controls/DateField.h"
#include "platform/gantt/LoadStrip.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "scheduling/Screens.h"
#include "support/ShopFixture.h"

#include <QApplication>
#include <QMenu>
#include <QRadioButton>
#include <QTest>

using gantt::ChartView;
using gantt::minuteOf;
using gantt::Span;
using gantt::State;
using screen::Answer;
using screen::Buttons;

namespace {

const QDate in(2026, 3, 2); // a Monday
const QDate due(2026, 3, 20);

/// The scheduler on a shop with two jobs of one purchase order, three operations each.
class ScheduleScreen : public testsupport::ShopTest {
  protected:
    void prepare() override {
        scheduling::registerScreens();
        jobs::registerScreens();
        estimating::registerRoutingDialogs();
        values::setNow(QDateTime(QDate(2026, 3, 4), QTime(8, 0), Qt::UTC));
        m_customer = insert(u"Customer (Company) VALUES('Acme')"_s);
        const qint64 mill = insert(u"OperDepartment (department) VALUES('Mill')"_s);
        for (const char* name : {"Boring", "Milling", "Turning"})
            m_operations << insert(u"Operation (Description, OperType, operdepartment_id) "
                                   "VALUES('%1','I',%2)"_s.arg(QString::fromLatin1(name))
                                       .arg(mill));
        const qint64 shift = insert(u"Shifts (Description, EarliestSignIn, LatestSignOut) "
                                    "VALUES('Day',#07:00:00#,#15:00:00#)"_s);
        insert(u"Employee (firstname, lastname, EmpStatus, shiftsid) VALUES('A','B','Active',%1)"_s
                   .arg(shift));
        m_job = job();
        m_newer = job();
        m_entry = entry(m_job, 2, u"second"_s, 1);
        entry(m_job, 3, u"third"_s, 2);
        entry(m_newer, 1, u"other"_s, 1);
    }
    qint64 insert(const QString& what) {
        database().execute(u"INSERT INTO "_s + what);
        return database().lastCounter();
    }
    qint64 job() {
        const qint64 jobNo =
            insert(u"Job (CustID, PONo, PartNo, Quantity, JobDateIn, JobDueDate, Shipped) "
                   "VALUES(%1,'PO''7','P',5,#03/02/2026#,#03/20/2026#,False)"_s.arg(m_customer));
        for (int seq = 1; seq <= 3; ++seq)
            insert(u"JobOper (JobNo, SeqNo, OperNo, Status, OperLocated, EstOper) "
                   "VALUES(%1,%2,%3,'%4',0,4)"_s.arg(jobNo)
                       .arg(seq)
                       .arg(m_operations[seq - 1])
                       .arg(seq == 1 ? u"F"_s : u" "_s));
        return jobNo;
    }
    qint64 entry(qint64 jobNo, int seq, const QString& text, int day) {
        const QString date = in.addDays(day).toString(u"M/d/yyyy"_s);
        return insert(u"JobOperSchedule (JobNo, SeqNo, OperNo, Description, TextAlign, StartDate, "
                      "StartTime, EndDate, EndTime) VALUES(%1,%2,%3,'%4',0,'%5','07:00 AM','%5',"
                      "'11:00 AM')"_s.arg(jobNo)
                          .arg(seq)
                          .arg(m_operations[seq - 1])
                          .arg(text, date));
    }
    void openJob() {
        open(u"frmSchedule"_s);
        choose(u"dbcCustomer"_s, u"Acme"_s);
        choose(u"dbcJobNo"_s, QString::number(m_job));
    }
    ChartView& chart() { return *control<ChartView>(u"ctSchedule"_s); }
    gantt::Model& model() { return chart().model(); }
    Span span(int row, int bar) { return model().bar(row, bar).span; }
    static Span at(int day, int from = 420, int to = 660) {
        return {minuteOf(in.addDays(day), from), minuteOf(in.addDays(day), to)};
    }
    QStringList saved() {
        return rows(u"SELECT JobNo, SeqNo, Description, StartDate, StartTime, EndTime FROM "
                    "JobOperSchedule ORDER BY JobNo, SeqNo, ID"_s);
    }
    QStringList menu() {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(&chart(), &event);
        QStringList texts;
        if (auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            for (const QAction* action : shown->actions())
                texts << (action->isSeparator() ? u"-"_s : action->text());
        }
        return texts;
    }
    void chooseInMenu(const QString& text) {
        auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(shown);
        for (QAction* action : shown->actions()) {
            if (action->text() == text) {
                shown->setActiveAction(action);
                QTest::keyClick(shown, Qt::Key_Return);
            }
        }
        QTest::qWait(20); // the timer behind the menu
    }

    qint64 m_customer = 0, m_job = 0, m_newer = 0, m_entry = 0;
    QList<qint64> m_operations;
};

} // namespace

TEST_P(ScheduleScreen, AJobIsPlannedByKeyboardAloneAndSaved) {
    openJob();
    EXPECT_EQ(model().rowCount(), 3);
    EXPECT_EQ(text(u"txtLockDateIn"_s), u"3/2/2026"_s);
    EXPECT_FALSE(isVisible(u"cmdSave"_s));
    go(u"ctSchedule"_s);
    key(Qt::Key_Down);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_FALSE(model().canUndo()) << "browse only looks";

    press(u"cmdEdit"_s);
    EXPECT_EQ(focusName(), u"ctSchedule"_s);
    EXPECT_FALSE(isEnabled(u"fraSelect"_s));
    EXPECT_FALSE(isEnabled(u"cmdQuery"_s));
    EXPECT_FALSE(isEnabled(u"chkMultiResize"_s));
    EXPECT_TRUE(isVisible(u"txtJobDateIn"_s));
    // The second operation's entry two days later, by the keys.
    for (int i = 0; i < 2; ++i)
        key(Qt::Key_Down);
    EXPECT_TRUE(isEnabled(u"cmdAddEntry"_s));
    EXPECT_FALSE(isEnabled(u"cmdEditEntry"_s));
    key(Qt::Key_Right);
    EXPECT_TRUE(isEnabled(u"cmdDeleteEntry"_s));
    key(Qt::Key_Right, Qt::ControlModifier);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(span(2, 1), at(3));
    EXPECT_EQ(span(3, 1), at(2)) << "alone";

    check(u"chkMultiMove"_s);
    go(u"ctSchedule"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(span(2, 1), at(2));
    EXPECT_EQ(span(3, 1), at(3)) << "with what starts later";
    // The last one is deleted, and another one made for the first operation.
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    key(Qt::Key_Delete);
    EXPECT_EQ(model().bar(3, 1).state, State::Deleted);
    for (int i = 0; i < 2; ++i)
        key(Qt::Key_Up);
    expectBox(u"Operation has been marked as finished. Continue?"_s, Answer::Ok,
              u"System Message"_s, Buttons::OkCancel);
    whenShown(u"frmScheduleAdd"_s, [this] {
        EXPECT_EQ(text(u"lblEstHours"_s), u"4.00"_s);
        EXPECT_EQ(focusName(), u"txtStartDate"_s);
        type(u"ctEndTime"_s, u"2 pm"_s);
        type(u"ctStartTime"_s, u"3 pm"_s);
        leave();
        expectBox(u"Start time cannot be after the end time."_s, Answer::Ok, u"System Message"_s);
        press(u"cmdOK"_s);
        type(u"ctStartTime"_s, u"8"_s);
        type(u"txtNotes"_s, u"it's new"_s);
        check(u"optRightBar"_s);
        // The load beside it follows what is typed.
        const auto& lines = control<gantt::LoadStrip>(u"ctLoad"_s)->lines();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].days[0].planned, 6);
        EXPECT_EQ(lines[0].days[0].available, 8);
        press(u"cmdOK"_s);
    });
    // A button that a mnemonic presses clicks a little later.
    key(Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return model().barCount(1) == 1; }));
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !isVisible(u"cmdSave"_s); }));
    EXPECT_EQ(saved(), QStringList({u"%1|1|it's new|3/2/2026|08:00 AM|02:00 PM"_s.arg(m_job),
                                    u"%1|2|second|3/4/2026|07:00 AM|11:00 AM"_s.arg(m_job),
                                    u"%1|1|other|3/3/2026|07:00 AM|11:00 AM"_s.arg(m_newer)}));
    EXPECT_FALSE(database().hasRows(u"SELECT ID FROM JobOperSchedule WHERE ID = "_s +
                                    QString::number(m_entry)));
    EXPECT_EQ(rows(u"SELECT ScheduleZoom, SchedulePeriod FROM Job WHERE JobNo = %1"_s.arg(m_job)),
              QStringList(u"1|1"_s));
    press(u"cmdDone"_s);
}

TEST_P(ScheduleScreen, DatesAreLimitsAndTheViewAndGoToTheJob) {
    auto* jobs = dynamic_cast<core::RecordScreen*>(open(u"frmJob"_s));
    ASSERT_TRUE(jobs->goToRecord(m_job));
    press(u"cmdSchedule"_s);
    use(screen::Forms::find(u"frmSchedule"_s));
    EXPECT_EQ(text(u"dbcJobNo"_s), QString::number(m_job)) << "the job's own";
    press(u"cmdEdit"_s);
    type(u"txtJobDueDate"_s, u"3/3/2026"_s);
    leave();
    EXPECT_EQ(model().lastDay(), QDate(2026, 3, 3));
    expectBox(
        u"Schedule entry 1 in operation 3 on Job %1 cannot extend after the job due date."_s.arg(
            m_job),
        Answer::Ok, u"System Message"_s);
    press(u"cmdSave"_s);
    EXPECT_TRUE(isVisible(u"cmdSave"_s)) << "stays in edit";
    type(u"txtJobDueDate"_s, u"4/1/2026"_s);
    leave();
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT JobDateIn, JobDueDate FROM Job WHERE JobNo = %1"_s.arg(m_job)),
              QStringList(u"3/2/2026|4/1/2026"_s));
    use(screen::Forms::find(u"frmJob"_s));
    EXPECT_EQ(control<controls::DateField>(u"txtJobDueDate"_s)->date(), QDate(2026, 4, 1));
    expectBox(u"Cannot edit jobs while Job Scheduler is open."_s);
    press(u"cmdEdit"_s);
    use(screen::Forms::find(u"frmSchedule"_s));
    press(u"cmdDone"_s);
    use(screen::Forms::find(u"frmJob"_s));
    press(u"cmdEdit"_s);
    expectBox(u"The job module must be in browse mode to use the scheduler."_s);
    EXPECT_EQ(screen::Forms::show(u"frmSchedule"_s), nullptr);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

TEST_P(ScheduleScreen, DatesAndEntriesAreTakenBackInTheOrderInWhichTheyWereChanged) {
    openJob();
    press(u"cmdEdit"_s);
    EXPECT_FALSE(isEnabled(u"cmdUndo"_s));
    go(u"ctSchedule"_s);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ControlModifier);
    // Typed by a person: every key changes the date, all of them are one step.
    go(u"txtJobDueDate"_s);
    QTest::keyClicks(control<QWidget>(u"txtJobDueDate"_s), u"4/1/2026"_s);
    EXPECT_EQ(model().lastDay(), QDate(2026, 4, 1));
    go(u"txtJobDateIn"_s);
    key(Qt::Key_Delete);
    EXPECT_EQ(text(u"txtJobDateIn"_s), QString());
    key(Qt::Key_Z, Qt::ControlModifier); // in the field itself
    EXPECT_EQ(text(u"txtJobDateIn"_s), u"3/2/2026"_s);
    EXPECT_EQ(model().lastDay(), QDate(2026, 4, 1));
    go(u"ctSchedule"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(u"txtJobDueDate"_s), u"3/20/2026"_s);
    EXPECT_EQ(model().lastDay(), due);
    EXPECT_EQ(span(2, 1), at(2));
    press(u"cmdUndo"_s);
    EXPECT_EQ(span(2, 1), at(1));
    EXPECT_FALSE(isEnabled(u"cmdUndo"_s));
    press(u"cmdRedo"_s);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(text(u"txtJobDueDate"_s), u"4/1/2026"_s);
    EXPECT_EQ(span(2, 1), at(2));
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT JobDateIn, JobDueDate FROM Job WHERE JobNo = %1"_s.arg(m_job)),
              QStringList(u"3/2/2026|4/1/2026"_s));
    EXPECT_FALSE(isVisible(u"cmdUndo"_s));
    press(u"cmdDone"_s);
}

TEST_P(ScheduleScreen, AnOrderIsShownPlannedAndClosedWithAQuestion) {
    open(u"frmSchedule"_s);
    choose(u"dbcCustomer"_s, u"Acme"_s);
    check(u"optJobPO"_s);
    choose(u"dbcJobPO"_s, u"PO'7"_s);
    ASSERT_EQ(model().rowCount(), 8);
    EXPECT_EQ(model().cellText(1, 1), u"Job No.: %1"_s.arg(m_newer));
    press(u"cmdEdit"_s);
    type(u"txtJobDateIn"_s, u"2/23/2026"_s);
    leave();
    EXPECT_EQ(model().bar(3, 1).span, (Span{minuteOf(QDate(2026, 2, 23)), minuteOf(in)}))
        << "a block before the job's date in";
    go(u"ctSchedule"_s);
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(menu(), QStringList({u"New vs. Load"_s, u"Edit vs. Load"_s, u"Delete Entry"_s, u"-"_s,
                                   u"Schedule Viewer"_s}));
    chooseInMenu(u"Delete Entry"_s);
    EXPECT_EQ(model().bar(8, 1).state, State::Deleted);
    go(u"ctSchedule"_s);
    key(Qt::Key_Right);
    EXPECT_EQ(menu(),
              QStringList({u"New vs. Load"_s, u"Undo Delete"_s, u"-"_s, u"Schedule Viewer"_s}));
    chooseInMenu(u"Undo Delete"_s);
    EXPECT_EQ(model().bar(8, 1).state, State::Normal);

    const QString question = u"Save changes to Job Schedule before closing?"_s;
    expectBox(question, Answer::Cancel, u"System Message"_s, Buttons::YesNoCancel);
    press(u"cmdDone"_s);
    ASSERT_TRUE(screen::Forms::isLoaded(u"frmSchedule"_s));
    expectBox(question, Answer::Yes);
    press(u"cmdDone"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmSchedule"_s));
    EXPECT_EQ(saved().at(1), u"%1|3|third|3/5/2026|07:00 AM|11:00 AM"_s.arg(m_job));
    EXPECT_EQ(rows(u"SELECT DISTINCT JobDateIn FROM Job"_s), QStringList(u"3/2/2026"_s))
        << "view dates are nobody's dates";
}

TEST_P(ScheduleScreen, TheLoadFollowsADragAndFitIsAProposal) {
    openJob();
    press(u"cmdEdit"_s);
    const auto planned = [&](int day) {
        return control<gantt::LoadStrip>(u"ctLoad"_s)
            ->lines()
            .at(0)
            .days.at(static_cast<size_t>(day))
            .planned;
    };
    EXPECT_EQ(planned(1), 8) << "this job's entry and the other job's";
    const QRect rect = chart().barRect(2, 1);
    QWidget* area = chart().viewport();
    QTest::mousePress(area, Qt::LeftButton, {}, rect.center());
    for (const int by : {30, 125}) {
        const QPoint place = rect.center() + QPoint(by, 0);
        QMouseEvent move(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(area, &move);
    }
    EXPECT_EQ(planned(1), 4);
    EXPECT_EQ(planned(3), 4);
    EXPECT_EQ(span(2, 1), at(1)) << "not before it is let go";
    key(Qt::Key_Escape);
    EXPECT_EQ(planned(1), 8);

    press(u"cmdFit"_s);
    EXPECT_EQ(span(2, 1), at(0));
    EXPECT_EQ(span(3, 1), at(0, 660, 900));
    go(u"ctSchedule"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(span(2, 1), at(1));
    EXPECT_EQ(span(3, 1), at(2));
    type(u"txtJobDueDate"_s, u"3/2/2026"_s);
    database().execute(u"UPDATE JobOper SET EstOper = 6"_s);
    leave();
    press(u"cmdCancel"_s);
    press(u"cmdEdit"_s);
    type(u"txtJobDueDate"_s, u"3/2/2026"_s);
    leave();
    expectBox(u"Turning (operation 3 of Job %1) doesn't fit: 4 of its 6 hours are left over at the "
              "due date."_s.arg(m_job));
    press(u"cmdFit"_s);
    press(u"cmdCancel"_s);
    press(u"cmdDone"_s);
}

TEST_P(ScheduleScreen, TheViewerShowsTheShopByJobAndByDepartment) {
    database().execute(u"UPDATE Job SET JobDueDate = #03/06/2026# WHERE JobNo = %1"_s.arg(m_job));
    const qint64 bare = job();
    open(u"frmScheduleView"_s);
    EXPECT_EQ(
        rows(u"SELECT JobNo FROM ScheduleView ORDER BY JobNo"_s),
        QStringList({QString::number(m_job), QString::number(m_newer), QString::number(bare)}));
    ASSERT_EQ(model().rowCount(), 8) << "two jobs with entries, newest first";
    EXPECT_EQ(model().cellText(1, 1), u"Job No.: %1"_s.arg(m_newer));
    EXPECT_EQ(model().barCount(2), 1);
    go(u"ctSchedule"_s);
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(text(u"lblJobNo"_s), u"Job No.: %1"_s.arg(m_newer));
    // Another station empties the table that all share; this one goes on showing.
    anotherStation()->execute(u"DELETE * FROM ScheduleView"_s);
    check(u"chkJobs"_s);
    EXPECT_EQ(model().rowCount(), 12);
    check(u"chkGroup"_s);
    ASSERT_EQ(model().rowCount(), 4);
    EXPECT_EQ(model().cellText(1, 1), u"Mill"_s);
    EXPECT_EQ(model().barCount(2), 1) << "Boring";
    check(u"chkJobs"_s, true);
    choose(u"dbcJob"_s, QString::number(m_job));
    press(u"cmdGotoGo"_s);
    EXPECT_FALSE(isChecked(u"chkGroup"_s));
    EXPECT_EQ(model().cellText(model().selectedRow(), 1), u"Job No.: %1"_s.arg(m_job));
    type(u"txtStartDate"_s, u"5/1/2026"_s);
    expectBox(u"Start date cannot be after end date."_s);
    press(u"cmdStartDateGo"_s);
    press(u"cmdDone"_s);
    EXPECT_FALSE(database().hasRows(u"SELECT JobNo FROM ScheduleView"_s));
}

TEST_P(ScheduleScreen, TheViewerReadsOnAsItIsScrolledAndBeginsAnewWithAnotherOption) {
    for (int i = 0; i < 70; ++i)
        entry(job(), 1, u"e%1"_s.arg(i), 1);
    open(u"frmScheduleView"_s);
    const int first = model().rowCount();
    EXPECT_EQ(first, 60 * 4) << "a page of jobs with three operations each";
    go(u"ctSchedule"_s);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(model().rowCount(), 72 * 4);
    key(Qt::Key_End, Qt::ControlModifier);
    check(u"chkJobs"_s);
    EXPECT_EQ(model().rowCount(), first) << "from the top";
    chart().viewport()->repaint();
    check(u"chkGroup"_s);
    EXPECT_EQ(model().rowCount(), 4);
    chart().viewport()->repaint();
    press(u"cmdDone"_s);
}

TEST_P(ScheduleScreen, WithoutActiveJobsItStaysClosed) {
    database().execute(u"UPDATE Job SET Shipped = True"_s);
    expectBox(u"You must have at least one Customer with at least one active job."_s, Answer::Ok,
              u"System Message"_s);
    EXPECT_EQ(screen::Forms::show(u"frmSchedule"_s), nullptr);
}

MIRSA_BOTH_ENGINES(ScheduleScreen);
