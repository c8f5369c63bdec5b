#include "inventory/Items.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <QHash>
#include <QProcess>
#include <QThread>

#include <map>
#include <set>

using namespace inventory;

namespace {

/// Stations as processes of their own, moving the stock of one database. Triggers note each change
/// in the order in which it stands; a replay of these deeds, one after the other and by the rules
/// alone, says what must have come of them.
class StockStations : public testsupport::ShopDatabaseFixture {
  protected:
    static constexpr int stations = 4;
    static constexpr qint64 begin = 30;

    void prepare() override {
        const qint64 type = saveFolder(db(), typeView(), 0, 0, u"Bolts"_s);
        const qint64 location = saveFolder(db(), locationView(), 0, 0, u"Rack"_s);
        for (int i = 0; i < 6; ++i) {
            Item item;
            item.description = item.partNumber = QString::number(i);
            item.units = u"EA"_s;
            item.quantity = begin;
            item.type = type;
            item.location = location;
            m_stock.insert(addItem(db(), item), begin);
        }
        makeLog();
    }

    void makeLog() {
        jet::Native native(db());
        const bool server = db().isServer();
        native.execute("CREATE TABLE StockLog (N " + QByteArray(server ? "bigserial" : "INTEGER") +
                       " PRIMARY KEY, What TEXT, Item INTEGER, Deed INTEGER, Quantity INTEGER)");
        const auto note = [&](const char* what, const char* event, const char* table,
                              const char* row, const char* item, const char* deed,
                              const char* when) {
            const QByteArray of = QByteArray(row) + '.';
            const QByteArray insert =
                QByteArray("INSERT INTO StockLog (What, Item, Deed, Quantity) VALUES ('") + what +
                "', " + of + item + ", CAST(" + of + deed + " AS INTEGER), " + of + "Quantity); ";
            const QByteArray name = QByteArray("Log_") + what;
            const QByteArray head = QByteArray("CREATE TRIGGER ") + name + " AFTER " + event +
                                    " ON " + table + " FOR EACH ROW " + when;
            if (!server) {
                native.execute(head + " BEGIN " + insert + "END");
                return;
            }
            native.execute("CREATE FUNCTION " + name +
                           "_f() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN " + insert +
                           "RETURN NULL; END $$");
            native.execute(head + " EXECUTE FUNCTION " + name + "_f()");
        };
        note("out", "INSERT", "ItemIssue", "NEW", "ItemID", "Employee", "");
        note("in", "INSERT", "ItemReStock", "NEW", "ItemID", "Employee", "");
        note("outBack", "DELETE", "ItemIssue", "OLD", "ItemID", "Employee", "");
        note("inBack", "DELETE", "ItemReStock", "OLD", "ItemID", "Employee", "");
        note("typed", "UPDATE", "Items", "NEW", "ID", "Manufacturer",
             server ? "WHEN (NEW.Manufacturer IS DISTINCT FROM OLD.Manufacturer)"
                    : "WHEN NEW.Manufacturer IS NOT OLD.Manufacturer");
    }

    std::vector<std::unique_ptr<QProcess>> start(int steps, int round = 0) {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < stations; ++i) {
            auto& process = processes.emplace_back(std::make_unique<QProcess>());
            process->start(QStringLiteral(MIRSA_STOCK_MOVER),
                           {testDatabase().location(), QString::number(1 + i + stations * round),
                            QString::number(steps)});
            EXPECT_TRUE(process->waitForStarted());
        }
        return processes;
    }

    /// Takes down what a station has said; a line that was cut off it hasn't.
    void hear(QProcess& process) {
        const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
        for (qsizetype i = 0; i + 1 < lines.size(); ++i)
            m_said.push_back(lines[i].split(' '));
    }

