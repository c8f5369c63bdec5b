#pragma once

#include "timemgmt/ShiftHours.h"

namespace timemgmt {

/// The share above the estimate that is passed over where the shop has not said another, percent.
inline constexpr int usualHoursOver = 25;

/// What the checks of time records know of the shop beside the records: its small tables, and the
/// moment that they are made at.
struct ShopFacts {
    struct Employee {
        QString name; ///< "Hall, Ann"
        bool terminated = false;
        QDate left; ///< of a terminated one; invalid where it wasn't said
        qint64 shift = 0;
    };
    struct Operation {
        QString description;
        QString type; ///< I, O, C
    };

    QDateTime now;
    int hoursOverPercent = usualHoursOver;
    QHash<qint64, Employee> employees;
    QHash<qint64, Operation> operations;
    QHash<qint64, ShiftHours> shifts;

    /// The shift of an employee; without a range where there is none.
    const ShiftHours& shiftOf(qint64 empId) const;
    QString employeeName(qint64 empId) const;
    /// "Job 1004 Milling", "overhead Cleaning".
    QString workName(qint64 jobNo, qint64 operNo) const;
    /// Whether the employee had left before that day, or, where a record is open still, has left at
    /// all; one that doesn't exist was never there.
    bool hadLeft(qint64 empId, const QDate& day, bool open) const;
    /// "the employee left on 3/2/2026."
    QString leaving(qint64 empId) const;
};

/// One wait on a server.
ShopFacts readShopFacts(jet::Database& database, const QDateTime& now);

} // namespace timemgmt
