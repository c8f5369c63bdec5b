#include "platform/jet/Location.h"
#include "support/DatabaseFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

using namespace testsupport;

namespace {

class DatabaseTest : public DatabaseFixture {
  protected:
    void SetUp() override {
        DatabaseFixture::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        execute(u"CREATE TABLE Customer (CustID COUNTER PRIMARY KEY, Name TEXT(10), Code TEXT(3), "
                u"Credit CURRENCY, Rank INTEGER, Since DATETIME)");
        execute(u"CREATE UNIQUE INDEX CustomerCode ON Customer (Code)");
    }
    int execute8(const QString& statement) {
        return errorOf([&] { db().execute(statement); });
    }
    QStringList names() {
        return rows(QStringLiteral("SELECT Name FROM Customer ORDER BY CustID"));
    }
};

TEST_P(DatabaseTest, ExecutesAndLooksUp) {
    EXPECT_EQ(execute(u"INSERT INTO Customer (Name, Code) VALUES ('Ann', 'A')"), 1);
    const qint64 first = db().lastCounter();
    EXPECT_EQ(execute(u"INSERT INTO Customer (Name, Code) VALUES ('Bob', 'B')"), 1);
    EXPECT_EQ(db().lastCounter(), first + 1);
    EXPECT_EQ(execute(u"UPDATE Customer SET Credit = 1.00005"), 2);
    EXPECT_EQ(
        db().lookup(QStringLiteral("SELECT Credit FROM Customer WHERE Name = 'ann'")).toText(),
        u"1");
    EXPECT_TRUE(
        db().lookup(QStringLiteral("SELECT Name FROM Customer WHERE Name = 'Zoe'")).isNull());
    EXPECT_TRUE(db().hasRows(QStringLiteral("SELECT * FROM Customer WHERE CustID > 1")));
    EXPECT_FALSE(db().hasRows(QStringLiteral("SELECT * FROM Customer WHERE CustID > 2")));
    EXPECT_EQ(db().lookup(QStringLiteral("SELECT COUNT(*) FROM Customer")).toLong(), 2);
    EXPECT_EQ(execute(u"DELETE * FROM Customer WHERE CustID = 2"), 1);
    execute(u"INSERT INTO Customer (Name) VALUES ('Cid')");
    EXPECT_EQ(db().lastCounter(), first + 2) << "a counter gives no number twice";
    execute(u"INSERT INTO Customer (CustID, Name) VALUES (500, 'Dot')");
    EXPECT_EQ(db().lastCounter(), 500);
    execute(u"INSERT INTO Customer (Name) VALUES ('Eve')");
    EXPECT_EQ(db().lastCounter(), 501);
    EXPECT_EQ(db().width(u"customer", u"NAME"), 10);
    EXPECT_EQ(db().width(u"customer", u"Since"), 0);
}

TEST_P(DatabaseTest, TellsFailuresByNumberAndLosesNothing) {
    execute(u"INSERT INTO Customer (Name, Code) VALUES ('Ann', 'A')");
    EXPECT_EQ(execute8(QStringLiteral("INSERT INTO Customer (Code) VALUES ('a')")),
              jet::errors::duplicate);
    EXPECT_EQ(execute8(QStringLiteral("UPDATE Customer SET Code = 'long'")),
              jet::errors::fieldTooSmall);
    EXPECT_EQ(execute8(QStringLiteral("UPDATE Customer SET Since = 'soon'")),
              jet::errors::typeMismatch);
    EXPECT_EQ(execute8(QStringLiteral("UPDATE Customer SET Credit = 1e20")), jet::errors::overflow);
    EXPECT_EQ(execute8(QStringLiteral("UPDATE Customer SET Name = ")), jet::errors::syntax);
    EXPECT_EQ(execute8(QStringLiteral("UPDATE Customer SET Name = 'O'Brien'")),
              jet::errors::syntax);
    EXPECT_EQ(execute8(QStringLiteral("DELETE FROM Nothing")), jet::errors::noSuchTable);
    EXPECT_EQ(execute8(QStringLiteral("DELETE FROM Customer WHERE Nmae = 'Ann'")),
              jet::errors::tooFewParameters);
    EXPECT_EQ(execute8(QStringLiteral("SELECT * FROM Customer")), jet::errors::cannotExecuteSelect);
    EXPECT_EQ(errorOf([&] { db().openRecordset(QStringLiteral("DELETE FROM Customer")); }),
              jet::errors::notASelect);
    EXPECT_EQ(names(), QStringList(QStringLiteral("Ann")));
    try {
        db().execute(QStringLiteral("INSERT INTO Customer (Code) VALUES ('A')"));
        ADD_FAILURE();
    } catch (const jet::Error& error) {
        EXPECT_EQ(
            error.text(),
            QStringLiteral("The changes you requested to the table were not successful because "
                           "they would create duplicate values in the index, primary key, or "
                           "relationship."));
    }
}

TEST_P(DatabaseTest, TransactionsNestAndOutliveFailedStatements) {
    jet::Workspace workspace(db());
    workspace.beginTrans();
    execute(u"INSERT INTO Customer (Name, Code) VALUES ('kept', 'K')");
    workspace.beginTrans();
    execute(u"INSERT INTO Customer (Name) VALUES ('undone')");
    EXPECT_EQ(workspace.depth(), 2);
    workspace.rollback();
    EXPECT_EQ(execute8(QStringLiteral("INSERT INTO Customer (Code) VALUES ('K')")),
              jet::errors::duplicate);
    EXPECT_EQ(names(), QStringList(QStringLiteral("kept")));
    {
        jet::Transaction inner(db());
        execute(u"INSERT INTO Customer (Name) VALUES ('inner')");
        inner.commit();
    }
    workspace.commitTrans();
    EXPECT_EQ(names(), (QStringList{QStringLiteral("kept"), QStringLiteral("inner")}));
    {
        jet::Transaction given_up(db());
        execute(u"DELETE FROM Customer");
    }
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(errorOf([&] { workspace.commitTrans(); }), jet::errors::noTransaction);
    EXPECT_EQ(errorOf([&] { workspace.rollback(); }), jet::errors::noTransaction);
}

TEST_P(DatabaseTest, KnowsTheTablesThatItMadeAndThatOthersMade) {
    const jet::Table* table = db().schema().table(u"CUSTOMER");
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->columns.size(), 6U);
    EXPECT_EQ(table->key(), table->column(u"CustID"));
    EXPECT_EQ(table->column(u"Credit")->type, jet::ColumnType::Currency);
    EXPECT_EQ(table->column(u"Rank")->type, jet::ColumnType::Integer);
    EXPECT_EQ(table->column(u"Since")->type, jet::ColumnType::DateTime);
    EXPECT_EQ(table->column(u"Code")->type, jet::ColumnType::Text);
    ASSERT_EQ(table->indexes.size(), 1U);
    EXPECT_TRUE(table->indexes[0].unique);

