#include "setup/takeover/Loader.h"

#include "platform/jet/Database.h"
#include "platform/jet/Types.h"
#include "platform/values/Literals.h"

#include <QHash>

namespace takeover {

using jet::ColumnType;

namespace {

constexpr int parametersOfAStatement = 3000;
constexpr int rowsReadAtOnce = 4000;

jet::Arguments emptyArguments(bool server) {
    return jet::Arguments(server ? jet::Arguments::Money::AsText : jet::Arguments::Money::AsNumber);
}

} // namespace

Loader::Loader(jet::Database& database, QString table, std::vector<jet::Column> columns)
    : m_database(database), m_native(database), m_table(std::move(table)),
      m_columns(std::move(columns)),
      m_batch(std::max(1, parametersOfAStatement / static_cast<int>(m_columns.size()))),
      m_insertBatch(insert(m_batch)), m_arguments(emptyArguments(database.isServer())) {}

QByteArray Loader::list() const {
    QByteArray names;
    for (const jet::Column& column : m_columns)
        names += (names.isEmpty() ? "" : ", ") + m_native.quoted(column.name);
    return names;
}

QByteArray Loader::insert(int rows) const {
    QByteArray sql = "INSERT INTO " + m_native.quoted(m_table) + " (" + list() + ") VALUES ";
    int number = 0;
    for (int row = 0; row < rows; ++row) {
        QByteArray one;
        for (const jet::Column& column : m_columns) {
            one += (one.isEmpty() ? "(" : ", ") + m_native.parameter(++number);
            if (m_database.isServer())
                one += "::" + (column.type == ColumnType::YesNo
                                   ? QByteArray("smallint")
                                   : jet::declaredType(column.type, column.width,
                                                       jet::Dialect::postgres()));
        }
        sql += (row == 0 ? "" : ", ") + one + ')';
    }
    return sql;
}

/// Of a row as it is written and as it is read: the engines give money and numbers back in other
/// kinds than they took them.
quint64 Loader::hashOf(const std::vector<jet::Value>& row) {
    m_scratch.clear();
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const jet::Value& value = row[i];
        if (value.isNull()) {
            m_scratch += 'n';
            continue;
        }
        switch (m_columns[i].type) {
        case ColumnType::Text:
        case ColumnType::Memo:
            m_scratch += 't' + value.toText().toUtf8() + '\0';
            break;
        case ColumnType::DateTime: {
            const auto moment = value.toDateTime();
            m_scratch += 'd';
            m_scratch += QByteArray::number(moment ? moment->toSecsSinceEpoch() : 0) + ' ';
            break;
        }
        case ColumnType::Double:
        case ColumnType::Currency: {
            const double number = value.toDouble() + 0.0; // no -0
            m_scratch += 'r';
            m_scratch.append(reinterpret_cast<const char*>(&number), sizeof number);
            break;
        }
        default:
            m_scratch += 'i' + QByteArray::number(value.toInteger()) + ' ';
        }
    }
    return qHashBits(m_scratch.constData(), static_cast<std::size_t>(m_scratch.size()), 0);
}

void Loader::add(const std::vector<jet::Value>& row) {
    m_written.sum += hashOf(row);
    ++m_written.rows;
    for (const jet::Value& value : row)
        m_arguments.add(value);
    if (++m_waiting == m_batch)
        flush();
}

void Loader::flush() {
    if (m_waiting == 0)
        return;
    if (m_waiting == m_batch)
        m_native.write(m_insertBatch, m_arguments);
    else
        m_native.write(insert(m_waiting), m_arguments);
    m_arguments.clear();
    m_waiting = 0;
}

void Loader::finish() {
    flush();
}

Contents Loader::readBack() {
    Contents contents;
    const auto take = [&](const std::vector<jet::Native::Row>& rows) {
        for (const jet::Native::Row& row : rows) {
            contents.sum += hashOf(row);
            ++contents.rows;
        }
        return static_cast<int>(rows.size()) == rowsReadAtOnce;
    };
    const QByteArray many = QByteArray::number(rowsReadAtOnce);
    if (m_database.isServer()) {
        m_native.execute("DECLARE takeover_rows NO SCROLL CURSOR FOR SELECT " + list() + " FROM " +
                         m_native.quoted(m_table));
        while (take(m_native.rows("FETCH " + many + " FROM takeover_rows")))
            continue;
        m_native.execute("CLOSE takeover_rows");
        return contents;
    }
    qint64 last = std::numeric_limits<qint64>::min();
    bool more = true;
    while (more) {
        const auto rows = m_native.rows("SELECT " + list() + ", rowid FROM " +
                                        m_native.quoted(m_table) + " WHERE rowid > " +
                                        QByteArray::number(last) + " ORDER BY rowid LIMIT " + many);
        more = take(rows);
        if (!rows.empty())
            last = rows.back().back().toInteger();
    }
    return contents;
}

} // namespace takeover
