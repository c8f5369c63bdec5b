#pragma once

#include "core/keeping/Backup.h"

#include <QMap>

namespace keeping {

/// Dumps a server's database with pg_dump into a file, as it is at one moment, and counts the rows
/// of each table at that moment. Throws Refusal where pg_dump isn't there or fails.
QMap<QString, qint64> dumpServer(const QString& uri, const QString& to, const Progress& progress);

/// Reads a dump through and counts the rows of each table. Throws Refusal where it is broken.
QMap<QString, qint64> rowsOfDump(const QString& path);

/// Throws Refusal where others are connected to a server's database, and goes on being so for some
/// seconds.
void refuseWhileInUse(const QString& uri);

/// Puts what a dump holds in place of what a server's database holds, in one transaction.
void restoreDump(const QString& path, const QString& uri);

} // namespace keeping
