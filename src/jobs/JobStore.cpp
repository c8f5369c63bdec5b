#include "jobs/JobStore.h"

#include "jobs/JobMerge.h"
#include "platform/values/Literals.h"

#include <cstdint>
#include <limits>

namespace jobs {

using estimating::Complaint;
using estimating::OperRow;

namespace {

/// Runs a step of a save or delete; if it fails, the error's text becomes number and text, and the
/// step's name on a line of its own.
template <class Work>
void step(const char16_t* name, Work work) {
    try {
        work();
    } catch (const jet::Error& error) {
        throw jet::Error(error.number(), QString::number(error.number()) + u" "_s + error.text() +
                                             u"\r\n"_s + QString::fromUtf16(name));
    }
}

/// Writes the columns of a header; over an existing row only those that differ from what was shown,
/// so that another station's change of the others stays.
void writeHeader(jet::Recordset& row, const JobHeader& header, const JobHeader* before) {
    const auto put = [&](QStringView column, auto member) {
        if (!before || header.*member != before->*member)
            row.set(column, header.*member);
    };
    put(u"CustID", &JobHeader::custId);
    put(u"PONo", &JobHeader::poNo);
    put(u"Description", &JobHeader::description);
    put(u"PartNo", &JobHeader::partNo);
    put(u"Material", &JobHeader::material);
    put(u"TravelerNotes", &JobHeader::travelerNotes);
    put(u"JobNotes", &JobHeader::jobNotes);
    put(u"Quantity", &JobHeader::quantity);
    put(u"JobShopRate", &JobHeader::shopRate);
    put(u"OneShopRate", &JobHeader::oneShopRate);
    put(u"OrderRequired", &JobHeader::inOrder);
    put(u"QtyQuotedPrice", &JobHeader::quotedPrice);
    put(u"JobDateIn", &JobHeader::dateIn);
    put(u"JobDueDate", &JobHeader::dueDate);
    put(u"TotalHours", &JobHeader::totalHours);
    put(u"JobShopCost", &JobHeader::shopCost);
    put(u"InvoiceEach", &JobHeader::invoiceEach);
    put(u"InvoiceTotal", &JobHeader::invoiceTotal);
    put(u"Shipped", &JobHeader::shipped);
    put(u"ShipDate", &JobHeader::shipDate);
    put(u"EstNo", &JobHeader::estNo);
    put(u"AssemblyJobNo", &JobHeader::assemblyJobNo);
}

QString of(qint64 jobNo) {
    return u" WHERE JobNo = "_s + QString::number(jobNo);
}

void writeRows(jet::Database& database, qint64 jobNo, JobDraft& draft) {
    step(u"Insert joboper", [&] {
        estimating::insertOperRows(database, estimating::jobRouting(), jobNo, draft.operations);
    });
    step(u"JobMiscCost", [&] {
        estimating::insertMiscRows(database, estimating::jobRouting(), jobNo, draft.fixedCosts);
    });
}

} // namespace

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
    if (jobNo != 0 && header.shipped && !wasShipped &&
        database.hasRows(u"SELECT JobNo FROM Job WHERE AssemblyJobNo = "_s +
                         QString::number(jobNo) + u" AND Shipped = False"_s)) {
        return Complaint{u"You may not ship a job on which other active jobs are dependent.\r\n"
                         "Please check the assembly tree."_s,
                         u"chkShipped"_s};
    }
    if (header.shipped && !header.shipDate)
        return Complaint{u"Please enter Shipped Date!"_s, u"txtShipDate"_s};
    return std::nullopt;
}

qint64 addJob(jet::Database& database, JobDraft& draft) {
    jet::Transaction transaction(database);
    qint64 jobNo = 0;
    step(u"Update", [&] {
        jet::Recordset row = database.openRecordset(u"SELECT * FROM Job"_s + of(jobNo));
        row.addNew();
        writeHeader(row, draft.header, nullptr);
        row.update();
        jobNo = row.lastAddedKey().toLong();
    });
    writeRows(database, jobNo, draft);
    step(u"Commit Trans", [&] { transaction.commit(); });
    return jobNo;
}

std::optional<Complaint> changeJob(jet::Database& database, qint64 jobNo, const JobDraft& before,
                                   JobDraft& draft) {
    jet::Transaction transaction(database);
    std::optional<Complaint> refusal;
    jet::Recordset row;
    step(u"Update", [&] {
        row = database.openRecordset(u"SELECT * FROM Job"_s + of(jobNo));
        if (row.isEmpty())
            throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
    });
    step(u"Delete JobOper", [&] {
        refusal = mergeOperations(database, jobNo, before.operations, draft.operations);
        if (!refusal)
            database.execute(u"DELETE * FROM JobOper"_s + of(jobNo));
    });
    if (refusal)
        return refusal;
    step(u"Delete JobMiscCost", [&] {
        mergeFixedCosts(database, jobNo, before.fixedCosts, draft.fixedCosts);
        database.execute(u"DELETE FROM JobMiscCost"_s + of(jobNo));
    });
    step(u"Update", [&] {
        row.edit();
        writeHeader(row, draft.header, &before.header);
        row.update();
    });
    writeRows(database, jobNo, draft);
    step(u"Commit Trans", [&] { transaction.commit(); });
    return std::nullopt;
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
    const QString number = QString::number(jobNo);
    jet::Transaction transaction(database);
    const auto remove = [&](const char16_t* name, const char16_t* statement) {
        step(name, [&] { database.execute(QString::fromUtf16(statement) + number); });
    };
    remove(u"Delete JobOperNote", u"DELETE FROM JobOperNote WHERE JobNo=");
    remove(u"Delete JobOper", u"DELETE FROM JobOper WHERE JobNo=");
    remove(u"Delete JobMiscCost", u"DELETE FROM JobMiscCost WHERE JobNo=");
    remove(u"Delete Job", u"DELETE FROM Job WHERE JobNo = ");
    step(u"Commit Trans", [&] { transaction.commit(); });
}

void makeCopy(std::vector<OperRow>& rows, bool keepEstimated) {
    for (OperRow& row : rows) {
        row.time = 0;
        row.status = u" "_s;
        row.located = 0;
        row.hasNote = false;
        if (!keepEstimated)
            row.estimated = 0;
    }
}

} // namespace jobs
