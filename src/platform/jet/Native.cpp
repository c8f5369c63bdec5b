#include "platform/jet/Native.h"

#include "platform/jet/Connection.h"
#include "platform/jet/Database.h"
#include "platform/jet/RecordsetData.h"
#include "platform/values/Literals.h"

namespace jet {

Connection& RecordsetData::connectionOf(Database& database) {
    return *database.m_connection;
}

Native::Native(Database& database) : m_connection(RecordsetData::connectionOf(database)) {}

void Native::execute(const QByteArray& sql) {
    m_connection.engine().execute(sql);
}

int Native::write(const QByteArray& sql, const Arguments& arguments) {
    const StatementPtr statement =
        m_connection.generated(u"native\n"_s + QString::fromUtf8(sql), [&] { return sql; });
    return m_connection.run(statement->whole, sql, Engine::Access::Writes, arguments).touched;
}

void Native::each(const QByteArray& sql,
                  const std::function<void(const std::vector<Cell>&)>& look) {
    m_connection.each(sql, look);
}

void Native::sweep(const QByteArray& columns, const QByteArray& from,
                   const std::function<void(const std::vector<Cell>&)>& look) {
    m_connection.sweep(columns, from, look);
}

std::vector<Native::Row> Native::rows(const QByteArray& sql) {
    std::vector<Row> result;
    each(sql, [&](const std::vector<Cell>& cells) {
        Row& values = result.emplace_back();
        for (const Cell& cell : cells)
            values.push_back(valueOf(cell, std::nullopt));
    });
    return result;
}

Value Native::value(const QByteArray& sql) {
    const std::vector<Row> all = rows(sql);
    return all.empty() || all.front().empty() ? Value() : all.front().front();
}

void Native::setWriter(const QString& who) {
    m_connection.engine().setWriter(who);
}

QByteArray Native::quoted(const QString& name) const {
    return m_connection.dialect().quoted(name);
}

QByteArray Native::parameter(int number) const {
    return m_connection.dialect().parameter(number);
}

} // namespace jet
