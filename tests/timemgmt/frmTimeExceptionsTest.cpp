#include "core/MirsaMain.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"
#include "timemgmt/Screens.h"
#include "timemgmt/TimeDialogs.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QTest>

namespace {

/// What the list leads to, noted.
QStringList opened;

class SignIn : public screen::Form, public timemgmt::SignInDialog {
  public:
    SignIn() : Form(u"frmSignAddEdit"_s, u"Edit Sign In"_s) {}
    bool ShowForm(const QString& mode, qint64 empId, qint64 signId) override {
        opened << u"%1 %2 %3"_s.arg(mode).arg(empId).arg(signId);
        core::MainDatabase().execute(
            u"UPDATE Sign_in SET Sign_out = #3/10/2026 4:00 PM# WHERE ID = "
            u""_s +
            QString::number(signId));
        return true;
    }
};

class TimeManagement : public screen::Form, public timemgmt::TimeScreen {
  public:
    TimeManagement() : Form(u"frmTM"_s, u"Time Management"_s) {}
    void showRecord(qint64 empId, const QDate& day, timemgmt::TimePage page, qint64 id) override {
        opened << u"%1 %2 %3 %4"_s.arg(empId)
                      .arg(day.toString(Qt::ISODate))
                      .arg(static_cast<int>(page))
                      .arg(id);
    }
};

} // namespace

class TimeExceptionsScreen : public testsupport::ShopTest {
  protected:
    void prepare() override {
        timemgmt::registerScreens();
        screen::Forms::add(u"frmSignAddEdit"_s, [] { return std::make_unique<SignIn>(); });
        screen::Forms::add(u"frmTM"_s, [] { return std::make_unique<TimeManagement>(); });
        values::setNow(QDateTime(QDate(2026, 3, 13), QTime(10, 0)));
        opened.clear();
        for (const auto* statement :
             {u"INSERT INTO Employee (lastname, firstname, shiftsid, EmpStatus) VALUES('Hall', "
              "'Ann', 1, 'Active')",
              u"INSERT INTO Operation (Description, OperType) VALUES('Milling', 'I')",
              u"INSERT INTO Job (Quantity) VALUES(1)",
              u"INSERT INTO Sign_in (EmpID, Sign_in) VALUES(1, #3/10/2026 7:00 AM#)",
              u"INSERT INTO Timelog (EmpID, SignID, JobNo, OperNo, AccumTime, Status, StartDate) "
              "VALUES(1, 1, 1, 1, 2.5, '0', #3/9/2026#)"})
            database().execute(QString::fromUtf16(statement));
    }
    void TearDown() override {
        timemgmt::ExceptionWatch::end();
        ShopTest::TearDown();
    }
    void waitForList() {
        auto& watch = timemgmt::ExceptionWatch::on(database().name());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !watch.isReading(); }));
        QTest::qWait(600);
    }
    const QString list = u"lvwExceptions"_s;
};

TEST_P(TimeExceptionsScreen, EachLineLeadsToWhereItIsPutRightAndGoesThen) {
    open(u"frmTimeExceptions"_s);
    waitForList();
    EXPECT_EQ(
        cells(list),
        (QStringList{
            u"Never signed out|Hall, Ann|3/10/2026||Signed in at 3/10/2026 7:00 AM and never "
            u"signed "
            "out."_s,
            u"Entered by hand|Hall, Ann|3/9/2026|1|Job 1 Milling: 2.50 hours were entered by hand."_s}));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    go(list);
    selectRow(list, 0);
    key(Qt::Key_Return);
    waitForList();
    EXPECT_EQ(opened, QStringList{u"Edit 1 1"_s});
    EXPECT_EQ(rowCount(list), 1);
    choose(u"cboKind"_s, u"Entered by hand (1)"_s);
    selectRow(list, 0);
    press(u"cmdOpen"_s);
    EXPECT_EQ(opened.last(), u"1 2026-03-09 0 1"_s);

    use(screen::Forms::find(u"frmTimeExceptions"_s));
    database().execute(u"DELETE FROM Timelog"_s);
    press(u"cmdRefresh"_s);
    waitForList();
    EXPECT_EQ(rowCount(list), 0);
    EXPECT_EQ(text(u"lblState"_s), u"Every time record is in order."_s);
    EXPECT_FALSE(isEnabled(u"cmdOpen"_s));
}

TEST_P(TimeExceptionsScreen, IsForThoseWhoMayUseTimeManagement) {
    core::shared().CurrentUserName = u"floor"_s;
    core::shared().CurrentUserNo = 99;
    expectBox(u"You don't have the right to see time records."_s);
    EXPECT_EQ(open(u"frmTimeExceptions"_s), nullptr);
}

MIRSA_BOTH_ENGINES(TimeExceptionsScreen);