    void expectAsReplayed() {
        std::map<qint64, std::map<qint64, qint64>> after; // by item: number in the log, stock then
        QHash<qint64, qint64> stock = m_stock;
        std::map<qint64, std::pair<QString, qint64>> history; // by deed: the table's word, quantity
        std::set<qint64> done;
        for (auto i = stock.cbegin(); i != stock.cend(); ++i)
            after[i.key()][0] = i.value();
        for (const jet::Native::Row& row : jet::Native(db()).rows(
                 "SELECT N, What, Item, Deed, Quantity FROM StockLog ORDER BY N")) {
            const QString what = row[1].toText();
            const qint64 item = row[2].toInteger(), deed = row[3].toInteger(),
                         quantity = row[4].toInteger();
            qint64& held = stock[item];
            if (what == u"typed") {
                held = quantity;
            } else if (what == u"out") {
                EXPECT_GE(held, quantity) << "more than there was, deed " << deed;
                held -= quantity;
            } else if (what == u"in") {
                held += quantity;
            } else {
                EXPECT_EQ(history[deed], std::pair(what.chopped(4), quantity));
                held = std::max<qint64>(0, held + (what == u"outBack" ? quantity : -quantity));
                history.erase(deed);
            }
            if (what == u"out" || what == u"in")
                EXPECT_TRUE(history.emplace(deed, std::pair(what, quantity)).second);
            done.insert(deed);
            after[item][row[0].toInteger()] = held;
        }
        for (auto i = stock.cbegin(); i != stock.cend(); ++i)
            EXPECT_EQ(
                db().lookup(u"SELECT Quantity FROM Items WHERE ID = %1"_s.arg(i.key())).toLong(),
                i.value());
        std::map<qint64, std::pair<QString, qint64>> rows;
        for (const jet::Native::Row& row : jet::Native(db()).rows(
                 "SELECT Employee, 'out', Quantity FROM ItemIssue UNION ALL SELECT Employee, 'in', "
                 "Quantity FROM ItemReStock"))
            EXPECT_TRUE(
                rows.emplace(row[0].toInteger(), std::pair(row[1].toText(), row[2].toInteger()))
                    .second);
        EXPECT_EQ(rows, history);

        for (const QList<QByteArray>& words : m_said) {
            const qint64 deed = words[1].toLongLong();
            if (words[0] != "refused") {
                EXPECT_TRUE(words[0] == "taken-back" || done.contains(deed)) << deed;
                continue;
            }
            // At some moment between, there was less than was asked for.
            const auto& moments = after[words[2].toLongLong()];
            auto moment = std::prev(moments.upper_bound(words[4].toLongLong()));
            bool less = false;
            for (; moment != moments.end() && moment->first <= words[5].toLongLong(); ++moment)
                less = less || moment->second < words[3].toLongLong();
            EXPECT_TRUE(less) << "refused for no reason, deed " << deed;
        }
    }
    qint64 below() {
        return db().lookup(u"SELECT COUNT(*) FROM Items WHERE Quantity < 0"_s).toLong();
    }

    QHash<qint64, qint64> m_stock; ///< what the items began with
    QList<QList<QByteArray>> m_said;
};

} // namespace

TEST_P(StockStations, FourAtOnceEndAsAReplayOfTheirDeedsInOneThread) {
    bool given = false;
    const int wanted = qEnvironmentVariableIntValue("MIRSA_STOCK_MOVEMENTS", &given);
    const auto processes = start((given ? wanted : 2400) / stations);
    for (const auto& process : processes) {
        while (!process->waitForFinished(20) && process->state() != QProcess::NotRunning)
            EXPECT_EQ(below(), 0);
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
        hear(*process);
    }
    expectAsReplayed();
    EXPECT_GT(m_said.size(), 1000);
}

TEST_P(StockStations, KilledInTheMiddleOfMovementsTheyLoseNothing) {
    bool given = false;
    const int wanted = qEnvironmentVariableIntValue("MIRSA_STOCK_KILLS", &given);
    for (int round = 0; round < (given ? wanted : 6); ++round) {
        const auto processes = start(1'000'000, round);
        ASSERT_TRUE(processes[0]->waitForReadyRead(20000))
            << processes[0]->readAllStandardError().toStdString();
        for (std::size_t i = 0; i < processes.size(); ++i) {
            QThread::msleep(static_cast<unsigned long>(3 + (7 * round + 11 * qint64(i)) % 23));
            EXPECT_EQ(below(), 0);
            processes[i]->kill();
        }
        for (const auto& process : processes) {
            ASSERT_TRUE(process->waitForFinished());
            hear(*process);
        }
        EXPECT_EQ(below(), 0);
    }
    // A server still ends what a killed station had sent whole.
    jet::Native native(db());
    while (db().isServer() && native.value("SELECT COUNT(*) FROM pg_stat_activity WHERE datname "
                                           "= current_database() AND pid <> pg_backend_pid()")
                                      .toInteger() > 0)
        QThread::msleep(5);
    expectAsReplayed();
    EXPECT_GT(m_said.size(), 20);
}

MIRSA_BOTH_ENGINES(StockStations);
