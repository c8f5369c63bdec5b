#pragma once

#include "timemgmt/exceptions/ShopFacts.h"

namespace timemgmt {

/// A row of `Timelog` with what its rules ask of its attendance and its job.
struct WorkRecord {
    qint64 id = 0, empId = 0, jobNo = 0, operNo = 0, signId = 0;
    double hours = 0;
    QChar status;
    QString operType;
    QDateTime start, end; ///< the end of the kind of its operation; invalid while it runs
    bool signFound = false;
    qint64 signEmp = 0;
    QDateTime cameIn, wentOut;
    bool jobFound = false, shipped = false;
    QDate shipDate;

    bool isManual() const { return status == u'0'; }
    bool isRunning() const { return status == u'A'; }
    /// Contractors' operations and manual time have no place in an attendance.
    bool countsInAttendance() const { return operType == u"I" || operType == u"O"; }
    bool hasOwnAttendance() const { return signFound && signEmp == empId; }
    bool isWithinOwnAttendance() const;
    /// Up to which moment it must lie within an attendance.
    QDateTime lastMoment(const QDateTime& now) const;
};

/// From a row of Timelog.* with SignEmp, CameIn, WentOut, FoundJob, JobShipped and JobShipDate.
WorkRecord workRecord(const jet::Recordset& row, const ShopFacts& facts);

/// "3/2/2026 6:52 AM"; "now" for an invalid moment.
QString momentText(const QDateTime& moment);

} // namespace timemgmt
