#pragma once

#include "platform/jet/Database.h"
#include "setup/Relations.h"

#include <QString>

#include <vector>

namespace setup {

/// Something in a database that shouldn't be so.
struct Finding {
    QString table;
    QString record; ///< what tells the row, such as "JobNo 1201"; empty for a whole table
    QString text;   ///< what is wrong with it
    bool mended = false;
};

/// What checking is to do.
struct CheckOptions {
    bool mend = false; ///< put right what has one right answer, in one transaction
};

/// Reads a whole database: what the engine itself finds, tables and columns that are missing, rows
/// that name a row which isn't there, rows that repeat what must be unique, notes that stand at
/// another operation than the one they belong to, counters that would give a number again, and
/// hours of operations that aren't the sum of their time records. Changes nothing unless asked to
/// mend.
std::vector<Finding> check(jet::Database& database, const CheckOptions& options = {});

/// A row whose reference names nothing.
struct Orphan {
    QString record, value;
};
std::vector<Orphan> orphansOf(jet::Database& database, const Reference& reference);

/// Rows that agree in columns which the program keeps unique.
struct Repeat {
    QString record;
    qint64 times = 0;
};
std::vector<Repeat> repeatsOf(jet::Database& database, const UniqueColumns& unique);

/// What the engine says about its own file or tables, a line each; empty where all is well.
QStringList engineFindings(jet::Database& database);

} // namespace setup
