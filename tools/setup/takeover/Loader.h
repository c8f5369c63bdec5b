#pragma once

#include "platform/jet/Native.h"
#include "platform/jet/Schema.h"

#include <vector>

namespace takeover {

/// The contents of rows, whatever their order: their number and the sum of a hash of each.
struct Contents {
    qint64 rows = 0;
    quint64 sum = 0;
    friend bool operator==(const Contents&, const Contents&) = default;
};

/// Writes rows into a table, many with one statement, and reads them back.
class Loader {
  public:
    /// `columns` are those that are given, in their order.
    Loader(jet::Database& database, QString table, std::vector<jet::Column> columns);

    void add(const std::vector<jet::Value>& row);
    void finish();
    const Contents& written() const { return m_written; }
    /// What stands in the table now, in the same columns.
    Contents readBack();

  private:
    QByteArray insert(int rows) const;
    QByteArray list() const;
    void flush();
    quint64 hashOf(const std::vector<jet::Value>& row);

    jet::Database& m_database;
    jet::Native m_native;
    QString m_table;
    std::vector<jet::Column> m_columns;
    int m_batch;
    int m_waiting = 0;
    QByteArray m_insertBatch;
    jet::Arguments m_arguments;
    Contents m_written;
    QByteArray m_scratch;
};

} // namespace takeover
