#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "sample/Shop.h"

#include <map>

namespace sample {

namespace {

void makeInvoices(Shop& shop) {
    // An order's shipped jobs go out together, about a week after the last was due.
    std::map<std::pair<QDate, QString>, std::vector<const JobMade*>> orders;
    for (const JobMade& job : shop.jobs) {
        const QDate date = job.due.addDays(7);
        if (job.shipped && !job.poNo.isEmpty() && date < shop.today.addDays(-21))
            orders[{date, job.poNo}].push_back(&job);
    }
    int number = 1000;
    for (const auto& [key, jobs] : orders) {
        ++number;
        for (const JobMade* job : jobs)
            Row(u"SentInvoice")
                .set(u"InvoiceNo", QString::number(number))
                .set(u"Description", job->part.number + u' ' + job->part.description)
                .set(u"Quantity", job->quantity)
                .set(u"SentDate", values::format(key.first, u"Short Date"))
                .set(u"POID", job->poNo)
                .insert(shop.database);
    }
}

void makePayables(Shop& shop) {
    jet::Recordset lines = shop.database.openRecordset(
        u"SELECT POItem.PONumber, POItem.PartNumber, POItem.Description, POItem.ReceivedQuantity, "
        "PO.ReqDate FROM POItem INNER JOIN PO ON POItem.PONumber = PO.PONumber WHERE "
        "POItem.ReceivedQuantity > 0 AND PO.ReqDate < #"_s +
            values::sqlDate(shop.today.addDays(-30)) + u"# ORDER BY POItem.ID"_s,
        jet::RecordsetType::Snapshot);
    for (; !lines.eof(); lines.moveNext())
        Row(u"SentAP")
            .set(u"Description", lines.text(u"PartNumber") + u' ' + lines.text(u"Description"))
            .set(u"Quantity", lines[u"ReceivedQuantity"].toDouble())
            .set(u"SentDate",
                 values::format(lines[u"ReqDate"].toDate()->addDays(14), u"Short Date"))
            .set(u"POID", lines[u"PONumber"].toLong())
            .insert(shop.database);
}

} // namespace

void makeSent(Shop& shop) {
    makeInvoices(shop);
    makePayables(shop);
}

} // namespace sample
