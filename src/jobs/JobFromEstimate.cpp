#include "jobs/JobFromEstimate.h"

#include "estimating/NoteStaging.h"
#include "jobs/JobCosting.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace jobs {

using estimating::OperRow;
using values::Currency;

namespace {

qint64 writeHeader(jet::Database& database, const estimating::EstimateForJob& estimate,
                   const JobOrder& order) {
    const estimating::EstimateHeader& header = estimate.header;
    jet::Recordset job = database.openRecordset(u"Job"_s);
    job.addNew();
    job.set(u"CustID", header.custId);
    job.set(u"PartNo", header.partNo);
    job.set(u"Material", header.material);
    job.set(u"Description", header.description);
    job.set(u"OneShopRate", header.oneShopRate);
    job.set(u"JobShopRate", header.shopRate);
    job.set(u"EstNo", estimate.estNo);
    const int width = database.width(u"Job", u"PONo");
    job.set(u"PONo", width > 0 ? order.poNo.left(width) : order.poNo);
    job.set(u"Quantity", order.quantity);
    job.set(u"JobDateIn", order.dateIn);
    job.set(u"JobDueDate", order.dueDate);
    job.set(u"OrderRequired", order.inOrder);
    job.set(u"QtyQuotedPrice", order.price);
    job.set(u"InvoiceEach", order.price);
    job.set(u"InvoiceTotal", order.price * Currency::fromInteger(order.quantity));
    job.set(u"TravelerNotes", order.travelerNotes);
    job.set(u"JobNotes", order.jobNotes);
    job.update();
    return job.lastAddedKey().toLong();
}

void copyNotes(jet::Database& database, qint64 estNo, qint64 jobNo, std::size_t rows) {
    const estimating::NoteStaging notes(database, estimating::estimateRouting(), estNo);
    const QString job = QString::number(jobNo);
    for (std::size_t i = 1; i <= rows; ++i) {
        const auto note = notes.note(static_cast<qint64>(i));
        if (!note)
            continue;
        const QString seqNo = QString::number(i);
        const QString id = database
                               .lookup(u"Select ID from JobOper where Jobno = "_s + job +
                                       u" and Seqno = "_s + seqNo)
                               .toText();
        database.execute(u"Insert into JobOperNote(ID,Jobno,SeqNo,OperNotes) values("_s + id +
                         u","_s + job + u","_s + seqNo + u",'"_s + values::quoted(*note) + u"')"_s);
    }
}

} // namespace

std::optional<OrderComplaint> checkOrder(const JobOrder& order) {
    if (order.quantity <= 0)
        return OrderComplaint{
            u"Job Quantity may not be zero or negative number"_s, {}, u"cmbQuantity"_s};
    if (!order.dateIn)
        return OrderComplaint{u"Please enter Date In!"_s, {}, u"mskDate(0)"_s};
    if (!order.dueDate)
        return OrderComplaint{u"Please enter Due Date!"_s, {}, u"mskDate(1)"_s};
    if (order.price < Currency())
        return OrderComplaint{u"Quantity Price Each may not be negative"_s, {}, u"txtQtyQP"_s};
    if (order.poNo.trimmed().isEmpty())
        return OrderComplaint{u"Please enter PO number!"_s, u"PO Number Missing"_s, u"txtPONo"_s};
    return std::nullopt;
}

bool estimateHasJob(jet::Database& database, qint64 estNo) {
    return database.hasRows(u"SELECT EstNo FROM Job WHERE EstNo = "_s + QString::number(estNo));
}

qint64 createJob(jet::Database& database, const estimating::EstimateForJob& estimate,
                 const JobOrder& order) {
    std::vector<OperRow> rows = estimate.operations;
    for (OperRow& row : rows) {
        row.estimated = row.time.value_or(0);
        if (row.inhouse)
            row.time = 0;
        row.located = 0;
        row.status = u" "_s;
    }

    jet::Transaction transaction(database);
    const qint64 jobNo = writeHeader(database, estimate, order);
    estimating::insertOperRows(database, estimating::jobRouting(), jobNo, rows);
    if (order.useNotes)
        copyNotes(database, estimate.estNo, jobNo, rows.size());
    estimating::insertMiscRows(database, estimating::jobRouting(), jobNo, estimate.fixedCosts);
    UpdateJobCost(database, jobNo);
    transaction.commit();
    return jobNo;
}

} // namespace jobs
