#include "timemgmt/exceptions/WorkRecord.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace timemgmt {

bool WorkRecord::isWithinOwnAttendance() const {
    // One without a start can't be told to be anywhere.
    if (!start.isValid())
        return true;
    if (!hasOwnAttendance() || (cameIn.isValid() && start < cameIn))
        return false;
    // Without a sign-out it isn't known yet, and that is told of the attendance.
    if (!wentOut.isValid())
        return true;
    return isRunning() ? false : lastMoment(start) <= wentOut;
}

QDateTime WorkRecord::lastMoment(const QDateTime& now) const {
    if (isRunning())
        return now;
    return end.isValid() ? end : start;
}

WorkRecord workRecord(const jet::Recordset& row, const ShopFacts& facts) {
    const auto moment = [&](const char16_t* field) {
        return row[field].toDateTime().value_or(QDateTime());
    };
    WorkRecord work;
    work.id = row[u"ID"].toLong();
    work.empId = row[u"EmpID"].toLong();
    work.jobNo = row[u"JobNo"].toLong();
    work.operNo = row[u"OperNo"].toLong();
    work.signId = row[u"SignID"].toLong();
    work.hours = row[u"AccumTime"].toDouble();
    work.status = row.text(u"Status").toUpper().leftJustified(1).at(0);
    work.operType = facts.operations.value(work.operNo).type;
    work.start = moment(u"StartDate");
    if (work.operType == u"I") {
        work.end = moment(u"SuspDate");
        const bool ownFinish =
            !row[u"SupervID"].isNull() && row[u"SupervID"].toLong() == work.empId;
        if (const QDateTime finish = moment(u"FinishDate");
            ownFinish && finish.isValid() && (!work.end.isValid() || finish > work.end))
            work.end = finish;
    } else {
        work.end = moment(u"FinishDate");
    }
    work.signFound = !row[u"SignEmp"].isNull();
    work.signEmp = row[u"SignEmp"].toLong();
    work.cameIn = moment(u"CameIn");
    work.wentOut = moment(u"WentOut");
    work.jobFound = !row[u"FoundJob"].isNull();
    work.shipped = row[u"JobShipped"].toBool();
    work.shipDate = row[u"JobShipDate"].toDate().value_or(QDate());
    return work;
}

QString momentText(const QDateTime& moment) {
    return moment.isValid() ? values::format(moment, u"m/d/yyyy h:nn AM/PM") : u"now"_s;
}

} // namespace timemgmt
