#include "jobs/JobFromEstimate.h"

#include "core/papers/Papers.h"
#include "estimating/EstimateStore.h"
#include "estimating/NoteStaging.h"
#include "jobs/JobCosting.h"
#include "jobs/JobStore.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace jobs {

using estimating::OperRow;
using values::Currency;

namespace {

JobHeader headerOf(jet::Database& database, qint64 estNo,
                   const estimating::EstimateHeader& estimate, const JobOrder& order) {
    JobHeader job;
    job.custId = estimate.custId;
    job.partNo = estimate.partNo;
    job.material = estimate.material;
    job.description = estimate.description;
    job.oneShopRate = estimate.oneShopRate;
    job.shopRate = estimate.shopRate;
    job.estNo = estNo;
    const int width = database.width(u"Job", u"PONo");
    job.poNo = width > 0 ? order.poNo.left(width) : order.poNo;
    job.quantity = order.quantity;
    job.dateIn = order.dateIn;
    job.dueDate = order.dueDate;
    job.inOrder = order.inOrder;
    job.quotedPrice = order.price;
    job.invoiceEach = order.price;
    job.invoiceTotal = order.price * Currency::fromInteger(order.quantity);
    job.travelerNotes = order.travelerNotes;
    job.jobNotes = order.jobNotes;
    return job;
}

/// Notes of the estimate's rows, which stand in the same order, bound to the job's rows.
void copyNotes(jet::Database& database, qint64 estNo, const std::vector<OperRow>& rows,
               qint64 jobNo) {
    const QStringList notes =
        estimating::notesOf(database, estimating::estimateRouting(), estNo, rows);
    const std::vector<OperRow> made =
        estimating::loadOperRows(database, estimating::jobRouting(), jobNo);
    QString all;
    for (std::size_t i = 0; i < made.size(); ++i) {
        const QString& note = notes[static_cast<qsizetype>(i)];
        if (note.isEmpty())
            continue;
        all += (all.isEmpty() ? QString() : u" UNION ALL "_s) +
               u"SELECT %1, %2, %3, "_s.arg(made[i].id).arg(jobNo).arg(i + 1) + u"'"_s +
               values::quoted(note) + u"'"_s;
    }
    if (!all.isEmpty())
        database.execute(u"Insert into JobOperNote(ID,Jobno,SeqNo,OperNotes) "_s + all);
}

} // namespace

std::optional<screen::Complaint> checkOrder(const JobOrder& order) {
    const auto fault = [](const QString& text, const QString& field, const QString& title = {}) {
        return screen::Complaint{text, field, title, screen::Icon::Critical};
    };
    if (order.quantity <= 0)
        return fault(u"Job Quantity may not be zero or negative number"_s, u"cmbQuantity"_s);
    if (!order.dateIn)
        return fault(u"Please enter Date In!"_s, u"mskDate(0)"_s);
    if (!order.dueDate)
        return fault(u"Please enter Due Date!"_s, u"mskDate(1)"_s);
    if (order.price < Currency())
        return fault(u"Quantity Price Each may not be negative"_s, u"txtQtyQP"_s);
    if (order.poNo.trimmed().isEmpty())
        return fault(u"Please enter PO number!"_s, u"txtPONo"_s, u"PO Number Missing"_s);
    return std::nullopt;
}

bool estimateHasJob(jet::Database& database, qint64 estNo) {
    return database.hasRows(u"SELECT EstNo FROM Job WHERE EstNo = "_s + QString::number(estNo));
}

qint64 createJob(jet::Database& database, qint64 estNo, const JobOrder& order) {
    jet::Transaction transaction(database);
    const auto estimate = estimating::loadEstimate(database, estNo);
    if (!estimate)
        throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
    std::vector<OperRow> rows = estimate->operations;
    for (OperRow& row : rows) {
        row.estimated = row.time.value_or(0);
        if (row.inhouse)
            row.time = 0;
        row.located = 0;
        row.status = u" "_s;
    }

    jet::Recordset job = database.openRecordset(u"Job"_s);
    job.addNew();
    jobColumns().write(headerOf(database, estNo, estimate->header, order), job);
    job.update();
    const qint64 jobNo = job.lastAddedKey().toLong();
    estimating::insertOperRows(database, estimating::jobRouting(), jobNo, rows);
    if (order.useNotes)
        copyNotes(database, estNo, estimate->operations, jobNo);
    estimating::insertMiscRows(database, estimating::jobRouting(), jobNo, estimate->fixedCosts);
    core::carryPapers(database, u"Estimate"_s, estNo, u"Job"_s, jobNo);
    UpdateJobCost(database, jobNo);
    transaction.commit();
    return jobNo;
}

} // namespace jobs
