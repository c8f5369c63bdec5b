#include "purchasing/PoStore.h"

#include "core/records/RecordNumbers.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Letters.h"

#include <algorithm>
#include <utility>

namespace purchasing {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

QString receiptsOf(qint64 poNumber) {
    return u"SELECT ItemID, Sum(QtyRecvd) AS QtySum FROM POReceived WHERE PONumber = "_s +
           num(poNumber) + u" GROUP BY ItemID"_s;
}

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

} // namespace

QString orderSelect(qint64 poNumber) {
    return u"SELECT * FROM PO WHERE PONumber = "_s + num(poNumber);
}

QString orderVendorSelect(qint64 poNumber) {
    return u"SELECT * FROM POVendor WHERE OrderNumber = "_s + num(poNumber) +
           u" ORDER BY VendorID"_s;
}

Received receivedOf(jet::Database& database, qint64 poNumber) {
    Received received;
    for (jet::Recordset item = read(database, receiptsOf(poNumber)); !item.eof(); item.moveNext())
        received[item[u"ItemID"].toLong()] = item[u"QtySum"].toLong();
    return received;
}

void replacePoLines(jet::Database& database, qint64 poNumber, const Received& received,
                    const std::vector<OrderLine>& lines) {
    qint64 highest = poNumber;
    QStringList kept;
    for (const OrderLine& line : lines) {
        highest = std::max(highest, line.id);
        if (line.id != 0)
            kept << num(line.id);
    }
    database.execute(u"DELETE * FROM POItem WHERE PONumber is NULL OR PONumber = "_s +
                     num(poNumber) +
                     (kept.isEmpty() ? QString() : u" AND ID NOT IN ("_s + kept.join(u',') + u')'));
    // A line that stays is renumbered where it stands: the journal then tells what was changed, not
    // that all lines went and came.
    std::vector<qint64> ids;
    if (!kept.isEmpty()) {
        ids = database.takeNumbers(u"POItem"_s, static_cast<int>(lines.size()));
        highest = std::max(highest, ids.back());
    }
    std::vector<std::vector<jet::Value>> added, renumbered, moved;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const OrderLine& line = lines[i];
        const auto number = static_cast<qint64>(i) + 1;
        const auto receipts = line.id == 0 ? received.end() : received.find(line.id);
        std::vector<jet::Value> row;
        if (line.id != 0)
            row.emplace_back(line.id);
        if (!ids.empty())
            row.emplace_back(ids[i]);
        row.insert(row.end(), {jet::Value(u"%1-%2"_s.arg(poNumber).arg(number)),
                               jet::Value(poNumber), jet::Value(number),
                               jet::Value(receipts == received.end() ? 0 : receipts->second)});
        const std::vector<jet::Value> own = lineColumns().values(line);
        row.insert(row.end(), own.begin(), own.end());
        if (receipts != received.end())
            moved.push_back({line.id, ids[i]});
        (line.id == 0 ? added : renumbered).push_back(std::move(row));
    }
    QStringList columns =
        QStringList{u"ItemKey"_s, u"PONumber"_s, u"ItemNumber"_s, u"ReceivedQuantity"_s} +
        lineColumns().names();
    if (!ids.empty())
        columns.prepend(u"ID"_s);
    database.updateRows(u"POItem"_s, QStringList{u"ID"_s} + columns, 1, renumbered);
    database.insertRows(u"POItem"_s, columns, added);
    // What was received follows its lines to their new IDs, which are none that ever was.
    database.updateRows(u"POReceived"_s, {u"ItemID"_s, u"ItemID"_s}, 1, moved);
    core::checkRecordNumber(database, highest);
}

std::optional<OrderDocument> loadOrder(jet::Database& database, qint64 poNumber) {
    database.expect({orderSelect(poNumber), orderVendorSelect(poNumber), poLinesSelect(poNumber)});
    const jet::Recordset header = read(database, orderSelect(poNumber));
    if (header.isEmpty())
        return std::nullopt;
    OrderDocument order{.documentNo = poNumber, .header = orderColumns().load(header)};
    const jet::Recordset vendor = read(database, orderVendorSelect(poNumber));
    if (!vendor.isEmpty())
        order.vendor = vendorColumns(poKind()).load(vendor);
    order.lines = loadPoLines(database, poNumber);
    return order;
}

