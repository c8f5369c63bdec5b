#include "setup/Setup.h"
#include "core/MainMenu.h"
#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"

#include <QFile>
#include <QSet>

namespace {

class Setup : public testsupport::ShopDatabaseFixture {};
MIRSA_BOTH_ENGINES(Setup);

class OlderDatabase : public testsupport::DatabaseFixture {
  protected:
    /// The tables of an earlier release, which lacked some.
    void makeOlder() {
        for (QString statement : setup::definitions()) {
            if (statement.contains(u"RfqNotes") || statement.contains(u"Items_PartNumber"))
                continue;
            for (const auto* column :
                 {u"    ScheduleZoom INTEGER,\n", u"    OrderRequired YESNO,\n",
                  u",\n    QBSent INTEGER DEFAULT 0"}) {
                if (!statement.startsWith(u"CREATE TABLE Customer"))
                    statement.remove(QString::fromUtf16(column));
            }
            db().execute(statement);
        }
    }
};
MIRSA_BOTH_ENGINES(OlderDatabase);

} // namespace

// Later statements trust the schema that is read back from the engine: field widths, keys, types.
TEST_P(Setup, TheEngineTellsTheSchemaAsItWasDefined) {
    const auto other = station();
    for (const QString& statement : setup::definitions()) {
        if (!statement.startsWith(u"CREATE TABLE"))
            continue;
        const jet::Table wanted = jet::tableFromDefinition(statement);
        const jet::Table* table = other->schema().table(wanted.name);
        ASSERT_TRUE(table) << wanted.name.toStdString();
        ASSERT_EQ(table->columns.size(), wanted.columns.size()) << wanted.name.toStdString();
        for (const jet::Column& column : wanted.columns) {
            const std::string name = (wanted.name + u'.' + column.name).toStdString();
            const jet::Column* found = table->column(column.name);
            ASSERT_TRUE(found) << name;
            EXPECT_EQ(found->type, column.type) << name;
            EXPECT_EQ(found->width, column.width) << name;
            EXPECT_EQ(found->primaryKey, column.primaryKey) << name;
        }
    }
}

// Shipments and bars outlive their job; a number that came back would give them to another one.
TEST_P(Setup, NumbersAreNeverGivenTwice) {
    struct Counter {
        const char16_t *table, *key, *filled;
    };
    for (const auto& [table, key, filled] :
         {Counter{u"Job", u"JobNo", u"CustID"}, Counter{u"Estimate", u"EstNo", u"CustID"},
          Counter{u"EstOper", u"ID", u"EstNo"}, Counter{u"JobOper", u"ID", u"JobNo"},
          Counter{u"JobOperSchedule", u"ID", u"JobNo"}, Counter{u"POItem", u"ID", u"PONumber"}}) {
        const QString name = QString::fromUtf16(table);
        const QString insert =
            u"INSERT INTO %1 (%2) VALUES (1)"_s.arg(name, QString::fromUtf16(filled));
        db().execute(insert);
        const qint64 first = db().lastCounter();
        db().execute(
            u"DELETE FROM %1 WHERE %2 = %3"_s.arg(name, QString::fromUtf16(key)).arg(first));
        const auto other = station();
        other->execute(insert);
        EXPECT_GT(other->lastCounter(), first) << name.toStdString();
    }
}

TEST_P(Setup, LeftOutColumnsTakeWhatTheirReadersExpect) {
    execute(u"INSERT INTO Users (UserID, username, password) VALUES ('new', 'N', 'p')");
    EXPECT_EQ(rows(u"SELECT usergroupid FROM Users WHERE UserID = 'new'"_s), QStringList{u"0"_s});
    execute(u"INSERT INTO Terms (description, netdue) VALUES ('Net 90', 90)");
    EXPECT_EQ(rows(u"SELECT QBSent FROM Terms WHERE description = 'net 90'"_s),
              QStringList{u"0"_s});
    execute(u"INSERT INTO JobOperNote (JobNo, SeqNo, OperNotes) VALUES (5, 1, 'n')");
    EXPECT_TRUE(db().hasRows(u"SELECT ID FROM JobOperNote WHERE ID = 0"_s));
    execute(u"INSERT INTO POItem (PONumber) VALUES (3)");
    EXPECT_TRUE(db().hasRows(u"SELECT ID FROM POItem WHERE ReceivedQuantity < 1 AND Job = 0"_s));
    execute(u"INSERT INTO Job (CustID) VALUES (3)");
    EXPECT_TRUE(
        db().hasRows(u"SELECT JobNo FROM Job WHERE Shipped = False AND OrderRequired = False "
                     "AND ScheduleZoom IS NULL AND SchedulePeriod IS NULL"_s));
    execute(u"INSERT INTO Timelog (EmpID, Status) VALUES (1, '0')");
    EXPECT_TRUE(db().hasRows(u"SELECT ID FROM Timelog WHERE JobNo IS NULL"_s));
}

