#include "purchasing/OrderLine.h"

#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Text.h"

#include <map>

namespace purchasing {

using values::Currency;

void OrderLine::complete() {
    total = unitPrice * Currency::fromInteger(quantity);
    if (!isJob())
        job = 0;
    if (!isEstimate())
        estimate = 0;
}

const OrderKind& rfqKind() {
    static const OrderKind kind{.word = u"RFQ"_s,
                                .itemTable = u"RFQItem"_s,
                                .history = u"RfqItem"_s,
                                .needsNumber = true,
                                .noDescription = u"You must include a Description!"_s,
                                .showsSymbol = false};
    return kind;
}

const OrderKind& poKind() {
    static const OrderKind kind{
        .word = u"PO"_s,
        .itemTable = u"POItem"_s,
        .history = u"(PoItem INNER JOIN PO ON PoItem.PONumber = PO.PoNumber) INNER JOIN POVendor "
                   "ON PO.PoNumber = POVendor.OrderNumber"_s,
        .needsNumber = false,
        .noDescription = u"You must include a description!"_s,
        .showsSymbol = true};
    return kind;
}

std::optional<LineComplaint> checkLine(const OrderKind& kind, const OrderLine& line) {
    if (line.partNumber.trimmed().isEmpty())
        return LineComplaint{u"You must include a Part Number!"_s, u"txtPartNumber"_s};
    if (line.description.trimmed().isEmpty())
        return LineComplaint{kind.noDescription, u"txtDescription"_s};
    if (kind.needsNumber && line.isJob() && line.job == 0)
        return LineComplaint{u"Select a Job number."_s, u"dbcNumber"_s};
    if (kind.needsNumber && line.isEstimate() && line.estimate == 0)
        return LineComplaint{u"Select a Estimate number."_s, u"dbcNumber"_s};
    if (line.units.trimmed().isEmpty())
        return LineComplaint{u"Units Field cannot be blank!"_s, u"dbcUnits"_s};
    return std::nullopt;
}

QString totalText(const std::vector<OrderLine>& lines, const QString& currencySymbol) {
    Currency sum;
    for (const OrderLine& line : lines)
        sum += line.total;
    return u"Total Cost = "_s + currencySymbol + values::format(sum, u"0.00");
}

const core::DocumentColumns<OrderLine>& lineColumns() {
    using core::column;
    using Line = OrderLine;
    static const core::DocumentColumns<Line> all(
        {column<Line>(u"Quantity"_s, &Line::quantity),
         column<Line>(u"PartNumber"_s, &Line::partNumber),
         column<Line>(u"Description"_s, &Line::description),
         column<Line>(u"Manufacturer"_s, &Line::manufacturer),
         column<Line>(u"DeliverySchedule"_s, &Line::delivery), column<Line>(u"Type"_s, &Line::type),
         column<Line>(u"UnitPrice"_s, &Line::unitPrice), column<Line>(u"ItemTotal"_s, &Line::total),
         column<Line>(u"ItemNotes"_s, &Line::notes), column<Line>(u"Estimate"_s, &Line::estimate),
         column<Line>(u"Job"_s, &Line::job), column<Line>(u"UnitOfMeasure"_s, &Line::units)});
    return all;
}

void copyIntoOrder(jet::Database& database, const QString& table, const QStringList& keys,
                   qint64 order) {
    if (keys.isEmpty())
        return;
    QStringList quoted;
    for (const QString& key : keys)
        quoted << sqlText(key);
    const QStringList columns = lineColumns().names();
    jet::Recordset set =
        database.openRecordset(u"SELECT ItemKey, "_s + columns.join(u", ") + u" FROM "_s + table +
                                   u" WHERE ItemKey IN ("_s + quoted.join(u", ") + u")"_s,
                               jet::RecordsetType::Snapshot);
    std::map<QString, std::vector<jet::Value>> there;
    for (; !set.eof(); set.moveNext()) {
        std::vector<jet::Value>& values = there[values::lowered(set.text(u"ItemKey"))];
        for (int i = 1; i <= columns.size(); ++i)
            values.push_back(set.field(i));
    }
    std::vector<std::vector<jet::Value>> rows;
    for (const QString& key : keys) {
        const auto found = there.find(values::lowered(key));
        if (found == there.end())
            continue;
        const auto number = static_cast<qint64>(rows.size()) + 1;
        std::vector<jet::Value> row{u"%1-%2"_s.arg(order).arg(number), order, number};
        row.insert(row.end(), found->second.begin(), found->second.end());
        rows.push_back(std::move(row));
    }
    database.insertRows(u"POItem"_s,
                        QStringList{u"ItemKey"_s, u"PONumber"_s, u"ItemNumber"_s} + columns, rows);
}

namespace {

std::vector<OrderLine> load(const jet::Recordset& opened, bool ordered) {
    jet::Recordset set = opened;
    std::vector<OrderLine> lines;
    for (; !set.eof(); set.moveNext()) {
        OrderLine line = lineColumns().load(set);
        line.itemNumber = static_cast<int>(set[u"ItemNumber"].toLong());
        line.id = line.itemNumber;
        if (ordered) {
            line.id = set[u"ID"].toLong();
            line.received = set[u"ReceivedQuantity"].toLong();
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace

QString rfqLinesSelect(const QString& key) {
    return u"SELECT * FROM RFQItem WHERE VOrderKey = "_s + sqlText(key) + u" ORDER BY ItemNumber"_s;
}

QString firstRfqLinesSelect(qint64 group) {
    return u"SELECT * FROM RFQItem WHERE VOrderKey = (SELECT TOP 1 VOrderKey FROM RFQVendor WHERE "
           "OrderNumber = "_s +
           QString::number(group) + u" ORDER BY Company, VOrderKey) ORDER BY ItemNumber"_s;
}

QString poLinesSelect(qint64 poNumber) {
    return u"SELECT ID, PONumber, ItemNumber, PartNumber, Description, Manufacturer, Type, "
           "Estimate, Job, UnitOfMeasure, UnitPrice, Quantity, ReceivedQuantity, ItemTotal, "
           "DeliverySchedule, ItemNotes FROM POItem WHERE PONumber = "_s +
           QString::number(poNumber) + u" ORDER BY ItemNumber"_s;
}

std::vector<OrderLine> loadRfqLines(jet::Database& database, const QString& select) {
    return loadRfqLines(database.openRecordset(select, jet::RecordsetType::Snapshot));
}

std::vector<OrderLine> loadRfqLines(const jet::Recordset& opened) {
    return load(opened, false);
}

std::vector<OrderLine> loadPoLines(jet::Database& database, qint64 poNumber) {
    return load(database.openRecordset(poLinesSelect(poNumber), jet::RecordsetType::Snapshot),
                true);
}

QStringList usedBefore(jet::Database& database, const OrderKind& kind, qint64 vendor,
                       const QString& column, const QString& partNumber) {
    const QString part = partNumber.isEmpty() ? QString()
                                              : column + u" <>'' and PartNumber= "_s +
                                                    sqlText(partNumber) + u" AND "_s;
    jet::Recordset set = database.openRecordset(
        u"SELECT DISTINCT "_s + column + u" FROM "_s + kind.history + u" WHERE "_s + part +
            u"VendorId= "_s + QString::number(vendor) + u" ORDER BY "_s + column,
        jet::RecordsetType::Snapshot);
    QStringList texts;
    for (; !set.eof(); set.moveNext())
        texts << set.field(0).toText();
    return texts;
}

void makeCommon(jet::Database& database, const OrderKind& kind, qint64 vendor,
                const QString& column, const QString& partNumber, const QString& text) {
    database.execute(u"Update "_s + kind.history + u" set "_s + column + u" = "_s + sqlText(text) +
                     u" WHERE "_s + kind.itemTable + u".PartNumber= "_s + sqlText(partNumber) +
                     u" AND VendorId= "_s + QString::number(vendor));
}

QString sqlText(const QString& text) {
    return u"'"_s + values::quoted(text) + u"'"_s;
}

} // namespace purchasing
