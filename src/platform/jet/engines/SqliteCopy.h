#pragma once

#include <QMap>
#include <QString>

#include <functional>

namespace jet {

/// Told how much of a copy is done, 0 to 100; false breaks it off.
using CopyProgress = std::function<bool(int percent)>;

/// Copies a database file while others work on it: the copy is the file as it was at one moment,
/// and the rows of each table are counted at that moment. Nobody waits for it where the file has a
/// write-ahead log. `to` is overwritten. Throws Error; Error(other) where it was broken off.
QMap<QString, qint64> copyDatabaseFile(const QString& from, const QString& to,
                                       const CopyProgress& progress);

/// Reads a database file through: the engine's own findings, a line each, and the rows of each
/// table. Throws Error where it can't be opened.
QStringList checkDatabaseFile(const QString& path, QMap<QString, qint64>& rows);

/// Brings everything that stands in the logs beside a file into it and leaves the log, so that the
/// file alone is the database. Throws Error(locked) while anybody else has it open.
void closeLogOfFile(const QString& path);

} // namespace jet