TEST_P(Setup, RightsNameMenusOfTheShell) {
    const QStringList menus = core::menuNames();
    QSet<QString> securable;
    for (const QString& code :
         rows(u"SELECT securitycode FROM SecurityObjects ORDER BY displayorder"_s)) {
        EXPECT_TRUE(code == u"ShowDollar" || menus.contains(code)) << code.toStdString();
        EXPECT_FALSE(securable.contains(code)) << code.toStdString();
        securable.insert(code);
    }
    // What anybody may do without a right: log in, leave, edit, arrange windows, get help.
    static const QStringList open = {u"mnuFile"_s, u"mnuEdit"_s, u"mnuTools"_s, u"mnuWindow"_s,
                                     u"mnuHelp"_s};
    for (const core::MenuEntry& menu : core::mainMenu()) {
        if (open.contains(menu.name))
            continue;
        EXPECT_TRUE(securable.contains(menu.name)) << menu.name.toStdString();
        for (const core::MenuEntry& entry : menu.children) {
            EXPECT_TRUE(securable.contains(entry.right.isEmpty() ? entry.name : entry.right))
                << entry.name.toStdString();
            for (const core::MenuEntry& sub : entry.children)
                EXPECT_TRUE(securable.contains(sub.right.isEmpty() ? sub.name : sub.right))
                    << sub.name.toStdString();
        }
    }
}

TEST_P(Setup, DeliveredReportsHaveTheirFilesAndOneDefaultEach) {
    QHash<QString, int> defaults;
    for (const QString& row : rows(u"SELECT Module, FileName, IIf([Default] = true, 1, 0) AS d "
                                   "FROM Reports WHERE OEM = 1"_s)) {
        const QStringList fields = row.split(u'|');
        EXPECT_TRUE(QFile::exists(testsupport::sourceFile(u"reports/"_s) + fields[1]))
            << fields[1].toStdString();
        // Types that begin alike share their default: the issues and receipts of the inventory.
        defaults[fields[0].startsWith(u"Inventory") ? u"Inventory"_s : fields[0]] +=
            fields[2].toInt();
    }
    EXPECT_FALSE(defaults.isEmpty());
    for (auto it = defaults.begin(); it != defaults.end(); ++it)
        EXPECT_EQ(it.value(), 1) << it.key().toStdString();
}

TEST_P(Setup, TheAdministratorSignsInWithOneRowOfSettings) {
    EXPECT_TRUE(db().hasRows(
        u"SELECT ID, userGroupID FROM Users WHERE password = 'bolts' AND UserID = 'ADMIN'"_s));
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM SystemSettings"_s), QStringList{u"1"_s});
    EXPECT_EQ(rows(u"SELECT Code FROM LineItemType WHERE Code IN "
                   "('Overhead', 'Estimate', 'Job', 'Stock')"_s)
                  .size(),
              4);
}

TEST_P(OlderDatabase, AnUpgradeAddsWhatIsMissingAndLosesNothing) {
    makeOlder();
    execute(u"INSERT INTO Customer (company) VALUES ('D''Amico Präzision')");
    execute(u"INSERT INTO Job (CustID, Description) VALUES (1, 'Bushing')");
    execute(u"INSERT INTO Terms (description, netdue) VALUES ('Net 90', 90)");
    execute(u"INSERT INTO SecurityObjects (objectid, objectname, securitycode, displayorder) "
            u"VALUES (7, 'Auftrag', 'mnuFileJob', 3)");
    execute(u"INSERT INTO SecurityGroups (groupid, objectID) VALUES (1, 7)");
    execute(u"INSERT INTO Reports (Name, [Module], FileName, OEM, [Default]) VALUES ('Ours', "
            u"'Jobs', 'Job_Report.rpt', 1, False)");
    {
        const auto other = station();
        const QStringList added = setup::upgrade(*other);
        for (const auto* line : {u"added table RfqNotes", u"added column Job.ScheduleZoom",
                                 u"added column Job.OrderRequired", u"added column Terms.QBSent",
                                 u"added index Items_PartNumber", u"added row mnuCreports",
                                 u"added row Customers.rpt"})
            EXPECT_TRUE(added.contains(QString::fromUtf16(line), Qt::CaseInsensitive))
                << QString::fromUtf16(line).toStdString();
        EXPECT_EQ(added.contains(u"added index Items_Description_Pieces"), other->isServer());
        EXPECT_TRUE(setup::upgrade(*other).isEmpty());
    }
    testDatabase().close();
    const auto again = station();
    const auto rowsOf = [&again](const char16_t* select) {
        return rows(*again, QString::fromUtf16(select)).join(u';');
    };
    EXPECT_EQ(rowsOf(u"SELECT company FROM Customer"), u"D'Amico Präzision");
    EXPECT_EQ(rowsOf(u"SELECT Description, ScheduleZoom FROM Job WHERE OrderRequired = False"),
              u"Bushing|");
    EXPECT_EQ(rowsOf(u"SELECT description FROM Terms WHERE QBSent = 0"), u"Net 90");
    // The house's own names, rights and choices stay as they are; numbers don't collide.
    EXPECT_EQ(rowsOf(u"SELECT objectname, objectid FROM SecurityObjects WHERE securitycode = "
                     u"'mnuFileJob'"),
              u"Auftrag|7");
    EXPECT_EQ(rowsOf(u"SELECT objectid FROM SecurityObjects GROUP BY objectid HAVING COUNT(*) > 1"),
              u"");
    EXPECT_EQ(rowsOf(u"SELECT Name FROM Reports WHERE FileName = 'Job_Report.rpt'"), u"Ours");
    again->execute(u"INSERT INTO RfqNotes (CustID, RFQNo) VALUES (1, 'RFQ-1')"_s);
}
