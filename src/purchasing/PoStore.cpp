#include "purchasing/PoStore.h"

#include "platform/values/Clock.h"
#include "platform/values/Format.h"

#include <map>
#include <set>

namespace purchasing {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

std::set<qint64> idsOf(jet::Database& database, qint64 poNumber) {
    jet::Recordset set = database.openRecordset(
        u"SELECT ID FROM POItem WHERE PONumber = "_s + num(poNumber), jet::RecordsetType::Snapshot);
    std::set<qint64> ids;
    for (; !set.eof(); set.moveNext())
        ids.insert(set[u"ID"].toLong());
    return ids;
}

std::map<qint64, qint64> receivedOf(jet::Database& database, qint64 poNumber) {
    jet::Recordset set = database.openRecordset(
        u"SELECT ItemID, Sum(QtyRecvd) AS QtySum FROM POReceived WHERE PONumber = "_s +
            num(poNumber) + u" GROUP BY ItemID"_s,
        jet::RecordsetType::Snapshot);
    std::map<qint64, qint64> received;
    for (; !set.eof(); set.moveNext())
        received[set[u"ItemID"].toLong()] = set[u"QtySum"].toLong();
    return received;
}

} // namespace

void replacePoLines(jet::Database& database, qint64 poNumber, const std::vector<qint64>& stored,
                    const std::vector<OrderLine>& lines) {
    const std::set<qint64> there = idsOf(database, poNumber);
    if (there != std::set<qint64>(stored.begin(), stored.end()))
        throw LinesChangedElsewhere();
    const auto received = receivedOf(database, poNumber);
    // The old rows first, so that nothing but the new ones is there to be read back.
    database.execute(u"DELETE * FROM POItem WHERE PONumber is NULL OR PONumber = "_s +
                     num(poNumber));
    int number = 0;
    for (const OrderLine& line : lines) {
        const QString item = num(++number);
        const QString comma = u", "_s;
        const auto receipts = received.find(line.id);
        const bool has = line.id != 0 && receipts != received.end();
        database.execute(
            u"INSERT INTO POItem (ItemKey, PONumber, ItemNumber, Quantity, PartNumber, "
            "Description, Manufacturer, DeliverySchedule, Type, UnitPrice, ItemTotal, ItemNotes, "
            "Estimate, Job, ReceivedQuantity, UnitofMeasure) VALUES ("_s +
            sqlText(num(poNumber) + u"-"_s + item) + comma + num(poNumber) + comma + item + comma +
            num(line.quantity) + comma + sqlText(line.partNumber) + comma +
            sqlText(line.description) + comma + sqlText(line.manufacturer) + comma +
            sqlText(line.delivery) + comma + sqlText(line.type) + comma + line.unitPrice.toText() +
            comma + line.total.toText() + comma + sqlText(line.notes) + comma + num(line.estimate) +
            comma + num(line.job) + comma + num(has ? receipts->second : 0) + comma +
            sqlText(line.units) + u")"_s);
        if (has) {
            database.execute(u"UPDATE POReceived SET ItemID = "_s + num(database.lastCounter()) +
                             u" WHERE ItemID = "_s + num(line.id));
        }
    }
}

void writePoVendor(jet::Database& database, qint64 poNumber,
                   const std::vector<std::pair<QString, QString>>& columns, bool first) {
    QStringList names;
    QStringList texts;
    QStringList sets;
    for (const auto& [name, text] : columns) {
        const QString value = name == u"VendorID" ? text : sqlText(text);
        names << name;
        texts << value;
        sets << name + u" = "_s + value;
    }
    if (first) {
        database.execute(u"INSERT INTO POVendor (OrderNumber, "_s + names.join(u", "_s) +
                         u") VALUES ("_s + num(poNumber) + u", "_s + texts.join(u", "_s) + u")"_s);
    } else if (!sets.isEmpty()) {
        database.execute(u"UPDATE POVendor SET "_s + sets.join(u", "_s) +
                         u" WHERE OrderNumber = "_s + num(poNumber));
    }
}

ActiveChange detectActive(jet::Database& database, qint64 poNumber, bool active) {
    jet::Transaction transaction(database);
    const bool open =
        database.hasRows(u"SELECT ID FROM POItem WHERE PONumber = "_s + num(poNumber) +
                         u" AND ReceivedQuantity < Quantity ORDER BY ID"_s);
    if (open == active)
        return ActiveChange::None;
    database.execute(u"UPDATE PO SET Active = "_s + (open ? u"TRUE"_s : u"FALSE"_s) +
                     u" WHERE PONumber = "_s + num(poNumber));
    transaction.commit();
    return open ? ActiveChange::BecameActive : ActiveChange::BecameInactive;
}

QString activeNotice(ActiveChange change) {
    switch (change) {
    case ActiveChange::BecameActive:
        return u"All items have NOT been received. This PO will be marked as Active."_s;
    case ActiveChange::BecameInactive:
        return u"All items have been received. This PO will be marked as Inactive."_s;
    case ActiveChange::None:
        break;
    }
    return {};
}

qint64 copyOrder(jet::Database& database, qint64 poNumber, const QStringList& items,
                 const QDate& required) {
    jet::Transaction transaction(database);
    database.execute(
        u"INSERT INTO PO SELECT Title, Ship2Name, Ship2Address1, Ship2Address2, Ship2Address3, "
        "ship2City, ship2Country, ship2State, ship2Zip, ship2Email, #"_s +
        values::sqlDate(values::today()) + u"# AS PODate, "_s +
        (required.isValid() ? u"#"_s + values::sqlDate(required) + u"#"_s : u"Null"_s) +
        u" AS ReqDate, True as Active FROM PO WHERE PONumber = "_s + num(poNumber));
    const qint64 next = database.lastCounter();
    if (!items.isEmpty()) {
        database.execute(
            u"INSERT INTO POVendor SELECT "_s + num(next) +
            u" AS OrderNumber, VendorID, Company, MailAddress1, MailAddress2, MailAddress3, "
            "MailCountry, MailCity, MailState, MailZip, Contact, Phone, Fax, Terms, Shipping, "
            "FOB, Notes, Email FROM POVendor WHERE OrderNumber = "_s +
            num(poNumber));
    }
    int number = 0;
    for (const QString& key : items) {
        const QString item = num(++number);
        database.execute(u"INSERT INTO POItem SELECT "_s + sqlText(num(next) + u"-"_s + item) +
                         u" AS itemKey, "_s + item + u" AS ItemNumber, partNumber, "_s + num(next) +
                         u" AS PONumber, Manufacturer, Description, Type, Estimate, Job, "
                         "UnitOfMeasure, UnitPrice, Quantity, itemTotal, DeliverySchedule, "
                         "itemNotes FROM POItem WHERE ItemKey = "_s +
                         sqlText(key));
    }
    transaction.commit();
    return next;
}

void deleteOrder(jet::Database& database, qint64 poNumber) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM POReceived WHERE PONumber = "_s + num(poNumber));
    database.execute(u"DELETE * FROM POItem WHERE PONumber = "_s + num(poNumber) +
                     u" OR PONumber = 0"_s);
    database.execute(u"DELETE * FROM POVendor WHERE OrderNumber = "_s + num(poNumber));
    database.execute(u"DELETE * FROM PO WHERE PONumber = "_s + num(poNumber));
    transaction.commit();
}

} // namespace purchasing