    const auto other = station();
    other->execute(QStringLiteral("CREATE TABLE Later (Id COUNTER PRIMARY KEY, Done YESNO)"));
    other->execute(QStringLiteral("ALTER TABLE Customer ADD COLUMN Phone TEXT(20)"));
    EXPECT_EQ(execute(u"INSERT INTO Later (Done) VALUES (True)"), 1);
    EXPECT_EQ(execute(u"UPDATE Customer SET Phone = ''"), 0);
    execute(u"DROP TABLE Later");
    EXPECT_EQ(execute8(QStringLiteral("DELETE FROM Later")), jet::errors::noSuchTable);
    jet::Workspace workspace(db());
    workspace.beginTrans();
    execute(u"CREATE TABLE Passing (Id LONG PRIMARY KEY)");
    workspace.rollback();
    EXPECT_EQ(execute8(QStringLiteral("DELETE FROM Passing")), jet::errors::noSuchTable);
}

TEST_P(DatabaseTest, ServesMoreStatementsThanItKeeps) {
    execute(u"INSERT INTO Customer (Name, Rank) VALUES ('Ann', 3)");
    jet::Recordset held = db().openRecordset(QStringLiteral("SELECT Name FROM Customer"));
    for (int i = 0; i < 700; ++i)
        ASSERT_EQ(db().lookup(QStringLiteral("SELECT Rank AS r%1 FROM Customer").arg(i)).toLong(),
                  3);
    held.refreshRow();
    EXPECT_EQ(held.text(u"Name"), u"Ann");
}

MIRSA_BOTH_ENGINES(DatabaseTest);

