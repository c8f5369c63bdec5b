#include "purchasing/VendorMatrix.h"
#include "BuyingRows.h"
#include "purchasing/RfqStore.h"

#include <QElapsedTimer>

#include <random>

using namespace purchasing;
using values::Currency;

namespace {

QuotedItem item(std::size_t vendor, const QString& part, double price, qint64 quantity = 1) {
    QuotedItem made;
    made.vendor = vendor;
    made.partNumber = part;
    made.offer.quantity = quantity;
    made.offer.unitPrice = Currency::fromDouble(price);
    made.offer.total = made.offer.unitPrice * Currency::fromInteger(quantity);
    return made;
}

TEST(Matrix, TheLowestAreThoseThatALookAtEveryOfferFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 1000; ++round) {
        const std::size_t vendors = 1 + random() % 6;
        const int parts = 1 + static_cast<int>(random() % 8);
        std::vector<QuotedItem> items;
        for (std::size_t v = 0; v < vendors; ++v) {
            for (int p = 0; p < parts; ++p) {
                if (random() % 5 != 0)
                    items.push_back(item(v, u"P%1"_s.arg(p), double(random() % 4), 1 + p));
            }
        }
        std::shuffle(items.begin(), items.end(), random);
        const VendorMatrix matrix = compare(std::vector<Bidder>(vendors), items);
        std::vector<Currency> totals(vendors);
        std::vector<bool> complete(vendors, !matrix.lines.empty());
        for (const auto& line : matrix.lines) {
            for (std::size_t v = 0; v < vendors; ++v) {
                const QuotedItem* mine = nullptr;
                bool beaten = false;
                for (const auto& one : items) {
                    if (one.partNumber == line.partNumber && one.vendor == v &&
                        one.offer.unitPrice > Currency())
                        mine = &one;
                }
                for (const auto& one : items) {
                    beaten = beaten || (mine && one.partNumber == line.partNumber &&
                                        one.offer.unitPrice > Currency() &&
                                        one.offer.unitPrice < mine->offer.unitPrice);
                }
                ASSERT_EQ(line.offers[v].lowest, mine && !beaten);
                complete[v] = complete[v] && mine;
                if (mine)
                    totals[v] += mine->offer.total;
            }
        }
        for (std::size_t v = 0; v < vendors; ++v) {
            bool beaten = false;
            for (std::size_t other = 0; other < vendors; ++other)
                beaten = beaten || (complete[other] && totals[other] < totals[v]);
            ASSERT_EQ(matrix.vendors[v].lowest, complete[v] && !beaten);
            ASSERT_EQ(matrix.vendors[v].total, totals[v]);
        }
    }
}

class StoredMatrix : public testsupport::BuyingRows {};

TEST_P(StoredMatrix, ShowsMissingQuotesAndEachVendorsHistory) {
    const qint64 group = createGroup(db(), m_harrow);
    addVendor(db(), group, m_obrien);
    replaceRfqLines(db(), group, m_harrow, {line(u"A"_s, 2, 3), line(u"B"_s, 1, 5)});
    replaceRfqLines(db(), group, m_obrien, {line(u"b"_s, 1, 4), line(u"C, \"x\""_s, 1, 0)});
    execute(u"INSERT INTO PO (ReqDate) VALUES (#2/10/2026#)");
    const qint64 po = db().lastCounter();
    db().execute(
        u"INSERT INTO POVendor (OrderNumber, VendorID) VALUES (%1, %2)"_s.arg(po).arg(m_harrow));
    for (const char16_t* date : {u"2/9/2026", u"2/10/2026", u"2/11/2026", u"2/27/2026"}) {
        db().execute(
            u"INSERT INTO POReceived (PONumber, QtyRecvd, [Date]) VALUES (%1, 1, #%2#)"_s.arg(po)
                .arg(QString::fromUtf16(date)));
    }
    const VendorMatrix matrix = loadMatrix(db(), group);
    ASSERT_EQ(matrix.lines.size(), 3U);
    EXPECT_FALSE(matrix.lines[0].offers[1].quoted);
    EXPECT_TRUE(matrix.lines[1].offers[1].lowest);
    EXPECT_FALSE(matrix.lines[1].offers[0].lowest);
    EXPECT_FALSE(matrix.lines[2].offers[1].quoted) << "a line without a price";
    EXPECT_FALSE(matrix.vendors[0].complete || matrix.vendors[1].lowest);
    EXPECT_EQ(matrix.vendors[0].onTime, 0.5);
    EXPECT_EQ(ageText(matrix.vendors[0].lastReceipt, QDate(2026, 3, 2)), u"3 days ago"_s);
    EXPECT_FALSE(matrix.vendors[1].lastReceipt);
    const QStringList csv = matrixCsv(matrix).split(u"\r\n"_s);
    EXPECT_EQ(csv[1], u"A,The A,2,EA,3,6,,,,"_s);
    EXPECT_EQ(csv[3], u"\"C, \"\"x\"\"\",\"The C, \"\"x\"\"\",1,EA,,,,,,"_s);
    EXPECT_EQ(csv[4], u"Total,,,,,11,,,4,"_s);
}

TEST_P(StoredMatrix, TwentyVendorsByFiftyLinesAreThereAtOnce) {
    std::vector<purchasing::OrderLine> lines;
    for (int i = 0; i < 50; ++i)
        lines.push_back(line(u"P%1"_s.arg(i), 2, 1 + i));
    const qint64 group = createGroup(db(), m_harrow);
    jet::Transaction transaction(db());
    replaceRfqLines(db(), group, m_harrow, lines);
    for (int i = 1; i < 20; ++i) {
        const qint64 made = vendor(u"Vendor %1"_s.arg(i));
        addVendor(db(), group, made);
        replaceRfqLines(db(), group, made, lines);
    }
    transaction.commit();
    QElapsedTimer clock;
    clock.start();
    const VendorMatrix matrix = loadMatrix(db(), group);
    RecordProperty("ms", int(clock.elapsed()));
    EXPECT_LT(clock.elapsed(), 1000); // 0.2 s on a machine without other work
    EXPECT_EQ(matrix.lines.size() * matrix.vendors.size(), 1000U);
}

} // namespace

MIRSA_BOTH_ENGINES(StoredMatrix);
