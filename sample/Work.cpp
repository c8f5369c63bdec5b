#include "sample/Work.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace sample {

namespace {

/// Some people are in right now, a few with a stretch running.
void makeToday(Shop& shop) {
    std::size_t running = 0;
    for (std::size_t e = 0; e < shop.employees.size(); e += 2) {
        const QDateTime in(shop.today, QTime(6, 52, 10), Qt::UTC);
        const qint64 signID = Row(u"Sign_in")
                                  .set(u"EmpID", shop.employees[e])
                                  .set(u"Sign_in", in)
                                  .insert(shop.database);
        shop.database.execute(u"UPDATE Employee SET SignedIn = True WHERE EmpID = "_s +
                              QString::number(shop.employees[e]));
        if (e % 4 != 0)
            continue;
        while (running < shop.jobs.size() && shop.jobs[shop.jobs.size() - 1 - running].shipped)
            ++running;
        if (running >= shop.jobs.size())
            continue;
        const JobMade& job = shop.jobs[shop.jobs.size() - 1 - running++];
        const jet::Value operNo = shop.database.lookup(
            u"SELECT TOP 1 JobOper.OperNo FROM JobOper INNER JOIN Operation ON JobOper.OperNo = "
            "Operation.OperNo WHERE Operation.OperType = 'I' AND JobOper.JobNo = "_s +
            QString::number(job.jobNo) + u" ORDER BY JobOper.SeqNo"_s);
        Row(u"Timelog")
            .set(u"EmpID", shop.employees[e])
            .set(u"JobNo", job.jobNo)
            .set(u"OperNo", operNo.toLong())
            .set(u"SignID", signID)
            .set(u"AccumTime", 0)
            .set(u"Status", u"A")
            .set(u"StartDate", in.addSecs(600))
            .insert(shop.database);
    }
}

/// Overhead time each week, on no job: booked on the floor, or typed in by the office in the two
/// ways that it has.
void makeOverhead(Shop& shop, Attendance& attendance) {
    int week = 0;
    for (QDate day = shop.start; day < shop.today; day = day.addDays(7), ++week) {
        const auto stretch = attendance.book(day, 30);
        if (!stretch)
            continue;
        Row row(u"Timelog");
        row.set(u"EmpID", stretch->empID)
            .set(u"OperNo", shop.random.of(shop.overhead).operNo)
            .set(u"SignID", stretch->signID)
            .set(u"AccumTime", 0.5);
        if (week % 9 != 8)
            row.set(u"JobNo", 0);
        if (week % 3 == 2)
            row.set(u"Status", u"0").set(u"StartDate", stretch->begin.date());
        else
            row.set(u"Status", u"F")
                .set(u"StartDate", stretch->begin)
                .set(u"FinishDate", stretch->begin.addSecs(1800));
        row.insert(shop.database);
    }
}

/// What people forgot on the last working day.
void makeMistakes(Shop& shop) {
    QDate day = shop.today.addDays(-1);
    while (day.dayOfWeek() > 5)
        day = day.addDays(-1);
    const auto at = [&day](int hour, int minute) {
        return QDateTime(day, QTime(hour, minute), Qt::UTC);
    };
    const auto attendance = [&](qint64 empID, const QDateTime& in) {
        Row row(u"Sign_in");
        row.set(u"EmpID", empID).set(u"Sign_in", in);
        return row;
    };
    if (shop.employees.size() < 4)
        return;
    attendance(shop.employees[1], at(17, 10)).insert(shop.database);
    shop.database.execute(u"UPDATE Employee SET SignedIn = True WHERE EmpID = "_s +
                          QString::number(shop.employees[1]));
    // Signed in at a second terminal.
    attendance(shop.employees[3], at(14, 30)).set(u"Sign_out", at(15, 0)).insert(shop.database);
    const jet::Value left = shop.database.lookup(
        u"SELECT TOP 1 EmpID FROM Employee WHERE EmpStatus = 'Terminated' AND [Terminate] < #"_s +
        values::sqlDate(day) + u"# ORDER BY EmpID"_s);
    if (!left.isNull())
        attendance(left.toLong(), at(7, 0)).set(u"Sign_out", at(9, 30)).insert(shop.database);
}

void deleteEstimate(Shop& shop, qint64 estNo) {
    for (const auto* table : {u"EstOper", u"EstMiscCost", u"EstOperNote", u"Estimate"})
        shop.database.execute(u"DELETE FROM "_s + QString::fromUtf16(table) + u" WHERE EstNo="_s +
                              QString::number(estNo));
    shop.estimates.erase(std::find(shop.estimates.begin(), shop.estimates.end(), estNo));
}

} // namespace

void makeWork(Shop& shop) {
    Attendance attendance(shop);
    const auto span = shop.start.daysTo(shop.today);
    const auto wanted = static_cast<std::size_t>(shop.options.jobs);
    std::vector<qint64> gone;
    std::vector<EstimateMade> known; ///< parts that are ordered again and again
    for (int i = 0; shop.jobs.size() < wanted; ++i) {
        const QDate date = shop.start.addDays(static_cast<qint64>(shop.jobs.size()) * (span - 2) /
                                              shop.options.jobs);
        const EstimateMade estimate = makeEstimate(
            shop, date, nullptr,
            i % 4 != 0 && i % 4 != 3 && !known.empty() ? &shop.random.of(known) : nullptr);
        if (i % 8 == 0) {
            if (known.size() == 12)
                known.erase(known.begin());
            known.push_back(estimate);
        }
        const auto job = [&](const EstimateMade& from, Origin origin,
                             const JobMade* parent = nullptr) {
            if (shop.jobs.size() < wanted)
                makeJob(shop, attendance, from, origin, parent);
        };
        switch (i % 20) {
        case 3: // two jobs of one estimate
            job(estimate, Origin::Estimate);
            job(estimate, Origin::Estimate);
            break;
        case 7: // never became a job
            break;
        case 9: { // an assembly and a part of it
            job(estimate, Origin::Estimate);
            const JobMade whole = shop.jobs.back();
            job(makeEstimate(shop, date, &estimate), Origin::Estimate, &whole);
            break;
        }
        case 13: // the estimate was thrown away
            gone.push_back(estimate.estNo);
            break;
        case 15:
            makeDeletedJob(shop, estimate);
            break;
        case 17:
            job(estimate, i % 40 == 17 ? Origin::None : Origin::Unknown);
            break;
        default:
            job(estimate, Origin::Estimate);
        }
    }
    for (const qint64 estNo : gone)
        deleteEstimate(shop, estNo);
    makeOverhead(shop, attendance);
    makeMistakes(shop);
    makeToday(shop);
}

} // namespace sample
