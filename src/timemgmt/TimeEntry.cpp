#include "timemgmt/TimeEntry.h"

#include "jobs/JobCosting.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace timemgmt {

ManualAnswer AddManualTime(jet::Database& database, const ManualTime& time) {
    const QString employee = QString::number(time.empId);
    const qint64 jobNo = time.jobNo.value_or(0);
    const QString ofJob = u" WHERE JobNo = "_s + QString::number(jobNo);
    const auto gone = [](const QString& what, const QString& field) {
        return ManualAnswer{
            screen::Complaint{u"This "_s + what + u" has been deleted by another user!"_s, field,
                              u"Error"_s, screen::Icon::Critical}};
    };
    jet::Transaction transaction(database);
    const auto read = database.together(
        {u"Select Id from Sign_in where empid = "_s + employee + u" and Id = "_s +
             QString::number(time.signId),
         u"Select OrderRequired from Job"_s + ofJob,
         u"Select ID from JobOper"_s + ofJob + u" and OperNo = "_s + QString::number(time.operNo)});
    if (read[0].isEmpty())
        return gone(u"sign-in record"_s, u"dbcDate"_s);
    if (jobNo != 0 && read[1].isEmpty())
        return gone(u"job"_s, u"dbcJobNo"_s);
    if (jobNo != 0 && read[2].isEmpty())
        return gone(u"operation of the job"_s, u"dbcOp"_s);
    if (jobNo != 0 && read[1][u"OrderRequired"].toBool() && !time.endsSequence)
        return {.sequential = true};
    if (time.endsSequence)
        database.execute(u"UPDATE Job SET OrderRequired = False"_s + ofJob);
    database.execute(
        u"INSERT INTO Timelog (EmpID, JobNo, OperNo, SignID, AccumTime, Status, StartDate) VALUES ("_s +
        employee + u", "_s + (time.jobNo ? QString::number(jobNo) : u"NULL"_s) + u", "_s +
        QString::number(time.operNo) + u", "_s + QString::number(time.signId) + u", "_s +
        values::numberText(time.hours) + u", '0', #"_s + values::sqlDate(time.date) + u"#)"_s);
    if (jobNo != 0)
        jobs::UpdateJobCost(database, jobNo);
    transaction.commit();
    return {};
}

namespace {

QString timeRow(qint64 timeId) {
    return u"SELECT * FROM timelog WHERE id="_s + QString::number(timeId);
}

std::optional<Parts> partsIn(const jet::Recordset& row) {
    if (row.isEmpty())
        return {};
    return Parts{row[u"PartsQty"], row[u"PartsScrap"]};
}

} // namespace

std::optional<Parts> partsOf(jet::Database& database, qint64 timeId) {
    return partsIn(database.openRecordset(timeRow(timeId), jet::RecordsetType::Snapshot));
}

std::optional<screen::Complaint> checkParts(const QString& done, const QString& scrap) {
    const QString completed = u"txtPartsQty"_s, scrapped = u"txtPartsScrap"_s;
    for (const auto& [text, field, name] : {std::tuple(done, completed, u"Parts Completed"_s),
                                            std::tuple(scrap, scrapped, u"Parts Scrap"_s)}) {
        if (!text.trimmed().isEmpty() && !values::isNumeric(text))
            return screen::Complaint{name + u" must be a number!"_s, field};
        if (values::val(text) < 0)
            return screen::Complaint{name + u" may not be negative!"_s, field};
    }
    return {};
}

std::optional<Parts> SaveParts(jet::Database& database, qint64 timeId, double done, double scrap,
                               const Parts& shown, bool& gone) {
    jet::Transaction transaction(database);
    auto stands = partsOf(database, timeId);
    gone = !stands;
    if (gone || *stands != shown)
        return stands;
    database.execute(u"UPDATE timelog SET partsqty="_s + values::numberText(done) +
                     u",partsscrap="_s + values::numberText(scrap) + u" WHERE id="_s +
                     QString::number(timeId));
    transaction.commit();
    return {};
}

} // namespace timemgmt
