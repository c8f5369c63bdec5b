#pragma once

#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <optional>

namespace testsupport {

/// Attendance and work of a shop by moments in seconds from 12:00 AM of 3/2/2026; nothing is Null.
class TimeRows : public ShopDatabaseFixture {
  protected:
    using Moment = std::optional<int>;

    static QDateTime moment(int seconds) {
        return QDateTime(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC).addSecs(seconds);
    }
    static QString sql(const Moment& seconds) {
        return seconds ? u"#"_s + jet::Value(moment(*seconds)).toText() + u"#"_s : u"NULL"_s;
    }
    static QString sqlNumber(const std::optional<qint64>& number) {
        return number ? QString::number(*number) : u"NULL"_s;
    }
    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        db().execute(u"INSERT INTO %1 (%2) VALUES(%3)"_s.arg(table, columns, values));
        return db().lastCounter();
    }
    qint64 attendance(qint64 employee, const Moment& in, const Moment& out) {
        return insert(u"Sign_in"_s, u"EmpID, Sign_in, Sign_out"_s,
                      u"%1,%2,%3"_s.arg(employee).arg(sql(in), sql(out)));
    }
    /// An operation that costs 50 an hour.
    qint64 operation(const QString& type) {
        return insert(u"Operation"_s, u"Description, OperType, OperShopRate"_s,
                      u"'%1','%1',50"_s.arg(type));
    }
    /// A job of 4 pieces with one operation, each with an hour on it.
    qint64 job(qint64 operNo) {
        const qint64 number = insert(u"Job"_s, u"Quantity, TotalHours, JobShopCost"_s, u"4,1,2"_s);
        insert(u"JobOper"_s, u"JobNo, OperNo, OperTime_Amount, OperShopRate, Status"_s,
               u"%1,%2,1,50,' '"_s.arg(number).arg(operNo));
        return number;
    }
    struct Work {
        qint64 sign = 0, job = 0, operation = 0;
        std::optional<QString> status = u"A"_s;
        Moment start, susp, finish;
        qint64 employee = 1;
        std::optional<qint64> supervisor;
    };
    qint64 work(const Work& w) {
        return insert(u"Timelog"_s,
                      u"SignID, JobNo, OperNo, EmpID, Status, StartDate, SuspDate, FinishDate, "
                      "SupervID"_s,
                      u"%1,%2,%3,%4,%5,%6,%7,%8,%9"_s.arg(w.sign)
                          .arg(w.job)
                          .arg(w.operation)
                          .arg(w.employee)
                          .arg(w.status ? u"'%1'"_s.arg(*w.status) : u"NULL"_s, sql(w.start),
                               sql(w.susp), sql(w.finish), sqlNumber(w.supervisor)));
    }
};

} // namespace testsupport
