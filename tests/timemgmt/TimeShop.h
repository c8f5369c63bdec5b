#pragma once

#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <QDateTime>

namespace testsupport {

/// A shop whose time records are all in order on Friday 3/13/2026, 10:00 AM, with what is just in
/// order still among them. Two weeks of days and nights.
class TimeShop : public ShopDatabaseFixture {
  protected:
    const QDateTime now{QDate(2026, 3, 13), QTime(10, 0), Qt::UTC};
    /// Employees 1 and 2 work by day (6 AM to 6 PM), 3 by night (10 PM to 6 AM), 4 without a shift;
    /// 5 left on 3/6.
    static constexpr qint64 day = 1, day2 = 2, night = 3, free = 4, gone = 5;
    /// In house: 1, 2, 3. Overhead 4. Contractor 5.
    static constexpr qint64 overhead = 4, contractor = 5;
    qint64 open = 0, sequential = 0, shipped = 0; ///< jobs; the last one was shipped on 3/5

    static QDateTime at(int dayOfMarch, int hour, int minute = 0) {
        return {QDate(2026, 3, dayOfMarch), QTime(hour, minute), Qt::UTC};
    }
    static QString literal(const QDateTime& moment) {
        return moment.isValid() ? u"#"_s + jet::Value(moment).toText() + u"#"_s : u"NULL"_s;
    }
    qint64 add(const QString& table, const QString& columns, const QString& values) {
        db().execute(u"INSERT INTO %1 (%2) VALUES(%3)"_s.arg(table, columns, values));
        return db().lastCounter();
    }
    qint64 attendance(qint64 employee, const QDateTime& in, const QDateTime& out) {
        return add(u"Sign_in"_s, u"EmpID, Sign_in, Sign_out"_s,
                   u"%1, %2, %3"_s.arg(employee).arg(literal(in), literal(out)));
    }
    /// Running where it has no end; in house it is suspended, otherwise finished.
    qint64 work(qint64 employee, qint64 sign, qint64 job, qint64 operation, const QDateTime& start,
                const QDateTime& end, double hours = 0) {
        const bool inHouse = operation < overhead;
        return add(u"Timelog"_s,
                   u"EmpID, SignID, JobNo, OperNo, AccumTime, Status, StartDate, SuspDate, "
                   "FinishDate"_s,
                   u"%1, %2, %3, %4, %5, '%6', %7, %8, %9"_s.arg(employee)
                       .arg(sign)
                       .arg(job)
                       .arg(operation)
                       .arg(hours)
                       .arg(!end.isValid() ? u"A"_s
                            : inHouse      ? u"D"_s
                                           : u"F"_s,
                            literal(start), literal(inHouse ? end : QDateTime()),
                            literal(inHouse ? QDateTime() : end)));
    }
    qint64 manual(qint64 employee, qint64 sign, qint64 job, const QDateTime& midnight) {
        return add(u"Timelog"_s, u"EmpID, SignID, JobNo, OperNo, AccumTime, Status, StartDate"_s,
                   u"%1, %2, %3, 1, 2.5, '0', %4"_s.arg(employee).arg(sign).arg(job).arg(
                       literal(midnight)));
    }
    /// With operations 1, 2 and 3 in this order, a contractor's between them.
    qint64 job(bool inSequence, const QDate& shipDate = {}) {
        const qint64 number = add(
            u"Job"_s, u"Quantity, OrderRequired, Shipped, ShipDate"_s,
            u"1, %1, %2, %3"_s.arg(
                inSequence ? u"True"_s : u"False"_s, shipDate.isValid() ? u"True"_s : u"False"_s,
                literal(shipDate.isValid() ? shipDate.startOfDay(Qt::UTC) : QDateTime())));
        int sequence = 0;
        for (const qint64 operation : {qint64{1}, contractor, qint64{2}, qint64{3}})
            add(u"JobOper"_s, u"JobNo, SeqNo, OperNo, EstOper, Status"_s,
                u"%1, %2, %3, 10, ' '"_s.arg(number).arg(++sequence).arg(operation));
        return number;
    }
    qint64 operationOf(qint64 job, qint64 operation) {
        return db()
            .lookup(u"SELECT ID FROM JobOper WHERE JobNo = %1 AND OperNo = %2"_s.arg(job).arg(
                operation))
            .toLong();
    }

    void makeShop() {
        const qint64 nightShift = add(u"Shifts"_s, u"Description, EarliestSignIn, LatestSignOut"_s,
                                      u"'Night', #10:00:00 PM#, #6:00:00 AM#"_s);
        const auto employee = [&](const QString& name, qint64 shift, const QString& more) {
            add(u"Employee"_s, u"lastname, firstname, shiftsid, EmpStatus, [Terminate]"_s,
                u"'%1', 'A', %2, %3"_s.arg(name).arg(shift).arg(more));
        };
        employee(u"Day"_s, 1, u"'Active', NULL"_s);
        employee(u"O''Day"_s, 1, u"'Active', NULL"_s);
        employee(u"Night"_s, nightShift, u"'Suspended', NULL"_s);
        employee(u"Free"_s, 0, u"'Active', NULL"_s);
        employee(u"Gone"_s, 1, u"'Terminated', #3/6/2026#"_s);
        for (const auto* type : {u"I", u"I", u"I", u"O", u"C"})
            add(u"Operation"_s, u"Description, OperType"_s,
                u"'Step', '%1'"_s.arg(QString::fromUtf16(type)));
        open = job(false);
        sequential = job(true);
        shipped = job(false, QDate(2026, 3, 5));
        // The contractor's operation before it is not waited for.
        db().execute(u"UPDATE JobOper SET Status = 'F' WHERE JobNo = %1 AND OperNo IN (1, 2)"_s.arg(
            sequential));
        for (int date = 2; date <= 12; ++date) {
            if (date == 7 || date == 8)
                continue;
            for (const qint64 one : {day, day2}) {
                // Out and in within one second at noon; work from one end to the other.
                const qint64 morning = attendance(one, at(date, 7), at(date, 12));
                const qint64 afternoon = attendance(one, at(date, 12), at(date, 16));
                work(one, morning, open, 3, at(date, 7), at(date, 12));
                work(one, afternoon, 0, overhead, at(date, 12), at(date, 16));
                if (date <= 5)
                    work(one, afternoon, shipped, 1, at(date, 13), at(date, 16));
            }
            const qint64 nightly = attendance(night, at(date, 21, 50), at(date + 1, 6, 5));
            work(night, nightly, open, 3, at(date, 23), at(date + 1, 6));
            // Named by the wrong attendance, but the employee was there.
            const qint64 late = attendance(free, at(date, 18), at(date, 23));
            attendance(free, at(date, 5), at(date, 6));
            work(free, late, open, 3, at(date, 5), at(date, 6));
            work(free, 0, open, contractor, at(date, 1), at(date, 2));
            if (date <= 6)
                work(gone, attendance(gone, at(date, 7), at(date, 15)), open, 3, at(date, 7),
                     at(date, 15));
        }
        work(free, 0, 0, contractor, {}, {});
        // A quarter more than the estimate passes; on a shipped job anything does.
        const qint64 sign = attendance(day, at(13, 6), {});
        work(day, sign, open, 1, at(13, 6), at(13, 7), 12.5);
        work(day, sign, open, 2, at(13, 7), {});
        work(day2, attendance(day2, at(13, 6), {}), sequential, 3, at(13, 7), {});
        db().execute(u"UPDATE Timelog SET AccumTime = 90 WHERE JobNo = %1"_s.arg(shipped));
    }
};

} // namespace testsupport
