#include "jobs/JobStore.h"

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
        throw jet::Error(error.number(), QString::number(error.number()) + QStringLiteral(" ") +
                                             error.text() + QStringLiteral("\r\n") +
                                             QString::fromUtf16(name));
    }
}

void writeHeader(jet::Recordset& row, const JobHeader& header) {
    row.set(u"CustID", header.custId);
    row.set(u"PONo", header.poNo);
    row.set(u"Description", header.description);
    row.set(u"PartNo", header.partNo);
    row.set(u"Material", header.material);
    row.set(u"TravelerNotes", header.travelerNotes);
    row.set(u"JobNotes", header.jobNotes);
    row.set(u"Quantity", header.quantity);
    row.set(u"JobShopRate", header.shopRate);
    row.set(u"OneShopRate", header.oneShopRate);
    row.set(u"OrderRequired", header.inOrder);
    row.set(u"QtyQuotedPrice", header.quotedPrice);
    row.set(u"JobDateIn", header.dateIn);
    row.set(u"JobDueDate", header.dueDate);
    row.set(u"TotalHours", header.totalHours);
    row.set(u"JobShopCost", header.shopCost);
    row.set(u"InvoiceEach", header.invoiceEach);
    row.set(u"InvoiceTotal", header.invoiceTotal);
    row.set(u"Shipped", header.shipped);
    row.set(u"ShipDate", header.shipDate);
    row.set(u"EstNo", header.estNo);
    row.set(u"AssemblyJobNo", header.assemblyJobNo);
}

QString of(qint64 jobNo) {
    return QStringLiteral(" WHERE JobNo = ") + QString::number(jobNo);
}

} // namespace

QString jobRows(bool activeOnly) {
    return activeOnly ? QStringLiteral("SELECT * FROM Job WHERE Shipped = False ORDER BY JobNo")
                      : QStringLiteral("SELECT * FROM Job ORDER BY JobNo");
}

std::optional<Complaint> checkJob(jet::Database& database, qint64 jobNo, bool wasShipped,
                                  const JobDraft& draft) {
    const JobHeader& header = draft.header;
    if (header.poNo.trimmed().isEmpty())
        return Complaint{QStringLiteral("Please enter a PO No."), QStringLiteral("txtPONo")};
    if (header.partNo.trimmed().isEmpty())
        return Complaint{QStringLiteral("Please enter Part No."), QStringLiteral("txtPartno")};
    if (header.quantity <= 0) {
        return Complaint{QStringLiteral("Please enter a Quantity greater than 0"),
                         QStringLiteral("txtQuantity")};
    }
    if (header.custId == 0)
        return Complaint{QStringLiteral("Please select a Customer"), QStringLiteral("dbcCustomer")};
    if (!header.dateIn)
        return Complaint{QStringLiteral("Please enter Date In!"), QStringLiteral("txtJobDateIn")};
    if (!header.dueDate)
        return Complaint{QStringLiteral("Please enter Due Date!"), QStringLiteral("txtJobDueDate")};
    if (draft.operations.empty()) {
        return Complaint{QStringLiteral("Please enter at least one operation"),
                         QStringLiteral("sprOper")};
    }
    if (jobNo != 0 && header.shipped && !wasShipped &&
        database.hasRows(QStringLiteral("SELECT JobNo FROM Job WHERE AssemblyJobNo = ") +
                         QString::number(jobNo) + QStringLiteral(" AND Shipped = False"))) {
        return Complaint{
            QStringLiteral("You may not ship a job on which other active jobs are dependent.\r\n"
                           "Please check the assembly tree."),
            QStringLiteral("chkShipped")};
    }
    if (header.shipped && !header.shipDate)
        return Complaint{QStringLiteral("Please enter Shipped Date!"),
                         QStringLiteral("txtShipDate")};
    return std::nullopt;
}

qint64 saveJob(jet::Database& database, qint64 jobNo, JobDraft& draft) {
    const bool adding = jobNo == 0;
    jet::Transaction transaction(database);
    if (!adding) {
        step(u"Delete JobOper",
             [&] { database.execute(QStringLiteral("DELETE * FROM JobOper") + of(jobNo)); });
        step(u"Delete JobMiscCost",
             [&] { database.execute(QStringLiteral("DELETE FROM JobMiscCost") + of(jobNo)); });
    }
    step(u"Update", [&] {
        jet::Recordset row =
            database.openRecordset(QStringLiteral("SELECT * FROM Job") + of(jobNo));
        if (adding) {
            row.addNew();
        } else {
            if (row.isEmpty())
                throw jet::Error(jet::errors::rowDeleted, QStringLiteral("Record is deleted."));
            row.edit();
        }
        writeHeader(row, draft.header);
        row.update();
        if (adding)
            jobNo = row.lastAddedKey().toLong();
    });
    step(u"Insert joboper", [&] {
        estimating::insertOperRows(database, estimating::jobRouting(), jobNo, draft.operations);
    });
    step(u"JobMiscCost", [&] {
        estimating::insertMiscRows(database, estimating::jobRouting(), jobNo, draft.fixedCosts);
    });
    step(u"Commit Trans", [&] { transaction.commit(); });
    return jobNo;
}

bool hasTimeRecords(jet::Database& database, qint64 jobNo) {
    return database.hasRows(QStringLiteral("SELECT ID FROM TimeLog WHERE JobNo = ") +
                            QString::number(jobNo));
}

bool hasTimeRecords(jet::Database& database, qint64 jobNo, qint64 operNo) {
    return database
               .lookup(QStringLiteral("SELECT COUNT(*) as RecCount FROM timelog WHERE jobno=") +
                       QString::number(jobNo) + QStringLiteral(" AND operno=") +
                       QString::number(operNo))
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
        row.status = QStringLiteral(" ");
        row.located = 0;
        row.hasNote = false;
        if (!keepEstimated)
            row.estimated = 0;
    }
}

} // namespace jobs
