#pragma once

#include "core/MirsaMain.h"
#include "support/ShopFixture.h"

#include <QString>

/// A small shop to try jobs on: the words put rows into the tables as other programs would, without
/// the rules under test.
class JobShop : public testsupport::ShopTest {
  protected:
    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        database().execute(QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + columns +
                           QStringLiteral(") VALUES(") + values + QStringLiteral(")"));
        return database().lastCounter();
    }
    qint64 customer(const QString& company) {
        return insert(QStringLiteral("Customer"), QStringLiteral("Company"),
                      QStringLiteral("'") + company + QStringLiteral("'"));
    }
    qint64 operation(const QString& description, const QString& type, const QString& rate) {
        return insert(QStringLiteral("Operation"),
                      QStringLiteral("Description, OperType, OperShopRate, operdepartment_id"),
                      QStringLiteral("'%1','%2',%3,0").arg(description, type, rate));
    }
    void defaultNote(qint64 operNo, const QString& text) {
        database().execute(QStringLiteral("INSERT INTO OperNote (OperNo, [Note]) VALUES(%1,'%2')")
                               .arg(operNo)
                               .arg(text));
    }
    /// A job with two days' dates and a PO, priced at one rate of 50.
    qint64 job(qint64 custId, const QString& partNo, int quantity, bool shipped = false) {
        return insert(
            QStringLiteral("Job"),
            QStringLiteral("CustID, PONo, PartNo, Quantity, JobShopRate, OneShopRate, JobDateIn, "
                           "JobDueDate, InvoiceEach, Shipped"),
            QStringLiteral("%1,'PO-7','%2',%3,50,True,#03/02/2026#,#03/20/2026#,10,%4")
                .arg(custId)
                .arg(partNo)
                .arg(quantity)
                .arg(shipped ? QStringLiteral("True") : QStringLiteral("False")));
    }
    qint64 jobOper(qint64 jobNo, int seqNo, qint64 operNo,
                   const QString& time = QStringLiteral("0"),
                   const QString& rate = QStringLiteral("0"),
                   const QString& status = QStringLiteral(" "),
                   const QString& estimated = QStringLiteral("0")) {
        return insert(QStringLiteral("JobOper"),
                      QStringLiteral("JobNo, SeqNo, OperNo, OperTime_Amount, OperShopRate, "
                                     "OperLocated, Status, EstOper"),
                      QStringLiteral("%1,%2,%3,%4,%5,0,'%6',%7")
                          .arg(jobNo)
                          .arg(seqNo)
                          .arg(operNo)
                          .arg(time, rate, status, estimated));
    }
    void jobNote(qint64 id, qint64 jobNo, int seqNo, const QString& text) {
        database().execute(
            QStringLiteral("INSERT INTO JobOperNote (ID, JobNo, SeqNo, OperNotes) VALUES(%1,%2,%3,"
                           "'%4')")
                .arg(id)
                .arg(jobNo)
                .arg(seqNo)
                .arg(text));
    }
    /// `hours` as SQL text, NULL included; job 0 for time of no job.
    void time(qint64 jobNo, qint64 operNo, const QString& hours) {
        database().execute(
            QStringLiteral("INSERT INTO Timelog (EmpID, JobNo, OperNo, AccumTime, Status) "
                           "VALUES(1,%1,%2,%3,'D')")
                .arg(jobNo)
                .arg(operNo)
                .arg(hours));
    }
    qint64 item(const QString& description) {
        return insert(QStringLiteral("MiscItems"),
                      QStringLiteral("Description, UnitOfMeasure, UnitPrice"),
                      QStringLiteral("'%1','EA',1.5").arg(description));
    }
    void jobCost(qint64 jobNo, qint64 itemNo, const QString& total) {
        database().execute(
            QStringLiteral("INSERT INTO JobMiscCost (JobNo, ItemNo, UnitofMeasure, UnitPrice, "
                           "Quantity, CostAmount) VALUES(%1,%2,'EA',1,%3,%3)")
                .arg(jobNo)
                .arg(itemNo)
                .arg(total));
    }
};
