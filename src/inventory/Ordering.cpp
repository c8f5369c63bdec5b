#include "inventory/Ordering.h"

#include "inventory/Sql.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"

namespace inventory {

namespace {

void addLine(jet::Database& database, const StockOrder& order, qint64 poNumber, qint64 line) {
    const Item& item = order.item;
    const bool job = order.type.compare(u"Job"_s, Qt::CaseInsensitive) == 0;
    const bool estimate = order.type.compare(u"Estimate"_s, Qt::CaseInsensitive) == 0;
    const auto total = item.price * values::Currency::fromInteger(order.quantity);
    const QString comma = u", "_s;
    database.execute(
        u"INSERT INTO POItem (ItemKey, PONumber, ItemNumber, Manufacturer, Quantity, PartNumber, "
        "Description, Type, UnitPrice, ItemTotal, Estimate, Job, UnitOfMeasure) VALUES ("_s +
        sqlText(num(poNumber) + u'-' + num(line)) + comma + num(poNumber) + comma + num(line) +
        comma + sqlText(item.manufacturer) + comma + num(order.quantity) + comma +
        sqlText(item.partNumber) + comma + sqlText(item.description) + comma + sqlText(order.type) +
        comma + item.price.toText() + comma + total.toText() + comma +
        num(estimate ? order.number : 0) + comma + num(job ? order.number : 0) + comma +
        sqlText(item.units) + u")"_s);
}

QString hashed(const QDate& date) {
    return u"#"_s + values::sqlDate(date) + u"#"_s;
}

} // namespace

QString worksSelect(bool jobs) {
    return jobs ? u"SELECT JobNo FROM Job WHERE Shipped = False ORDER BY JobNo DESC"_s
                : u"SELECT TOP 200 EstNo FROM Estimate ORDER BY EstNo DESC"_s;
}

bool isWork(jet::Database& database, bool job, qint64 number) {
    return database.hasRows((job ? u"SELECT JobNo FROM Job WHERE JobNo = "_s
                                 : u"SELECT EstNo FROM Estimate WHERE EstNo = "_s) +
                            num(number));
}

qint64 orderNew(jet::Database& database, const StockOrder& order, qint64 vendor,
                const std::optional<QDate>& required) {
    const int width = database.width(u"PO", u"Title");
    jet::Transaction transaction(database);
    database.execute(
        u"INSERT INTO PO (Title, PODate, ReqDate, Complete, Active) VALUES ("_s +
        sqlText(width > 0 ? order.item.description.left(width) : order.item.description) + u", "_s +
        hashed(values::today()) + u", "_s + (required ? hashed(*required) : u"Null"_s) +
        u", 0, True)"_s);
    const qint64 poNumber = database.lastCounter();
    addLine(database, order, poNumber, 1);
    if (database.execute(
            u"INSERT INTO POVendor SELECT "_s + num(poNumber) +
            u" AS OrderNumber, VendID AS VendorID, Company, Address1 AS MailAddress1, Address2 AS "
            "MailAddress2, Address3 AS MailAddress3, Country AS MailCountry, City AS MailCity, "
            "State AS MailState, Zip AS MailZip, Contact, Terms, Shipping, FOB, Phone, Fax, "
            "OurNotes AS Notes, Email FROM Vendor WHERE VendID = "_s +
            num(vendor)) == 0)
        return 0;
    transaction.commit();
    return poNumber;
}

bool orderOnto(jet::Database& database, const StockOrder& order, qint64 poNumber) {
    jet::Transaction transaction(database);
    database.execute(u"UPDATE PO SET Active = TRUE WHERE PONumber = "_s + num(poNumber));
    const auto sets =
        database.together({u"SELECT PONumber FROM PO WHERE PONumber = "_s + num(poNumber),
                           u"SELECT TOP 1 ItemNumber FROM POItem WHERE PONumber = "_s +
                               num(poNumber) + u" ORDER BY ItemNumber DESC"_s});
    if (sets[0].isEmpty())
        return false;
    addLine(database, order, poNumber, sets[1].isEmpty() ? 1 : sets[1].field(0).toLong() + 1);
    transaction.commit();
    return true;
}

} // namespace inventory
