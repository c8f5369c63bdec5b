// What a statement costs through the database layer, beside the same prepared statement on bare
// SQLite, and what a module on a large table costs. Both sides read every field that they select.

#include "platform/jet/Database.h"
#include "platform/values/Literals.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QTemporaryDir>

namespace {

constexpr int fewRows = 20000;
constexpr int manyRows = 200000;

/// A job's table with its usual columns, filled once.
class Shop {
  public:
    explicit Shop(int count) : path(m_folder.filePath(u"Mirsa.mdb"_s)) {
        database = jet::Database::createFile(path);
        database->execute(
            u"CREATE TABLE Job (JobNo COUNTER PRIMARY KEY, CustID LONG, Description TEXT(60), "
            "PartNo TEXT(30), Status TEXT(10), Quantity LONG, InvoiceEach CURRENCY, "
            "ShopRate CURRENCY, TotalHours DOUBLE, JobDateIn DATETIME, DueDate DATETIME, "
            "Complete YESNO, Notes MEMO)"_s);
        database->execute(u"CREATE INDEX JobPartNo ON Job (PartNo)"_s);
        jet::Transaction transaction(*database);
        for (int i = 1; i <= count; ++i)
            database->execute(insertText(i));
        transaction.commit();
        sqlite3_open(path.toUtf8().constData(), &bare);
        sqlite3_exec(bare, "PRAGMA synchronous = NORMAL; PRAGMA cache_size = -65536", nullptr,
                     nullptr, nullptr);
        sqlite3_busy_timeout(bare, 20000);
    }
    ~Shop() { sqlite3_close_v2(bare); }
    Shop(const Shop&) = delete;
    Shop& operator=(const Shop&) = delete;

