#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace setup {

/// A column that names a row of another table. 0 and Null name none.
struct Reference {
    QString table, column;
    QString target, key;
    /// What goes on pointing at a deleted row on purpose: shipments and bars of a deleted job, the
    /// users of a deleted group.
    bool outlives = false;
};
const std::vector<Reference>& references();

/// Columns whose values the program keeps apart, though no index of the database does.
struct UniqueColumns {
    QString table;
    QStringList columns;
};
const std::vector<UniqueColumns>& uniqueColumns();

} // namespace setup
