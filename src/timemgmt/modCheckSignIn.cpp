#include "timemgmt/modCheckSignIn.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <vector>

namespace timemgmt {

using values::Currency;

namespace {

/// The moment as the database has it, without a zone.
QDateTime stored(const QDateTime& moment) {
    return {moment.date(), moment.time(), Qt::UTC};
}

QDateTime zeroDate() {
    return {QDate(1899, 12, 30), QTime(0, 0), Qt::UTC};
}

/// "General Date": as a value's text, but midnight of the zero date has to show something.
QString generalDate(const QDateTime& moment) {
    return moment == zeroDate() ? u"12:00:00 AM"_s : jet::Value(moment).toText();
}

QString literal(const QDateTime& moment) {
    return u"#"_s + generalDate(moment) + u"#"_s;
}

bool is(const QString& text, QStringView word) {
    return word.compare(text, Qt::CaseInsensitive) == 0;
}

std::optional<Refusal> rangeConflict(jet::Database& database, qint64 empId, const QDateTime& signIn,
                                     const QDateTime& signOut, const QString& butFor) {
    const QString in = literal(signIn), out = literal(signOut);
    const QString between = u" BETWEEN "_s + in + u" AND "_s + out;
    const jet::Recordset hit = database.openRecordset(
        u"SELECT * FROM sign_in WHERE empid="_s + QString::number(empId) + butFor +
            u" AND  (  (sign_in"_s + between + u") OR (sign_out"_s + between +
            u") OR (sign_in < "_s + in + u" AND sign_out > "_s + out + u") ) "_s,
        jet::RecordsetType::Snapshot);
    if (hit.isEmpty())
        return {};
    return Refusal{u"Invalid Sign In and Sign Out Range. An existing record with Sign In="_s +
                   hit.text(u"Sign_in") + u" and Sign Out="_s + hit.text(u"Sign_out") +
                   u" conflicts with your entered data!"_s};
}

std::optional<Refusal> missingRecord(jet::Database& database, qint64 id) {
    const QString number = QString::number(id);
    if (database.hasRows(u"SELECT * FROM sign_in WHERE id="_s + number))
        return {};
    return Refusal{number + u" record id not found! Sign_in table may need to be fixed!"_s, true};
}

std::optional<Refusal> workOutside(jet::Database& database, const QDateTime& signIn,
                                   const QDateTime& signOut, qint64 id) {
    jet::Recordset work = database.openRecordset(
        u"SELECT timelog.*, operation.opertype FROM timelog LEFT JOIN operation ON "
        "timelog.operno=operation.operno WHERE signid="_s +
            QString::number(id) + u" AND timelog.status<>'0' AND operation.opertype in ('I','O')"_s,
        jet::RecordsetType::Snapshot);
    if (work.isEmpty())
        return {};
    const QString first = u"Earliest"_s, last = u"Latest"_s;
    std::optional<QDateTime> started; // by none, while no entry has a start
    QDateTime latest = zeroDate();
    for (; !work.eof(); work.moveNext()) {
        if (!started)
            started = work[u"StartDate"].toDateTime();
        if (started)
            KeepDateExtreme(*started, work[u"StartDate"], first);
        if (!is(work.text(u"opertype"), u"I")) {
            KeepDateExtreme(latest, work[u"FinishDate"], last);
            continue;
        }
        KeepDateExtreme(latest, work[u"SuspDate"], last);
        if (!work[u"SupervID"].isNull() && work[u"SupervID"] == work[u"EmpID"])
            KeepDateExtreme(latest, work[u"FinishDate"], last);
    }
    const QDateTime earliest = started.value_or(signIn);
    if (earliest >= signIn && latest <= signOut)
        return {};
    return Refusal{u"Invalid Sign In and Sign Out Range. Based on employee's Timelog "
                   "records, Sign In should be earlier than or equal to "_s +
                   generalDate(earliest) + u", and Sign Out should be later than or equal to "_s +
                   generalDate(latest) + u"!"_s};
}

/// From start to end, to two decimals. A stretch without a start has no length.
double hoursBetween(const jet::Value& start, const QDateTime& end) {
    const auto from = start.toDateTime();
    if (!from)
        return 0;
    return values::val(values::format(static_cast<double>(from->secsTo(end)) / 3600.0, u"##0.00"));
}

/// A stretch in house that was ended, to be booked on its job.
struct Booking {
    qint64 jobNo = 0, operNo = 0;
    double hours = 0;
};

/// Ends one stretch and returns its hours; nothing if it has an end, be it that the floor has just
/// given it one.
std::optional<double> closeStretch(jet::Database& database, const jet::Recordset& work,
                                   bool inHouse, const QDateTime& signOut) {
    const QString end = inHouse ? u"suspdate"_s : u"finishdate"_s;
    if (!work[end].isNull())
        return {};
    const double hours = hoursBetween(work[u"StartDate"], signOut);
    const int closed = database.execute(
        u"UPDATE timelog SET "_s + end + u"="_s + literal(signOut) + u", accumtime="_s +
        values::numberText(hours) + u", status="_s + (inHouse ? u"'D'"_s : u"'F'"_s) +
        u" WHERE id="_s + work.text(u"ID") + u" AND "_s + end + u" IS NULL"_s);
    return closed > 0 ? std::optional(hours) : std::nullopt;
}

QString ofJob(qint64 jobNo) {
    return u" WHERE jobno="_s + QString::number(jobNo);
}

double inMask(double hours) {
    return values::val(values::format(hours, u"####0.00"));
}

/// Books hours on an operation of a job and returns what they cost; nothing if the job hasn't got
/// it.
std::optional<Currency> bookOnOperation(jet::Database& database, const Booking& booking) {
    const QString ofOperation =
        ofJob(booking.jobNo) + u" AND operno="_s + QString::number(booking.operNo);
    // Programs that don't take turns with ours wait from here on, so that what is read stands.
    database.execute(u"UPDATE Joboper SET status=status"_s + ofOperation);
    jet::Recordset operation = database.openRecordset(u"SELECT * FROM Joboper"_s + ofOperation);
    if (operation.isEmpty())
        return {};
    const Currency cost =
        Currency::fromDouble(booking.hours * operation[u"opershoprate"].toCurrency().toDouble());
    operation.edit();
    operation.set(u"opertime_amount",
                  operation[u"opertime_amount"].toDouble() + inMask(booking.hours));
    if (!is(operation.text(u"status"), u"F"))
        operation.set(u"status", u"D");
    operation.update();
    return cost;
}

void bookOnJob(jet::Database& database, qint64 jobNo, double hours, Currency cost) {
    database.execute(u"UPDATE Job SET quantity=quantity"_s + ofJob(jobNo));
    jet::Recordset job = database.openRecordset(u"SELECT * FROM Job"_s + ofJob(jobNo));
    if (job.isEmpty())
        return;
    const double quantity = job[u"quantity"].toDouble();
    if (quantity == 0)
        throw jet::Error(jet::errors::divisionByZero, u"Division by zero"_s);
    job.edit();
    job.set(u"totalhours", job[u"totalhours"].toDouble() + inMask(hours));
    job.set(u"jobshopcost",
            job[u"jobshopcost"].toCurrency() + Currency::fromDouble(cost.toDouble() / quantity));
    job.update();
}

/// Adds hours to the jobs. All operations come before all jobs, as the floor books each of its
/// stretches: who takes rows in one order waits for the others, and nobody for each other.
void PostTimeToJob(jet::Database& database, const std::vector<Booking>& bookings) {
    std::vector<std::optional<Currency>> costs;
    costs.reserve(bookings.size());
    for (const Booking& booking : bookings)
        costs.push_back(bookOnOperation(database, booking));
    for (size_t i = 0; i < bookings.size(); ++i) {
        if (costs[i])
            bookOnJob(database, bookings[i].jobNo, bookings[i].hours, *costs[i]);
    }
}

} // namespace

void KeepDateExtreme(QDateTime& current, const jet::Value& candidate, const QString& mode) {
    auto moment = candidate.toDateTime();
    if (!moment)
        return;
    const QTime time = moment->time();
    moment->setTime(QTime(time.hour(), time.minute(), time.second()));
    if (is(mode, u"EARLIEST") ? current > *moment : current < *moment)
        current = *moment;
}

std::optional<Refusal> CheckSignIn(jet::Database& database, const QString& action, qint64 empId,
                                   const QDateTime& signIn, const QDateTime& signOut, qint64 id) {
    const QString number = QString::number(id);
    const QDateTime in = stored(signIn), out = stored(signOut);
    if (is(action, u"New"))
        return rangeConflict(database, empId, in, out, QString());
    if (is(action, u"Edit")) {
        if (auto refusal = missingRecord(database, id))
            return refusal;
        if (auto refusal = rangeConflict(database, empId, in, out, u" AND id<>"_s + number))
            return refusal;
        return workOutside(database, in, out, id);
    }
    if (is(action, u"Delete")) {
        if (auto refusal = missingRecord(database, id))
            return refusal;
        if (database.hasRows(u"SELECT * FROM timelog WHERE signid="_s + number))
            return Refusal{
                u"Time has already been posted for this date and time. You may delete this ONLY "
                "after all of its activities have been deleted from Time Management."_s};
    }
    return {};
}

int CloseOpenTimelogs(jet::Database& database, qint64 id, const QDateTime& signOut) {
    const QDateTime end = stored(signOut);
    jet::Transaction transaction(database);
    jet::Recordset work = database.openRecordset(
        u"SELECT timelog.*, operation.opertype FROM timelog LEFT JOIN operation ON "
        "timelog.operno=operation.operno WHERE signid="_s +
            QString::number(id) + u" and status <> '0' AND opertype in ('I','O')"_s,
        jet::RecordsetType::Snapshot);
    int closed = 0;
    std::vector<Booking> bookings;
    for (; !work.eof(); work.moveNext()) {
        const bool inHouse = is(work.text(u"opertype"), u"I");
        const auto hours = closeStretch(database, work, inHouse, end);
        if (!hours)
            continue;
        ++closed;
        if (inHouse)
            bookings.push_back({work[u"JobNo"].toLong(), work[u"OperNo"].toLong(), *hours});
    }
    PostTimeToJob(database, bookings);
    transaction.commit();
    return closed;
}

void SignOutIfLatest(jet::Database& database, qint64 empId, qint64 id) {
    const QString employee = QString::number(empId);
    jet::Transaction transaction(database);
    // Who signs in on the floor right now waits with his mark, or his row is there to be seen.
    database.execute(u"UPDATE Employee SET SignedIn = SignedIn WHERE EmpID = "_s + employee);
    const jet::Value latest = database.lookup(u"SELECT ID, sign_in FROM sign_in WHERE empid = "_s +
                                              employee + u" ORDER BY sign_in DESC"_s);
    if (!latest.isNull() && latest.toLong() == id)
        database.execute(u"UPDATE Employee SET SignedIn = False WHERE EmpID = "_s + employee);
    transaction.commit();
}

} // namespace timemgmt
