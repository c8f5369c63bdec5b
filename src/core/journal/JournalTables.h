#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace core {

/// A table of which the database keeps every change in its table Journal.
struct JournalTable {
    QString name;
    QString record; ///< the column with the number of the record that a row belongs to; empty: none
    QString words;  ///< what people call its rows
    QString right;  ///< the menu entry of the module whose rows they are
    QString line = {}; ///< the column that says to which line of a document a row belongs, if any
};
/// Those that carry money, hours, stock and documents.
const std::vector<JournalTable>& journalTables();
/// By name without regard to case; nullptr if there is none.
const JournalTable* journalTable(const QString& name);

/// The tables whose rows belong to a record module's records ("frmJob"); none for a screen without
/// such records.
QStringList journalTablesOf(const QString& screen);

} // namespace core
