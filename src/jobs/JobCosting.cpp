#include "jobs/JobCosting.h"

#include "estimating/Costing.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>
#include <map>

namespace jobs {

using values::Currency;

namespace {

QString listOf(std::vector<qint64> numbers) {
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    QStringList texts;
    for (const qint64 number : numbers)
        texts << QString::number(number);
    return u" IN ("_s + texts.join(u", ") + u")"_s;
}

/// The figures of some jobs, in two trips however many they are: what the time records say is
/// written, and the sums come with it; then the jobs are written.
class RollUp {
  public:
    RollUp(jet::Database& database, const std::vector<qint64>& jobNos)
        : m_database(database), m_jobs(listOf(jobNos)) {}

    void begin();
    /// What end() needs, to be read with whatever else is wanted.
    std::vector<jet::WantedSet> sums() const;
    /// `read` begins with the sets of sums().
    void end(const std::vector<jet::Recordset>& read);

  private:
    jet::Database& m_database;
    QString m_jobs; ///< " IN (...)"
};

void RollUp::begin() {
    const QString ofJobs =
        u" WHERE JobOper.JobNo IN (SELECT JobNo FROM Job WHERE JobNo"_s + m_jobs + u")"_s;
    // The operations are taken before they and the time on them are read: a program that doesn't
    // take turns with ours then waits with its booking, or we have waited for it.
    m_database.execute(u"UPDATE JobOper SET Status = Status"_s + ofJobs);
    // Rounded, as a sum of binary fractions of an hour carries noise behind the twelfth digit.
    m_database.execute(
        u"UPDATE JobOper INNER JOIN (SELECT Timelog.JobNo AS OfJob, Timelog.OperNo AS Booked, "
        "Round(Sum(Timelog.AccumTime), 9) AS Hours FROM Operation INNER JOIN Timelog ON "
        "Operation.OperNo = Timelog.OperNo WHERE Operation.OperType = 'I' AND Timelog.JobNo"_s +
        m_jobs +
        u" GROUP BY Timelog.JobNo, Timelog.OperNo) AS Sums ON JobOper.JobNo = Sums.OfJob AND "
        "JobOper.OperNo = Sums.Booked SET JobOper.OperTime_Amount = Nz(Sums.Hours, 0)"_s +
        ofJobs);
    m_database.execute(u"UPDATE JobOper SET OperTime_Amount = 0"_s + ofJobs +
                       u" AND NOT EXISTS (SELECT * FROM Timelog WHERE Timelog.JobNo = "
                       "JobOper.JobNo AND Timelog.OperNo = JobOper.OperNo) AND OperNo IN (SELECT "
                       "OperNo FROM Operation WHERE OperType = 'I')"_s);
}

std::vector<jet::WantedSet> RollUp::sums() const {
    const QString inhouse =
        u" FROM (JobOper INNER JOIN Operation ON JobOper.OperNo = Operation.OperNo) INNER JOIN "
        "Job ON JobOper.JobNo = Job.JobNo WHERE Operation.OperType = "_s;
    const QString byJob = u" AND JobOper.JobNo"_s + m_jobs + u" GROUP BY JobOper.JobNo"_s;
    return {
        u"SELECT JobNo, OneShopRate, Quantity, InvoiceEach FROM Job WHERE JobNo"_s + m_jobs,
        u"SELECT JobOper.JobNo, SUM(JobOper.OperTime_Amount*JobOper.OperShopRate) as ByOperation, "
        "SUM(JobOper.OperTime_Amount*Job.JobShopRate) as ByJob, SUM(JobOper.OperTime_Amount) as "
        "TotalInhouseTime"_s +
            inhouse + u"'I'"_s + byJob,
        u"SELECT JobOper.JobNo, SUM(JobOper.OperTime_Amount) as TotalOutContrCost"_s + inhouse +
            u"'C'"_s + byJob,
        u"SELECT JobNo, SUM(CostAmount) as TotalFixedCost FROM JobMiscCost WHERE JobNo"_s + m_jobs +
            u" GROUP BY JobNo"_s,
    };
}

void RollUp::end(const std::vector<jet::Recordset>& read) {
    jet::Recordset job = read[0], inhouse = read[1], outContr = read[2], fixed = read[3];
    const auto rowsByJob = [](jet::Recordset& set) {
        std::map<qint64, int> places;
        for (int place = 0; !set.eof(); set.moveNext(), ++place)
            places[set[u"JobNo"].toLong()] = place;
        return places;
    };
    const auto inhouseOf = rowsByJob(inhouse), outContrOf = rowsByJob(outContr),
               fixedOf = rowsByJob(fixed);
    const auto value = [](jet::Recordset& set, const std::map<qint64, int>& places, qint64 jobNo,
                          const QString& field) {
        const auto place = places.find(jobNo);
        if (place == places.end())
            return jet::Value();
        set.moveTo(place->second);
        return set[field];
    };
    std::vector<std::vector<jet::Value>> rows;
    for (; !job.eof(); job.moveNext()) {
        const qint64 jobNo = job[u"JobNo"].toLong();
        const QString rate = job[u"OneShopRate"].toBool() ? u"ByJob"_s : u"ByOperation"_s;
        const Currency cost =
            value(inhouse, inhouseOf, jobNo, rate).toCurrency() +
            value(outContr, outContrOf, jobNo, u"TotalOutContrCost"_s).toCurrency() +
            value(fixed, fixedOf, jobNo, u"TotalFixedCost"_s).toCurrency();
        const auto hours =
            static_cast<float>(value(inhouse, inhouseOf, jobNo, u"TotalInhouseTime"_s).toDouble());
        const qint64 quantity = job[u"Quantity"].toLong();
        const double parts = quantity > 0 ? static_cast<double>(quantity) : 1;
        rows.push_back({jobNo, Currency::fromDouble(cost.toDouble() / parts),
                        values::val(values::format(static_cast<double>(hours), u"#0.00"_s)),
                        job[u"InvoiceEach"].toCurrency() * Currency::fromInteger(quantity)});
    }
    m_database.updateRows(
        u"Job"_s, {u"JobNo"_s, u"JobShopCost"_s, u"TotalHours"_s, u"InvoiceTotal"_s}, 1, rows);
}

} // namespace

void UpdateJobCost(jet::Database& database, const std::vector<qint64>& jobNos) {
    if (jobNos.empty())
        return;
    jet::Transaction transaction(database);
    RollUp figures(database, jobNos);
    figures.begin();
    figures.end(database.together(figures.sums()));
    transaction.commit();
}

void UpdateJobCost(jet::Database& database, qint64 jobNo) {
    UpdateJobCost(database, std::vector<qint64>{jobNo});
}

std::vector<Notice> AdjustJobTimeDeleted(jet::Database& database,
                                         const std::vector<JobOperation>& deleted) {
    if (deleted.empty())
        return {};
    std::vector<qint64> jobNos;
    for (const JobOperation& operation : deleted)
        jobNos.push_back(operation.jobNo);
    jet::Transaction transaction(database);
    RollUp figures(database, jobNos);
    figures.begin();
    std::vector<jet::WantedSet> wanted = figures.sums();
    wanted.emplace_back(u"SELECT ID, JobNo, OperNo, Status FROM JobOper WHERE JobNo"_s +
                        listOf(jobNos) +
                        u" AND NOT EXISTS (SELECT * FROM Timelog WHERE Timelog.JobNo = "
                        "JobOper.JobNo AND Timelog.OperNo = JobOper.OperNo)"_s);
    std::vector<jet::Recordset> read = database.together(wanted);
    std::map<JobOperation, QString> statusOf;
    std::vector<qint64> rows;
    for (jet::Recordset& bare = read.back(); !bare.eof(); bare.moveNext()) {
        const JobOperation operation{bare[u"JobNo"].toLong(), bare[u"OperNo"].toLong()};
        if (std::find(deleted.begin(), deleted.end(), operation) == deleted.end())
            continue;
        statusOf[operation] = bare.text(u"Status");
        rows.push_back(bare[u"ID"].toLong());
    }
    if (!rows.empty())
        database.execute(u"UPDATE JobOper SET Status = ' ' WHERE ID"_s + listOf(rows));
    figures.end(read);
    transaction.commit();

    std::vector<Notice> notices;
    for (const JobOperation& operation : deleted) {
        const auto status = statusOf.find(operation);
        if (status == statusOf.end() || status->second.toUpper() != u"F"_s)
            continue;
        notices.push_back({u"You have deleted the All Timelog Records for Operation "_s +
                               QString::number(operation.operNo) +
                               u".  The Operation will no longer be marked as finished!"_s,
                           u"Notice!"_s});
        statusOf.erase(status);
    }
    return notices;
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
