#include "timemgmt/OpenWork.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "timemgmt/modCheckSignIn.h"

#include <set>

namespace timemgmt {

namespace {

bool isLetter(const QString& text, QStringView letter) {
    return letter.compare(text, Qt::CaseInsensitive) == 0;
}

/// From start to end, to two decimals. A stretch without a start has no length.
double hoursBetween(const jet::Value& start, const QDateTime& end) {
    const auto from = start.toDateTime();
    if (!from)
        return 0;
    return values::val(values::format(static_cast<double>(from->secsTo(end)) / 3600.0, u"##0.00"));
}

/// Adds the hours of stretches that were just ended to their jobs. All operations come before all
/// jobs, as the floor books each of its stretches: who takes rows in one order waits for the
/// others, and nobody for each other.
void PostTimeToJob(jet::Database& database, const QStringList& ended) {
    const QString ofEnded = u" WHERE Timelog.ID IN ("_s + ended.join(u", ") + u")"_s;
    const QString ofJobs = u" WHERE jobno IN (SELECT jobno FROM Timelog"_s + ofEnded + u")"_s;
    // Programs that don't take turns with ours wait from here on, so that what is added to stands.
    database.execute(u"UPDATE Joboper SET status=status"_s + ofJobs);
    database.execute(
        u"UPDATE Joboper INNER JOIN (SELECT Timelog.jobno AS OfJob, Timelog.operno AS Booked, "
        "Sum(Timelog.accumtime) AS Hours FROM Timelog"_s +
        ofEnded +
        u" GROUP BY Timelog.jobno, Timelog.operno) AS Ended ON (Joboper.jobno = Ended.OfJob) AND "
        "(Joboper.operno = Ended.Booked) SET Joboper.opertime_amount = "
        "Nz(Joboper.opertime_amount, 0) + Ended.Hours, Joboper.status = IIf(Joboper.status = 'F', "
        "Joboper.status, 'D')"_s);
    database.execute(u"UPDATE Job SET quantity=quantity"_s + ofJobs);
    database.execute(
        u"UPDATE Job INNER JOIN (SELECT Timelog.jobno AS OfJob, Sum(Timelog.accumtime) AS Hours, "
        "Sum(CCur(Timelog.accumtime * Joboper.opershoprate)) AS Amount FROM Timelog INNER JOIN "
        "Joboper ON (Timelog.jobno = Joboper.jobno) AND (Timelog.operno = Joboper.operno)"_s +
        ofEnded +
        u" GROUP BY Timelog.jobno) AS Ended ON Job.jobno = Ended.OfJob SET Job.totalhours = "
        "Nz(Job.totalhours, 0) + Ended.Hours, Job.jobshopcost = Nz(Job.jobshopcost, 0) + "
        "Nz(Ended.Amount, 0) / Job.quantity"_s);
}

} // namespace

void holdWork(jet::Database& database, const QString& signIds) {
    database.execute(u"UPDATE timelog SET status=status WHERE signid"_s + signIds +
                     u" AND status<>'0'"_s);
}

EndedWork endOpenWork(jet::Database& database, jet::Recordset work, const QDateTime& signOut) {
    const QDateTime end = stored(signOut);
    std::vector<std::vector<jet::Value>> suspended, finished;
    std::set<qint64> seen;
    QStringList booked;
    EndedWork result;
    if (!work.isEmpty())
        work.moveFirst();
    for (; !work.eof(); work.moveNext()) {
        const bool inHouse = isLetter(work.text(u"opertype"), u"I");
        const qint64 id = work[u"ID"].toLong();
        if (!work[inHouse ? u"SuspDate" : u"FinishDate"].isNull() || !seen.insert(id).second)
            continue;
        ++result.rows;
        const double hours = hoursBetween(work[u"StartDate"], end);
        (inHouse ? suspended : finished).push_back({id, end, hours, inHouse ? u"D"_s : u"F"_s});
        if (!inHouse || work[u"Routed"].isNull())
            continue;
        booked << QString::number(id);
        if (work[u"OfJob"].isNull())
            continue;
        if (work[u"Pieces"].toDouble() == 0)
            throw jet::Error(
                jet::errors::divisionByZero,
                u"Division by zero: the quantity of job %1 is 0."_s.arg(work[u"OfJob"].toLong()));
        result.jobNos.push_back(work[u"OfJob"].toLong());
    }
    database.updateRows(u"Timelog"_s, {u"ID"_s, u"SuspDate"_s, u"AccumTime"_s, u"Status"_s}, 1,
                        suspended);
    database.updateRows(u"Timelog"_s, {u"ID"_s, u"FinishDate"_s, u"AccumTime"_s, u"Status"_s}, 1,
                        finished);
    if (!booked.isEmpty())
        PostTimeToJob(database, booked);
    return result;
}

int CloseOpenTimelogs(jet::Database& database, qint64 id, const QDateTime& signOut) {
    const QString onRow = u"="_s + QString::number(id);
    jet::Transaction transaction(database);
    holdWork(database, onRow);
    const EndedWork ended = endOpenWork(
        database, database.openRecordset(workOn(onRow), jet::RecordsetType::Snapshot), signOut);
    transaction.commit();
    return ended.rows;
}

void SignOutIfLatest(jet::Database& database, qint64 empId, qint64 id) {
    const QString ofEmployee = u" WHERE EmpID = "_s + QString::number(empId);
    const QString row = QString::number(id);
    jet::Transaction transaction(database);
    // Who signs in on the floor right now waits with his mark, or his row is there to be seen.
    database.execute(u"UPDATE Employee SET SignedIn = SignedIn"_s + ofEmployee);
    database.execute(u"UPDATE Employee SET SignedIn = False"_s + ofEmployee +
                     u" AND EXISTS (SELECT * FROM sign_in"_s + ofEmployee + u" AND ID = "_s + row +
                     u") AND NOT EXISTS (SELECT * FROM sign_in"_s + ofEmployee +
                     u" AND sign_in > (SELECT sign_in FROM sign_in WHERE ID = "_s + row + u"))"_s);
    transaction.commit();
}

} // namespace timemgmt
