#pragma once

#include "core/MirsaMain.h"
#include "platform/values/Literals.h"
#include "support/ShopFixture.h"

#include <QString>

/// A small shop to try jobs on: the words put rows into the tables as other programs would, without
/// the rules under test.
class JobShop : public testsupport::ShopTest {
  protected:
    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        database().execute(u"INSERT INTO "_s + table + u" ("_s + columns + u") VALUES("_s + values +
                           u")"_s);
        return database().lastCounter();
    }
    qint64 customer(const QString& company) {
        return insert(u"Customer"_s, u"Company"_s, u"'"_s + company + u"'"_s);
    }
    qint64 operation(const QString& description, const QString& type, const QString& rate) {
        return insert(u"Operation"_s, u"Description, OperType, OperShopRate, operdepartment_id"_s,
                      u"'%1','%2',%3,0"_s.arg(description, type, rate));
    }
    void defaultNote(qint64 operNo, const QString& text) {
        database().execute(
            u"INSERT INTO OperNote (OperNo, [Note]) VALUES(%1,'%2')"_s.arg(operNo).arg(text));
    }
    /// A job with two days' dates and a PO, priced at one rate of 50.
    qint64 job(qint64 custId, const QString& partNo, int quantity, bool shipped = false) {
        return insert(u"Job"_s,
                      u"CustID, PONo, PartNo, Quantity, JobShopRate, OneShopRate, JobDateIn, "
                      "JobDueDate, InvoiceEach, Shipped"_s,
                      u"%1,'PO-7','%2',%3,50,True,#03/02/2026#,#03/20/2026#,10,%4"_s.arg(custId)
                          .arg(partNo)
                          .arg(quantity)
                          .arg(shipped ? u"True"_s : u"False"_s));
    }
    qint64 jobOper(qint64 jobNo, int seqNo, qint64 operNo, const QString& time = u"0"_s,
                   const QString& rate = u"0"_s, const QString& status = u" "_s,
                   const QString& estimated = u"0"_s) {
        return insert(u"JobOper"_s,
                      u"JobNo, SeqNo, OperNo, OperTime_Amount, OperShopRate, "
                      "OperLocated, Status, EstOper"_s,
                      u"%1,%2,%3,%4,%5,0,'%6',%7"_s.arg(jobNo).arg(seqNo).arg(operNo).arg(
                          time, rate, status, estimated));
    }
    void jobNote(qint64 id, qint64 jobNo, int seqNo, const QString& text) {
        database().execute(u"INSERT INTO JobOperNote (ID, JobNo, SeqNo, OperNotes) VALUES(%1,%2,%3,"
                           "'%4')"_s.arg(id)
                               .arg(jobNo)
                               .arg(seqNo)
                               .arg(text));
    }
    /// `hours` as SQL text, NULL included; job 0 for time of no job.
    void time(qint64 jobNo, qint64 operNo, const QString& hours) {
        database().execute(u"INSERT INTO Timelog (EmpID, JobNo, OperNo, AccumTime, Status) "
                           "VALUES(1,%1,%2,%3,'D')"_s.arg(jobNo)
                               .arg(operNo)
                               .arg(hours));
    }
    qint64 item(const QString& description) {
        return insert(u"MiscItems"_s, u"Description, UnitOfMeasure, UnitPrice"_s,
                      u"'%1','EA',1.5"_s.arg(description));
    }
    void jobCost(qint64 jobNo, qint64 itemNo, const QString& total) {
        database().execute(u"INSERT INTO JobMiscCost (JobNo, ItemNo, UnitofMeasure, UnitPrice, "
                           "Quantity, CostAmount) VALUES(%1,%2,'EA',1,%3,%3)"_s.arg(jobNo)
                               .arg(itemNo)
                               .arg(total));
    }
};
