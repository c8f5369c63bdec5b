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
/// the row; "Delete" looks at nothing else. Moments count as they show, whatever their zone.
std::optional<Refusal> CheckSignIn(jet::Database& database, const QString& action, qint64 empId,
                                   const QDateTime& signIn, const QDateTime& signOut, qint64 id);

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

/// Takes the candidate, to the second, if `current` is later (mode "Earliest") or earlier (any
/// other). A Null candidate changes nothing.
void KeepDateExtreme(QDateTime& current, const jet::Value& candidate, const QString& mode);

} // namespace timemgmt
