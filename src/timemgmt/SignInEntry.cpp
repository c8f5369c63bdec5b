#include "timemgmt/SignInEntry.h"

#include "jobs/JobCosting.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "timemgmt/OpenWork.h"

namespace timemgmt {

namespace {

Period periodOf(const jet::Recordset& row) {
    return {row[u"Sign_in"].toDateTime(), row[u"Sign_out"].toDateTime()};
}

/// Open work that would end before it begins, and take hours from its job. The check of the range
/// looks at the ends of work alone.
std::optional<Refusal> endsBeforeItBegins(jet::Recordset work, const QDateTime& signOut) {
    std::optional<QDateTime> last;
    for (; !work.eof(); work.moveNext()) {
        const bool inHouse = work.text(u"opertype").toUpper() == u"I"_s;
        const auto start = work[u"StartDate"].toDateTime();
        if (start > signOut && start > last && work[inHouse ? u"SuspDate" : u"FinishDate"].isNull())
            last = start;
    }
    if (!last)
        return {};
    return Refusal{u"Invalid Sign In and Sign Out Range. Based on employee's Timelog records, Sign "
                   "Out should be later than or equal to "_s +
                   jet::Value(*last).toText() + u"!"_s};
}

} // namespace

std::optional<screen::Complaint> checkSignInFields(const SignInFields& fields) {
    if (!fields.inDate)
        return screen::Complaint{u"Sign In Date may not be blank!"_s, u"fpSigninDate"_s};
    if (!fields.inTime)
        return screen::Complaint{u"Sign In Time may not be blank!"_s, u"fpSigninTime"_s};
    if (!fields.outDate)
        return screen::Complaint{u"Sign Out Date may not be blank!"_s, u"fpSignoutDate"_s};
    if (!fields.outTime)
        return screen::Complaint{u"Sign Out Time may not be blank!"_s, u"fpSignoutTime"_s};
    if (fields.signIn() >= fields.signOut())
        return screen::Complaint{u"Sign In may not be later than or equal to Sign Out!"_s,
                                 u"fpSigninDate"_s};
    const QDate today = values::today();
    for (const auto& [date, field] : {std::pair(*fields.inDate, u"fpSigninDate"_s),
                                      std::pair(*fields.outDate, u"fpSignoutDate"_s)}) {
        if (date >= today)
            return screen::Complaint{
                u"Sign In record may be added or changed for past dates only!"_s, field};
    }
    return {};
}

std::optional<Period> signInRow(jet::Database& database, qint64 id) {
    const jet::Recordset row = database.openRecordset(
        u"SELECT * FROM sign_in WHERE id="_s + QString::number(id), jet::RecordsetType::Snapshot);
    return row.isEmpty() ? std::nullopt : std::optional(periodOf(row));
}

SignInSaved SaveSignIn(jet::Database& database, const SignInEntry& entry) {
    const QString employee = QString::number(entry.empId), id = QString::number(entry.id);
    const QString in = literal(entry.signIn), out = literal(entry.signOut);
    const bool isNew = entry.id == 0;
    jet::Transaction transaction(database);
    if (!isNew)
        holdWork(database, u"="_s + id);
    RangeCheck check = checkRange(database, entry.empId, entry.signIn, entry.signOut, entry.id);
    SignInSaved saved;
    saved.id = entry.id;
    if (!isNew && !check.row.isEmpty() && periodOf(check.row) != entry.loaded) {
        saved.changed = periodOf(check.row);
        return saved;
    }
    saved.refusal = check.refusal;
    if (!saved.refusal && !isNew) {
        if (!check.work.isEmpty())
            check.work.moveFirst();
        saved.refusal = endsBeforeItBegins(check.work, stored(entry.signOut));
    }
    if (saved.refusal)
        return saved;

    if (isNew) {
        // Nobody else has a row that touches the range, so these words mean the one just written.
        const QString written = u" IN (SELECT id FROM sign_in WHERE empid="_s + employee +
                                u" AND sign_in="_s + in + u" AND sign_out="_s + out + u')';
        database.execute(u"INSERT INTO sign_in (empid, sign_in, sign_out) VALUES("_s + employee +
                         u","_s + in + u","_s + out + u")"_s);
        holdWork(database, written);
        check.work = database.openRecordset(workOn(written), jet::RecordsetType::Snapshot);
        saved.id = database.lastCounter();
    }
    const EndedWork ended = endOpenWork(database, check.work, entry.signOut);
    jobs::UpdateJobCost(database, ended.jobNos);
    if (!isNew) {
        // Behind the jobs, as a program comes to it that ends somebody's work and signs him out.
        database.execute(u"UPDATE sign_in SET sign_in="_s + in + u", sign_out="_s + out +
                         u" WHERE id="_s + id);
        SignOutIfLatest(database, entry.empId, entry.id);
    }
    transaction.commit();
    saved.closed = ended.rows;
    return saved;
}

} // namespace timemgmt
