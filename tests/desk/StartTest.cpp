#include "core/MirsaMain.h"
#include "core/keeping/Files.h"
#include "core/records/RecordScreen.h"
#include "desk/StartFacts.h"
#include "desk/frmStart.h"
#include "platform/controls/RowTable.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "support/SampleFixture.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QDir>
#include <QTest>
#include <QTreeWidget>

#include <set>

namespace {

using desk::StartSection;
using screen::Forms;

const QDate today(2026, 3, 2);

class StartPageTest : public testsupport::SampleTest {
  protected:
    void prepare() override {
        SampleTest::prepare();
        // What the sample may not have: without a price, not invoiced, not stocked, unanswered.
        database().execute(u"INSERT INTO Estimate (CustID, RFQNo, PartNo, EstDate, QtyQPA) VALUES "
                           "(1, 'R-9', 'P-9', #02/20/2026#, 0)"_s);
        database().execute(u"UPDATE Job SET ShipDate = #02/10/2026# WHERE Shipped = True AND "
                           "JobNo IN (SELECT TOP 9 JobNo FROM Job WHERE Shipped = True ORDER BY "
                           "JobNo)"_s);
        database().execute(u"DELETE * FROM SentInvoice WHERE ID > 3"_s);
        database().execute(u"UPDATE POItem SET Type = 'Stock'"_s);
        database().execute(u"UPDATE RFQ SET ReqDate = #02/25/2026#, Complete = False WHERE "
                           "PONumber = 1"_s);
        database().execute(u"UPDATE RFQItem SET UnitPrice = 0 WHERE OrderNumber = 1"_s);
        database().execute(u"UPDATE Items SET FlagQuantity = Quantity + 1 WHERE ID < 4"_s);
    }
    std::vector<StartSection> read() {
        return desk::startSections(database(), desk::Rights::read(database()), today);
    }
    qint64 counted(const QString& title) {
        for (const StartSection& section : read()) {
            if (section.title.startsWith(title))
                return section.count;
        }
        return 0;
    }
    /// Rows of a plain select, field by field.
    std::vector<std::vector<jet::Value>> all(const QString& select) {
        std::vector<std::vector<jet::Value>> made;
        jet::Recordset set = database().openRecordset(select, jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            auto& row = made.emplace_back();
            for (int i = 0; i < set.fieldNames().size(); ++i)
                row.push_back(set.field(i));
        }
        return made;
    }
};

/// By plain selects of single tables, put together here.
TEST_P(StartPageTest, EachFigureIsWhatTheTablesSay) {
    const auto isBetween = [](const jet::Value& value, const QDate& first, const QDate& last) {
        const auto day = value.toDate();
        return day && *day >= first && *day <= last;
    };
    const QDate ever(1900, 1, 1);

    std::map<qint64, double> left;
    std::set<qint64> inHouse;
    for (const auto& row : all(u"SELECT OperNo FROM Operation WHERE OperType = 'I'"_s))
        inHouse.insert(row[0].toLong());
    for (const auto& row :
         all(u"SELECT JobNo, OperNo, EstOper, OperTime_Amount, Status FROM JobOper"_s))
        if (inHouse.contains(row[1].toLong()) && row[4].toText() != u"F")
            left[row[0].toLong()] += std::max(0.0, row[2].toDouble() - row[3].toDouble());
    qint64 late = 0;
    std::set<qint64> jobEstimates;
    qint64 notInvoiced = 0;
    std::set<QString> sent;
    for (const auto& row : all(u"SELECT POID, Description FROM SentInvoice"_s))
        sent.insert((row[0].toText() + u'|' + row[1].toText()).toLower());
    for (const auto& row : all(u"SELECT JobNo, Shipped, JobDueDate, EstNo, ShipDate, PONo, PartNo, "
                               "Description FROM Job"_s)) {
        jobEstimates.insert(row[3].toLong());
        if (!row[1].toBool() && isBetween(row[2], ever, today.addDays(7)))
            ++late;
        const QString line = row[6].toText() + u' ' + row[7].toText();
        if (row[1].toBool() && isBetween(row[4], today.addDays(-60), QDate(2999, 1, 1)) &&
            !sent.contains((row[5].toText() + u'|' + line).toLower()))
            ++notInvoiced;
    }
    qint64 unpriced = 0;
    for (const auto& row : all(u"SELECT EstNo, EstDate, QtyQPA FROM Estimate"_s))
        unpriced += isBetween(row[1], today.addDays(-90), QDate(2999, 1, 1)) &&
                    row[2].toDouble() == 0 && !jobEstimates.contains(row[0].toLong());
    std::set<qint64> open, answered;
    std::map<qint64, bool> forStock;
    for (const auto& row :
         all(u"SELECT PONumber, Quantity, ReceivedQuantity, ID, Type FROM POItem"_s)) {
        if (row[2].toDouble() < row[1].toDouble())
            open.insert(row[0].toLong());
        forStock[row[3].toLong()] = row[4].toText() == u"Stock";
    }
    qint64 overdue = 0;
    for (const auto& row : all(u"SELECT PONumber, Active, ReqDate FROM PO"_s))
        overdue += row[1].toBool() && isBetween(row[2], ever, today.addDays(-1)) &&
                   open.contains(row[0].toLong());
    qint64 notStocked = 0;
    for (const auto& row : all(u"SELECT ItemID, StockInventory, [Date] FROM POReceived"_s))
        notStocked += !row[1].toBool() && forStock[row[0].toLong()] &&
                      isBetween(row[2], today.addDays(-90), QDate(2999, 1, 1));
    for (const auto& row : all(u"SELECT OrderNumber, UnitPrice FROM RFQItem"_s))
        if (row[1].toDouble() > 0)
            answered.insert(row[0].toLong());
    qint64 unanswered = 0;
    for (const auto& row : all(u"SELECT PONumber, ReqDate, Complete FROM RFQ"_s))
        unanswered += isBetween(row[1], today.addDays(-90), today) && !row[2].toBool() &&
                      !answered.contains(row[0].toLong());
    qint64 low = 0;
    for (const auto& row : all(u"SELECT Quantity, FlagQuantity FROM Items"_s))
        low += row[1].toDouble() > row[0].toDouble();

    EXPECT_EQ(counted(u"Jobs late"_s), late);
    EXPECT_EQ(counted(u"Estimates"_s), unpriced);
    EXPECT_EQ(counted(u"Requests"_s), unanswered);
    EXPECT_EQ(counted(u"Orders overdue"_s), overdue);
    EXPECT_EQ(counted(u"Lines for stock"_s), notStocked);
    EXPECT_EQ(counted(u"Items under"_s), low);
    EXPECT_EQ(counted(u"Jobs shipped"_s), notInvoiced);
    const qint64 least =
        std::min({late, unpriced, unanswered, overdue, notStocked, low, notInvoiced});
    EXPECT_GT(least, 0) << late << ' ' << unpriced << ' ' << unanswered << ' ' << overdue << ' '
                        << notStocked << ' ' << low << ' ' << notInvoiced;
    const StartSection jobs = read().front();
    EXPECT_EQ(static_cast<qint64>(jobs.lines.size()), std::min<qint64>(8, late));
    for (const desk::StartLine& line : jobs.lines)
        EXPECT_TRUE(
            line.left.endsWith(values::format(left[line.target.key], u"#,##0.0") + u" h left"_s))
            << line.what.toStdString() << ": " << line.left.toStdString();
}

TEST_P(StartPageTest, ItIsReadInOneWaitAndByRights) {
    const desk::Rights rights = desk::Rights::read(database());
    const quint64 before = database().waits();
    desk::startSections(database(), rights, today);
    EXPECT_LE(database().waits() - before, 1U);
    core::SharedState& state = core::shared();
    state.CurrentUserName = u"floor"_s;
    state.CurrentUserNo = 77;
    EXPECT_TRUE(read().empty());
    EXPECT_FALSE(
        desk::backupSection(state.ProgramFolder, desk::Rights::read(database()), values::now()));
    database().execute(u"INSERT INTO SecurityUsers (id, objectID) SELECT 77, objectid FROM "
                       "SecurityObjects WHERE securitycode = 'mnuInventory'"_s);
    ASSERT_EQ(read().size(), 1U);
    EXPECT_EQ(read().front().title, u"Items under their minimum"_s);
}

TEST_P(StartPageTest, ExceptionsAreCountedAndTheBackupsAgeTold) {
    QTemporaryDir folder;
    core::shared().ProgramFolder = folder.path();
    const auto backup = [&](const QDateTime& now) {
        return desk::backupSection(folder.path(), desk::Rights::read(database()), now)->title;
    };
    const QDateTime now = values::now();
    EXPECT_EQ(backup(now), u"There is no good backup"_s);
    QDir(folder.path()).mkdir(u"Backups"_s);
    for (const auto& [day, check] : {std::pair{u"25"_s, u"good"_s}, {u"28"_s, u"failed"_s}}) {
        const QString name = folder.filePath(u"Backups/Mirsa-202602%1-080000"_s.arg(day));
        keeping::writeWhole(name + u".mdb"_s, "x");
        keeping::writeWhole(name + u".txt"_s,
                            u"file=Mirsa-202602%1-080000.mdb\nmade=2026-02-%1T08:00:00\nsize=1\n"
                            "check=%2\n"_s.arg(day, check)
                                .toUtf8());
    }
    EXPECT_EQ(backup(now), u"The last good backup is 5 days old"_s);
    EXPECT_EQ(backup(now.addDays(-4)), u"The last good backup is of yesterday"_s);
    EXPECT_EQ(backup(QDateTime(QDate(2026, 2, 25), QTime(23, 59))),
              u"The last good backup is of today"_s);

    // Of a shop whose only fault are attendances that never ended.
    database().execute(u"DELETE * FROM Timelog"_s);
    database().execute(u"DELETE * FROM Sign_in"_s);
    database().execute(u"DELETE * FROM JobOper"_s);
    for (const char* day : {"23", "24", "25"})
        database().execute(u"INSERT INTO Sign_in (EmpID, Sign_in) SELECT MIN(EmpID), #02/%1/2026 "
                           "07:00:00# FROM Employee"_s.arg(QString::fromLatin1(day)));
    auto& watch = timemgmt::ExceptionWatch::on(database().name());
    watch.check(now);
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.lines() && !watch.isReading(); }));
    open(u"frmStart"_s);
    auto* tree = control<QTreeWidget>(u"tvwToday"_s);
    const QString wanted =
        u"Time exceptions: "_s +
        database().lookup(u"SELECT COUNT(*) FROM Sign_in WHERE Sign_out Is Null"_s).toText();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !tree->findItems(wanted, Qt::MatchExactly).isEmpty(); }, 8000))
        << watch.lines()->size();
    tree->setCurrentItem(tree->findItems(wanted, Qt::MatchExactly).value(0));
    key(Qt::Key_Return);
    EXPECT_TRUE(Forms::find(u"frmTimeExceptions"_s));
}

