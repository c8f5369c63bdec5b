#pragma once

#include "platform/jet/Arguments.h"
#include "platform/jet/Rows.h"
#include "platform/jet/Value.h"

#include <QByteArray>

#include <functional>
#include <vector>

namespace jet {

class Connection;
class Database;

/// Statements in the engine's own SQL, for what the dialect has no words for: the engine's checks,
/// triggers, loading in bulk. Screens have no use for it. Throws Error as the database does.
class Native {
  public:
    using Row = std::vector<Value>;

    explicit Native(Database& database);

    /// Runs a statement once.
    void execute(const QByteArray& sql);
    /// Runs a statement with parameters, prepared the first time and kept; the rows it touched.
    int write(const QByteArray& sql, const Arguments& arguments);
    std::vector<Row> rows(const QByteArray& sql);
    /// Shows each row's cells as the engine gave them, for a look over very many rows. Texts are
    /// good for the time of the call only.
    void each(const QByteArray& sql, const std::function<void(const std::vector<Cell>&)>& look);
    /// The same, quicker, for a select of plain columns: its list, and what follows that. It may
    /// not throw.
    void sweep(const QByteArray& columns, const QByteArray& from,
               const std::function<void(const std::vector<Cell>&)>& look);
    /// The first value of the first row; Null where there is none.
    Value value(const QByteArray& sql);
    /// Whose writes they are from now on, on this connection: what the journal of changes says of
    /// them. Empty: nobody's.
    void setWriter(const QString& who);
    /// A name, and the n-th parameter (from 1), as this engine writes them.
    QByteArray quoted(const QString& name) const;
    QByteArray parameter(int number) const;

  private:
    Connection& m_connection;
};

} // namespace jet
