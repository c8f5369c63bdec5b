#pragma once

#include "platform/jet/Database.h"
#include "platform/screen/Complaint.h"
#include "timemgmt/modCheckSignIn.h"

#include <QDate>
#include <QTime>

#include <optional>

namespace timemgmt {

/// When somebody came and went; nothing for what isn't known.
struct Period {
    std::optional<QDateTime> in, out;
    bool operator==(const Period&) const = default;
};

/// What is typed in by hand, each part empty or a date or time.
struct SignInFields {
    std::optional<QDate> inDate;
    std::optional<QTime> inTime;
    std::optional<QDate> outDate;
    std::optional<QTime> outTime;

    QDateTime signIn() const { return {*inDate, *inTime, Qt::UTC}; }
    QDateTime signOut() const { return {*outDate, *outTime, Qt::UTC}; }
};

/// First thing that is wrong with them, before any row is looked at.
std::optional<screen::Complaint> checkSignInFields(const SignInFields& fields);

/// A period that is to be written for an employee.
struct SignInEntry {
    qint64 empId = 0;
    qint64 id = 0; ///< of `Sign_in`; 0 for a new row
    QDateTime signIn, signOut;
    Period loaded = {}; ///< what stood in the row when it was shown for editing
};

/// What became of it. Only with neither a refusal nor a change of somebody else was it written.
struct SignInSaved {
    std::optional<Refusal> refusal;
    std::optional<Period> changed; ///< somebody else has changed the row to that meanwhile
    qint64 id = 0;
    int closed = 0; ///< stretches of work that were open and got the sign-out as their end
};

/// Checks and writes a period, ends what was left open on it, rolls up the jobs concerned and, for
/// an edited row that is the employee's latest, signs him out; in one transaction.
SignInSaved SaveSignIn(jet::Database& database, const SignInEntry& entry);

/// The row as it stands; nothing if it has gone.
std::optional<Period> signInRow(jet::Database& database, qint64 id);

} // namespace timemgmt