namespace {

void insertVendor(jet::Database& database, qint64 poNumber, const OrderVendor& vendor) {
    const core::DocumentColumns<OrderVendor>& columns = vendorColumns(poKind());
    std::vector<jet::Value> row{poNumber};
    const std::vector<jet::Value> copy = columns.values(vendor);
    row.insert(row.end(), copy.begin(), copy.end());
    database.insertRows(u"POVendor"_s, QStringList(u"OrderNumber"_s) + columns.names(), {row});
}

qint64 addOrder(jet::Database& database, OrderDocument& document) {
    std::vector<jet::Value> header = orderColumns().values(document.header);
    header.emplace_back(false);
    header.emplace_back(true);
    database.insertRows(u"PO"_s, orderColumns().names() << u"Complete"_s << u"Active"_s, {header});
    const qint64 number = database.lastCounter();
    insertVendor(database, number, document.vendor);
    for (OrderLine& line : document.lines)
        line.id = 0;
    replacePoLines(database, number, {}, document.lines);
    return number;
}

using NewIds = std::map<qint64, qint64>;

qint64 idNow(const NewIds& renewed, qint64 id) {
    const auto found = renewed.find(id);
    return found == renewed.end() ? id : found->second;
}

/// Another station's save has given all lines new IDs. A line of the same part gets the ID back by
/// which this station knows it; returns what it is now.
NewIds recognise(const std::vector<OrderLine>& before, std::vector<OrderLine>& stored) {
    NewIds renewed;
    std::vector<const OrderLine*> missing;
    for (const OrderLine& line : before) {
        if (!orderLines().find(stored, line.id))
            missing.push_back(&line);
    }
    for (OrderLine& line : stored) {
        if (orderLines().find(before, line.id))
            continue;
        const auto was = std::find_if(missing.begin(), missing.end(), [&](const OrderLine* one) {
            return values::sameText(one->partNumber, line.partNumber);
        });
        if (was == missing.end())
            continue;
        renewed[(*was)->id] = std::exchange(line.id, (*was)->id);
        missing.erase(was);
    }
    return renewed;
}

/// A line that is removed here and of which something has come in since it was read.
std::optional<core::ChangedElsewhere> removedAndReceived(const std::vector<OrderLine>& before,
                                                         const std::vector<OrderLine>& lines,
                                                         const NewIds& renewed,
                                                         const Received& received) {
    for (const OrderLine& line : before) {
        const auto now = received.find(idNow(renewed, line.id));
        if (now != received.end() && now->second != line.received &&
            !orderLines().find(lines, line.id))
            return core::ChangedElsewhere{orderLines().name(line),
                                          QString::number(now->second) + u" received"_s,
                                          u"removed"_s};
    }
    return std::nullopt;
}

} // namespace

core::SaveOutcome storeOrder(jet::Database& database, qint64 poNumber, OrderDocument& document,
                             const OrderDocument* before, const QStringList& settled) {
    jet::Transaction transaction(database);
    if (!before) {
        poNumber = addOrder(database, document);
    } else {
        database.expect({{orderSelect(poNumber), jet::RecordsetType::Dynaset},
                         {orderVendorSelect(poNumber), jet::RecordsetType::Dynaset},
                         poLinesSelect(poNumber),
                         receiptsOf(poNumber)});
        jet::Recordset header = database.openRecordset(orderSelect(poNumber));
        jet::Recordset vendor = database.openRecordset(orderVendorSelect(poNumber));
        std::vector<OrderLine> stored = loadPoLines(database, poNumber);
        const Received received = receivedOf(database, poNumber);
        if (header.isEmpty())
            throw jet::rowDeletedError();
        const NewIds renewed = recognise(before->lines, stored);
        std::optional<core::ChangedElsewhere> both =
            removedAndReceived(before->lines, document.lines, renewed, received);
        if (!both)
            both = orderLines().join(before->lines, stored, document.lines);
        if (!both)
            both = orderColumns().store(header, document.header, &before->header, settled);
        if (!both && vendor.isEmpty())
            insertVendor(database, poNumber, document.vendor);
        else if (!both)
            both = vendorColumns(poKind()).store(vendor, document.vendor, &before->vendor, settled);
        if (both)
            return {0, {}, std::move(both)};
        for (OrderLine& line : document.lines) // what is no longer stored is written as a new line
            line.id = orderLines().find(stored, line.id) ? idNow(renewed, line.id) : 0;
        replacePoLines(database, poNumber, received, document.lines);
    }
    document.documentNo = poNumber;
    transaction.commit();
    return {poNumber};
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
    core::checkRecordNumber(database, next);
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
