#include "estimating/Costing.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "sample/Work.h"

namespace sample {

using estimating::MiscRow;
using estimating::OperRow;
using values::Currency;

namespace {

std::vector<OperRow> routingOf(Shop& shop) {
    Random& random = shop.random;
    std::vector<OperRow> routing;
    const int rows = random.between(3, 6);
    auto first = static_cast<std::size_t>(random.below(static_cast<int>(shop.inhouse.size())));
    for (int i = 0; i < rows; ++i) {
        // Steps through the catalogue, so that no operation stands twice in a routing.
        const Operation& operation =
            shop.inhouse[(first + static_cast<std::size_t>(i) * 3) % shop.inhouse.size()];
        OperRow row;
        row.operNo = operation.operNo;
        row.description = operation.description;
        row.rate = operation.rate;
        row.time = random.between(1, 40) * 0.25;
        routing.push_back(row);
    }
    if (random.chance(40)) {
        const Operation& operation = random.of(shop.outside);
        OperRow row;
        row.operNo = operation.operNo;
        row.description = operation.description;
        row.inhouse = false;
        row.time = random.between(20, 400) + random.below(4) * 0.25;
        routing.insert(routing.end() - 1, row);
    }
    return routing;
}

} // namespace

EstimateMade makeEstimate(Shop& shop, const QDate& date, const EstimateMade* parent,
                          const EstimateMade* before) {
    Random& random = shop.random;
    EstimateMade estimate;
    estimate.custID = parent ? parent->custID : before ? before->custID : random.of(shop.customers);
    estimate.rfqNo =
        parent ? parent->rfqNo : u"RFQ-"_s + QString::number(random.between(1000, 99999));
    estimate.part = before ? before->part : madeUpPart(random);
    estimate.date = date;
    estimate.oneShopRate = random.chance(30);
    estimate.rate = Currency::fromInteger(random.between(55, 75));
    estimate.quantity = random.of(std::vector<int>{1, 2, 5, 10, 25, 50, 100, 250});

    estimate.operations = before ? before->operations : routingOf(shop);
    const int items = random.below(4);
    const auto firstItem =
        static_cast<std::size_t>(random.below(static_cast<int>(shop.fixedCosts.size())));
    for (int i = 0; i < items; ++i) {
        MiscRow item =
            shop.fixedCosts[(firstItem + static_cast<std::size_t>(i)) % shop.fixedCosts.size()];
        item.quantity = Currency::fromInteger(random.between(1, 30));
        item.retotal();
        estimate.fixedCosts.push_back(item);
    }

    const std::array<double, estimating::breakCount> discounts = {0, 5, 10, 12.5, 15};
    const estimating::EstimateCost cost =
        estimating::CalcEstimate(estimate.operations, estimate.fixedCosts, estimate.oneShopRate,
                                 estimate.rate, estimate.quantity, discounts);
    const int breaks = random.of(std::vector<int>{1, 1, 3, 5});
    std::array<double, estimating::breakCount> quantities{}, quoted{};
    Row row(u"Estimate");
    row.set(u"CustID", estimate.custID)
        .set(u"RFQNo", estimate.rfqNo)
        .set(u"Description", estimate.part.description)
        .set(u"PartNo", estimate.part.number)
        .set(u"Quantity", estimate.quantity)
        .set(u"EstDate", date)
        .set(u"EstShopRate", estimate.rate)
        .set(u"OneShopRate", estimate.oneShopRate)
        .set(u"AssemblyEstno", parent ? parent->estNo : 0);
    for (int i = 0; i < estimating::breakCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i < breaks) {
            quantities[at] = estimate.quantity * (i + 1.0);
            quoted[at] = Currency::fromDouble(std::ceil(cost.priceEach[at] * 115) / 100).toDouble();
        }
    }
    const auto totals = estimating::CalcQuoteTotals(quoted, quantities);
    for (int i = 0; i < estimating::breakCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const char16_t letter = static_cast<char16_t>(u'A' + i);
        const auto column = [letter](const char16_t* name) {
            return (QString::fromUtf16(name) + QChar(letter)).toStdU16String();
        };
        row.set(column(u"QtyBreak").c_str(), quantities[at])
            .set(column(u"QtyDiscount").c_str(), i < breaks ? discounts[at] : 0.0)
            .set(column(u"QtyPrice").c_str(),
                 Currency::fromDouble(i < breaks ? cost.priceEach[at] : cost.priceEach[0]))
            .set(column(u"QtyQP").c_str(), Currency::fromDouble(quoted[at]))
            .set(column(u"QtyTotal").c_str(), Currency::fromDouble(totals[at]));
    }
    if (random.chance(25)) {
        row.set(u"EstNotes", u"Delivery four weeks after receipt of order and material.")
            .set(u"TravelerNotes", u"Tag every piece. Keep cert's with the lot.");
    }
    if (random.chance(15)) {
        estimate.material = u"Customer supplies the blank; 3 mm over on all sides."_s;
        row.set(u"Material", estimate.material);
    }
    estimate.quotedEach = Currency::fromDouble(quoted[0]);
    estimate.estNo = row.insert(shop.database);

    int seqNo = 0;
    for (const OperRow& operation : estimate.operations) {
        const qint64 id = Row(u"EstOper")
                              .set(u"EstNo", estimate.estNo)
                              .set(u"SeqNo", ++seqNo)
                              .set(u"OperNo", operation.operNo)
                              .set(u"OperTime_Amount", *operation.time)
                              .set(u"OperShopRate", operation.inhouse ? operation.rate : Currency())
                              .insert(shop.database);
        estimate.operNotes +=
            random.chance(6) ? u"Watch the wall thickness: it isn't on the print."_s : QString();
        if (!estimate.operNotes.last().isEmpty())
            Row(u"EstOperNote")
                .set(u"ID", id)
                .set(u"EstNo", estimate.estNo)
                .set(u"SeqNo", seqNo)
                .set(u"OperNotes", estimate.operNotes.last())
                .insert(shop.database);
    }
    for (const MiscRow& item : estimate.fixedCosts) {
        Row(u"EstMiscCost")
            .set(u"EstNo", estimate.estNo)
            .set(u"ItemNo", item.itemNo)
            .set(u"UnitofMeasure", item.unit)
            .set(u"UnitPrice", item.price)
            .set(u"Quantity", item.quantity)
            .set(u"CostAmount", item.total)
            .insert(shop.database);
    }
    if (!parent && random.chance(10))
        Row(u"RfqNotes")
            .set(u"CustID", estimate.custID)
            .set(u"RFQNo", estimate.rfqNo)
            .set(u"rfqnotes", u"Came in by phone.\r\nThe drawing follows; don't quote before.")
            .insert(shop.database);
    shop.estimates.push_back(estimate.estNo);
    return estimate;
}

} // namespace sample
