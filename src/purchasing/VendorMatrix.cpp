#include "purchasing/VendorMatrix.h"

#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <map>

namespace purchasing {

using values::Currency;

namespace {

void markLowestOffers(VendorMatrix::Line& line) {
    std::optional<Currency> lowest;
    for (const Offer& offer : line.offers) {
        if (offer.quoted && (!lowest || offer.unitPrice < *lowest))
            lowest = offer.unitPrice;
    }
    for (Offer& offer : line.offers)
        offer.lowest = offer.quoted && lowest && offer.unitPrice == *lowest;
}

void sumUp(VendorMatrix& matrix) {
    std::optional<Currency> lowest;
    for (std::size_t v = 0; v < matrix.vendors.size(); ++v) {
        Bidder& bidder = matrix.vendors[v];
        bidder.complete = !matrix.lines.empty();
        for (const auto& line : matrix.lines) {
            const Offer& offer = line.offers[v];
            bidder.complete = bidder.complete && offer.quoted;
            if (offer.quoted)
                bidder.total += offer.total;
        }
        if (bidder.complete && (!lowest || bidder.total < *lowest))
            lowest = bidder.total;
    }
    for (Bidder& bidder : matrix.vendors)
        bidder.lowest = bidder.complete && bidder.total == *lowest;
}

QString csvText(QString text) {
    const bool quote = text.contains(u',') || text.contains(u'"') || text.contains(u'\n');
    return quote ? u'"' + text.replace(u"\""_s, u"\"\""_s) + u'"' : text;
}

} // namespace

VendorMatrix compare(std::vector<Bidder> vendors, const std::vector<QuotedItem>& items) {
    VendorMatrix matrix;
    matrix.vendors = std::move(vendors);
    const std::size_t count = matrix.vendors.size();
    std::map<std::pair<QString, int>, std::size_t> places;
    std::map<std::pair<QString, std::size_t>, int> seen;
    for (const QuotedItem& item : items) {
        const QString part = values::lowered(item.partNumber.trimmed());
        const int nth = seen[{part, item.vendor}]++;
        const auto [place, fresh] = places.try_emplace({part, nth}, matrix.lines.size());
        if (fresh) {
            matrix.lines.push_back({item.partNumber, item.description, item.units,
                                    item.offer.quantity, std::vector<Offer>(count)});
        }
        Offer& offer = matrix.lines[place->second].offers[item.vendor];
        offer = item.offer;
        offer.quoted = item.offer.unitPrice > Currency();
    }
    for (auto& line : matrix.lines)
        markLowestOffers(line);
    sumUp(matrix);
    return matrix;
}

VendorMatrix loadMatrix(jet::Database& database, qint64 group) {
    const QString number = QString::number(group);
    jet::Recordset set = database.openRecordset(
        u"SELECT VOrderKey, VendorID, Company FROM RFQVendor WHERE OrderNumber = "_s + number +
            u" ORDER BY Company"_s,
        jet::RecordsetType::Snapshot);
    std::vector<Bidder> vendors;
    std::map<qint64, std::size_t> places;
    for (; !set.eof(); set.moveNext()) {
        Bidder bidder;
        bidder.key = set.text(u"VOrderKey");
        bidder.vendor = set[u"VendorID"].toLong();
        bidder.company = set.text(u"Company");
        places[bidder.vendor] = vendors.size();
        vendors.push_back(std::move(bidder));
    }
    set = database.openRecordset(
        u"SELECT POVendor.VendorID, Max(POReceived.[Date]) AS LastDate, Sum(IIf(POReceived.[Date] "
        "<= PO.ReqDate, 1, 0)) AS OnTime, Sum(IIf(PO.ReqDate IS NULL, 0, 1)) AS Dated FROM "
        "(POReceived INNER JOIN PO ON POReceived.PONumber = PO.PONumber) INNER JOIN POVendor ON "
        "PO.PONumber = POVendor.OrderNumber WHERE POVendor.VendorID IN (SELECT VendorID FROM "
        "RFQVendor WHERE OrderNumber = "_s +
            number + u") GROUP BY POVendor.VendorID"_s,
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const auto place = places.find(set[u"VendorID"].toLong());
        if (place == places.end())
            continue;
        Bidder& bidder = vendors[place->second];
        if (const auto last = set[u"LastDate"].toDateTime())
            bidder.lastReceipt = last->date();
        const double dated = set[u"Dated"].toDouble();
        if (dated > 0)
            bidder.onTime = set[u"OnTime"].toDouble() / dated;
    }
    set = database.openRecordset(u"SELECT * FROM RFQItem WHERE OrderNumber = "_s + number +
                                     u" ORDER BY VendorID, ItemNumber"_s,
                                 jet::RecordsetType::Snapshot);
    std::vector<QuotedItem> items;
    for (; !set.eof(); set.moveNext()) {
        const auto place = places.find(set[u"VendorID"].toLong());
        if (place == places.end())
            continue; // left behind by a template that was cancelled
        QuotedItem item;
        item.vendor = place->second;
        item.partNumber = set.text(u"PartNumber");
        item.description = set.text(u"Description");
        item.units = set.text(u"UnitOfMeasure");
        item.offer.quantity = set[u"Quantity"].toLong();
        item.offer.unitPrice = set[u"UnitPrice"].toCurrency();
        item.offer.total = set[u"ItemTotal"].toCurrency();
        item.offer.delivery = set.text(u"DeliverySchedule");
        items.push_back(std::move(item));
    }
    return compare(std::move(vendors), items);
}

QString ageText(const std::optional<QDate>& receipt, const QDate& today) {
    if (!receipt)
        return {};
    const qint64 days = receipt->daysTo(today);
    if (days <= 0)
        return u"today"_s;
    return days == 1 ? u"yesterday"_s : QString::number(days) + u" days ago"_s;
}

QString matrixCsv(const VendorMatrix& matrix) {
    QStringList titles{u"Part Number"_s, u"Description"_s, u"Qty"_s, u"Units"_s};
    for (const Bidder& bidder : matrix.vendors) {
        titles << csvText(bidder.company + u" Unit Price"_s)
               << csvText(bidder.company + u" Total"_s) << csvText(bidder.company + u" Delivery"_s);
    }
    QStringList rows{titles.join(u',')};
    for (const auto& line : matrix.lines) {
        QStringList cells{csvText(line.partNumber), csvText(line.description),
                          QString::number(line.quantity), csvText(line.units)};
        for (const Offer& offer : line.offers) {
            cells << (offer.quoted ? offer.unitPrice.toText() : QString())
                  << (offer.quoted ? offer.total.toText() : QString())
                  << csvText(QString(offer.delivery).replace(u"\r\n"_s, u" "_s));
        }
        rows << cells.join(u',');
    }
    QStringList totals{u"Total"_s, {}, {}, {}};
    for (const Bidder& bidder : matrix.vendors)
        totals << QString() << bidder.total.toText() << QString();
    rows << totals.join(u',');
    return rows.join(u"\r\n"_s) + u"\r\n"_s;
}

} // namespace purchasing
