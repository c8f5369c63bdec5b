#include "setup/Check.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "setup/Setup.h"
#include "support/DatabaseFixture.h"

namespace {

class Check : public testsupport::ShopDatabaseFixture {
  protected:
    QStringList found(bool mend = false) {
        QStringList lines;
        for (const setup::Finding& finding : setup::check(db(), {.mend = mend}))
            lines +=
                finding.table + u' ' + finding.record + (finding.mended ? u" mended"_s : QString());
        return lines;
    }
};
MIRSA_BOTH_ENGINES(Check);

} // namespace

TEST_P(Check, FindsByRecordWhatIsWrongAndMendsWhatHasOneAnswer) {
    EXPECT_EQ(found(), QStringList());
    execute(u"INSERT INTO Operation (Description, OperType) VALUES ('Milling', 'I')");
    execute(u"INSERT INTO Job (Description, Quantity) VALUES ('Bushing', 1)");
    execute(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount) VALUES (1, 1, 1, 5)");
    EXPECT_EQ(found(), QStringList{u"JobOper JobNo 1, OperNo 1"_s}) << "5 hours, none booked";
    EXPECT_EQ(found(true), QStringList{u"JobOper JobNo 1, OperNo 1"_s})
        << "its time records may have been archived";
    execute(u"INSERT INTO Timelog (JobNo, OperNo, AccumTime) VALUES (1, 1, 2.5)");
    execute(u"INSERT INTO JobOperNote (ID, JobNo, SeqNo, OperNotes) VALUES (1, 1, 4, 'deburr')");
    execute(
        u"INSERT INTO JobOperNote (ID, JobNo, SeqNo, OperNotes) VALUES (0, 0, 1, 'being added')");
    execute(u"INSERT INTO Timelog (JobNo, OperNo, EmpID) VALUES (1, 2, 77)");
    execute(u"INSERT INTO SecurityUsers (id, objectID) VALUES (99, 1)");
    execute(u"INSERT INTO Users (UserID) VALUES ('admin')");
    setup::setLastGiven(db(), u"Operation"_s, u"OperNo"_s, 20);
    jet::Native native(db());
    if (db().isServer())
        native.execute("SELECT setval(pg_get_serial_sequence('job', 'jobno'), 1, false)");
    else
        native.execute("UPDATE sqlite_sequence SET seq = 0 WHERE name = 'Job'");

    const QStringList all = found();
    for (const auto* line : {u"JobOper JobNo 1, OperNo 1", u"JobOperNote ID 1", u"Timelog ID 2",
                             u"SecurityUsers id 99", u"Job ", u"Users UserID Admin"})
        EXPECT_TRUE(all.contains(QString::fromUtf16(line), Qt::CaseInsensitive))
            << QString::fromUtf16(line).toStdString();
    EXPECT_EQ(all.size(), 6) << all.join(u'\n').toStdString();
    EXPECT_EQ(found(true).filter(u" mended"_s).size(), 4);
    EXPECT_EQ(found().size(), 2) << "two stay for people to decide";
    EXPECT_EQ(rows(u"SELECT OperTime_Amount FROM JobOper"_s), QStringList{u"2.5"_s});
    EXPECT_EQ(rows(u"SELECT TotalHours FROM Job"_s), QStringList{u"2.5"_s});
    EXPECT_EQ(rows(u"SELECT SeqNo FROM JobOperNote ORDER BY ID"_s), (QStringList{u"1"_s, u"1"_s}));
    execute(u"INSERT INTO Job (CustID) VALUES (0)");
    EXPECT_EQ(db().lastCounter(), 2);
    execute(u"INSERT INTO Operation (Description) VALUES ('Turning')");
    EXPECT_EQ(db().lastCounter(), 21) << "a counter that is ahead stays there";
}
