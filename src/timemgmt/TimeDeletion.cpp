#include "timemgmt/TimeDeletion.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <map>
#include <set>

namespace timemgmt {

namespace {

QString listOf(const std::vector<qint64>& ids) {
    QStringList texts;
    for (const qint64 id : ids)
        texts << QString::number(id);
    return u" IN ("_s + texts.join(u", ") + u')';
}

QString moment(const jet::Value& signIn) {
    const QDateTime at = signIn.toDateTime().value_or(QDateTime());
    return values::format(at.date(), u"long date") + u' ' + values::format(at, u"h:nn:ss AM/PM");
}

} // namespace

WorkDeleted DeleteWork(jet::Database& database, const std::vector<qint64>& ids) {
    if (ids.empty())
        return {};
    WorkDeleted result;
    jet::Transaction transaction(database);
    // A stretch that the floor is ending right now has been ended, or stays active.
    database.execute(u"UPDATE TimeLog SET Status = Status WHERE ID"_s + listOf(ids));
    jet::Recordset rows = database.openRecordset(
        u"SELECT ID, EmpID, JobNo, OperNo, Status FROM TimeLog WHERE ID"_s + listOf(ids),
        jet::RecordsetType::Snapshot);
    std::map<qint64, QString> active;
    std::vector<qint64> going;
    std::vector<jobs::JobOperation> operations;
    for (; !rows.eof(); rows.moveNext()) {
        const qint64 id = rows[u"ID"].toLong();
        if (rows.text(u"Status").toUpper() == u"A"_s) {
            active[id] = u"Record Number "_s + QString::number(id) + u" for Employee number "_s +
                         rows.text(u"EmpID") + u" could not be deleted because it is active!"_s;
            continue;
        }
        going.push_back(id);
        if (rows[u"JobNo"].toLong() != 0)
            operations.push_back({rows[u"JobNo"].toLong(), rows[u"OperNo"].toLong()});
    }
    if (!going.empty()) {
        database.execute(u"DELETE FROM TimeLog WHERE ID"_s + listOf(going));
        result.notices = jobs::AdjustJobTimeDeleted(database, operations);
    }
    transaction.commit();
    for (const qint64 id : ids) {
        if (active.contains(id))
            result.refusals << active[id];
    }
    return result;
}

QStringList DeleteAttendance(jet::Database& database, const std::vector<qint64>& ids) {
    if (ids.empty())
        return {};
    jet::Transaction transaction(database);
    database.execute(u"UPDATE Sign_in SET EmpID = EmpID WHERE ID"_s + listOf(ids));
    auto read =
        database.together({u"SELECT ID, Sign_in, Sign_out FROM Sign_in WHERE ID"_s + listOf(ids),
                           u"SELECT DISTINCT SignID FROM TimeLog WHERE SignID"_s + listOf(ids)});
    std::set<qint64> worked;
    for (jet::Recordset& work = read[1]; !work.eof(); work.moveNext())
        worked.insert(work[u"SignID"].toLong());
    std::map<qint64, QString> staying;
    std::vector<qint64> going;
    for (jet::Recordset& row = read[0]; !row.eof(); row.moveNext()) {
        const qint64 id = row[u"ID"].toLong();
        if (row[u"Sign_out"].isNull())
            staying[id] = u"You Cannot Delete Record Number "_s + QString::number(id) +
                          u". This record is still active!"_s;
        else if (worked.contains(id))
            staying[id] = u"You cannot delete Sign-In record for "_s + moment(row[u"Sign_in"]) +
                          u"! There is a related record in TimeLog!"_s;
        else
            going.push_back(id);
    }
    if (!going.empty())
        database.execute(u"DELETE FROM Sign_in WHERE ID"_s + listOf(going));
    transaction.commit();
    QStringList refusals;
    for (const qint64 id : ids) {
        if (staying.contains(id))
            refusals << staying[id];
    }
    return refusals;
}

} // namespace timemgmt
