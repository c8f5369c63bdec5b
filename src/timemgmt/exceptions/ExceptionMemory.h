#pragma once

#include "platform/jet/Database.h"
#include "timemgmt/exceptions/TimeException.h"

#include <QByteArray>

#include <map>
#include <optional>

namespace timemgmt {

/// What a list of exceptions knows of its database, from one reading to the next and from one run
/// of the program to the next.
struct KnownExceptions {
    std::map<TimeException::Key, TimeException> lines;
    qint64 lastWork = 0, lastAttendance = 0; ///< highest numbers seen
    qint64 nextWork = 1, nextAttendance = 1; ///< where the part in turn begins
    QDateTime readAt;                        ///< the moment of the last reading
};

/// A picture of some of the database's records, spread over both tables, which no other database
/// and no earlier state of this one has. One wait on a server.
QByteArray recordSample(jet::Database& database, const KnownExceptions& known);

/// As a file's content, sealed against damage, with a sample of the records that it is about.
QByteArray packed(const KnownExceptions& known, const QByteArray& sample);
/// What was packed, if it is whole and of the form that this program writes.
struct Unpacked {
    KnownExceptions known;
    QByteArray sample;
};
std::optional<Unpacked> unpacked(const QByteArray& content);

} // namespace timemgmt
