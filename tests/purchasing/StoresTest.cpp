#include "BuyingRows.h"
#include "purchasing/PoStore.h"
#include "purchasing/RfqStore.h"

using namespace purchasing;

namespace {

class Stores : public testsupport::BuyingRows {
  protected:
    /// A group of both vendors with two lines each.
    qint64 group() {
        const qint64 made = createGroup(db(), m_harrow);
        addVendor(db(), made, m_obrien);
        db().execute(u"UPDATE RFQ SET Title = 'Steel', PODate = #2/1/2026#, Ship2City = 'York' "
                     "WHERE PONumber = %1"_s.arg(made));
        for (const qint64 to : {m_harrow, m_obrien})
            replaceRfqLines(db(), made, to, {line(u"A'1"_s, 4, 2.5), line(u"B2"_s, 1, 10)});
        return made;
    }
    qint64 order(const std::vector<OrderLine>& lines) {
        execute(u"INSERT INTO PO (Title, Active) VALUES ('Order', True)");
        const qint64 made = db().lastCounter();
        db().execute(u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (%1, %2, "
                     "'Harrow')"_s.arg(made)
                         .arg(m_harrow));
        replacePoLines(db(), made, {}, lines);
        return made;
    }
    static std::vector<qint64> ids(const std::vector<OrderLine>& lines) {
        std::vector<qint64> result;
        for (const OrderLine& line : lines)
            result.push_back(line.id);
        return result;
    }
    QString lines(qint64 po) {
        return one(u"SELECT ItemKey, PartNumber, Quantity, ReceivedQuantity, ItemTotal FROM "
                   "POItem WHERE PONumber = %1 ORDER BY ItemNumber"_s.arg(po));
    }
};

TEST_P(Stores, AGroupHoldsACopyOfEachVendorAndHisLinesUnderTheirKeys) {
    const qint64 made = group();
    const QString key = vendorKey(made, m_obrien);
    EXPECT_EQ(one(u"SELECT Company, MailAddress1, MailCity, Terms, Notes FROM RFQVendor WHERE "
                  "VOrderKey = '%1'"_s.arg(key)),
              u"O'Brien Steel|1 High St|Leeds|Net 30|Ring first"_s);
    EXPECT_EQ(one(u"SELECT ItemKey, PartNumber, ItemTotal, Job FROM RFQItem WHERE VOrderKey = '%1' "
                  "ORDER BY ItemNumber"_s.arg(key)),
              u"%1-1|A'1|10|0 / %1-2|B2|10|0"_s.arg(key));
    EXPECT_NE(errorOf([&] { addVendor(db(), made, m_obrien); }), 0) << "he joins once";
    EXPECT_EQ(totalText(loadRfqLines(db(), rfqLinesSelect(key)), u"$"_s), u"Total Cost = $20.00"_s);

    const qint64 next =
        copyGroup(db(), made,
                  {{vendorKey(made, m_harrow), {vendorKey(made, m_harrow) + u"-2"_s}}, {key, {}}});
    const QString nextKey = vendorKey(next, m_harrow);
    EXPECT_EQ(one(u"SELECT Title, PODate, Ship2City FROM RFQ WHERE PONumber = %1"_s.arg(next)),
              u"Steel||York"_s);
    EXPECT_EQ(one(u"SELECT VOrderKey FROM RFQVendor WHERE OrderNumber = %1"_s.arg(next)), nextKey);
    EXPECT_EQ(
        one(u"SELECT ItemKey, ItemNumber, OrderNumber FROM RFQItem WHERE VOrderKey = '%1'"_s.arg(
            nextKey)),
        u"%1-2|2|%2"_s.arg(nextKey).arg(next))
        << "a dropped line leaves its gap";
}

TEST_P(Stores, WhatCancelAndCloseUndoDiffersOnPurpose) {
    const QString vendors = u"SELECT VOrderKey FROM RFQVendor"_s;
    const QString groups = u"SELECT PONumber FROM RFQ"_s;
    const qint64 made = group();
    undoByCancel(db(), Begun::Vendor, made, vendorKey(made, m_obrien));
    EXPECT_EQ(one(vendors), vendorKey(made, m_harrow));
    addVendor(db(), made, m_obrien);
    undoByClose(db(), Begun::Vendor, made);
    EXPECT_EQ(one(vendors), QString()) << "all vendors of the group go";
    EXPECT_EQ(rows(groups).size(), 1);
    const auto before = rows(u"SELECT ItemKey FROM RFQItem"_s).size();
    undoByCancel(db(), Begun::Template, made, vendorKey(made, m_harrow));
    EXPECT_EQ(rows(groups).size(), 0);
    EXPECT_EQ(rows(u"SELECT ItemKey FROM RFQItem"_s).size(), before) << "lines stay behind";
    const qint64 another = group();
    deleteRequest(db(), vendorKey(another, m_harrow));
    EXPECT_EQ(one(vendors), vendorKey(another, m_obrien));
    deleteGroup(db(), another);
    EXPECT_EQ(one(vendors) + one(groups), QString());
}

TEST_P(Stores, AnOrderTakesTheChosenLinesOfARequestNumberedAnew) {
    const qint64 made = group();
    const QString key = vendorKey(made, m_obrien);
    const qint64 po = orderFromRequest(db(), made, {key, {key + u"-2"_s}}, QDate(2026, 4, 1));
    EXPECT_EQ(
        one(u"SELECT Title, PODate, ReqDate, Active, Ship2City FROM PO WHERE PONumber = %1"_s.arg(
            po)),
        u"Steel|3/2/2026|4/1/2026|True|York"_s);
    EXPECT_EQ(lines(po), u"%1-1|B2|1|0|10"_s.arg(po));
    EXPECT_EQ(one(u"SELECT Company, VendorID FROM POVendor WHERE OrderNumber = %1"_s.arg(po)),
              u"O'Brien Steel|%1"_s.arg(m_obrien));
    const qint64 bare = orderFromRequest(db(), made, {key, {}}, QDate(2026, 4, 1));
    EXPECT_EQ(one(u"SELECT Company FROM POVendor WHERE OrderNumber = %1"_s.arg(bare)), QString());
    EXPECT_EQ(rows(u"SELECT ItemKey FROM RFQItem"_s).size(), 4) << "the request stays";
}

TEST_P(Stores, SavedLinesGetNewNumbersAndTheirReceiptsFollow) {
    const qint64 po = order({line(u"A"_s, 5, 1), line(u"B"_s, 6, 1), line(u"C"_s, 7, 1)});
    const OrderDocument before = *loadOrder(db(), po);
    const auto stored = ids(before.lines);
    OrderDocument edited = before;
    // Another buyer receives while the lines are being edited.
    const auto other = station();
    const auto receive = [&](qint64 item) {
        other->execute(
            u"INSERT INTO POReceived (ItemID, PONumber, QtyRecvd) VALUES (%1, %2, 4)"_s.arg(item)
                .arg(po));
    };
    receive(stored[2]);
    edited.lines.erase(edited.lines.begin());
    edited.lines.insert(edited.lines.begin(), line(u"New"_s, 1, 3));
    EXPECT_FALSE(storeOrder(db(), po, edited, &before).conflict);
    EXPECT_EQ(lines(po), u"%1-1|New|1|0|3 / %1-2|B|6|0|6 / %1-3|C|7|4|7"_s.arg(po));
    const auto saved = loadPoLines(db(), po);
    EXPECT_EQ(one(u"SELECT ItemID FROM POReceived"_s), QString::number(saved[2].id));
    EXPECT_NE(saved[2].id, stored[2]);

    // Who still holds the old lines has changed a header and a line: all of it stands.
    OrderDocument late = before;
    late.header.title = u"Late"_s;
    late.lines[1].quantity = 60;
    EXPECT_FALSE(storeOrder(db(), po, late, &before).conflict);
    EXPECT_EQ(lines(po), u"%1-1|B|60|0|6 / %1-2|C|7|4|7 / %1-3|New|1|0|3"_s.arg(po));
    EXPECT_EQ(one(u"SELECT Title FROM PO"_s), u"Late"_s);
    // Or the same line, or has removed one of which something came in meanwhile: he is told, and
    // nothing is written.
    late = before;
    late.lines[1].quantity = 61;
    const auto same = storeOrder(db(), po, late, &before).conflict;
    ASSERT_TRUE(same);
    EXPECT_EQ(same->what + same->theirs + same->mine, u"The item B: Quantity6061"_s);
    const OrderDocument again = *loadOrder(db(), po);
    receive(again.lines[0].id);
    OrderDocument shorter = again;
    shorter.lines.erase(shorter.lines.begin());
    const auto came = storeOrder(db(), po, shorter, &again).conflict;
    ASSERT_TRUE(came);
    EXPECT_EQ(came->theirs, u"4 received"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM POItem"_s).size(), 3);
}

TEST_P(Stores, ALineThatAnotherBuyerTookAwayAndIsOnTheScreenAgainIsWrittenAnew) {
    const qint64 po = order({line(u"A"_s, 5, 1), line(u"B"_s, 6, 1)});
    const OrderDocument before = *loadOrder(db(), po);
    OrderDocument shorter = before;
    shorter.lines.pop_back();
    EXPECT_FALSE(storeOrder(*station(), po, shorter, &before).conflict);
    // The lines were loaded again, and then that was taken back for one of them.
    const OrderDocument again = *loadOrder(db(), po);
    OrderDocument mine = again;
    mine.lines.push_back(before.lines[1]);
    mine.lines[0].quantity = 50;
    EXPECT_FALSE(storeOrder(db(), po, mine, &again).conflict);
    EXPECT_EQ(lines(po), u"%1-1|A|50|0|5 / %1-2|B|6|0|6"_s.arg(po));
}

TEST_P(Stores, TwoBuyersOnOneRequestAreJoined) {
    const qint64 made = group();
    const QString key = vendorKey(made, m_harrow);
    const OrderDocument before = *loadRequest(db(), made, key);
    OrderDocument mine = before, theirs = before;
    theirs.lines[0].unitPrice = values::Currency::fromInteger(9);
    theirs.vendor.copied[3] = u"Leeds"_s;
    mine.lines.push_back(line(u"New"_s, 1, 3));
    mine.header.title = u"Mine"_s;
    const auto other = station();
    EXPECT_FALSE(storeRequest(*other, made, theirs, before).conflict);
    EXPECT_FALSE(storeRequest(db(), made, mine, before).conflict);
    const OrderDocument both = *loadRequest(db(), made, key);
    EXPECT_EQ(both.lines.size(), before.lines.size() + 1);
    EXPECT_EQ(both.lines[0].unitPrice, values::Currency::fromInteger(9));
    EXPECT_EQ(both.vendor.copied[3] + both.header.title, u"LeedsMine"_s);
    OrderDocument late = before;
    late.lines[0].unitPrice = values::Currency::fromInteger(8);
    EXPECT_TRUE(storeRequest(db(), made, late, before).conflict);
    deleteRequest(*other, key);
    EXPECT_THROW(storeRequest(db(), made, late, before), jet::Error);
}

TEST_P(Stores, AnOrderIsOpenWhileSomethingIsToCome) {
    const qint64 po = order({line(u"A"_s, 5, 1)});
    const QString active = u"SELECT Active FROM PO WHERE PONumber = %1"_s.arg(po);
    EXPECT_EQ(detectActive(db(), po, true), ActiveChange::None);
    execute(u"UPDATE POItem SET ReceivedQuantity = 9");
    EXPECT_EQ(detectActive(db(), po, true), ActiveChange::BecameInactive);
    EXPECT_EQ(one(active), u"False"_s);
    EXPECT_EQ(detectActive(db(), po, false), ActiveChange::None);
    execute(u"UPDATE POItem SET ReceivedQuantity = 4");
    EXPECT_EQ(detectActive(db(), po, false), ActiveChange::BecameActive);
    EXPECT_EQ(one(active), u"True"_s);

    const qint64 next = copyOrder(db(), po, {u"%1-1"_s.arg(po)}, QDate(2026, 5, 1));
    EXPECT_EQ(lines(next), u"%1-1|A|5|0|5"_s.arg(next)) << "nothing of it is received";
    execute(u"INSERT INTO POItem (PONumber) VALUES (0)");
    deleteOrder(db(), po);
    EXPECT_EQ(one(u"SELECT ItemKey FROM POItem"_s), u"%1-1"_s.arg(next));
}

TEST_P(Stores, PartsOfAVendorAreOfferedAndMadeAlike) {
    const qint64 made = group();
    auto odd = line(u"A'1"_s, 1, 1);
    odd.description = u"Odd"_s;
    order({odd, line(u"A'1"_s, 2, 2)});
    EXPECT_EQ(usedBefore(db(), poKind(), m_harrow, u"PartNumber"_s), QStringList{u"A'1"_s});
    EXPECT_EQ(usedBefore(db(), rfqKind(), m_harrow, u"PartNumber"_s).join(u','), u"A'1,B2"_s);
    EXPECT_EQ(usedBefore(db(), poKind(), m_harrow, u"Description"_s, u"A'1"_s).join(u','),
              u"Odd,The A'1"_s);
    makeCommon(db(), poKind(), m_harrow, u"Description"_s, u"A'1"_s, u"Odd"_s);
    EXPECT_EQ(usedBefore(db(), poKind(), m_harrow, u"Description"_s, u"A'1"_s),
              QStringList{u"Odd"_s});
    makeCommon(db(), rfqKind(), m_harrow, u"UnitOfMeasure"_s, u"A'1"_s, u"BOX"_s);
    EXPECT_EQ(one(u"SELECT ItemKey FROM RFQItem WHERE UnitOfMeasure = 'BOX'"_s),
              vendorKey(made, m_harrow) + u"-1"_s);

    OrderLine bad = line(u"A"_s, 1, 1);
    bad.type = u"Job"_s;
    EXPECT_EQ(checkLine(rfqKind(), bad)->text, u"Select a Job number."_s);
    EXPECT_FALSE(checkLine(poKind(), bad));
    bad.units.clear();
    bad.description.clear();
    EXPECT_EQ(checkLine(poKind(), bad)->text, u"You must include a description!"_s);
    EXPECT_EQ(checkLine(rfqKind(), bad)->text, u"You must include a Description!"_s);
}

} // namespace

MIRSA_BOTH_ENGINES(Stores);
