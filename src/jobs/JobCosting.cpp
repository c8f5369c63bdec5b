#include "jobs/JobCosting.h"

#include "estimating/Costing.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"

namespace jobs {

using values::Currency;

namespace {

/// Takes the operations before they and the time on them are read: a program that doesn't take
/// turns with ours then waits with its booking, or we have waited for it.
void holdOperations(jet::Database& database, const QString& where) {
    database.execute(QStringLiteral("UPDATE JobOper SET Status = Status") + where);
}

QString inhouseCost(bool oneShopRate, Currency shopRate, const QString& job) {
    const QString rate = oneShopRate ? shopRate.toText() : QStringLiteral("JobOper.OperShopRate");
    return QStringLiteral("SELECT SUM(JobOper.OperTime_Amount*") + rate +
           QStringLiteral(") as TotalInhouseCost,  SUM(JobOper.OperTime_Amount) as "
                          "TotalInhouseTime FROM JobOper, Operation  WHERE JobNo=") +
           job +
           QStringLiteral(" AND JobOper.OperNo = Operation.OperNo And Operation.OperType = 'I'");
}

void rollHoursUp(jet::Database& database, const QString& job) {
    jet::Recordset sums = database.openRecordset(
        QStringLiteral("SELECT Sum(Timelog.AccumTime) AS dblSum, JobOper.JobNo, JobOper.OperNo "
                       "FROM (Operation INNER JOIN Timelog ON Operation.OperNo = Timelog.OperNo) "
                       "INNER JOIN JobOper ON (Operation.OperNo = JobOper.OperNo) AND "
                       "(Timelog.JobNo = JobOper.JobNo) WHERE ((([Operation]![OperType])='I') AND "
                       "((Timelog.JobNo)=") +
            job + QStringLiteral(")) GROUP BY JobOper.JobNo, JobOper.OperNo"),
        jet::RecordsetType::Snapshot);
    for (; !sums.eof(); sums.moveNext()) {
        database.execute(QStringLiteral("UPDATE JobOper SET OperTime_Amount = ") +
                         values::numberText(sums[u"dblSum"].toDouble()) +
                         QStringLiteral(" WHERE JobNo = ") + job +
                         QStringLiteral(" AND OperNo = ") + sums.text(u"OperNo"));
    }
    database.execute(QStringLiteral("UPDATE JobOper SET OperTime_Amount = 0 WHERE JobNo = ") + job +
                     QStringLiteral(" AND OperNo NOT IN (SELECT OperNo FROM Timelog WHERE "
                                    "JobNo = ") +
                     job +
                     QStringLiteral(") AND OperNo IN (SELECT OperNo FROM Operation WHERE "
                                    "OperType = 'I')"));
}

} // namespace

void UpdateJobCost(jet::Database& database, qint64 jobNo) {
    const QString number = QString::number(jobNo);
    jet::Transaction transaction(database);
    jet::Recordset job =
        database.openRecordset(QStringLiteral("SELECT * FROM Job WHERE JobNo = ") + number);
    if (job.isEmpty())
        return;

    holdOperations(database, QStringLiteral(" WHERE JobNo = ") + number);
    rollHoursUp(database, number);
    jet::Recordset inhouse = database.openRecordset(
        inhouseCost(job[u"OneShopRate"].toBool(), job[u"JobShopRate"].toCurrency(), number),
        jet::RecordsetType::Snapshot);
    const Currency outContr =
        database
            .lookup(QStringLiteral("SELECT SUM(JobOper.OperTime_Amount) as TotalOutContrCost FROM "
                                   "JobOper, Operation  WHERE JobNo=") +
                    number +
                    QStringLiteral(" And JobOper.OperNo = Operation.OperNo And "
                                   "Operation.OperType = 'C'"))
            .toCurrency();
    const Currency fixed = database
                               .lookup(QStringLiteral("SELECT SUM(CostAmount) as TotalFixedCost "
                                                      "FROM JobMiscCost WHERE JobNo = ") +
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
    job.set(u"TotalHours",
            values::val(values::format(static_cast<double>(hours), QStringLiteral("#0.00"))));
    job.set(u"InvoiceTotal", invoiceTotal);
    job.update();
    transaction.commit();
}

std::optional<Notice> AdjustJobTimeDeleted(jet::Database& database, qint64 jobNo, qint64 operNo) {
    const QString where = QStringLiteral(" where jobno = ") + QString::number(jobNo) +
                          QStringLiteral(" and OperNo = ") + QString::number(operNo);
    jet::Transaction transaction(database);
    holdOperations(database, where);
    jet::Recordset operation =
        database.openRecordset(QStringLiteral("Select * from Joboper") + where);
    if (operation.isEmpty() || database.hasRows(QStringLiteral("Select * from timelog") + where))
        return std::nullopt;
    const QString before = operation.text(u"Status");
    operation.edit();
    operation.set(u"Status", QStringLiteral(" "));
    operation.update();
    transaction.commit();
    if (before.toUpper() != QStringLiteral("F"))
        return std::nullopt;
    return Notice{QStringLiteral("You have deleted the All Timelog Records for Operation ") +
                      QString::number(operNo) +
                      QStringLiteral(".  The Operation will no longer be marked as finished!"),
                  QStringLiteral("Notice!")};
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
