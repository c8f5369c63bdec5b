#pragma once

#include <QByteArray>
#include <QString>

namespace jet {

/// What tells one engine's SQL from another's.
struct Dialect {
    enum class Engine { Sqlite, Postgres };
    Engine engine = Engine::Sqlite;

    static Dialect sqlite() { return {Engine::Sqlite}; }
    static Dialect postgres() { return {Engine::Postgres}; }

    bool isPostgres() const { return engine == Engine::Postgres; }
    /// A name as the engine's SQL has it: as created, or in small letters.
    QByteArray quoted(const QString& name) const;
    /// The n-th parameter, from 1.
    QByteArray parameter(int number) const;
    /// What is put behind an INSERT so that it tells the new row's key, where the engine doesn't
    /// tell it by itself.
    QByteArray returning(const QString& keyColumn) const;
    /// PostgreSQL: lets a counter go on behind the highest number, and never back, since numbers
    /// are given out once. To be run after an INSERT that gave the counter its value.
    static QByteArray catchUp(const QString& table, const QString& counter);
};

} // namespace jet
