#include "timemgmt/Whose.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace timemgmt {

namespace {

/// `select` gives the names, and may give a day behind them.
QString titled(jet::Database& database, const QString& title, const QString& select) {
    const jet::Recordset row = database.openRecordset(select, jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return title;
    QStringList words;
    for (const auto* column : {u"LastName", u"FirstName"}) {
        if (const QString word = row.text(column); !word.isEmpty())
            words << word;
    }
    if (row.fieldNames().size() > 2) {
        if (const auto day = row.field(2).toDate())
            words << values::format(*day, u"Short Date");
    }
    return words.isEmpty() ? title : title + u" - "_s + words.join(u", ");
}

QString selectOf(const QString& table, const QString& moment, qint64 id) {
    return u"SELECT Employee.LastName, Employee.FirstName, %1.%2 FROM %1 LEFT JOIN Employee ON "
           "%1.EmpID = Employee.EmpID WHERE %1.ID = %3"_s.arg(table, moment, QString::number(id));
}

} // namespace

QString titleForEmployee(jet::Database& database, const QString& title, qint64 empId) {
    return titled(database, title,
                  u"SELECT LastName, FirstName FROM Employee WHERE EmpID = "_s +
                      QString::number(empId));
}

QString titleForAttendance(jet::Database& database, const QString& title, qint64 signId) {
    return titled(database, title, selectOf(u"Sign_in"_s, u"Sign_in"_s, signId));
}

QString titleForWork(jet::Database& database, const QString& title, qint64 timeId) {
    return titled(database, title, selectOf(u"Timelog"_s, u"StartDate"_s, timeId));
}

} // namespace timemgmt
