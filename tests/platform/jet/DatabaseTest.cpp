#include "platform/jet/Location.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

using namespace testsupport;

namespace {

class DatabaseTest : public DatabaseFixture {
  protected:
    void prepare() override {
        execute(u"CREATE TABLE Customer (CustID COUNTER PRIMARY KEY, Name TEXT(10), Code TEXT(3), "
                u"Credit CURRENCY, Rank INTEGER, Since DATETIME)");
        execute(u"CREATE UNIQUE INDEX CustomerCode ON Customer (Code)");
    }
    int execute8(const QString& statement) {
        return errorOf([&] { EXPECT_GE(db().execute(statement), 0); });
    }
    QStringList names() { return rows(u"SELECT Name FROM Customer ORDER BY CustID"_s); }
};

TEST_P(DatabaseTest, ExecutesAndLooksUp) {
    EXPECT_EQ(execute(u"INSERT INTO Customer (Name, Code) VALUES ('Ann', 'A')"), 1);
    const qint64 first = db().lastCounter();
    EXPECT_EQ(execute(u"INSERT INTO Customer (Name, Code) VALUES ('Bob', 'B')"), 1);
    EXPECT_EQ(db().lastCounter(), first + 1);
    EXPECT_EQ(execute(u"UPDATE Customer SET Credit = 1.00005"), 2);
    EXPECT_EQ(db().lookup(u"SELECT Credit FROM Customer WHERE Name = 'ann'"_s).toText(), u"1");
    EXPECT_TRUE(db().lookup(u"SELECT Name FROM Customer WHERE Name = 'Zoe'"_s).isNull());
    EXPECT_TRUE(db().hasRows(u"SELECT * FROM Customer WHERE CustID > 1"_s));
    EXPECT_FALSE(db().hasRows(u"SELECT * FROM Customer WHERE CustID > 2"_s));
    EXPECT_EQ(db().lookup(u"SELECT COUNT(*) FROM Customer"_s).toLong(), 2);
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
    EXPECT_EQ(execute8(u"INSERT INTO Customer (Code) VALUES ('a')"_s), jet::errors::duplicate);
    EXPECT_EQ(execute8(u"UPDATE Customer SET Code = 'long'"_s), jet::errors::fieldTooSmall);
    EXPECT_EQ(execute8(u"UPDATE Customer SET Since = 'soon'"_s), jet::errors::typeMismatch);
    EXPECT_EQ(execute8(u"UPDATE Customer SET Credit = 1e20"_s), jet::errors::overflow);
    EXPECT_EQ(execute8(u"UPDATE Customer SET Name = "_s), jet::errors::syntax);
    EXPECT_EQ(execute8(u"UPDATE Customer SET Name = 'O'Brien'"_s), jet::errors::syntax);
    EXPECT_EQ(execute8(u"DELETE FROM Nothing"_s), jet::errors::noSuchTable);
    EXPECT_EQ(execute8(u"DELETE FROM Customer WHERE Nmae = 'Ann'"_s),
              jet::errors::tooFewParameters);
    EXPECT_EQ(execute8(u"SELECT * FROM Customer"_s), jet::errors::cannotExecuteSelect);
    EXPECT_EQ(errorOf([&] { db().openRecordset(u"DELETE FROM Customer"_s); }),
              jet::errors::notASelect);
    EXPECT_EQ(names(), QStringList(u"Ann"_s));
    try {
        db().execute(u"INSERT INTO Customer (Code) VALUES ('A')"_s);
        ADD_FAILURE();
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.text(),
                  u"The changes you requested to the table were not successful because "
                  "they would create duplicate values in the index, primary key, or "
                  "relationship."_s);
    }
}

TEST_P(DatabaseTest, RefusesNumbersBeyondADouble) {
    EXPECT_EQ(execute8(u"UPDATE Customer SET Credit = 1e309"_s), jet::errors::overflow);
    EXPECT_EQ(errorOf([&] { db().lookup(u"SELECT 1e309 FROM Customer"_s); }),
              jet::errors::overflow);
}

TEST_P(DatabaseTest, TransactionsNestAndOutliveFailedStatements) {
    jet::Workspace workspace(db());
    workspace.beginTrans();
    execute(u"INSERT INTO Customer (Name, Code) VALUES ('kept', 'K')");
    workspace.beginTrans();
    execute(u"INSERT INTO Customer (Name) VALUES ('undone')");
    EXPECT_EQ(workspace.depth(), 2);
    workspace.rollback();
    EXPECT_EQ(execute8(u"INSERT INTO Customer (Code) VALUES ('K')"_s), jet::errors::duplicate);
    EXPECT_EQ(names(), QStringList(u"kept"_s));
    {
        jet::Transaction inner(db());
        execute(u"INSERT INTO Customer (Name) VALUES ('inner')");
        inner.commit();
    }
    workspace.commitTrans();
    EXPECT_EQ(names(), (QStringList{u"kept"_s, u"inner"_s}));
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
    other->execute(u"CREATE TABLE Later (Id COUNTER PRIMARY KEY, Done YESNO)"_s);
    other->execute(u"ALTER TABLE Customer ADD COLUMN Phone TEXT(20)"_s);
    EXPECT_EQ(execute(u"INSERT INTO Later (Done) VALUES (True)"), 1);
    EXPECT_EQ(execute(u"UPDATE Customer SET Phone = ''"), 0);
    execute(u"DROP TABLE Later");
    EXPECT_EQ(execute8(u"DELETE FROM Later"_s), jet::errors::noSuchTable);
    jet::Workspace workspace(db());
    workspace.beginTrans();
    execute(u"CREATE TABLE Passing (Id LONG PRIMARY KEY)");
    workspace.rollback();
    EXPECT_EQ(execute8(u"DELETE FROM Passing"_s), jet::errors::noSuchTable);
}

