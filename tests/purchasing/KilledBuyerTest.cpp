#include "BuyingRows.h"
#include "purchasing/PoStore.h"
#include "purchasing/RfqStore.h"

#include <QProcess>
#include <QThread>

using namespace purchasing;

namespace {

class KilledBuyer : public testsupport::BuyingRows {
  protected:
    /// Documents that are neither as one save left them nor as the other.
    QStringList torn(const QString& table, const QString& items, const QString& number) {
        const QString of =
            u"(SELECT COUNT(*) FROM %1 WHERE %1.%2 = %3.PONumber"_s.arg(items, number, table);
        return rows(u"SELECT PONumber, Title, Ship2City FROM "_s + table +
                    u" WHERE Ship2City <> "_s + of + u") OR Ship2City <> "_s + of + u" AND "_s +
                    items + u".Description = Title)"_s);
    }
    qint64 count(const QString& select) { return db().lookup(select).toLong(); }
};

TEST_P(KilledBuyer, InASaveACopyOrAReceiptLeavesWholeDocumentsOnly) {
    jet::Transaction transaction(db());
    execute(u"INSERT INTO PO (Title, Ship2City, Active) VALUES ('0', '1', True)");
    const qint64 order = db().lastCounter();
    db().execute(u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (%1, %2, "
                 "'Harrow')"_s.arg(order)
                     .arg(m_harrow));
    OrderLine first = line(u"P1"_s, 1000000, 1);
    first.description = u"0"_s;
    replacePoLines(db(), order, {}, {first});
    const qint64 group = createGroup(db(), m_obrien);
    db().execute(u"UPDATE RFQ SET Title = '0', Ship2City = '1' WHERE PONumber = %1"_s.arg(group));
    replaceRfqLines(db(), group, m_obrien, {first});
    transaction.commit();
    qint64 copies = 0;
    for (int round = 0; round < 10; ++round) {
        // Each round stocks under the part and the description of its lines.
        QProcess buyer;
        buyer.start(QStringLiteral(MIRSA_ORDER_SAVER),
                    {testDatabase().location(), QString::number(order), QString::number(group)});
        ASSERT_TRUE(buyer.waitForReadyRead(20000)) << buyer.readAllStandardError().toStdString();
        QThread::msleep(static_cast<unsigned long>(7 + 17 * round % 60));
        ASSERT_EQ(buyer.state(), QProcess::Running) << buyer.readAllStandardError().toStdString();
        buyer.kill();
        ASSERT_TRUE(buyer.waitForFinished());
        EXPECT_EQ(torn(u"PO"_s, u"POItem"_s, u"PONumber"_s), QStringList());
        EXPECT_EQ(torn(u"RFQ"_s, u"RFQItem"_s, u"OrderNumber"_s), QStringList());
        EXPECT_EQ(count(u"SELECT COUNT(*) FROM PO"_s), count(u"SELECT COUNT(*) FROM POVendor"_s));
        EXPECT_EQ(count(u"SELECT COUNT(*) FROM RFQ"_s), count(u"SELECT COUNT(*) FROM RFQVendor"_s));
        // What came in follows its lines, but for lines that a later save left out.
        EXPECT_EQ(rows(u"SELECT ID FROM POItem WHERE ReceivedQuantity <> (SELECT COUNT(*) FROM "
                       "POReceived WHERE POReceived.ItemID = POItem.ID)"_s),
                  QStringList());
        EXPECT_EQ(count(u"SELECT COUNT(*) FROM POReceived WHERE StockInventory = True"_s),
                  count(u"SELECT COUNT(*) FROM ItemReStock"_s));
        const qint64 now = count(u"SELECT COUNT(*) FROM PO"_s);
        EXPECT_GT(now, copies);
        copies = now;
    }
}

} // namespace

MIRSA_BOTH_ENGINES(KilledBuyer);
