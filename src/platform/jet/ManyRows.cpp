#include "platform/jet/ManyRows.h"

#include "platform/jet/Types.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

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

Touched ManyRows::insert(const Values& given) {
    if (given.empty() || m_columns.empty())
        return Touched(0);
    const Values rows = stored(given);
    const Dialect& dialect = m_connection.dialect();
    const Column* key = m_table.key();
    const bool counts = key != nullptr && key->type == ColumnType::Counter;
    const StatementPtr statement = m_connection.generated(keyOf(u'+', 0), [&] {
        QByteArray names, marks, places;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const char* comma = i == 0 ? "" : ", ";
            names += comma + dialect.quoted(m_columns[i]->name);
            marks += comma + dialect.parameter(static_cast<int>(i) + 1);
            places += comma + place(i);
        }
        const QByteArray into = "INSERT INTO " + dialect.quoted(m_table.name) + " (" + names + ") ";
        if (!dialect.isPostgres())
            return into + "VALUES (" + marks + ')';
        return into + "SELECT " + places + " FROM " + unnested() + " ORDER BY n" +
               (counts ? dialect.returning(key->name) : QByteArray());
    });
    statement->givesCounter = counts;
    if (!dialect.isPostgres())
        return oneByOne(*statement, rows, 0);
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
    const bool server = dialect.isPostgres();
    const StatementPtr statement = m_connection.generated(keyOf(u'=', keys), [&] {
        QByteArray set, where;
        int number = 0;
        for (std::size_t i = first; i < m_columns.size(); ++i)
            set += (i == first ? "" : ", ") + dialect.quoted(m_columns[i]->name) + " = " +
                   (server ? place(i) : dialect.parameter(++number));
        for (std::size_t i = 0; i < first; ++i)
            where += (i == 0 ? "" : " AND ") + table + '.' + dialect.quoted(m_columns[i]->name) +
                     " = " + (server ? place(i) : dialect.parameter(++number));
        return "UPDATE " + table + " SET " + set + (server ? " FROM " + unnested() : QByteArray()) +
               " WHERE " + where;
    });
    return server ? m_connection.write(*statement, arrays(rows)) : oneByOne(*statement, rows, keys);
}

} // namespace jet
