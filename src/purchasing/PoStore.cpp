#include "purchasing/PoStore.h"

#include "platform/values/Clock.h"
#include "platform/values/Format.h"

#include <set>

namespace purchasing {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

QString linesOf(qint64 poNumber) {
    return u"SELECT ID, ItemNumber FROM POItem WHERE PONumber = "_s + num(poNumber);
}

QString receiptsOf(qint64 poNumber) {
    return u"SELECT ItemID, Sum(QtyRecvd) AS QtySum FROM POReceived WHERE PONumber = "_s +
           num(poNumber) + u" GROUP BY ItemID"_s;
}

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

} // namespace

std::vector<jet::WantedSet> receivedSelects(qint64 poNumber) {
    return {linesOf(poNumber), receiptsOf(poNumber)};
}

Received receivedOf(jet::Database& database, qint64 poNumber, const std::vector<qint64>& stored) {
    std::set<qint64> there;
    for (jet::Recordset line = read(database, linesOf(poNumber)); !line.eof(); line.moveNext())
        there.insert(line[u"ID"].toLong());
    if (there != std::set<qint64>(stored.begin(), stored.end()))
        throw LinesChangedElsewhere();
    Received received;
    for (jet::Recordset item = read(database, receiptsOf(poNumber)); !item.eof(); item.moveNext())
        received[item[u"ItemID"].toLong()] = item[u"QtySum"].toLong();
    return received;
}

void replacePoLines(jet::Database& database, qint64 poNumber, const Received& received,
                    const std::vector<OrderLine>& lines) {
    // The old rows first, so that nothing but the new ones is there to be read back.
    database.execute(u"DELETE * FROM POItem WHERE PONumber is NULL OR PONumber = "_s +
                     num(poNumber));
    std::vector<std::vector<jet::Value>> rows;
    std::map<qint64, qint64> receivedAs; // the line's new number, its ID before
    for (const OrderLine& line : lines) {
        const auto number = static_cast<qint64>(rows.size()) + 1;
        const auto receipts = line.id == 0 ? received.end() : received.find(line.id);
        if (receipts != received.end())
            receivedAs[number] = line.id;
        std::vector<jet::Value> row{u"%1-%2"_s.arg(poNumber).arg(number), poNumber, number,
                                    receipts == received.end() ? 0 : receipts->second};
        const std::vector<jet::Value> own = lineColumns().values(line);
        row.insert(row.end(), own.begin(), own.end());
        rows.push_back(std::move(row));
    }
    database.insertRows(
        u"POItem"_s,
        QStringList{u"ItemKey"_s, u"PONumber"_s, u"ItemNumber"_s, u"ReceivedQuantity"_s} +
            lineColumns().names(),
        rows);
    if (receivedAs.empty())
        return;
    // What was received follows its lines to their new IDs, which are none that ever was.
    std::vector<std::vector<jet::Value>> moved;
    for (jet::Recordset line = read(database, linesOf(poNumber)); !line.eof(); line.moveNext()) {
        const auto before = receivedAs.find(line[u"ItemNumber"].toLong());
        if (before != receivedAs.end())
            moved.push_back({before->second, line[u"ID"].toLong()});
    }
    database.updateRows(u"POReceived"_s, {u"ItemID"_s, u"ItemID"_s}, 1, moved);
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

QString openLinesSelect(qint64 poNumber) {
    return u"SELECT TOP 1 ID FROM POItem WHERE PONumber = "_s + num(poNumber) +
           u" AND ReceivedQuantity < Quantity ORDER BY ID"_s;
}

ActiveChange detectActive(jet::Database& database, qint64 poNumber, bool active) {
    const QString open = openLinesSelect(poNumber);
    if (database.hasRows(open) == active)
        return ActiveChange::None;
    jet::Transaction transaction(database);
    const bool isOpen = database.hasRows(open);
    if (isOpen == active)
        return ActiveChange::None;
    database.execute(u"UPDATE PO SET Active = "_s + (isOpen ? u"TRUE"_s : u"FALSE"_s) +
                     u" WHERE PONumber = "_s + num(poNumber));
    transaction.commit();
    return isOpen ? ActiveChange::BecameActive : ActiveChange::BecameInactive;
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
    copyIntoOrder(database, u"POItem"_s, items, next);
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
