#include "desk/StartFacts.h"

#include "core/keeping/Backup.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <functional>

namespace desk {

namespace {

const QString mostLines = u"8"_s;

/// A reason, as data: its words, its rows, and how a row reads.
struct Reason {
    QString menu; ///< whose right shows it
    QString title;
    QString module;
    StartTarget all;
    QString fields; ///< Key, Who, Subject, Due, and what `left` takes
    QString from;   ///< with WHERE
    QString order;
    QString word; ///< in front of the key
    std::function<QString(const jet::Recordset& row)> left;
};

QString day(const QDate& date) {
    return u'#' + values::sqlDate(date) + u'#';
}

QString shownDay(const jet::Value& value) {
    const auto date = value.toDate();
    return date ? values::format(*date, u"Short Date") : QString();
}

StartTarget list(const QString& form, const QString& view) {
    return {.form = form, .view = view};
}

/// "3 days late", "today", "in 5 days".
QString distance(const std::optional<QDate>& date, const QDate& today) {
    if (!date)
        return {};
    const qint64 days = today.daysTo(*date);
    const QString count = days == 1 || days == -1 ? u"1 day"_s : u"%1 days"_s.arg(std::abs(days));
    return days == 0 ? u"today"_s : days < 0 ? count + u" late"_s : u"in "_s + count;
}

std::vector<Reason> reasons(const QDate& today) {
    const auto late = [today](const jet::Recordset& row) {
        return distance(row[u"Due"].toDate(), today);
    };
    const QString company = u"(SELECT company FROM Customer WHERE Customer.Custid = %1) AS Who"_s;
    return {
        {u"mnuFileJob"_s, u"Jobs late or due within a week"_s, u"frmJob"_s,
         list(u"frmJobList"_s, u"Late or due within a week"_s),
         u"Job.JobNo AS Key, "_s + company.arg(u"Job.CustID"_s) +
             u", Job.PartNo AS Subject, Job.JobDueDate AS Due, (SELECT SUM(IIf(o.EstOper > "
             "o.OperTime_Amount, o.EstOper - o.OperTime_Amount, 0)) FROM JobOper o INNER JOIN "
             "Operation p ON o.OperNo = p.OperNo WHERE o.JobNo = Job.JobNo AND p.OperType = 'I' "
             "AND (o.Status Is Null OR o.Status <> 'F')) AS Hours"_s,
         u"Job WHERE Job.Shipped = False AND Job.JobDueDate < "_s + day(today.addDays(8)),
         u"Job.JobDueDate, Job.JobNo"_s, u"Job"_s,
         [late](const jet::Recordset& row) {
             return late(row) + u", "_s + values::format(row[u"Hours"].toDouble(), u"#,##0.0") +
                    u" h left"_s;
         }},
        {u"mnuFileEstimate"_s, u"Estimates of the last 90 days without a quoted price"_s,
         u"frmEstimate"_s, list(u"frmEstimateList"_s, u"Without a quoted price"_s),
         u"Estimate.EstNo AS Key, "_s + company.arg(u"Estimate.CustID"_s) +
             u", Estimate.PartNo AS Subject, Estimate.EstDate AS Due, (SELECT MIN(r.ReqDate) FROM "
             "RFQItem i INNER JOIN RFQ r ON i.OrderNumber = r.PONumber WHERE i.Estimate = "
             "Estimate.EstNo) AS Required"_s,
         u"Estimate WHERE Estimate.EstDate >= "_s + day(today.addDays(-90)) +
             u" AND (Estimate.QtyQPA Is Null OR Estimate.QtyQPA = 0) AND NOT EXISTS (SELECT "
             "j.JobNo FROM Job j WHERE j.EstNo = Estimate.EstNo)"_s,
         u"Estimate.EstDate, Estimate.EstNo"_s, u"Estimate"_s,
         [today](const jet::Recordset& row) {
             const auto required = row[u"Required"].toDate();
             return required ? u"vendors answer "_s + distance(required, today) : QString();
         }},
        {u"mnuFileRequest"_s, u"Requests whose answers are due or overdue"_s, u"frmRFQ"_s,
         list(u"frmRFQList"_s, u"Answers overdue"_s),
         u"RFQ.PONumber AS Key, '' AS Who, RFQ.Title AS Subject, RFQ.ReqDate AS Due"_s,
         u"RFQ WHERE RFQ.ReqDate >= "_s + day(today.addDays(-90)) + u" AND RFQ.ReqDate <= "_s +
             day(today) +
             u" AND RFQ.Complete = False AND NOT EXISTS (SELECT i.ItemKey FROM RFQItem i WHERE "
             "i.OrderNumber = RFQ.PONumber AND i.UnitPrice > 0)"_s,
         u"RFQ.ReqDate, RFQ.PONumber"_s, u"RFQ"_s, late},
        {u"mnuFilePurchaseOrder"_s, u"Orders overdue at vendors"_s, u"frmPO"_s,
         list(u"frmPOList"_s, u"Overdue"_s),
         u"PO.PONumber AS Key, (SELECT MIN(v.Company) FROM POVendor v WHERE v.OrderNumber = "
         "PO.PONumber) AS Who, PO.Title AS Subject, PO.ReqDate AS Due, (SELECT COUNT(*) FROM "
         "POItem i WHERE i.PONumber = PO.PONumber AND (i.ReceivedQuantity Is Null OR "
         "i.ReceivedQuantity < i.Quantity)) AS Lines"_s,
         u"PO WHERE PO.Active = True AND PO.ReqDate < "_s + day(today) +
             u" AND EXISTS (SELECT i.ID FROM POItem i WHERE i.PONumber = PO.PONumber AND "
             "(i.ReceivedQuantity Is Null OR i.ReceivedQuantity < i.Quantity))"_s,
         u"PO.ReqDate, PO.PONumber"_s, u"PO"_s,
         [late](const jet::Recordset& row) {
             const QString lines = row[u"Lines"].toText();
             return late(row) + u", "_s + lines +
                    (lines == u"1" ? u" line open"_s : u" lines open"_s);
         }},
        {u"mnuFilePurchaseOrder"_s,
         u"Lines for stock received in the last 90 days and not stocked"_s, u"frmPO"_s,
         list(u"frmPOList"_s, u"All orders"_s),
         u"r.PONumber AS Key, i.PartNumber AS Who, i.Description AS Subject, r.[Date] AS Due, "
         "r.QtyRecvd AS Quantity"_s,
         u"POReceived r INNER JOIN POItem i ON r.ItemID = i.ID WHERE r.[Date] >= "_s +
             day(today.addDays(-90)) + u" AND r.StockInventory = False AND i.Type = 'Stock'"_s,
         u"r.[Date], r.ID"_s, u"PO"_s,
         [](const jet::Recordset& row) { return row.text(u"Quantity") + u" received"_s; }},
        {u"mnuInventory"_s, u"Items under their minimum"_s, u"frmInventory"_s,
         list(u"frmItemList"_s, u"Under their minimum"_s),
         u"Items.ID AS Key, Items.PartNumber AS Who, Items.Description AS Subject, Items.Quantity "
         "AS Due, Items.FlagQuantity AS Minimum"_s,
         u"Items WHERE Items.FlagQuantity > Items.Quantity"_s, u"Items.ID DESC"_s, u"Item"_s,
         [](const jet::Recordset& row) {
             return row.text(u"Due") + u" of "_s + row.text(u"Minimum");
         }},
        {u"mnuInvoice"_s, u"Jobs shipped in the last 60 days and not invoiced"_s, u"frmJob"_s,
         list(u"frmJobList"_s, u"Shipped in the last 60 days"_s),
         u"Job.JobNo AS Key, "_s + company.arg(u"Job.CustID"_s) +
             u", Job.PartNo AS Subject, Job.ShipDate AS Due, Job.PONo AS OrderNo"_s,
         u"Job WHERE Job.Shipped <> False AND Job.ShipDate >= "_s + day(today.addDays(-60)) +
             u" AND NOT EXISTS (SELECT s.ID FROM SentInvoice s WHERE s.POID = Job.PONo AND "
             "s.Description = Left(Job.PartNo & ' ' & Job.Description, 255))"_s,
         u"Job.ShipDate, Job.JobNo"_s, u"Job"_s,
         [](const jet::Recordset& row) { return u"order "_s + row.text(u"OrderNo"); }}};
}

} // namespace

std::vector<StartSection> startSections(jet::Database& database, const Rights& rights,
                                        const QDate& today) {
    std::vector<Reason> shown = reasons(today);
    std::erase_if(shown, [&](const Reason& reason) { return !rights.mayUse(reason.menu); });
    std::vector<jet::WantedSet> wanted;
    for (const Reason& reason : shown) {
        wanted.emplace_back(u"SELECT COUNT(*) FROM "_s + reason.from);
        wanted.emplace_back(u"SELECT TOP "_s + mostLines + u' ' + reason.fields + u" FROM "_s +
                            reason.from + u" ORDER BY "_s + reason.order);
    }
    std::vector<jet::Recordset> sets = database.together(wanted);
    std::vector<StartSection> sections;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Reason& reason = shown[i];
        StartSection section{reason.title, sets[2 * i].field(0).toLong(), {}, reason.all};
        for (jet::Recordset& row = sets[2 * i + 1]; !row.eof(); row.moveNext()) {
            const qint64 key = row[u"Key"].toLong();
            section.lines.push_back({reason.word + u' ' + QString::number(key),
                                     row.text(u"Who"),
                                     row.text(u"Subject"),
                                     shownDay(row[u"Due"]),
                                     reason.left(row),
                                     {.module = reason.module, .key = key}});
        }
        if (section.count > 0)
            sections.push_back(std::move(section));
    }
    return sections;
}

std::optional<StartSection> backupSection(const QString& programFolder, const Rights& rights,
                                          const QDateTime& now) {
    const QString menu = u"mnuUtilitiesBackup"_s;
    if (!rights.mayUse(menu))
        return {};
    const auto good = keeping::backupsIn(keeping::backupSettings(programFolder).folder);
    StartSection section{
        u"There is no good backup"_s, 0, {}, {.form = u"frmBackup"_s, .isDialog = true}};
    if (!good.empty()) {
        const qint64 days = good.front().made.date().daysTo(now.date());
        section.title = days <= 0   ? u"The last good backup is of today"_s
                        : days == 1 ? u"The last good backup is of yesterday"_s
                                    : u"The last good backup is %1 days old"_s.arg(days);
    }
    return section;
}

} // namespace desk
