#include "timemgmt/exceptions/ShopFacts.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace timemgmt {

const ShiftHours& ShopFacts::shiftOf(qint64 empId) const {
    static const ShiftHours none;
    const auto shift = shifts.constFind(employees.value(empId).shift);
    return shift == shifts.cend() ? none : *shift;
}

QString ShopFacts::employeeName(qint64 empId) const {
    const auto employee = employees.constFind(empId);
    return employee == employees.cend() ? u"No. %1"_s.arg(empId) : employee->name;
}

QString ShopFacts::workName(qint64 jobNo, qint64 operNo) const {
    const auto operation = operations.constFind(operNo);
    const QString description =
        operation == operations.cend() ? u"operation %1"_s.arg(operNo) : operation->description;
    return jobNo > 0 ? u"Job %1 %2"_s.arg(QString::number(jobNo), description)
                     : u"Overhead %1"_s.arg(description);
}

bool ShopFacts::hadLeft(qint64 empId, const QDate& day, bool open) const {
    const auto employee = employees.constFind(empId);
    if (employee == employees.cend())
        return true;
    return employee->terminated && (employee->left.isValid() ? day > employee->left : open);
}

QString ShopFacts::leaving(qint64 empId) const {
    const auto employee = employees.constFind(empId);
    if (employee == employees.cend())
        return u"there is no employee of this number."_s;
    if (!employee->left.isValid())
        return u"the employee has left."_s;
    return u"the employee left on %1."_s.arg(values::format(employee->left, u"Short Date"));
}

ShopFacts readShopFacts(jet::Database& database, const QDateTime& now) {
    ShopFacts facts;
    facts.now = {now.date(), now.time(), Qt::UTC};
    auto sets = database.together(
        {u"SELECT EmpID, lastname, firstname, EmpStatus, [Terminate], "
         "shiftsid FROM Employee"_s,
         u"SELECT OperNo, Description, OperType FROM Operation"_s, QString::fromUtf16(selectShifts),
         QString::fromUtf16(selectBreaks), u"SELECT * FROM SystemSettings"_s});
    for (jet::Recordset& row = sets[0]; !row.eof(); row.moveNext()) {
        ShopFacts::Employee& employee = facts.employees[row[u"EmpID"].toLong()];
        employee.name = row.text(u"lastname") + u", "_s + row.text(u"firstname");
        employee.terminated =
            row.text(u"EmpStatus").compare(u"Terminated"_s, Qt::CaseInsensitive) == 0;
        employee.left = row[u"Terminate"].toDate().value_or(QDate());
        employee.shift = row[u"shiftsid"].toLong();
    }
    for (jet::Recordset& row = sets[1]; !row.eof(); row.moveNext())
        facts.operations.insert(row[u"OperNo"].toLong(),
                                {row.text(u"Description"), row.text(u"OperType").toUpper()});
    facts.shifts = readShiftHours(sets[2], sets[3]);
    const jet::Recordset& settings = sets[4];
    // A database that wasn't upgraded hasn't got the column.
    if (!settings.isEmpty() &&
        settings.fieldNames().contains(u"HoursOverPercent"_s, Qt::CaseInsensitive) &&
        !settings[u"HoursOverPercent"].isNull())
        facts.hoursOverPercent = static_cast<int>(settings[u"HoursOverPercent"].toLong());
    return facts;
}

} // namespace timemgmt
