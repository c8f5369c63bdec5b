#pragma once

#include "platform/jet/Translate.h"

#include <QStringList>

#include <memory>
#include <vector>

/// The bare engines under the translated statements, for tests that look at what a statement means
/// and not at its text.

namespace jet {

using Row = QStringList;
using Rows = std::vector<Row>;

class Engine {
  public:
    explicit Engine(Dialect dialect) : m_dialect(dialect) {}
    virtual ~Engine() = default;
    virtual void plain(const QByteArray& sql) = 0;
    /// Rows of a select, or one row with the number of rows touched.
    virtual Rows run(const QByteArray& sql, const std::vector<Parameter>& parameters,
                     const Normalized& statement, const std::vector<ResultColumn>& columns,
                     const QString* key = nullptr) = 0;

    const Dialect& dialect() const { return m_dialect; }

    Translation define(const QString& text, const Schema& schema) {
        const Translation translation = translate(normalize(text), schema, m_dialect);
        plain(translation.sql);
        for (const QByteArray& more : translation.more)
            plain(more);
        return translation;
    }
    Rows run(const QString& text, const Schema& schema) {
        const Normalized statement = normalize(text);
        const Translation translation = translate(statement, schema, m_dialect);
        Rows rows = run(translation.sql, translation.parameters, statement, translation.columns);
        for (const QByteArray& more : translation.more)
            plain(more);
        return rows;
    }

  private:
    Dialect m_dialect;
};

/// A database in memory.
std::unique_ptr<Engine> sqliteEngine();
/// A schema of its own on the test server; nullptr where MIRSA_TEST_SERVER is not set.
std::unique_ptr<Engine> postgresEngine();

/// Both engines with the same tables. Without a server it is SQLite alone.
struct Engines {
    Schema schema;
    std::unique_ptr<Engine> sqlite = sqliteEngine();
    std::unique_ptr<Engine> postgres = postgresEngine();

    std::vector<Engine*> all() const;
    void define(const QString& statement);
    void execute(const QString& statement);
};

/// One line for each row, cells parted by a bar.
std::string shown(const Rows& rows);

} // namespace jet
