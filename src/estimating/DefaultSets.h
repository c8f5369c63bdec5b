#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <vector>

namespace estimating {

/// An operation of a default set as its list shows it.
struct SetOperation {
    qint64 operNo = 0;
    QString description;
    bool contractor = false;
};

std::vector<SetOperation> setOperations(jet::Database& database, qint64 setNo);

/// Whether another set than `setNo` (0: any set) has the name.
bool setNameTaken(jet::Database& database, const QString& name, qint64 setNo);

/// Writes a set and its operations in their order, in one transaction. `setNo` 0 makes a new set.
/// Returns its number. Names are not compared here.
qint64 saveSet(jet::Database& database, qint64 setNo, const QString& name,
               const std::vector<qint64>& operations);

void deleteSet(jet::Database& database, qint64 setNo);

} // namespace estimating
