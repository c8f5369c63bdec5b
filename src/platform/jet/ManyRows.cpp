#include "platform/jet/ManyRows.h"

#include "platform/jet/Types.h"
#include "platform/jet/engines/Sqlite.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

constexpr std::size_t worthATable = 3; ///< fewer rows are quicker one by one

/// One element of PostgreSQL's text of an array.
void appendElement(QByteArray& array, const Value& value) {
    if (array.size() > 1)
        array += ',';
    Arguments one(Arguments::Money::AsText);
    one.add(value);
    const Arguments::Argument& argument = one.at(0);
    switch (argument.kind) {
    case Arguments::Kind::Null:
        array += "NULL";
        return;
    case Arguments::Kind::Integer:
        array += QByteArray::number(argument.integer);
        return;
    case Arguments::Kind::Real:
        array += QByteArray::number(argument.real, 'g', 17);
        return;
    case Arguments::Kind::Text:
        break;
    }
    array += '"';
    const char* text = one.text(argument);
    for (const char* end = text + argument.size; text < end; ++text) {
        if (*text == '"' || *text == '\\')
            array += '\\';
        array += *text;
    }
    array += '"';
}

QByteArray arrayType(const Column& column) {
    // A domain has no arrays of its own.
    return (column.type == ColumnType::YesNo
                ? QByteArray("smallint")
                : declaredType(column.type, column.width, Dialect::postgres())) +
           "[]";
}

QByteArray place(std::size_t column) {
    return "c" + QByteArray::number(static_cast<int>(column));
}

} // namespace

ManyRows::ManyRows(Connection& connection, const QString& table, const QStringList& columns)
    : m_connection(connection), m_table([&]() -> const Table& {
          const Table* found = connection.schema().table(table);
          if (found == nullptr)
              throw noSuchTableError(table);
          return *found;
      }()) {
    for (const QString& name : columns) {
        const Column* column = m_table.column(name);
        if (column == nullptr)
            throw unknownFieldError(name);
        m_columns.push_back(column);
    }
}

QString ManyRows::keyOf(QChar kind, int keys) const {
    QString key = kind + u'*' + QString::number(keys) + m_table.name;
    for (const Column* column : m_columns)
        key += u'\t' + column->name;
    return key;
}

ManyRows::Values ManyRows::stored(const Values& rows) const {
    Values result;
    result.reserve(rows.size());
    for (const std::vector<Value>& row : rows) {
        std::vector<Value>& values = result.emplace_back();
        for (std::size_t i = 0; i < m_columns.size(); ++i)
            values.push_back(storedValue(i < row.size() ? row[i] : Value(), *m_columns[i]));
    }
    return result;
}

Arguments ManyRows::arrays(const Values& rows) const {
    Arguments arguments = m_connection.newArguments();
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        QByteArray array = "{";
        for (const std::vector<Value>& row : rows)
            appendElement(array, row[i]);
        arguments.addText(QString::fromUtf8(array + '}'));
    }
    return arguments;
}

QByteArray ManyRows::unnested() const {
    QByteArray arrays, names;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        arrays += (i == 0 ? "$" : ", $") + QByteArray::number(static_cast<int>(i) + 1) +
                  "::" + arrayType(*m_columns[i]);
        names += place(i) + ", ";
    }
    return "unnest(" + arrays + ") WITH ORDINALITY AS given(" + names + "n)";
}

Touched ManyRows::oneByOne(CachedStatement& statement, const Values& rows, int keys) {
    int touched = 0;
    m_connection.begin();
    try {
        for (const std::vector<Value>& row : rows) {
            Arguments arguments = m_connection.newArguments();
            for (std::size_t i = static_cast<std::size_t>(keys); i < row.size(); ++i)
                arguments.add(row[i]);
            for (std::size_t i = 0; i < static_cast<std::size_t>(keys); ++i)
                arguments.add(row[i]);
            touched += m_connection.write(statement, arguments);
        }
        m_connection.commit();
    } catch (...) {
        m_connection.rollback();
        throw;
    }
    return Touched(touched);
}

bool ManyRows::goAtOnce(const Values& rows) const {
    return m_connection.dialect().isPostgres() ||
           (rows.size() >= worthATable && static_cast<int>(m_columns.size()) <= givenColumns);
}

