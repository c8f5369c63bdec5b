#pragma once

#include "timemgmt/exceptions/ShopFacts.h"
#include "timemgmt/exceptions/TimeException.h"

#include <vector>

namespace timemgmt {

/// The rules by which a time record needs a person's eye. Each looks at the records within a scope
/// only; what it finds is all that is wrong with these.

/// Records by the end of a WHERE over their table.
struct Scope {
    QString condition; ///< "Timelog.ID > 1200"
    /// Whether there may be so many that the database had better pick out those in question.
    bool many = true;
    /// Whether it is the whole table.
    bool all = false;

    static Scope numbers(const QString& table, qint64 from, qint64 to);
    /// At most listLength numbers.
    static Scope list(const QString& table, const std::vector<qint64>& ids);
    static constexpr std::size_t listLength = 512;
};

/// Of `Timelog`: open too long, outside attendance, closed job, by hand, left employee.
std::vector<TimeException> checkWork(jet::Database& database, const ShopFacts& facts,
                                     const Scope& scope);
/// Of `Sign_in`: never signed out, open too long, left employee, and those that overlap with a
/// record of any scope.
std::vector<TimeException> checkAttendance(jet::Database& database, const ShopFacts& facts,
                                           const Scope& scope);
/// Of the operations of all jobs that aren't shipped: over the estimate, finished out of order. A
/// shipped job's hours and order can't be put right any more.
std::vector<TimeException> checkOperations(jet::Database& database, const ShopFacts& facts);

} // namespace timemgmt
