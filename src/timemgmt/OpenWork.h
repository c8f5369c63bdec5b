#pragma once

#include "platform/jet/Database.h"

#include <QDateTime>

#include <vector>

namespace timemgmt {

/// After a sign-in row was saved by hand: ends the stretches of work that were left open on it at
/// `signOut`, and adds those on in-house operations to their jobs: to the operation's and the job's
/// hours, and to the job's cost each by the operation's rate over the quantity. `id` is the row;
/// for a new one the number that its own insert was given (lastCounter), since the employee may
/// have signed in on the floor since. A stretch that the floor ends meanwhile stays the floor's.
/// Returns how many it ended. All or, if it throws, none of them; Error(divisionByZero) for a job
/// of quantity 0.
int CloseOpenTimelogs(jet::Database& database, qint64 id, const QDateTime& signOut);

/// After a sign-in row was edited: if it is the employee's latest, he is out.
void SignOutIfLatest(jet::Database& database, qint64 empId, qint64 id);

// The steps of CloseOpenTimelogs, for a transaction that reads the work with other things.

/// Lets a floor program that is ending a stretch finish, and wait from here on. To be read behind
/// it: workOn(signIds).
void holdWork(jet::Database& database, const QString& signIds);

struct EndedWork {
    int rows = 0;
    std::vector<qint64> jobNos; ///< on which hours were booked
};
/// Ends what is open among the rows of workOn().
EndedWork endOpenWork(jet::Database& database, jet::Recordset work, const QDateTime& signOut);

} // namespace timemgmt
