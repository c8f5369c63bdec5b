#pragma once

#include "setup/takeover/Loader.h"
#include "setup/takeover/OldReader.h"
#include "setup/takeover/Remarks.h"

namespace takeover {

/// What became of one table.
struct TableResult {
    QString name;    ///< in the new database
    QString oldName; ///< in the old one; empty where it had none
    qint64 told = 0; ///< rows that the old file says it has
    qint64 read = 0;
    qint64 written = 0;
    qint64 lastGiven = 0; ///< what the counter goes on behind
    QString counter;      ///< the counter's column; empty where there is none
    QStringList unknown;  ///< columns that today's table doesn't have
    QStringList missing;  ///< columns that the old table doesn't have
    QString kept;         ///< the table that holds the unknown columns
    QStringList damages;
    QHash<QString, qint64> renumbered; ///< repeated keys by column
};

/// Takes tables over: reads their rows, converts the values, writes them, gives later rows of a
/// repeated key a new one and reads everything back.
class TableTaker {
  public:
    TableTaker(jet::Database& database, const OldReader& reader, Remarks& remarks);
    ~TableTaker();

    /// `today` is the table as it is defined today.
    void take(const OldTable& old, const jet::Table& today);
    /// A table that is unknown today, under a name of its own.
    void keep(const OldTable& old);
    /// A table whose definition can't be read, or (`old` without a name) one that isn't there.
    void pass(const OldTable& old, const QString& today);

    /// When all tables were taken: the rows of repeated keys get numbers that nothing refers to,
    /// and what stands in the tables is compared with what was written. Throws keeping::Refusal
    /// where it differs. What became of the tables, in the order in which they were taken.
    std::vector<TableResult> finish();

  private:
    struct Pending;
    jet::Table keptTable(const QString& name, const std::vector<OldColumn>& columns,
                         const jet::Column* key) const;
    void create(const jet::Table& table);
    void compareTypes(const OldTable& old, const jet::Table& today);
    void read(const OldTable& old, Pending& pending);
    qint64 highestReference(const QString& table, const QString& key);
    void writeWaiting(Pending& pending);

    jet::Database& m_database;
    const OldReader& m_reader;
    Remarks& m_remarks;
    std::vector<std::unique_ptr<Pending>> m_pending;
};

} // namespace takeover
