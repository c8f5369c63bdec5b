#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

namespace takeover {

struct Options {
    QString serverUri; ///< the new database goes there; empty: into FOLDER/Mirsa.mdb
    /// Goes on where rows or values are damaged, and takes over what can be read.
    bool acceptDamage = false;
    /// Asks for the password that the old file's owner set.
    std::function<QString()> askPassword;
};

struct Result {
    QString summary;    ///< one line for the owner
    QString reportFile; ///< everything
    QStringList added;  ///< what an upgrade added to what was taken over
};

/// Takes a database of the old system (Jet 3 or 4) over into a new database of a program folder, in
/// one go: all of it or nothing. Beside the database stand Takeover.txt, the report, and
/// Takeover.tsv, every value that isn't as it was. Rows of tables and columns that are unknown
/// today are kept in tables whose names begin with Old_. `program` is mirsa-setup itself. Throws
/// keeping::Refusal and jet::Error; nothing is there then but the report of a refusal.
Result takeOver(const QString& program, const QString& oldFile, const QString& folder,
                const Options& options);

} // namespace takeover
