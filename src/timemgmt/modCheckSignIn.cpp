#include "timemgmt/modCheckSignIn.h"

#include "platform/values/Literals.h"

namespace timemgmt {

namespace {

QDateTime zeroDate() {
    return {QDate(1899, 12, 30), QTime(0, 0), Qt::UTC};
}

/// "General Date": as a value's text, but midnight of the zero date has to show something.
QString generalDate(const QDateTime& moment) {
    return moment == zeroDate() ? u"12:00:00 AM"_s : jet::Value(moment).toText();
}

bool is(const QString& text, QStringView word) {
    return word.compare(text, Qt::CaseInsensitive) == 0;
}

QString conflicts(qint64 empId, const QDateTime& signIn, const QDateTime& signOut,
                  const QString& butFor) {
    const QString in = literal(signIn), out = literal(signOut);
    const QString between = u" BETWEEN "_s + in + u" AND "_s + out;
    return u"SELECT * FROM sign_in WHERE empid="_s + QString::number(empId) + butFor +
           u" AND  (  (sign_in"_s + between + u") OR (sign_out"_s + between +
           u") OR (sign_in < "_s + in + u" AND sign_out > "_s + out + u") ) "_s;
}

std::optional<Refusal> rangeConflict(const jet::Recordset& hit) {
    if (hit.isEmpty())
        return {};
    return Refusal{u"Invalid Sign In and Sign Out Range. An existing record with Sign In="_s +
                   hit.text(u"Sign_in") + u" and Sign Out="_s + hit.text(u"Sign_out") +
                   u" conflicts with your entered data!"_s};
}

QString rowOf(qint64 id) {
    return u"SELECT * FROM sign_in WHERE id="_s + QString::number(id);
}

Refusal missingRecord(qint64 id) {
    return {QString::number(id) + u" record id not found! Sign_in table may need to be fixed!"_s,
            true};
}

std::optional<Refusal> workOutside(jet::Recordset work, const QDateTime& signIn,
                                   const QDateTime& signOut) {
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

} // namespace

QDateTime stored(const QDateTime& moment) {
    return {moment.date(), moment.time(), Qt::UTC};
}

QString literal(const QDateTime& moment) {
    return u"#"_s + generalDate(stored(moment)) + u"#"_s;
}

void KeepDateExtreme(QDateTime& current, const jet::Value& candidate, const QString& mode) {
    auto moment = candidate.toDateTime();
    if (!moment)
        return;
    const QTime time = moment->time();
    moment->setTime(QTime(time.hour(), time.minute(), time.second()));
    if (is(mode, u"EARLIEST") ? current > *moment : current < *moment)
        current = *moment;
}

QString workOn(const QString& signIds) {
    return u"SELECT timelog.*, operation.opertype, Job.JobNo AS OfJob, Job.Quantity AS Pieces, "
           "Joboper.ID AS Routed FROM "
           "((timelog LEFT JOIN operation ON timelog.operno=operation.operno) LEFT JOIN Job ON "
           "timelog.jobno=Job.jobno) LEFT JOIN Joboper ON (timelog.jobno=Joboper.jobno) AND "
           "(timelog.operno=Joboper.operno) WHERE signid"_s +
           signIds + u" AND timelog.status<>'0' AND operation.opertype in ('I','O')"_s;
}

RangeCheck checkRange(jet::Database& database, qint64 empId, const QDateTime& signIn,
                      const QDateTime& signOut, qint64 id) {
    const QDateTime in = stored(signIn), out = stored(signOut);
    if (id == 0)
        return {.refusal = rangeConflict(database.openRecordset(
                    conflicts(empId, in, out, QString()), jet::RecordsetType::Snapshot))};
    const QString number = QString::number(id);
    const auto read = database.together(
        {rowOf(id), conflicts(empId, in, out, u" AND id<>"_s + number), workOn(u"="_s + number)});
    RangeCheck found{.row = read[0], .work = read[2]};
    if (read[0].isEmpty())
        found.refusal = missingRecord(id);
    else if (auto conflict = rangeConflict(read[1]))
        found.refusal = conflict;
    else
        found.refusal = workOutside(read[2], in, out);
    return found;
}

std::optional<Refusal> CheckSignIn(jet::Database& database, const QString& action, qint64 empId,
                                   const QDateTime& signIn, const QDateTime& signOut, qint64 id) {
    if (is(action, u"New"))
        return checkRange(database, empId, signIn, signOut, 0).refusal;
    if (is(action, u"Edit"))
        return checkRange(database, empId, signIn, signOut, id).refusal;
    if (is(action, u"Delete")) {
        if (!database.hasRows(rowOf(id)))
            return missingRecord(id);
        if (database.hasRows(u"SELECT * FROM timelog WHERE signid="_s + QString::number(id)))
            return Refusal{
                u"Time has already been posted for this date and time. You may delete this ONLY "
                "after all of its activities have been deleted from Time Management."_s};
    }
    return {};
}

} // namespace timemgmt
