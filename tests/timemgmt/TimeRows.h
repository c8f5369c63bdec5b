#pragma once

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
        return seconds ? QStringLiteral("#") + jet::Value(moment(*seconds)).toText() +
                             QStringLiteral("#")
                       : QStringLiteral("NULL");
    }
    static QString sqlNumber(const std::optional<qint64>& number) {
        return number ? QString::number(*number) : QStringLiteral("NULL");
    }
    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        db().execute(QStringLiteral("INSERT INTO %1 (%2) VALUES(%3)").arg(table, columns, values));
        return db().lastCounter();
    }
    qint64 attendance(qint64 employee, const Moment& in, const Moment& out) {
        return insert(QStringLiteral("Sign_in"), QStringLiteral("EmpID, Sign_in, Sign_out"),
                      QStringLiteral("%1,%2,%3").arg(employee).arg(sql(in), sql(out)));
    }
    /// An operation that costs 50 an hour.
    qint64 operation(const QString& type) {
        return insert(QStringLiteral("Operation"),
                      QStringLiteral("Description, OperType, OperShopRate"),
                      QStringLiteral("'%1','%1',50").arg(type));
    }
    /// A job of 4 pieces with one operation, each with an hour on it.
    qint64 job(qint64 operNo) {
        const qint64 number =
            insert(QStringLiteral("Job"), QStringLiteral("Quantity, TotalHours, JobShopCost"),
                   QStringLiteral("4,1,2"));
        insert(QStringLiteral("JobOper"),
               QStringLiteral("JobNo, OperNo, OperTime_Amount, OperShopRate, Status"),
               QStringLiteral("%1,%2,1,50,' '").arg(number).arg(operNo));
        return number;
    }
    struct Work {
        qint64 sign = 0, job = 0, operation = 0;
        std::optional<QString> status = QStringLiteral("A");
        Moment start, susp, finish;
        qint64 employee = 1;
        std::optional<qint64> supervisor;
    };
    qint64 work(const Work& w) {
        return insert(
            QStringLiteral("Timelog"),
            QStringLiteral("SignID, JobNo, OperNo, EmpID, Status, StartDate, SuspDate, FinishDate, "
                           "SupervID"),
            QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8,%9")
                .arg(w.sign)
                .arg(w.job)
                .arg(w.operation)
                .arg(w.employee)
                .arg(w.status ? QStringLiteral("'%1'").arg(*w.status) : QStringLiteral("NULL"),
                     sql(w.start), sql(w.susp), sql(w.finish), sqlNumber(w.supervisor)));
    }
};

} // namespace testsupport
