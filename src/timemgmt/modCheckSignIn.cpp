#include "timemgmt/modCheckSignIn.h"

#include "platform/values/Format.h"
#include "platform/values/Numbers.h"

namespace timemgmt {

using values::Currency;

namespace {

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
    QDateTime earliest = work[u"StartDate"].toDateTime().value_or(signIn);
    QDateTime latest = zeroDate();
    for (; !work.eof(); work.moveNext()) {
        KeepDateExtreme(earliest, work[u"StartDate"], first);
        if (!is(work.text(u"opertype"), u"I")) {
            KeepDateExtreme(latest, work[u"FinishDate"], last);
            continue;
        }
        KeepDateExtreme(latest, work[u"SuspDate"], last);
        if (!work[u"SupervID"].isNull() && work[u"SupervID"] == work[u"EmpID"])
            KeepDateExtreme(latest, work[u"FinishDate"], last);
    }
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

/// Ends one stretch, and returns whether it was open.
bool closeStretch(jet::Database& database, const jet::Recordset& work, const QDateTime& signOut) {
    const bool inHouse = is(work.text(u"opertype"), u"I");
    if (!work[inHouse ? u"SuspDate" : u"FinishDate"].isNull())
        return false;
    const double hours = hoursBetween(work[u"StartDate"], signOut);
    database.execute((inHouse ? QStringLiteral("UPDATE timelog SET status='D', suspdate=")
                              : QStringLiteral("UPDATE timelog SET status='F', finishdate=")) +
                     literal(signOut) + QStringLiteral(", accumtime=") + values::numberText(hours) +
                     QStringLiteral(" WHERE id=") + work.text(u"ID"));
    if (inHouse)
        PostTimeToJob(database, work[u"JobNo"].toLong(), work[u"OperNo"].toLong(), hours);
    return true;
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
    if (is(action, u"New"))
        return rangeConflict(database, empId, signIn, signOut, QString());
    if (is(action, u"Edit")) {
        if (auto refusal = missingRecord(database, id))
            return refusal;
        if (auto refusal = rangeConflict(database, empId, signIn, signOut,
                                         QStringLiteral(" AND id<>") + number))
            return refusal;
        return workOutside(database, signIn, signOut, id);
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

int CloseOpenTimelogs(jet::Database& database, const QString& action, qint64 empId,
                      const QDateTime& signOut, qint64 id) {
    jet::Transaction transaction(database);
    if (is(action, u"New")) {
        const jet::Value written =
            database.lookup(QStringLiteral("SELECT MAX(id) as [mID] FROM sign_in WHERE empid=") +
                            QString::number(empId));
        if (written.isNull())
            return 0;
        id = written.toLong();
    }
    jet::Recordset work = database.openRecordset(
        QStringLiteral("SELECT timelog.*, operation.opertype FROM timelog LEFT JOIN operation ON "
                       "timelog.operno=operation.operno WHERE signid=") +
            QString::number(id) + QStringLiteral(" and status <> '0' AND opertype in ('I','O')"),
        jet::RecordsetType::Snapshot);
    int closed = 0;
    for (; !work.eof(); work.moveNext())
        closed += closeStretch(database, work, signOut) ? 1 : 0;
    transaction.commit();
    return closed;
}

void PostTimeToJob(jet::Database& database, qint64 jobNo, qint64 operNo, double hours) {
    const QString ofJob = QStringLiteral(" WHERE jobno=") + QString::number(jobNo);
    jet::Transaction transaction(database);
    jet::Recordset operation =
        database.openRecordset(QStringLiteral("SELECT * FROM Joboper") + ofJob +
                               QStringLiteral(" AND operno=") + QString::number(operNo));
    if (operation.isEmpty())
        return;
    const double booked = values::val(values::format(hours, u"####0.00"));
    const Currency amount =
        Currency::fromDouble(hours * operation[u"opershoprate"].toCurrency().toDouble());
    operation.edit();
    operation.set(u"opertime_amount", operation[u"opertime_amount"].toDouble() + booked);
    if (!is(operation.text(u"status"), u"F"))
        operation.set(u"status", u"D");
    operation.update();

    jet::Recordset job = database.openRecordset(QStringLiteral("SELECT * FROM Job") + ofJob);
    if (!job.isEmpty()) {
        const double quantity = job[u"quantity"].toDouble();
        if (quantity == 0)
            throw jet::Error(jet::errors::divisionByZero, QStringLiteral("Division by zero"));
        job.edit();
        job.set(u"totalhours", job[u"totalhours"].toDouble() + booked);
        job.set(u"jobshopcost", job[u"jobshopcost"].toCurrency() +
                                    Currency::fromDouble(amount.toDouble() / quantity));
        job.update();
    }
    transaction.commit();
}

void SignOutIfLatest(jet::Database& database, qint64 empId, qint64 id) {
    const QString employee = QString::number(empId);
    const jet::Value latest =
        database.lookup(QStringLiteral("SELECT ID, sign_in FROM sign_in WHERE empid = ") +
                        employee + QStringLiteral(" ORDER BY sign_in DESC"));
    if (!latest.isNull() && latest.toLong() == id)
        database.execute(QStringLiteral("UPDATE Employee SET SignedIn = False WHERE EmpID = ") +
                         employee);
}

} // namespace timemgmt
