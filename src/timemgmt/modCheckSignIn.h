#pragma once

#include "platform/jet/Database.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace timemgmt {

/// Title of everything that CheckSignIn has to say.
inline constexpr char16_t signInTitle[] = u"Valid Sign In/Out";

/// Why a change may not go ahead.
struct Refusal {
    QString text;
    bool stop = false; ///< shown with the stop icon; otherwise with the exclamation mark
};

/// Whether a sign-in row may be changed; nothing if it may. `action` is "New", "Edit" or "Delete",
/// without regard to case; any other passes. A new or edited range may share no moment with another
/// row of the employee, ends included, and an edited one has to hold the work booked on it. `id` is
/// the row; "Delete" looks at nothing else.
std::optional<Refusal> CheckSignIn(jet::Database& database, const QString& action, qint64 empId,
                                   const QDateTime& signIn, const QDateTime& signOut, qint64 id);

/// After a sign-in row was saved by hand: ends the stretches of work that were left open on it at
/// `signOut`, and adds those on in-house operations to their jobs. "New" finds the row by the
/// employee, "Edit" by `id`. Returns how many it ended. All or, if it throws, none of them.
int CloseOpenTimelogs(jet::Database& database, const QString& action, qint64 empId,
                      const QDateTime& signOut, qint64 id);

/// Adds hours to a job's operation and to the job: its hours, and its cost each by the operation's
/// rate over the quantity. Nothing where the job has no such operation. Throws
/// Error(divisionByZero) for a quantity of 0, with nothing written.
void PostTimeToJob(jet::Database& database, qint64 jobNo, qint64 operNo, double hours);

/// After a sign-in row was edited: if it is the employee's latest, he is out.
void SignOutIfLatest(jet::Database& database, qint64 empId, qint64 id);

/// Takes the candidate, to the second, if `current` is later (mode "Earliest") or earlier (any
/// other). A Null candidate changes nothing.
void KeepDateExtreme(QDateTime& current, const jet::Value& candidate, const QString& mode);

} // namespace timemgmt
