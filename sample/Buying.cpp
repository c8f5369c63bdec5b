#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "sample/Shop.h"

namespace sample {

namespace {

using values::Currency;

struct Line {
    Part part;
    int quantity = 0;
    Currency price;
    const char16_t* type = u"Stock";
    qint64 jobNo = 0, estNo = 0;
};

std::vector<Line> madeUpLines(Shop& shop) {
    Random& random = shop.random;
    std::vector<Line> lines(static_cast<std::size_t>(random.between(1, 6)));
    for (Line& line : lines) {
        line.part = madeUpPart(random);
        line.quantity = random.between(2, 60);
        line.price = Currency::fromDouble(random.between(40, 9000) / 100.0);
        if (random.chance(50)) {
            line.type = u"Job";
            line.jobNo = random.of(shop.jobs).jobNo;
        } else if (random.chance(15)) {
            line.type = u"Estimate";
            line.estNo = random.of(shop.estimates);
        } else if (random.chance(15)) {
            line.type = u"Overhead";
        }
    }
    return lines;
}

void setVendor(Row& row, Shop& shop, qint64 vendID) {
    const jet::Recordset vendor = shop.database.openRecordset(
        u"SELECT * FROM Vendor WHERE VendID = "_s + QString::number(vendID),
        jet::RecordsetType::Snapshot);
    row.set(u"VendorID", vendID)
        .set(u"Company", vendor.text(u"company"))
        .set(u"MailAddress1", vendor.text(u"Address1"))
        .set(u"MailCity", vendor.text(u"City"))
        .set(u"MailState", vendor.text(u"State"))
        .set(u"MailZip", vendor.text(u"Zip"))
        .set(u"MailCountry", vendor.text(u"Country"))
        .set(u"Contact", vendor.text(u"Contact"))
        .set(u"Phone", vendor.text(u"Phone"))
        .set(u"Terms", vendor.text(u"Terms"))
        .set(u"Shipping", vendor.text(u"Shipping"))
        .set(u"FOB", vendor.text(u"FOB"))
        .set(u"Fax", vendor.text(u"Fax"))
        .set(u"Email", vendor.text(u"Email"));
}

/// What a vendor asks for a line: not all ask the same, and some haven't quoted yet.
Currency offered(Currency price, qint64 vendID, int number) {
    if ((vendID + number) % 9 == 0)
        return {};
    const qint64 percent = 95 + (vendID * 7 + number * 3) % 11;
    return Currency::fromTenThousandths(price.tenThousandths() * percent / 100);
}

void makeRfq(Shop& shop, const QDate& date) {
    jet::Database& db = shop.database;
    const auto lines = madeUpLines(shop);
    const qint64 group = Row(u"RFQ")
                             .set(u"Title", u"Request for "_s + lines[0].part.description)
                             .set(u"PODate", date)
                             .set(u"ReqDate", date.addDays(14))
                             .set(u"Complete", shop.random.chance(60))
                             .set(u"Ship2Name", u"Sample Tool & Die")
                             .insert(db);
    std::set<qint64> asked;
    for (int i = shop.random.between(1, 3); i > 0; --i)
        asked.insert(shop.random.of(shop.vendors));
    for (const qint64 vendID : asked) {
        const QString key = QString::number(group) + u'-' + QString::number(vendID);
        Row vendor(u"RFQVendor");
        vendor.set(u"VOrderKey", key).set(u"OrderNumber", group);
        setVendor(vendor, shop, vendID);
        vendor.insert(db);
        int number = 0;
        for (const Line& line : lines) {
            ++number;
            const Currency price = offered(line.price, vendID, number);
            Row(u"RFQItem")
                .set(u"ItemKey", key + u'-' + QString::number(number))
                .set(u"VOrderKey", key)
                .set(u"OrderNumber", group)
                .set(u"VendorID", vendID)
                .set(u"ItemNumber", number)
                .set(u"Quantity", line.quantity)
                .set(u"PartNumber", line.part.number)
                .set(u"Description", line.part.description)
                .set(u"Type", line.type)
                .set(u"UnitPrice", price)
                .set(u"ItemTotal", price * Currency::fromInteger(line.quantity))
                .set(u"Estimate", line.estNo)
                .set(u"Job", line.jobNo)
                .set(u"UnitOfMeasure", u"EA")
                .insert(db);
        }
    }
}

int makePurchaseOrder(Shop& shop, const QDate& date, int number) {
    jet::Database& db = shop.database;
    Random& random = shop.random;
    const auto lines = madeUpLines(shop);
    const bool old = date < shop.today.addDays(-40);
    const int received = old ? (random.chance(92) ? 2 : 1) : number % 3; // none, in part, all
    const qint64 poNumber = Row(u"PO")
                                .set(u"Title", lines[0].part.description)
                                .set(u"PODate", date)
                                .set(u"ReqDate", date.addDays(21))
                                .set(u"Complete", received == 2)
                                .set(u"Active", received != 2)
                                .set(u"Ship2Name", u"Sample Tool & Die")
                                .set(u"Ship2City", u"Springfield")
                                .insert(db);
    Row vendor(u"POVendor");
    vendor.set(u"OrderNumber", poNumber);
    setVendor(vendor, shop, random.of(shop.vendors));
    vendor.insert(db);
    int lineNumber = 0;
    for (const Line& line : lines) {
        ++lineNumber;
        const int in = received == 2 ? line.quantity : received == 1 ? line.quantity / 2 : 0;
        const qint64 id =
            Row(u"POItem")
                .set(u"ItemKey", QString::number(poNumber) + u'-' + QString::number(lineNumber))
                .set(u"PONumber", poNumber)
                .set(u"ItemNumber", lineNumber)
                .set(u"Quantity", line.quantity)
                .set(u"ReceivedQuantity", in)
                .set(u"PartNumber", line.part.number)
                .set(u"Description", line.part.description)
                .set(u"Manufacturer", u"Harrow Bearings")
                .set(u"Type", line.type)
                .set(u"Estimate", line.estNo)
                .set(u"Job", line.jobNo)
                .set(u"UnitOfMeasure", u"EA")
                .set(u"UnitPrice", line.price)
                .set(u"ItemTotal", line.price * Currency::fromInteger(line.quantity))
                .insert(db);
        if (in > 0) {
            Row(u"POReceived")
                .set(u"ItemID", id)
                .set(u"PONumber", poNumber)
                .set(u"QtyRecvd", in)
                .set(u"Date", std::min(date.addDays(random.between(5, 30)), shop.today))
                .set(u"EmpID", random.of(shop.employees))
                .insert(db);
        }
    }
    return lineNumber;
}

} // namespace

void makePurchasing(Shop& shop) {
    const auto span = shop.start.daysTo(shop.today);
    const int lines = std::max(60, shop.options.jobs / 2);
    for (int made = 0, number = 0; made < lines; ++number) {
        const QDate date = shop.start.addDays(made * span / lines);
        if (shop.random.chance(40))
            makeRfq(shop, date);
        made += makePurchaseOrder(shop, date, number);
    }
    // A shop that has bought for many years has left behind what knows no larger numbers.
    if (shop.database.lookup(u"SELECT MAX(ID) FROM POItem"_s).toLong() > 32767 / 2)
        shop.database.execute(u"UPDATE SystemSettings SET LargeNumbers = True"_s);
}

void makeInventory(Shop& shop) {
    jet::Database& db = shop.database;
    Random& random = shop.random;
    std::vector<qint64> types, locations;
    const auto branch = [&](const char16_t* table, const char16_t* name, qint64 parent) {
        return Row(table).set(u"Description", name).set(u"Parent", parent).insert(db);
    };
    const qint64 material = branch(u"ItemTypes", u"Material", 0);
    for (const auto* name : {u"Tool steel", u"Aluminum", u"Brass", u"Plastics"})
        types.push_back(branch(u"ItemTypes", name, material));
    const qint64 hardware = branch(u"ItemTypes", u"Hardware", 0);
    for (const auto* name : {u"Dowel pins", u"Screws", u"Bushings", u"Springs"})
        types.push_back(branch(u"ItemTypes", name, hardware));
    for (const auto* room : {u"Stock room", u"Tool crib"}) {
        const qint64 parent = branch(u"ItemLocations", room, 0);
        for (const auto* rack : {u"Rack 1", u"Rack 2", u"Rack #4"})
            locations.push_back(branch(u"ItemLocations", rack, parent));
    }
    const int count = std::max(80, shop.options.jobs / 2);
    // Some of what is in stock is on order.
    jet::Recordset ordered = db.openRecordset(
        u"SELECT TOP 12 ID FROM POItem WHERE ReceivedQuantity < Quantity AND Type = 'Stock' "
        "ORDER BY ID DESC"_s,
        jet::RecordsetType::Snapshot);
    for (int i = 0; i < count; ++i) {
        const Part part = madeUpPart(random);
        if (!ordered.eof()) {
            db.execute(u"UPDATE POItem SET PartNumber = '%1', Description = '%2' WHERE ID = %3"_s
                           .arg(values::quoted(part.number), values::quoted(part.description))
                           .arg(ordered[u"ID"].toLong()));
            ordered.moveNext();
        }
        const int quantity = random.between(0, 400);
        const qint64 id =
            Row(u"Items")
                .set(u"Description", part.description)
                .set(u"PartNumber", part.number)
                .set(u"Manufacturer", random.chance(50) ? u"Osprey Carbide" : u"")
                .set(u"Units", u"EA")
                .set(u"Quantity", quantity)
                .set(u"PricePer", Currency::fromDouble(random.between(5, 40000) / 100.0))
                .set(u"FlagQuantity", random.chance(30) ? quantity + 5 : 2)
                .set(u"Type", random.of(types))
                .set(u"Location", random.of(locations))
                .insert(db);
        shop.items.push_back(id);
        if (i % 5 == 0) {
            const QDate date =
                shop.start.addDays(random.below(static_cast<int>(shop.start.daysTo(shop.today))));
            Row(u"ItemReStock")
                .set(u"ItemID", id)
                .set(u"Quantity", random.between(1, 50))
                .set(u"Employee", random.of(shop.employees))
                .set(u"Date", date)
                .set(u"Type", u"Manual")
                .set(u"Number", 0)
                .set(u"Vendor", random.of(shop.vendors))
                .insert(db);
            Row(u"ItemIssue")
                .set(u"ItemID", id)
                .set(u"Quantity", 1)
                .set(u"Employee", random.of(shop.employees))
                .set(u"Date", date)
                .set(u"IssueTo", random.of(shop.jobs).jobNo)
                .set(u"Type", u"Job")
                .insert(db);
        }
    }
    for (int i = 0; i < std::max(25, shop.options.jobs / 20); ++i) {
        const JobMade& job = random.of(shop.jobs);
        const int spare = random.between(1, 8);
        const Currency price = Currency::fromDouble(random.between(100, 9000) / 100.0);
        Row(u"SpareParts")
            .set(u"SCustID", job.custID)
            .set(u"SLocation", u"Shelf "_s + QString::number(random.between(1, 12)))
            .set(u"SPartNo", job.part.number)
            .set(u"SJobNo", job.jobNo)
            .set(u"SPoNo", job.poNo)
            .set(u"SSpareQty", spare)
            .set(u"SJobQty", job.quantity)
            .set(u"SparePrice", price)
            .set(u"SpareTotPrice", price * Currency::fromInteger(spare))
            .set(u"SEmpID", random.of(shop.employees))
            .set(u"SDate", std::min(job.due, shop.today))
            .insert(db);
    }
}

} // namespace sample