    static QString insertText(int i) {
        return u"INSERT INTO Job (CustID, Description, PartNo, Status, Quantity, "
               "InvoiceEach, JobDateIn, Complete, Notes) VALUES (%1, 'Bracket, %2', "
               "'P-%2', 'Open', %3, 12.5, #3/2/2026#, False, 'Deburr all edges')"_s.arg(i % 997)
                   .arg(i)
                   .arg(i % 50);
    }
    sqlite3_stmt* prepare(const char* sql) const {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v3(bare, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
        return statement;
    }

  private:
    QTemporaryDir m_folder;

  public:
    QString path;
    std::unique_ptr<jet::Database> database;
    sqlite3* bare = nullptr;
};

Shop& shop() {
    static Shop made(fewRows);
    return made;
}

Shop& largeShop() {
    static Shop made(manyRows);
    return made;
}

constexpr char columns[] = "JobNo, CustID, Description, PartNo, Status, Quantity, InvoiceEach, "
                           "ShopRate, TotalHours, JobDateIn, DueDate, Complete, Notes";

void SelectByKeyBare(benchmark::State& state) {
    sqlite3_stmt* statement =
        shop().prepare(QByteArray("SELECT ").append(columns).append(" FROM Job WHERE JobNo = ?1"));
    int key = 0;
    for (auto _ : state) {
        key = key % fewRows + 1;
        sqlite3_bind_int64(statement, 1, key);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column : {0, 1, 5, 11})
                benchmark::DoNotOptimize(sqlite3_column_int64(statement, column));
            for (int column : {6, 7, 8})
                benchmark::DoNotOptimize(sqlite3_column_double(statement, column));
            for (int column : {2, 3, 4, 9, 10, 12})
                benchmark::DoNotOptimize(QString::fromUtf8(
                    reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                    sqlite3_column_bytes(statement, column)));
        }
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}
BENCHMARK(SelectByKeyBare);

void SelectByKeyDynaset(benchmark::State& state) {
    int key = 0;
    for (auto _ : state) {
        key = key % fewRows + 1;
        const jet::Recordset rs = shop().database->openRecordset(
            u"SELECT * FROM Job WHERE JobNo = "_s + QString::number(key));
        for (int column = 0; column < 13; ++column)
            benchmark::DoNotOptimize(rs.field(column));
    }
}
BENCHMARK(SelectByKeyDynaset);

void SelectByKeySnapshot(benchmark::State& state) {
    int key = 0;
    for (auto _ : state) {
        key = key % fewRows + 1;
        const jet::Recordset rs = shop().database->openRecordset(
            u"SELECT * FROM Job WHERE JobNo = "_s + QString::number(key),
            jet::RecordsetType::Snapshot);
        for (int column = 0; column < 13; ++column)
            benchmark::DoNotOptimize(rs.field(column));
    }
}
BENCHMARK(SelectByKeySnapshot);

void UpdateBare(benchmark::State& state) {
    sqlite3_stmt* statement =
        shop().prepare("UPDATE Job SET Quantity = ?1, Status = ?2 WHERE JobNo = ?3");
    int key = 0;
    for (auto _ : state) {
        key = key % fewRows + 1;
        sqlite3_bind_int64(statement, 1, key + state.iterations());
        sqlite3_bind_text(statement, 2, "Closed", -1, SQLITE_STATIC);
        sqlite3_bind_int64(statement, 3, key);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}
BENCHMARK(UpdateBare);

void Update(benchmark::State& state) {
    int key = 0;
    for (auto _ : state) {
        key = key % fewRows + 1;
        shop().database->execute(u"UPDATE Job SET Quantity = "_s +
                                 QString::number(key + state.iterations()) +
                                 u", Status = 'Closed' WHERE JobNo = "_s + QString::number(key));
    }
}
BENCHMARK(Update);

void InsertBare(benchmark::State& state) {
    sqlite3_stmt* statement =
        shop().prepare("INSERT INTO Job (CustID, Description, PartNo, Quantity, Complete) VALUES "
                       "(?1, ?2, ?3, ?4, ?5)");
    int number = 0;
    for (auto _ : state) {
        sqlite3_bind_int64(statement, 1, ++number % 997);
        sqlite3_bind_text(statement, 2, "Bracket, left", -1, SQLITE_STATIC);
        sqlite3_bind_text(statement, 3, "P-4711", -1, SQLITE_STATIC);
        sqlite3_bind_int64(statement, 4, number);
        sqlite3_bind_int64(statement, 5, 0);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}
BENCHMARK(InsertBare);

void Insert(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        ++number;
        shop().database->execute(
            u"INSERT INTO Job (CustID, Description, PartNo, Quantity, Complete) VALUES "
            "("_s +
            QString::number(number % 997) + u", 'Bracket, left', 'P-4711', "_s +
            QString::number(number) + u", False)"_s);
    }
}
BENCHMARK(Insert);

void OpenLargeDynaset(benchmark::State& state) {
    largeShop();
    for (auto _ : state) {
        const jet::Recordset rs =
            largeShop().database->openRecordset(u"SELECT * FROM Job ORDER BY JobNo"_s);
        benchmark::DoNotOptimize(rs.recordCount());
    }
}
BENCHMARK(OpenLargeDynaset)->Unit(benchmark::kMillisecond);

void MoveInLargeDynaset(benchmark::State& state) {
    jet::Recordset rs = largeShop().database->openRecordset(u"SELECT * FROM Job ORDER BY JobNo"_s);
    for (auto _ : state) {
        rs.moveNext();
        if (rs.eof())
            rs.moveFirst();
        benchmark::DoNotOptimize(rs.field(2));
    }
}
BENCHMARK(MoveInLargeDynaset);

void FindByKeyInLargeDynaset(benchmark::State& state) {
    jet::Recordset rs = largeShop().database->openRecordset(u"SELECT * FROM Job ORDER BY JobNo"_s);
    for (auto _ : state) {
        rs.findFirst(u"JobNo = %1"_s.arg(manyRows - 5));
        benchmark::DoNotOptimize(rs.field(2));
    }
}
BENCHMARK(FindByKeyInLargeDynaset);

void FindByTextInLargeDynaset(benchmark::State& state) {
    jet::Recordset rs = largeShop().database->openRecordset(u"SELECT * FROM Job ORDER BY JobNo"_s);
    for (auto _ : state) {
        rs.findFirst(u"PartNo = 'P-%1'"_s.arg(manyRows - 5));
        benchmark::DoNotOptimize(rs.field(2));
    }
}
BENCHMARK(FindByTextInLargeDynaset);

void ReadLargeSnapshot(benchmark::State& state) {
    for (auto _ : state) {
        jet::Recordset rs = largeShop().database->openRecordset(u"SELECT TOP 100000 * FROM Job"_s,
                                                                jet::RecordsetType::Snapshot);
        benchmark::DoNotOptimize(rs.recordCount());
    }
}
BENCHMARK(ReadLargeSnapshot)->Unit(benchmark::kMillisecond);

/// A list of all rows by a text, of which each n-th has letters beyond ASCII; 0: in the order of
/// the key, for comparison.
void ListByText(benchmark::State& state) {
    jet::Database& database = *largeShop().database;
    const auto nth = state.range(0);
    database.execute(u"UPDATE Job SET PartNo = 'P-' & JobNo"_s);
    if (nth > 1)
        database.execute(u"UPDATE Job SET PartNo = 'Ö-' & JobNo WHERE JobNo MOD "_s +
                         QString::number(nth) + u" = 0"_s);
    const QString select =
        u"SELECT JobNo, PartNo FROM Job ORDER BY "_s + (nth == 0 ? u"JobNo"_s : u"PartNo"_s);
    for (auto _ : state) {
        const jet::Recordset rs = database.openRecordset(select, jet::RecordsetType::Snapshot);
        benchmark::DoNotOptimize(rs.recordCount());
    }
}
BENCHMARK(ListByText)->Arg(0)->Arg(1)->Arg(20)->Arg(2)->Unit(benchmark::kMillisecond);

void FindATextWithUmlauts(benchmark::State& state) {
    jet::Database& database = *largeShop().database;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            database.lookup(u"SELECT JobNo FROM Job WHERE PartNo = 'Größe Ü-7'"_s));
}
BENCHMARK(FindATextWithUmlauts);

} // namespace
