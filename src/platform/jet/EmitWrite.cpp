#include "platform/jet/Emit.h"
#include "platform/values/Literals.h"

namespace jet {

using Node = Expression::Node;

namespace {

bool isSingleTable(const std::vector<Source>& from) {
    return from.size() == 1 && from.front().kind == Source::Kind::Table;
}

} // namespace

void Emitter::insert(const Statement& statement, Translation& result) {
    const Table& table = tableNamed(statement.table);
    result.table = table.name;

    const bool fromSelect = statement.values.empty();
    QStringList names = statement.columns;
    if (!statement.hasColumns) {
        if (fromSelect) {
            // Matched by the names of the select's columns, wherever they stand.
            for (const ResultColumn& column : columnsOf(statement.query, nullptr))
                names << column.name;
        } else {
            for (const Column& column : table.columns)
                names << column.name;
        }
    }
    checkNames();
    std::vector<const Column*> targets;
    QByteArray list;
    for (const QString& name : names) {
        const Column* column = table.column(name);
        if (column == nullptr)
            throw unknownFieldError(name);
        targets.push_back(column);
        list += (list.isEmpty() ? "" : ", ") + quoted(column->name);
    }
    result.sql = "INSERT INTO " + quoted(table.name) + " (" + list + ") ";
    if (m_postgres)
        for (const Column* column : targets)
            if (column->type == ColumnType::Counter)
                result.more.push_back(Dialect::catchUp(table.name, column->name));

    const auto differs = [] {
        return Error(errors::syntax, u"Number of query values and destination fields "
                                     "are not the same."_s);
    };
    if (fromSelect) {
        std::vector<ResultColumn> columns;
        const QByteArray select = query(statement.query, nullptr, &columns, &targets);
        if (columns.size() != targets.size())
            throw differs();
        result.sql += select;
        return;
    }
    if (statement.values.size() != targets.size())
        throw differs();
    const Scope scope;
    QByteArray values;
    for (std::size_t i = 0; i < targets.size(); ++i)
        values += (i == 0 ? "" : ", ") + assigned(*statement.values[i], scope, *targets[i]);
    result.sql += "VALUES (" + values + ')';
}

void Emitter::update(const Statement& statement, Translation& result) {
    Scope scope;
    const QByteArray sources = from(statement.from, scope, nullptr);

    std::vector<const ScopeSource*> owners;
    std::vector<const Column*> columns;
    for (const Assignment& assignment : statement.assignments) {
        Expression column;
        column.node = Node::Column;
        column.qualifier = assignment.qualifier;
        column.name = assignment.column;
        const Resolved resolved = resolve(scope, column);
        checkNames();
        if (resolved.source->table == nullptr)
            throw Error(errors::notUpdatable, u"Operation must use an updatable query."_s);
        owners.push_back(resolved.source);
        columns.push_back(resolved.source->table->column(resolved.column->name));
    }
    const ScopeSource& base = *owners.front();
    for (const ScopeSource* owner : owners)
        if (owner != &base)
            throw Error(errors::notUpdatable, u"Operation must use an updatable query."_s);
    result.table = base.table->name;
    const QByteArray tableSql = quoted(base.table->name);

    QByteArray set;
    if (isSingleTable(statement.from)) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            set += (i == 0 ? "" : ", ") + quoted(columns[i]->name) + " = " +
                   assigned(*statement.assignments[i].value, scope, *columns[i]);
        result.sql = "UPDATE " + sources + " SET " + set;
        if (statement.where)
            result.sql += " WHERE " + condition(*statement.where, scope);
        return;
    }

    // Over a join: the rows and their new values are selected first.
    const QByteArray key = keyColumn(*base.table);
    QByteArray list = quoted(base.name) + '.' + key + " AS \"changed_key\"";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QByteArray name = "\"new_" + QByteArray::number(static_cast<int>(i)) + '"';
        list +=
            ", " + assigned(*statement.assignments[i].value, scope, *columns[i]) + " AS " + name;
        set += (i == 0 ? "" : ", ") + quoted(columns[i]->name) + " = \"changed\"." + name;
    }
    result.sql =
        "UPDATE " + tableSql + " SET " + set + " FROM (SELECT " + list + " FROM " + sources;
    if (statement.where)
        result.sql += " WHERE " + condition(*statement.where, scope);
    result.sql +=
        ") AS \"changed\" WHERE " + tableSql + '.' + key + " = \"changed\".\"changed_key\"";
}

void Emitter::remove(const Statement& statement, Translation& result) {
    Scope scope;
    const QByteArray sources = from(statement.from, scope, nullptr);
    const ScopeSource* base = &scope.sources.front();
    if (!statement.table.isEmpty()) {
        base = nullptr;
        for (const ScopeSource& source : scope.sources)
            if (source.name.compare(statement.table, Qt::CaseInsensitive) == 0)
                base = &source;
    } else if (!isSingleTable(statement.from)) {
        throw Error(errors::syntax,
                    u"Specify the table containing the records you want to delete."_s);
    }
    if (base == nullptr || base->table == nullptr)
        throw Error(errors::notUpdatable, u"Could not delete from specified tables."_s);
    result.table = base->table->name;
    const QByteArray where =
        statement.where ? " WHERE " + condition(*statement.where, scope) : QByteArray();
    if (isSingleTable(statement.from)) {
        result.sql = "DELETE FROM " + sources + where;
        return;
    }
    const QByteArray key = keyColumn(*base->table);
    result.sql = "DELETE FROM " + quoted(base->table->name) + " WHERE " + key + " IN (SELECT " +
                 quoted(base->name) + '.' + key + " FROM " + sources + where + ')';
}

} // namespace jet