/// A file's statement over all rows.
Touched ManyRows::atOnce(CachedStatement& statement, const Values& rows) {
    const auto count = static_cast<int>(m_columns.size());
    const QByteArray given = QByteArray("temp.") + givenTable;
    const StatementPtr give = m_connection.generated(u"<"_s + QString::number(count), [&] {
        QByteArray names, marks;
        for (int i = 0; i < count; ++i) {
            const char* comma = i == 0 ? "" : ", ";
            names += comma + place(static_cast<std::size_t>(i));
            marks += comma + m_connection.dialect().parameter(i + 1);
        }
        return "INSERT INTO " + given + " (" + names + ") VALUES (" + marks + ')';
    });
    const StatementPtr empty =
        m_connection.generated(u">"_s, [&] { return "DELETE FROM " + given; });
    m_connection.begin();
    try {
        oneByOne(*give, rows, 0);
        const int touched = m_connection.write(statement, m_connection.newArguments());
        m_connection.write(*empty, m_connection.newArguments());
        m_connection.commit();
        return Touched(touched);
    } catch (...) {
        m_connection.rollback();
        throw;
    }
}

Touched ManyRows::insert(const Values& given) {
    if (given.empty() || m_columns.empty())
        return Touched(0);
    const Values rows = stored(given);
    const Dialect& dialect = m_connection.dialect();
    const Column* key = m_table.key();
    const bool counts = key != nullptr && key->type == ColumnType::Counter;
    const bool together = goAtOnce(rows);
    const StatementPtr statement = m_connection.generated(keyOf(together ? u'+' : u'*', 0), [&] {
        QByteArray names, marks, places;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const char* comma = i == 0 ? "" : ", ";
            names += comma + dialect.quoted(m_columns[i]->name);
            marks += comma + dialect.parameter(static_cast<int>(i) + 1);
            places += comma + place(i);
        }
        const QByteArray into = "INSERT INTO " + dialect.quoted(m_table.name) + " (" + names + ") ";
        if (!together)
            return into + "VALUES (" + marks + ')';
        if (!dialect.isPostgres())
            return into + "SELECT " + places + " FROM temp." + givenTable + " ORDER BY rowid";
        return into + "SELECT " + places + " FROM " + unnested() + " ORDER BY n" +
               (counts ? dialect.returning(key->name) : QByteArray());
    });
    statement->givesCounter = counts;
    if (!dialect.isPostgres())
        return together ? atOnce(*statement, rows) : oneByOne(*statement, rows, 0);
    const Touched touched = m_connection.write(*statement, arrays(rows));
    if (counts && std::find(m_columns.begin(), m_columns.end(), key) != m_columns.end()) {
        const StatementPtr catchUp = m_connection.generated(
            u"#"_s + m_table.name, [&] { return Dialect::catchUp(m_table.name, key->name); });
        m_connection.write(*catchUp, m_connection.newArguments());
    }
    return touched;
}

Touched ManyRows::update(const Values& given, int keys) {
    const auto first = static_cast<std::size_t>(keys);
    if (given.empty() || m_columns.size() <= first)
        return Touched(0);
    const Values rows = stored(given);
    const Dialect& dialect = m_connection.dialect();
    const QByteArray table = dialect.quoted(m_table.name);
    const bool server = dialect.isPostgres(), together = goAtOnce(rows);
    const StatementPtr statement = m_connection.generated(keyOf(together ? u'=' : u'-', keys), [&] {
        QByteArray set, where;
        int number = 0;
        const auto value = [&](std::size_t column) {
            return together ? "given." + place(column) : dialect.parameter(++number);
        };
        for (std::size_t i = first; i < m_columns.size(); ++i)
            set += (i == first ? "" : ", ") + dialect.quoted(m_columns[i]->name) + " = " + value(i);
        for (std::size_t i = 0; i < first; ++i)
            where += (i == 0 ? "" : " AND ") + table + '.' + dialect.quoted(m_columns[i]->name) +
                     " = " + value(i);
        const QByteArray from =
            server ? unnested() : QByteArray("temp.") + givenTable + " AS given";
        return "UPDATE " + table + " SET " + set + (together ? " FROM " + from : QByteArray()) +
               " WHERE " + where;
    });
    if (server)
        return m_connection.write(*statement, arrays(rows));
    return together ? atOnce(*statement, rows) : oneByOne(*statement, rows, keys);
}

} // namespace jet