TEST(DatabaseServer, IsReachedAgainAfterItWasLost) {
    MIRSA_NEEDS_ENGINE(EngineKind::Server);
    TestDatabase test(EngineKind::Server);
    jet::Database& database = test.database();
    const auto numberOf = [&](const QString& statement) {
        try {
            database.execute(statement);
        } catch (const jet::Error& error) {
            return error.number();
        }
        return 0;
    };
    const auto cut = [&] {
        const QString name = QUrl(test.location()).path().mid(1);
        onTestServer(QStringLiteral("DO $$ BEGIN PERFORM pg_terminate_backend(pid, 5000) FROM "
                                    "pg_stat_activity WHERE datname = '%1'; END $$")
                         .arg(name));
    };
    database.execute(QStringLiteral("CREATE TABLE Note (Id COUNTER PRIMARY KEY, Body MEMO)"));
    const QString insert = QStringLiteral("INSERT INTO Note (Body) VALUES ('x')");
    EXPECT_EQ(numberOf(insert), 0);
    cut();
    EXPECT_EQ(numberOf(insert), jet::errors::connectionFailed);
    EXPECT_EQ(numberOf(insert), 0);
    {
        jet::Transaction transaction(database);
        EXPECT_EQ(numberOf(insert), 0);
        cut();
        EXPECT_EQ(numberOf(insert), jet::errors::connectionFailed);
        EXPECT_NE(numberOf(insert), 0) << "nothing more runs in a transaction that is lost";
        EXPECT_THROW(transaction.commit(), jet::Error);
    }
    EXPECT_EQ(database.lookup(QStringLiteral("SELECT COUNT(*) FROM Note")).toLong(), 2);
}

TEST(DatabaseFile, IsCompactedWhileNobodyHasItOpen) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Mirsa.mdb"));
    const QString copy = folder.filePath(QStringLiteral("MTEMP.MDB"));
    auto database = jet::Database::createFile(path);
    database->execute(QStringLiteral("CREATE TABLE Note (Id COUNTER PRIMARY KEY, Body MEMO)"));
    {
        jet::Transaction transaction(*database);
        for (int i = 0; i < 500; ++i)
            database->execute(
                QStringLiteral("INSERT INTO Note (Body) VALUES ('%1')").arg(QString(1000, u'x')));
        transaction.commit();
    }
    database->execute(QStringLiteral("DELETE FROM Note WHERE Id > 10"));
    const jet::Recordset left = database->openRecordset(QStringLiteral("SELECT * FROM Note"));
    EXPECT_EQ(left.recordCount(), 10);
    try {
        jet::Database::compactFile(path, copy);
        ADD_FAILURE() << "another station had it open";
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.number(), jet::errors::locked);
    }
    EXPECT_FALSE(QFile::exists(copy));
    database.reset(); // the recordset must not keep the file
    EXPECT_FALSE(QFile::exists(path + QStringLiteral("-wal")));
    jet::Database::compactFile(path, copy);
    EXPECT_LT(QFileInfo(copy).size() * 5, QFileInfo(path).size());
    database = jet::Database::openFile(copy);
    EXPECT_EQ(database->execute(QStringLiteral("UPDATE Note SET Body = ''")), 10);
    database->execute(QStringLiteral("INSERT INTO Note (Body) VALUES ('')"));
    EXPECT_EQ(database->lastCounter(), 501) << "a counter goes on where it was";
}

TEST(DatabaseFile, RefusesWhatIsNoDatabase) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Mirsa.mdb"));
    const auto numberOf = [](const auto& action) {
        try {
            action();
        } catch (const jet::Error& error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { jet::openProgramFolder(folder.path()); }),
              jet::errors::cannotOpenFile);
    for (const QByteArray& content : {QByteArray(), QByteArray(5000, 'x')}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        EXPECT_EQ(numberOf([&] { jet::Database::openFile(path); }),
                  jet::errors::unrecognizedFormat);
    }
    EXPECT_EQ(numberOf([&] { jet::Database::createFile(path); }), jet::errors::other);
    QFile::remove(path);
    jet::Database::createFile(path);
    EXPECT_EQ(jet::openProgramFolder(folder.path())->name(), path);

    QFile server(folder.filePath(QStringLiteral("Mirsa.server")));
    ASSERT_TRUE(server.open(QIODevice::WriteOnly));
    server.write("postgresql://nobody@127.0.0.1:1/nothing\n");
    server.close();
    EXPECT_EQ(numberOf([&] { jet::openProgramFolder(folder.path()); }),
              jet::errors::connectionFailed);
}

} // namespace
