#include "timemgmt/modCheckSignIn.h"

#include "platform/values/Format.h"
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
    return moment == zeroDate() ? QStringLiteral("12:00:00 AM") : jet::Value(moment).toText();
}

QString literal(const QDateTime& moment) {
    return QStringLiteral("#") + generalDate(moment) + QStringLiteral("#");
}

bool is(const QString& text, QStringView word) {
    return word.compare(text, Qt::CaseInsensitive) == 0;
}

std::optional<Refusal> rangeConflict(jet::Database& database, qint64 empId, const QDateTime& signIn,
                                     const QDateTime& signOut, const QString& butFor) {
    const QString in = literal(signIn), out = literal(signOut);
    const QString between = QStringLiteral(" BETWEEN ") + in + QStringLiteral(" AND ") + out;
    const jet::Recordset hit = database.openRecordset(
        QStringLiteral("SELECT * FROM sign_in WHERE empid=") + QString::number(empId) + butFor +
            QStringLiteral(" AND  (  (sign_in") + between + QStringLiteral(") OR (sign_out") +
            between + QStringLiteral(") OR (sign_in < ") + in + QStringLiteral(" AND sign_out > ") +
            out + QStringLiteral(") ) "),
        jet::RecordsetType::Snapshot);
    if (hit.isEmpty())
        return {};
    return Refusal{
        QStringLiteral("Invalid Sign In and Sign Out Range. An existing record with Sign In=") +
        hit.text(u"Sign_in") + QStringLiteral(" and Sign Out=") + hit.text(u"Sign_out") +
        QStringLiteral(" conflicts with your entered data!")};
}

std::optional<Refusal> missingRecord(jet::Database& database, qint64 id) {
    const QString number = QString::number(id);
    if (database.hasRows(QStringLiteral("SELECT * FROM sign_in WHERE id=") + number))
        return {};
    return Refusal{
        number + QStringLiteral(" record id not found! Sign_in table may need to be fixed!"), true};
}

std::optional<Refusal> workOutside(jet::Database& database, const QDateTime& signIn,
                                   const QDateTime& signOut, qint64 id) {
    jet::Recordset work = database.openRecordset(
        QStringLiteral("SELECT timelog.*, operation.opertype FROM timelog LEFT JOIN operation ON "
                       "timelog.operno=operation.operno WHERE signid=") +
            QString::number(id) +
            QStringLiteral(" AND timelog.status<>'0' AND operation.opertype in ('I','O')"),
        jet::RecordsetType::Snapshot);
    if (work.isEmpty())
        return {};
    const QString first = QStringLiteral("Earliest"), last = QStringLiteral("Latest");
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
    return Refusal{QStringLiteral("Invalid Sign In and Sign Out Range. Based on employee's Timelog "
                                  "records, Sign In should be earlier than or equal to ") +
                   generalDate(earliest) +
                   QStringLiteral(", and Sign Out should be later than or equal to ") +
                   generalDate(latest) + QStringLiteral("!")};
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
    const QString end = inHouse ? QStringLiteral("suspdate") : QStringLiteral("finishdate");
    if (!work[end].isNull())
        return {};
    const double hours = hoursBetween(work[u"StartDate"], signOut);
    const int closed = database.execute(
        QStringLiteral("UPDATE timelog SET ") + end + QStringLiteral("=") + literal(signOut) +
        QStringLiteral(", accumtime=") + values::numberText(hours) + QStringLiteral(", status=") +
        (inHouse ? QStringLiteral("'D'") : QStringLiteral("'F'")) + QStringLiteral(" WHERE id=") +
        work.text(u"ID") + QStringLiteral(" AND ") + end + QStringLiteral(" IS NULL"));
    return closed > 0 ? std::optional(hours) : std::nullopt;
}

QString ofJob(qint64 jobNo) {
    return QStringLiteral(" WHERE jobno=") + QString::number(jobNo);
}

double inMask(double hours) {
    return values::val(values::format(hours, u"####0.00"));
}

/// Books hours on an operation of a job and returns what they cost; nothing if the job hasn't got
/// it.
std::optional<Currency> bookOnOperation(jet::Database& database, const Booking& booking) {
    const QString ofOperation =
        ofJob(booking.jobNo) + QStringLiteral(" AND operno=") + QString::number(booking.operNo);
    // Programs that don't take turns with ours wait from here on, so that what is read stands.
    database.execute(QStringLiteral("UPDATE Joboper SET status=status") + ofOperation);
    jet::Recordset operation =
        database.openRecordset(QStringLiteral("SELECT * FROM Joboper") + ofOperation);
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
    database.execute(QStringLiteral("UPDATE Job SET quantity=quantity") + ofJob(jobNo));
    jet::Recordset job = database.openRecordset(QStringLiteral("SELECT * FROM Job") + ofJob(jobNo));
    if (job.isEmpty())
        return;
    const double quantity = job[u"quantity"].toDouble();
    if (quantity == 0)
        throw jet::Error(jet::errors::divisionByZero, QStringLiteral("Division by zero"));
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
        if (auto refusal =
                rangeConflict(database, empId, in, out, QStringLiteral(" AND id<>") + number))
            return refusal;
        return workOutside(database, in, out, id);
    }
    if (is(action, u"Delete")) {
        if (auto refusal = missingRecord(database, id))
            return refusal;
        if (database.hasRows(QStringLiteral("SELECT * FROM timelog WHERE signid=") + number))
            return Refusal{QStringLiteral(
                "Time has already been posted for this date and time. You may delete this ONLY "
                "after all of its activities have been deleted from Time Management.")};
    }
    return {};
}

int CloseOpenTimelogs(jet::Database& database, qint64 id, const QDateTime& signOut) {
    const QDateTime end = stored(signOut);
    jet::Transaction transaction(database);
    jet::Recordset work = database.openRecordset(
        QStringLiteral("SELECT timelog.*, operation.opertype FROM timelog LEFT JOIN operation ON "
                       "timelog.operno=operation.operno WHERE signid=") +
            QString::number(id) + QStringLiteral(" and status <> '0' AND opertype in ('I','O')"),
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
    database.execute(QStringLiteral("UPDATE Employee SET SignedIn = SignedIn WHERE EmpID = ") +
                     employee);
    const jet::Value latest =
        database.lookup(QStringLiteral("SELECT ID, sign_in FROM sign_in WHERE empid = ") +
                        employee + QStringLiteral(" ORDER BY sign_in DESC"));
    if (!latest.isNull() && latest.toLong() == id)
        database.execute(QStringLiteral("UPDATE Employee SET SignedIn = False WHERE EmpID = ") +
                         employee);
    transaction.commit();
}

} // namespace timemgmt
