#pragma once

#include "platform/jet/Schema.h"
#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace jet {
class Database;
}

namespace report {

/// The rows of one query, in order, each once.
class Rows {
  public:
    virtual ~Rows() = default;
    virtual QStringList fieldNames() const = 0;
    /// Gives the next row's fields; false at the end.
    virtual bool next(std::vector<jet::Value>& row) = 0;
};

/// Where a report reads: a database, or rows in memory.
class RowSource {
  public:
    virtual ~RowSource() = default;
    /// Says which queries will be run next, so that they may come in one wait.
    virtual void expect(const QStringList& /*queries*/) {}
    /// Runs a query in the dialect. Throws ReportError(databaseError).
    virtual std::unique_ptr<Rows> open(const QString& sql) = 0;
    /// Type of a table's column; nothing if there is no such table or column.
    virtual std::optional<jet::ColumnType> columnType(const QString& table,
                                                      const QString& column) const = 0;
};

/// Reads from a database.
class DatabaseRowSource : public RowSource {
  public:
    explicit DatabaseRowSource(jet::Database& database) : m_database(database) {}
    void expect(const QStringList& queries) override;
    std::unique_ptr<Rows> open(const QString& sql) override;
    std::optional<jet::ColumnType> columnType(const QString& table,
                                              const QString& column) const override;

  private:
    jet::Database& m_database;
};

} // namespace report
