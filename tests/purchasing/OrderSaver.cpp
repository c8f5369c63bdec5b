// A buyer's station of its own: OrderSaver DATABASE ORDER GROUP saves the order and the request
// with another number of lines each time, copies both as templates and receives into stock, again
// and again, with a line of output for each round. Title and every line of a document say its
// round, the ship-to city how many lines it has.

#include "platform/values/Literals.h"
#include "purchasing/PoStore.h"
#include "purchasing/Receiving.h"
#include "purchasing/RfqStore.h"
#include "support/Station.h"

using namespace purchasing;

namespace {

OrderDocument changed(OrderDocument document, int round) {
    const std::size_t count = 5 + static_cast<std::size_t>(round % 13);
    document.header.title = QString::number(round);
    document.header.shipTo[4] = QString::number(count);
    document.lines.resize(count);
    int number = 0;
    for (OrderLine& line : document.lines) {
        line.itemNumber = ++number;
        line.partNumber = u"P%1"_s.arg(number);
        line.description = document.header.title;
        line.units = u"EA"_s;
        line.quantity = 1000000;
    }
    return document;
}

QStringList keysOf(jet::Database& database, const QString& select) {
    QStringList keys;
    for (jet::Recordset rows = database.openRecordset(select, jet::RecordsetType::Snapshot);
         !rows.eof(); rows.moveNext())
        keys << rows.field(0).toText();
    return keys;
}

} // namespace

int main(int argc, char* argv[]) {
    return testsupport::runStation(
        argc, argv, [](jet::Database& database, const QStringList& words) {
            const qint64 order = words[0].toLongLong(), group = words[1].toLongLong();
            const QString key =
                keysOf(database,
                       u"SELECT VOrderKey FROM RFQVendor WHERE OrderNumber = %1"_s.arg(group))
                    .value(0);
            const QString itemsOfOrder =
                u"SELECT ItemKey FROM POItem WHERE PONumber = %1"_s.arg(order);
            const QString itemsOfRequest =
                u"SELECT ItemKey FROM RFQItem WHERE VOrderKey = '%1'"_s.arg(key);
            for (int round = 1; round < 100000; ++round) {
                const OrderDocument stored = *loadOrder(database, order);
                OrderDocument saved = changed(stored, round);
                if (storeOrder(database, order, saved, &stored).conflict)
                    return 2;
                auto lines = openLines(database, order);
                for (ReceiveLine& line : lines) {
                    line.selected = line.stock = true;
                    line.quantity = 1;
                }
                receive(database, {order, QDate(2026, 3, 2), 1}, lines);
                copyOrder(database, order, keysOf(database, itemsOfOrder), QDate(2026, 4, 1));
                const OrderDocument asked = *loadRequest(database, group, key);
                OrderDocument asking = changed(asked, round);
                if (storeRequest(database, group, asking, asked).conflict)
                    return 3;
                copyGroup(database, group, {{key, keysOf(database, itemsOfRequest)}});
                testsupport::tell(u"round"_s);
            }
            return 0;
        });
}