TEST_P(DatabaseTest, ServesMoreStatementsThanItKeeps) {
    execute(u"INSERT INTO Customer (Name, Rank) VALUES ('Ann', 3)");
    jet::Recordset held = db().openRecordset(u"SELECT Name FROM Customer"_s);
    for (int i = 0; i < 700; ++i)
        ASSERT_EQ(db().lookup(u"SELECT Rank AS r%1 FROM Customer"_s.arg(i)).toLong(), 3);
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
            EXPECT_EQ(database.execute(statement), 1);
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.failure() == jet::Failure::ConnectionLost,
                      error.number() == jet::errors::connectionFailed);
            return error.number();
        }
        return 0;
    };
    const auto cut = [&] {
        const QString name = QUrl(test.location()).path().mid(1);
        onTestServer(u"DO $$ BEGIN PERFORM pg_terminate_backend(pid, 5000) FROM "
                     "pg_stat_activity WHERE datname = '%1'; END $$"_s.arg(name));
    };
    database.execute(u"CREATE TABLE Note (Id COUNTER PRIMARY KEY, Body MEMO)"_s);
    const QString insert = u"INSERT INTO Note (Body) VALUES ('x')"_s;
    EXPECT_EQ(numberOf(insert), 0);
    cut();
    EXPECT_EQ(numberOf(insert), 0) << "what was lost between two statements isn't even seen";
    {
        jet::Transaction transaction(database);
        cut();
        database.execute(insert);
        transaction.commit();
    }
    EXPECT_EQ(database.lookup(u"SELECT COUNT(*) FROM Note"_s).toLong(), 3);
    {
        jet::Transaction transaction(database);
        EXPECT_EQ(numberOf(insert), 0);
        cut();
        EXPECT_EQ(numberOf(insert), jet::errors::connectionFailed);
        EXPECT_NE(numberOf(insert), 0) << "nothing more runs in a transaction that is lost";
        EXPECT_THROW(transaction.commit(), jet::Error);
    }
    EXPECT_EQ(database.lookup(u"SELECT COUNT(*) FROM Note"_s).toLong(), 3);
}

TEST(DatabaseFile, IsCompactedWhileNobodyHasItOpen) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Mirsa.mdb"_s);
    const QString copy = folder.filePath(u"MTEMP.MDB"_s);
    auto database = jet::Database::createFile(path);
    database->execute(u"CREATE TABLE Note (Id COUNTER PRIMARY KEY, Body MEMO)"_s);
    {
        jet::Transaction transaction(*database);
        for (int i = 0; i < 500; ++i)
            database->execute(u"INSERT INTO Note (Body) VALUES ('%1')"_s.arg(QString(1000, u'x')));
        transaction.commit();
    }
    database->execute(u"DELETE FROM Note WHERE Id > 10"_s);
    const jet::Recordset left = database->openRecordset(u"SELECT * FROM Note"_s);
    EXPECT_EQ(left.recordCount(), 10);
    try {
        jet::Database::compactFile(path, copy);
        ADD_FAILURE() << "another station had it open";
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.number(), jet::errors::locked);
    }
    EXPECT_FALSE(QFile::exists(copy));
    database.reset(); // the recordset must not keep the file
    EXPECT_FALSE(QFile::exists(path + u"-wal"_s));
    jet::Database::compactFile(path, copy);
    EXPECT_LT(QFileInfo(copy).size() * 5, QFileInfo(path).size());
    database = jet::Database::openFile(copy);
    EXPECT_EQ(database->execute(u"UPDATE Note SET Body = ''"_s), 10);
    database->execute(u"INSERT INTO Note (Body) VALUES ('')"_s);
    EXPECT_EQ(database->lastCounter(), 501) << "a counter goes on where it was";
}

TEST(DatabaseFile, RefusesWhatIsNoDatabase) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Mirsa.mdb"_s);
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

    QFile server(folder.filePath(u"Mirsa.server"_s));
    ASSERT_TRUE(server.open(QIODevice::WriteOnly));
    server.write("postgresql://nobody@127.0.0.1:1/nothing\n");
    server.close();
    EXPECT_EQ(numberOf([&] { jet::openProgramFolder(folder.path()); }),
              jet::errors::connectionFailed);
}

} // namespace
