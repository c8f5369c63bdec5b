#include "jobs/JobStore.h"

#include "jobs/JobCosting.h"
#include "platform/values/Literals.h"

#include <QHash>
#include <QSet>

#include <cstdint>
#include <limits>

namespace jobs {

using estimating::Complaint;
using estimating::jobRouting;
using estimating::OperRow;

namespace {

/// Whether an active job stands below this one in the assemblies, at any level.
bool hasActiveParts(jet::Database& database, qint64 jobNo) {
    QSet<qint64> seen{jobNo};
    QStringList level{QString::number(jobNo)};
    while (!level.isEmpty()) {
        jet::Recordset parts =
            database.openRecordset(u"SELECT JobNo, Shipped FROM Job WHERE AssemblyJobNo IN ("_s +
                                       level.join(u',') + u")"_s,
                                   jet::RecordsetType::Snapshot);
        level.clear();
        for (; !parts.eof(); parts.moveNext()) {
            const qint64 part = parts[u"JobNo"].toLong();
            if (seen.contains(part))
                continue;
            if (!parts[u"Shipped"].toBool())
                return true;
            seen.insert(part);
            level << QString::number(part);
        }
    }
    return false;
}

/// Time that was booked on operations which were removed here.
std::optional<Complaint> bookedMeanwhile(jet::Database& database, qint64 jobNo,
                                         const JobDraft& before, const JobDraft& draft) {
    QHash<qint64, QString> removed;
    for (const OperRow& row : before.operations)
        removed.insert(row.operNo, row.description);
    for (const OperRow& row : draft.operations)
        removed.remove(row.operNo);
    if (removed.isEmpty())
        return std::nullopt;
    QStringList numbers;
    for (const qint64 operNo : removed.keys())
        numbers << QString::number(operNo);
    const jet::Value booked =
        database.lookup(u"SELECT OperNo FROM Timelog WHERE JobNo = "_s + QString::number(jobNo) +
                        u" AND OperNo IN ("_s + numbers.join(u',') + u")"_s);
    if (booked.isNull())
        return std::nullopt;
    return Complaint{u"Time has been booked on the operation "_s + removed.value(booked.toLong()) +
                         u" since you removed it.\r\nPlease insert it again."_s,
                     u"sprOper"_s};
}

} // namespace

const core::DocumentColumns<JobHeader>& jobColumns() {
    using core::column;
    using Header = JobHeader;
    static const core::DocumentColumns<Header> all({
        column<Header>(u"CustID"_s, &Header::custId).field(u"dbcCustomer"_s, u"Customer"_s),
        column<Header>(u"PONo"_s, &Header::poNo).field(u"txtPONo"_s, u"PO No."_s),
        column<Header>(u"PartNo"_s, &Header::partNo).field(u"txtPartno"_s, u"Part No."_s),
        column<Header>(u"Description"_s, &Header::description)
            .field(u"txtDescription"_s, u"Description"_s),
        column<Header>(u"JobDateIn"_s, &Header::dateIn)
            .field(u"txtJobDateIn"_s, u"Date In"_s)
            .copied(false),
        column<Header>(u"JobDueDate"_s, &Header::dueDate).field(u"txtJobDueDate"_s, u"Due Date"_s),
        column<Header>(u"Quantity"_s, &Header::quantity)
            .field(u"txtQuantity"_s, u"Quantity"_s)
            .mask(u"#####0"_s),
        column<Header>(u"JobShopRate"_s, &Header::shopRate)
            .field(u"txtJobShopRate"_s, u"Hourly Rate"_s)
            .mask(u"#####0.00"_s)
            .secured(),
        column<Header>(u"OneShopRate"_s, &Header::oneShopRate),
        column<Header>(u"OrderRequired"_s, &Header::inOrder)
            .field(u"chkSequential"_s, u"Sequential"_s),
        column<Header>(u"Shipped"_s, &Header::shipped)
            .field(u"chkShipped"_s, u"Completed and Shipped"_s)
            .copied(false),
        column<Header>(u"ShipDate"_s, &Header::shipDate)
            .field(u"txtShipDate"_s, u"Ship Date"_s)
            .copied(false),
        column<Header>(u"Material"_s, &Header::material)
            .field(u"txtMaterial"_s, u"Special Material Notes"_s),
        column<Header>(u"TravelerNotes"_s, &Header::travelerNotes)
            .field(u"txtTravelerNotes"_s, u"Traveler notes"_s),
        column<Header>(u"JobNotes"_s, &Header::jobNotes).field(u"txtJobNotes"_s, u"Job notes"_s),
        column<Header>(u"QtyQuotedPrice"_s, &Header::quotedPrice)
            .field(u"lblQtyQuotedPrice"_s, u"Quoted Price Each"_s)
            .mask(u"#####0.0000"_s)
            .secured(),
        column<Header>(u"TotalHours"_s, &Header::totalHours)
            .field(u"lblTotalHours"_s)
            .mask(u"######0.00"_s)
            .computed()
            .copied(false),
        column<Header>(u"JobShopCost"_s, &Header::shopCost)
            .field(u"lblJobShopCost"_s)
            .mask(u"######0.0000"_s)
            .secured()
            .computed()
            .copied(false),
        column<Header>(u"InvoiceEach"_s, &Header::invoiceEach)
            .field(u"txtInvoiceEach"_s, u"Invoice Amount Each"_s)
            .mask(u"######0.0000"_s)
            .secured(),
        column<Header>(u"InvoiceTotal"_s, &Header::invoiceTotal)
            .field(u"lblInvoiceTotal"_s)
            .mask(u"######0.00"_s)
            .secured()
            .computed()
            .copied(false),
        column<Header>(u"EstNo"_s, &Header::estNo)
            .field(u"lblEstNo"_s, u"Estimate No."_s)
            .mask(u"#"_s)
            .copied(false),
        column<Header>(u"AssemblyJobNo"_s, &Header::assemblyJobNo).copied(false),
    });
    return all;
}

QString jobRows(bool activeOnly) {
    return activeOnly ? u"SELECT * FROM Job WHERE Shipped = False ORDER BY JobNo"_s
                      : u"SELECT * FROM Job ORDER BY JobNo"_s;
}

std::optional<Complaint> checkJob(jet::Database& database, qint64 jobNo, bool wasShipped,
                                  const JobDraft& draft) {
    const JobHeader& header = draft.header;
    if (header.poNo.trimmed().isEmpty())
        return Complaint{u"Please enter a PO No."_s, u"txtPONo"_s};
    if (header.partNo.trimmed().isEmpty())
        return Complaint{u"Please enter Part No."_s, u"txtPartno"_s};
    if (header.quantity <= 0) {
        return Complaint{u"Please enter a Quantity greater than 0"_s, u"txtQuantity"_s};
    }
    if (header.quantity > std::numeric_limits<std::int32_t>::max()) {
        return Complaint{u"Please enter a Quantity of 2147483647 at most"_s, u"txtQuantity"_s};
    }
    if (header.custId == 0)
        return Complaint{u"Please select a Customer"_s, u"dbcCustomer"_s};
    if (!header.dateIn)
        return Complaint{u"Please enter Date In!"_s, u"txtJobDateIn"_s};
    if (!header.dueDate)
        return Complaint{u"Please enter Due Date!"_s, u"txtJobDueDate"_s};
    if (draft.operations.empty()) {
        return Complaint{u"Please enter at least one operation"_s, u"sprOper"_s};
    }
    if (jobNo != 0 && header.shipped && !wasShipped && hasActiveParts(database, jobNo)) {
        return Complaint{u"You may not ship a job on which other active jobs are dependent.\r\n"
                         "Please check the assembly tree."_s,
                         u"chkShipped"_s};
    }
    if (header.shipped && !header.shipDate)
        return Complaint{u"Please enter Shipped Date!"_s, u"txtShipDate"_s};
    return std::nullopt;
}

std::optional<JobDraft> loadJob(jet::Database& database, qint64 jobNo) {
    const jet::Recordset row =
        database.openRecordset(u"SELECT * FROM Job WHERE JobNo = "_s + QString::number(jobNo),
                               jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return std::nullopt;
    return JobDraft{estimating::loadLines(database, jobRouting(), jobNo), jobColumns().load(row)};
}

estimating::SaveOutcome saveJob(jet::Database& database, qint64 jobNo, JobDraft& draft,
                                const JobDraft* before, const QStringList& settled) {
    estimating::SaveSteps steps;
    steps.settled = settled;
    if (before) {
        steps.refuse = [&](const estimating::RoutedLines&) {
            return bookedMeanwhile(database, jobNo, *before, draft);
        };
    }
    steps.alsoWrite = [&](qint64 savedNo) { UpdateJobCost(database, savedNo); };
    return estimating::saveRouted(database, jobRouting(), jobColumns(), jobNo, draft, before,
                                  steps);
}

bool hasTimeRecords(jet::Database& database, qint64 jobNo) {
    return database.hasRows(u"SELECT ID FROM TimeLog WHERE JobNo = "_s + QString::number(jobNo));
}

bool hasTimeRecords(jet::Database& database, qint64 jobNo, qint64 operNo) {
    return database
               .lookup(u"SELECT COUNT(*) as RecCount FROM timelog WHERE jobno="_s +
                       QString::number(jobNo) + u" AND operno="_s + QString::number(operNo))
               .toLong() > 0;
}

void deleteJob(jet::Database& database, qint64 jobNo) {
    estimating::deleteRouted(database, jobRouting(), jobNo);
}

void makeCopy(std::vector<OperRow>& rows, bool keepEstimated) {
    for (OperRow& row : rows) {
        row.time = 0;
        row.status = u" "_s;
        row.located = 0;
        if (!keepEstimated)
            row.estimated = 0;
    }
}

} // namespace jobs
