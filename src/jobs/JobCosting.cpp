#include "jobs/JobCosting.h"

#include "estimating/Costing.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace jobs {

using values::Currency;

namespace {

/// Takes the operations before they and the time on them are read: a program that doesn't take
/// turns with ours then waits with its booking, or we have waited for it.
void holdOperations(jet::Database& database, const QString& where) {
    database.execute(u"UPDATE JobOper SET Status = Status"_s + where);
}

QString inhouseCost(bool oneShopRate, Currency shopRate, const QString& job) {
    const QString rate = oneShopRate ? shopRate.toText() : u"JobOper.OperShopRate"_s;
    return u"SELECT SUM(JobOper.OperTime_Amount*"_s + rate +
           u") as TotalInhouseCost,  SUM(JobOper.OperTime_Amount) as "
           "TotalInhouseTime FROM JobOper, Operation  WHERE JobNo="_s +
           job + u" AND JobOper.OperNo = Operation.OperNo And Operation.OperType = 'I'"_s;
}

void rollHoursUp(jet::Database& database, const QString& job) {
    // Rounded, as a sum of binary fractions of an hour carries noise behind the twelfth digit.
    database.execute(
        u"UPDATE JobOper INNER JOIN (SELECT Timelog.OperNo AS Booked, "
        "Round(Sum(Timelog.AccumTime), 9) AS Hours FROM Operation INNER JOIN Timelog ON "
        "Operation.OperNo = Timelog.OperNo WHERE Operation.OperType = 'I' AND Timelog.JobNo = "_s +
        job +
        u" GROUP BY Timelog.OperNo) AS Sums ON JobOper.OperNo = Sums.Booked SET "
        "JobOper.OperTime_Amount = Nz(Sums.Hours, 0) WHERE JobOper.JobNo = "_s +
        job);
    database.execute(u"UPDATE JobOper SET OperTime_Amount = 0 WHERE JobNo = "_s + job +
                     u" AND OperNo NOT IN (SELECT OperNo FROM Timelog WHERE "
                     "JobNo = "_s +
                     job +
                     u") AND OperNo IN (SELECT OperNo FROM Operation WHERE "
                     "OperType = 'I')"_s);
}

} // namespace

void UpdateJobCost(jet::Database& database, qint64 jobNo) {
    const QString number = QString::number(jobNo);
    jet::Transaction transaction(database);
    jet::Recordset job = database.openRecordset(u"SELECT * FROM Job WHERE JobNo = "_s + number);
    if (job.isEmpty())
        return;

    holdOperations(database, u" WHERE JobNo = "_s + number);
    rollHoursUp(database, number);
    jet::Recordset inhouse = database.openRecordset(
        inhouseCost(job[u"OneShopRate"].toBool(), job[u"JobShopRate"].toCurrency(), number),
        jet::RecordsetType::Snapshot);
    const Currency outContr =
        database
            .lookup(u"SELECT SUM(JobOper.OperTime_Amount) as TotalOutContrCost FROM "
                    "JobOper, Operation  WHERE JobNo="_s +
                    number +
                    u" And JobOper.OperNo = Operation.OperNo And "
                    "Operation.OperType = 'C'"_s)
            .toCurrency();
    const Currency fixed = database
                               .lookup(u"SELECT SUM(CostAmount) as TotalFixedCost "
                                       "FROM JobMiscCost WHERE JobNo = "_s +
                                       number)
                               .toCurrency();
    const Currency cost = inhouse[u"TotalInhouseCost"].toCurrency() + outContr + fixed;
    const float hours = static_cast<float>(inhouse[u"TotalInhouseTime"].toDouble());

    const qint64 quantity = job[u"Quantity"].toLong();
    const double parts = quantity > 0 ? static_cast<double>(quantity) : 1;
    const Currency invoiceTotal =
        job[u"InvoiceEach"].toCurrency() * Currency::fromInteger(quantity);
    job.edit();
    job.set(u"JobShopCost", Currency::fromDouble(cost.toDouble() / parts));
    job.set(u"TotalHours", values::val(values::format(static_cast<double>(hours), u"#0.00"_s)));
    job.set(u"InvoiceTotal", invoiceTotal);
    job.update();
    transaction.commit();
}

std::optional<Notice> AdjustJobTimeDeleted(jet::Database& database, qint64 jobNo, qint64 operNo) {
    const QString where = u" where jobno = "_s + QString::number(jobNo) + u" and OperNo = "_s +
                          QString::number(operNo);
    jet::Transaction transaction(database);
    holdOperations(database, where);
    jet::Recordset operation = database.openRecordset(u"Select * from Joboper"_s + where);
    if (operation.isEmpty() || database.hasRows(u"Select * from timelog"_s + where))
        return std::nullopt;
    const QString before = operation.text(u"Status");
    operation.edit();
    operation.set(u"Status", u" "_s);
    operation.update();
    transaction.commit();
    if (before.toUpper() != u"F"_s)
        return std::nullopt;
    return Notice{u"You have deleted the All Timelog Records for Operation "_s +
                      QString::number(operNo) +
                      u".  The Operation will no longer be marked as finished!"_s,
                  u"Notice!"_s};
}

JobFigures CalcJob(const std::vector<estimating::OperRow>& operations,
                   const std::vector<estimating::MiscRow>& fixedCosts, bool oneShopRate,
                   Currency shopRate, double quantity, Currency invoiceEach) {
    estimating::CostSum inhouse;
    estimating::CostSum hours;
    estimating::CostSum outContr;
    estimating::CostSum fixed;
    for (const estimating::OperRow& row : operations) {
        const Currency time = Currency::fromDouble(row.time.value_or(0));
        if (row.inhouse) {
            inhouse.addProduct(time * (oneShopRate ? shopRate : row.rate));
            hours.addAmount(time);
        } else {
            outContr.addAmount(time);
        }
    }
    for (const estimating::MiscRow& row : fixedCosts)
        fixed.addAmount(row.total);

    JobFigures figures;
    figures.outContr = outContr.value();
    figures.fixed = fixed.value();
    figures.hours = hours.value();
    const float cost = inhouse.value() + outContr.value() + fixed.value();
    figures.costEach = static_cast<double>(cost) / (quantity > 0 ? quantity : 1);
    figures.invoiceTotal = invoiceEach * Currency::fromDouble(quantity);
    return figures;
}

} // namespace jobs