TEST_P(StartPageTest, LinesLeadToTheirRecordAndHeadingsToTheirList) {
    open(u"frmStart"_s);
    auto* page = &form();
    auto* tree = control<QTreeWidget>(u"tvwToday"_s);
    const auto group = [tree](const QString& title) -> QTreeWidgetItem* {
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            if (tree->topLevelItem(i)->text(0).startsWith(title))
                return tree->topLevelItem(i);
        }
        return nullptr;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return group(u"Jobs late"_s) != nullptr; }));
    const qint64 late = counted(u"Jobs late"_s);
    tree->setCurrentItem(group(u"Jobs late"_s)->child(0));
    const QString job = group(u"Jobs late"_s)->child(0)->text(0);
    key(Qt::Key_Return);
    auto* jobs = Forms::find<core::RecordScreen>(u"frmJob"_s);
    ASSERT_TRUE(jobs);
    EXPECT_EQ(u"Job "_s + QString::number(jobs->currentKey()), job);
    use(page);
    tree->setCurrentItem(group(u"Jobs late"_s));
    key(Qt::Key_Return);
    use(Forms::find(u"frmJobList"_s));
    auto* table = dynamic_cast<controls::RowTable*>(control(u"lvwRows"_s)->parentWidget());
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->model().order().store() != nullptr; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->model().order().count() == late; }));
    // Another station's change comes by itself, and the focus stays where it is.
    QWidget* focus = QApplication::focusWidget();
    anotherStation()->execute(u"UPDATE Items SET FlagQuantity = Quantity + 1 WHERE ID = 7"_s);
    if (!database().isServer()) // which is asked once a minute
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return group(u"Items under"_s)
                    ->text(0)
                    .endsWith(u": "_s + QString::number(counted(u"Items under"_s)));
            },
            8000));
    EXPECT_EQ(QApplication::focusWidget(), focus);
}

TEST_P(StartPageTest, WhoClosesItDoesNotSeeItAgainUntilHeAsks) {
    open(u"frmStart"_s);
    form().unload(); // as another sign-in does
    EXPECT_TRUE(desk::frmStart::isWanted());
    open(u"frmStart"_s);
    press(u"cmdClose"_s);
    EXPECT_FALSE(desk::frmStart::isWanted());
    open(u"frmStart"_s);
    EXPECT_TRUE(desk::frmStart::isWanted());
    form().parentWidget()->close(); // by its frame
    EXPECT_FALSE(desk::frmStart::isWanted());
}

MIRSA_BOTH_ENGINES(StartPageTest);

} // namespace
