#include "purchasing/RfqStore.h"

#include "core/records/RecordNumbers.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Letters.h"

#include <QHash>

#include <algorithm>

namespace purchasing {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

/// The columns of a vendor's copy in a request or an order.
const QString& addressColumns() {
    static const QString columns =
        u"Company, MailAddress1, MailAddress2, MailAddress3, MailCountry, MailCity, MailState, "
        "MailZip, Contact, Phone, Fax, Terms, Shipping, FOB, Notes, Email"_s;
    return columns;
}

QString keyList(const QStringList& keys) {
    QStringList quoted;
    for (const QString& key : keys)
        quoted << sqlText(key);
    return quoted.join(u", "_s);
}

/// What stands behind the group's number in the key of a vendor or a line.
QString behindGroup(const QString& key) {
    return key.mid(key.indexOf(u'-') + 1);
}

} // namespace

QString vendorKey(qint64 group, qint64 vendor) {
    return num(group) + u"-"_s + num(vendor);
}

void addVendor(jet::Database& database, qint64 group, qint64 vendor) {
    database.execute(u"INSERT INTO RFQVendor (VOrderKey, OrderNumber, VendorID, "_s +
                     addressColumns() + u") SELECT "_s + sqlText(vendorKey(group, vendor)) +
                     u" AS VOrderKey, "_s + num(group) +
                     u" AS OrderNumber, VendID, Company, Address1, Address2, Address3, Country, "
                     "City, State, Zip, Contact, Phone, Fax, Terms, Shipping, FOB, OurNotes, "
                     "Email FROM Vendor WHERE VendID = "_s +
                     num(vendor));
}

qint64 createGroup(jet::Database& database, qint64 vendor) {
    jet::Transaction transaction(database);
    database.execute(u"INSERT INTO RFQ (Complete) VALUES (0)"_s);
    const qint64 group = database.lastCounter();
    addVendor(database, group, vendor);
    transaction.commit();
    return group;
}

namespace {

using Row = std::vector<jet::Value>;

QStringList rfqColumns() {
    return QStringList{u"ItemKey"_s, u"VOrderKey"_s, u"OrderNumber"_s, u"VendorID"_s,
                       u"ItemNumber"_s} +
           lineColumns().names();
}

/// Letter by letter; nothing and an empty text are two.
bool same(const Row& a, const Row& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const jet::Value& one, const jet::Value& other) {
                          return one.isNull() == other.isNull() && one.toText() == other.toText();
                      });
}

} // namespace

void replaceRfqLines(jet::Database& database, qint64 group, qint64 vendor,
                     const std::vector<OrderLine>& lines, std::optional<jet::Recordset> stored) {
    core::checkRecordNumber(database, group);
    const QString key = vendorKey(group, vendor);
    const QStringList columns = rfqColumns();
    QHash<QString, Row> before;
    if (stored && !stored->isEmpty())
        stored->moveFirst(); // it was read to its end
    for (; stored && !stored->eof(); stored->moveNext()) {
        Row& row = before[stored->text(u"ItemKey")];
        for (const QString& column : columns)
            row.push_back((*stored)[column]);
    }
    QStringList kept;
    std::vector<Row> added, changed;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto number = static_cast<qint64>(i) + 1;
        const QString itemKey = u"%1-%2"_s.arg(key).arg(number);
        Row row{itemKey, key, group, vendor, number};
        const Row own = lineColumns().values(lines[i]);
        row.insert(row.end(), own.begin(), own.end());
        const auto was = before.constFind(itemKey);
        if (was == before.constEnd()) {
            added.push_back(std::move(row));
            continue;
        }
        kept << itemKey;
        if (!same(*was, row))
            changed.push_back(std::move(row));
    }
    if (!stored || kept.size() != before.size())
        database.execute(
            u"DELETE * FROM RFQItem WHERE VOrderKey = "_s + sqlText(key) +
            (kept.isEmpty() ? QString() : u" AND ItemKey NOT IN ("_s + keyList(kept) + u')'));
    database.updateRows(u"RFQItem"_s, columns, 1, changed);
    database.insertRows(u"RFQItem"_s, columns, added);
}

QString groupSelect(qint64 group) {
    return u"SELECT * FROM RFQ WHERE PONumber = "_s + num(group);
}

QString requestSelect(const QString& key) {
    return u"SELECT * FROM RFQVendor WHERE VOrderKey = "_s + sqlText(key);
}

std::optional<OrderDocument> loadRequest(jet::Database& database, qint64 group,
                                         const QString& key) {
    database.expect({groupSelect(group), requestSelect(key), rfqLinesSelect(key)});
    const jet::Recordset header =
        database.openRecordset(groupSelect(group), jet::RecordsetType::Snapshot);
    const jet::Recordset request =
        database.openRecordset(requestSelect(key), jet::RecordsetType::Snapshot);
    if (header.isEmpty() || (!key.isEmpty() && request.isEmpty()))
        return std::nullopt;
    OrderDocument document{.documentNo = group, .header = orderColumns().load(header)};
    if (!request.isEmpty())
        document.vendor = vendorColumns(rfqKind()).load(request);
    document.lines = loadRfqLines(database, rfqLinesSelect(key));
    return document;
}

