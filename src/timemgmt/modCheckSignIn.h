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

/// What a range was held against.
struct RangeCheck {
    std::optional<Refusal> refusal;
    jet::Recordset row = {};  ///< the sign-in row as it stands; closed for a new one
    jet::Recordset work = {}; ///< workOn() it; closed for a new one
};

/// The check of a new row (`id` 0) or an edited one, with what was read for it, in one wait.
RangeCheck checkRange(jet::Database& database, qint64 empId, const QDateTime& signIn,
                      const QDateTime& signOut, qint64 id);

/// Selects the stretches of work that the rules look at, of operations in house and of overhead, on
/// the sign-in rows that `signIds` tells ("=5"): their columns, `opertype`, the job's number and
/// quantity as `OfJob` and `Pieces` if there is that job, and `Routed` where it has the operation.
QString workOn(const QString& signIds);

/// The moment as the database has it, without a zone.
QDateTime stored(const QDateTime& moment);
/// The same between "#".
QString literal(const QDateTime& moment);

/// Takes the candidate, to the second, if `current` is later (mode "Earliest") or earlier (any
/// other). A Null candidate changes nothing.
void KeepDateExtreme(QDateTime& current, const jet::Value& candidate, const QString& mode);

} // namespace timemgmt
