#pragma once

#include "platform/jet/Connection.h"

namespace jet {

/// Rows that one statement writes: see Database::insertRows and updateRows. A server takes each
/// column as one array, so that the statement is the same for any number of rows. A file takes them
/// one by one, or, where they are more, from a table of the connection's own: with triggers on the
/// table, each statement would first put aside all the pages that it may have to restore.
class ManyRows {
  public:
    using Values = std::vector<std::vector<Value>>;

    /// Throws noSuchTable, unknownField.
    ManyRows(Connection& connection, const QString& table, const QStringList& columns);

    Touched insert(const Values& rows);
    /// The first `keys` of the columns tell which row is meant; the others are written.
    Touched update(const Values& rows, int keys);

  private:
    std::vector<std::vector<Value>> stored(const Values& rows) const;
    Arguments arrays(const Values& rows) const;
    QByteArray unnested() const;
    QString keyOf(QChar kind, int keys) const;
    Touched oneByOne(CachedStatement& statement, const Values& rows, int keys);
    Touched atOnce(CachedStatement& statement, const Values& rows);
    bool goAtOnce(const Values& rows) const;

    Connection& m_connection;
    const Table& m_table;
    std::vector<const Column*> m_columns;
};

} // namespace jet