core::SaveOutcome storeRequest(jet::Database& database, qint64 group, OrderDocument& document,
                               const OrderDocument& before, const QStringList& settled) {
    jet::Transaction transaction(database);
    const QString key = document.vendor.requestKey;
    database.expect({{groupSelect(group), jet::RecordsetType::Dynaset},
                     {requestSelect(key), jet::RecordsetType::Dynaset},
                     rfqLinesSelect(key)});
    jet::Recordset header = database.openRecordset(groupSelect(group));
    jet::Recordset request = database.openRecordset(requestSelect(key));
    const jet::Recordset lines =
        database.openRecordset(rfqLinesSelect(key), jet::RecordsetType::Snapshot);
    const std::vector<OrderLine> stored = loadRfqLines(lines);
    if (header.isEmpty() || request.isEmpty())
        throw jet::rowDeletedError();
    std::optional<core::ChangedElsewhere> both =
        orderLines().join(before.lines, stored, document.lines);
    if (!both)
        both = orderColumns().store(header, document.header, &before.header, settled);
    if (!both)
        both = vendorColumns(rfqKind()).store(request, document.vendor, &before.vendor, settled);
    if (both)
        return {0, {}, std::move(both)};
    replaceRfqLines(database, group, document.vendor.vendorId, document.lines, lines);
    document.documentNo = group;
    transaction.commit();
    return {group};
}

qint64 copyGroup(jet::Database& database, qint64 group, const std::vector<ChosenRequest>& chosen) {
    jet::Transaction transaction(database);
    database.execute(u"INSERT INTO RFQ SELECT Title, Ship2Name, Ship2Address1, Ship2Address2, "
                     "Ship2Address3, ship2City, ship2Country, ship2State, ship2Zip, ship2Email "
                     "FROM RFQ WHERE PONumber = "_s +
                     num(group));
    const qint64 next = database.lastCounter();
    core::checkRecordNumber(database, next);
    const QString head = num(next);
    for (const ChosenRequest& request : chosen) {
        if (request.items.isEmpty())
            continue;
        const QString key = head + u"-"_s + behindGroup(request.key);
        database.execute(u"INSERT INTO RFQVendor SELECT "_s + sqlText(key) + u" AS VOrderKey, "_s +
                         head + u" AS OrderNumber, VendorID, "_s + addressColumns() +
                         u" FROM RFQVendor WHERE VOrderKey = "_s + sqlText(request.key));
        database.execute(u"INSERT INTO RFQItem SELECT "_s + sqlText(key + u"-"_s) +
                         u" & ItemNumber AS itemKey, itemNumber, "_s + sqlText(key) +
                         u" AS VOrderKey, "_s + head + u" AS OrderNumber, VendorID, "_s +
                         lineColumns().names().join(u", ") + u" FROM RFQItem WHERE ItemKey IN ("_s +
                         keyList(request.items) + u")"_s);
    }
    transaction.commit();
    return next;
}

void deleteGroup(jet::Database& database, qint64 group) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM RFQitem WHERE OrderNumber = "_s + num(group));
    database.execute(u"DELETE * FROM RFQVendor WHERE OrderNumber = "_s + num(group));
    database.execute(u"DELETE * FROM RFQ WHERE PONumber = "_s + num(group));
    transaction.commit();
}

void deleteRequest(jet::Database& database, const QString& key) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM RFQitem WHERE VOrderKey = "_s + sqlText(key));
    database.execute(u"DELETE * FROM RFQVendor WHERE VOrderKey = "_s + sqlText(key));
    transaction.commit();
}

void undoByCancel(jet::Database& database, Begun begun, qint64 group, const QString& key) {
    if (begun == Begun::No)
        return;
    jet::Transaction transaction(database);
    database.execute(u"DELETE FROM RFQVendor WHERE VOrderKey = "_s + sqlText(key));
    if (begun != Begun::Vendor)
        database.execute(u"DELETE FROM RFQ WHERE PONumber = "_s + num(group));
    transaction.commit();
}

void undoByClose(jet::Database& database, Begun begun, qint64 group) {
    if (begun == Begun::No)
        return;
    jet::Transaction transaction(database);
    database.execute(u"DELETE FROM RFQVendor WHERE OrderNumber = "_s + num(group));
    if (begun != Begun::Vendor)
        database.execute(u"DELETE FROM RFQ WHERE PONumber = "_s + num(group));
    transaction.commit();
}

qint64 orderFromRequest(jet::Database& database, qint64 group, const ChosenRequest& chosen,
                        const QDate& required) {
    jet::Transaction transaction(database);
    database.execute(
        u"INSERT INTO PO SELECT Title, ship2name, ship2address1, ship2address2, Ship2Address3, "
        "ship2country, ship2city, ship2state, ship2zip, ship2email, #"_s +
        values::sqlDate(values::today()) + u"# AS PODate, "_s +
        (required.isValid() ? u"#"_s + values::sqlDate(required) + u"#"_s : u"Null"_s) +
        u" AS ReqDate, True AS Active FROM RFQ WHERE PONumber = "_s + num(group));
    const qint64 order = database.lastCounter();
    core::checkRecordNumber(database, order);
    if (!chosen.items.isEmpty()) {
        database.execute(u"INSERT INTO POVendor SELECT "_s + num(order) +
                         u" AS OrderNumber, VendorID, "_s + addressColumns() +
                         u" FROM RFQVendor WHERE VOrderKey = "_s + sqlText(chosen.key));
        jet::Recordset lines =
            database.openRecordset(u"SELECT ItemKey FROM RFQitem WHERE VOrderKey = "_s +
                                       sqlText(chosen.key) + u" ORDER BY ItemNumber"_s,
                                   jet::RecordsetType::Snapshot);
        QStringList items;
        for (; !lines.eof(); lines.moveNext()) {
            const QString key = lines.text(u"ItemKey");
            if (values::indexOfText(chosen.items, key) >= 0)
                items << key;
        }
        copyIntoOrder(database, u"RFQItem"_s, items, order);
    }
    transaction.commit();
    return order;
}

} // namespace purchasing
