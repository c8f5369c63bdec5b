#include "inventory/Issue.h"
#include "inventory/Restock.h"
#include "platform/values/Literals.h"
#include "support/Station.h"

#include <cstdio>

// A station that moves stock: StockMover DATABASE STATION STEPS issues, restocks, takes back and
// types over the items of the database at random. Each deed has a number that no other deed of any
// station has; it stands as the employee of the history row, or as the manufacturer of an item
// whose quantity was typed. What was done, or refused, is said on standard output, with the numbers
// of the record of all changes (table StockLog) between which it happened. The test kills it, or
// runs several at once.

using namespace inventory;

namespace {

class Mover {
  public:
    Mover(jet::Database& database, qint64 station)
        : m_database(database), m_deed(station * 10'000'000),
          m_seed(static_cast<quint32>(77 + station)) {
        jet::Recordset set = database.openRecordset(u"SELECT ID FROM Items ORDER BY ID"_s,
                                                    jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext())
            m_items.push_back(set.field(0).toLong());
    }

    void step() {
        ++m_deed;
        const qint64 item = m_items[random(m_items.size())];
        const qint64 quantity = 1 + random(9);
        switch (random(9)) {
        case 0:
            typeOver(item, random(40));
            break;
        case 1:
        case 2:
        case 3:
            if (!restock(m_database, {item, quantity, m_deed, day, u"Manual"_s, 0, 0}))
                throw std::runtime_error("an item has gone");
            say("restocked", item, quantity);
            break;
        case 4:
            takeBack(item);
            break;
        default:
            take(item, quantity);
        }
    }

  private:
    const QDate day{2026, 3, 2};

    quint32 random(std::size_t below) {
        m_seed = m_seed * 1664525 + 1013904223;
        return (m_seed >> 8) % static_cast<quint32>(below);
    }
    qint64 logged() { return m_database.lookup(u"SELECT MAX(N) FROM StockLog"_s).toLong(); }
    void say(const char* what, qint64 item, qint64 quantity) const {
        std::printf("%s %lld %lld %lld\n", what, m_deed, item, quantity);
        std::fflush(stdout);
    }
    void take(qint64 item, qint64 quantity) {
        const qint64 before = logged();
        switch (issue(m_database, {item, quantity, m_deed, day, 7, u"Job"_s})) {
        case Issued::Done:
            say("issued", item, quantity);
            break;
        case Issued::NotEnough:
            std::printf("refused %lld %lld %lld %lld %lld\n", m_deed, item, quantity, before,
                        logged());
            break;
        case Issued::Gone:
            throw std::runtime_error("an item has gone");
        }
    }
    void typeOver(qint64 item, qint64 quantity) {
        const auto shown = loadItem(m_database, item);
        Item typed = *shown;
        typed.quantity = quantity;
        typed.manufacturer = QString::number(m_deed);
        if (saveItem(m_database, typed, *shown) == Saved::Done)
            say("typed", item, quantity);
    }
    /// Any row of anybody's, which others may be taking back at the same time.
    void takeBack(qint64 item) {
        const bool out = random(2) == 0;
        const qint64 row =
            m_database
                .lookup(u"SELECT TOP 1 ID FROM %1 WHERE ItemID = %2 AND ID >= (SELECT MIN(ID) FROM "
                        "%1 WHERE ItemID = %2) + %3 ORDER BY ID"_s
                            .arg(out ? u"ItemIssue"_s : u"ItemReStock"_s, QString::number(item))
                            .arg(random(30)))
                .toLong();
        if (row == 0)
            return;
        Reversal reversal{item, {}, {}, true, false};
        (out ? reversal.issues : reversal.restocks).push_back(row);
        reverse(m_database, reversal);
        say("taken-back", item, row);
    }

    jet::Database& m_database;
    std::vector<qint64> m_items;
    qint64 m_deed;
    quint32 m_seed;
};

} // namespace

int main(int argc, char* argv[]) {
    return testsupport::runStation(argc, argv,
                                   [](jet::Database& database, const QStringList& words) {
                                       Mover mover(database, words[0].toLongLong());
                                       for (int left = words[1].toInt(); left > 0; --left)
                                           mover.step();
                                       return 0;
                                   });
}
