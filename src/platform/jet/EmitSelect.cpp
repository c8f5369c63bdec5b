#include "platform/jet/Emit.h"
#include "platform/values/Literals.h"

namespace jet {

using Node = Expression::Node;

bool Emitter::hasAggregate(const Expression& expression) {
    if (expression.is(Node::Call) && isAggregate(expression.name))
        return true;
    return std::any_of(expression.children.begin(), expression.children.end(),
                       [](const ExpressionPtr& child) { return hasAggregate(*child); });
}

/// Makes the tables of a source known, in the order in which they stand.
void Emitter::declare(const Source& source, Scope& scope, const Scope* parent) {
    if (source.left) {
        declare(*source.left, scope, parent);
        declare(*source.right, scope, parent);
    } else if (source.kind == Source::Kind::Derived) {
        ScopeSource derived;
        derived.name =
            source.alias.isEmpty() ? u"query%1"_s.arg(scope.sources.size() + 1) : source.alias;
        const SelectParts parts = select(source.query->selects.front(), parent);
        for (const ResultColumn& column : parts.columns)
            derived.columns.push_back({column.name, column.type, true});
        scope.sources.push_back(std::move(derived));
    } else {
        scope.sources.push_back(sourceOf(tableNamed(source.name), source.alias));
    }
}

QByteArray Emitter::source(const Source& source, Scope& scope, const Scope* parent) {
    switch (source.kind) {
    case Source::Kind::Table: {
        const Table& table = tableNamed(source.name);
        const QByteArray name = quoted(table.name);
        return source.alias.isEmpty() ? name : name + " AS " + quoted(source.alias);
    }
    case Source::Kind::Derived: {
        // Which of the scope's sources this is: the one of its name.
        QString name = source.alias;
        if (name.isEmpty())
            for (const ScopeSource& candidate : scope.sources)
                if (candidate.table == nullptr && candidate.name.startsWith(u"query"))
                    name = candidate.name;
        return '(' + query(*source.query, parent) + ") AS " + quoted(name);
    }
    default:
        break;
    }
    const QByteArray left = this->source(*source.left, scope, parent);
    QByteArray right = this->source(*source.right, scope, parent);
    if (source.right->left)
        right = '(' + right + ')';
    if (source.kind == Source::Kind::Right && !source.left->left)
        // The other way round: only a left join is planned as an inner one where the condition
        // leaves out the rows without a partner.
        return right + " LEFT JOIN " + left + " ON " + condition(*source.on, scope);
    const char* word = source.kind == Source::Kind::Inner  ? " INNER JOIN "
                       : source.kind == Source::Kind::Left ? " LEFT JOIN "
                                                           : " RIGHT JOIN ";
    return left + word + right + " ON " + condition(*source.on, scope);
}

QByteArray Emitter::from(const std::vector<Source>& sources, Scope& scope, const Scope* parent) {
    scope.parent = parent;
    for (const Source& source : sources)
        declare(source, scope, parent);
    QByteArray sql;
    for (const Source& source : sources) {
        if (!sql.isEmpty())
            sql += ", ";
        sql += this->source(source, scope, parent);
    }
    return sql;
}

void Emitter::addStar(SelectParts& parts, const ScopeSource& source) {
    for (const ScopeSource::Column& column : source.columns) {
        parts.list << columnSql({&source, &column});
        parts.columns.push_back({column.name, source.name, column.type});
        parts.expressions.push_back(nullptr);
    }
}

SelectParts Emitter::select(const Select& select, const Scope* parent,
                            const std::vector<const Column*>* targets) {
    SelectParts parts;
    parts.distinct = select.distinct;
    parts.top = select.top;
    parts.from = from(select.from, parts.scope, parent);
    parts.aggregated = !select.groupBy.empty() || select.having != nullptr;
    int unnamed = 1000;
    for (const Item& item : select.items) {
        if (item.star) {
            bool found = false;
            for (const ScopeSource& source : parts.scope.sources) {
                if (!item.starOf.isEmpty() &&
                    source.name.compare(item.starOf, Qt::CaseInsensitive) != 0)
                    continue;
                addStar(parts, source);
                found = true;
            }
            if (!found)
                m_unknown.insert(item.starOf.toLower() + u".*"_s);
            continue;
        }
        const Expression& expression = *item.expression;
        const std::size_t place = parts.columns.size();
        ResultColumn column;
        column.type = typeOf(expression, parts.scope);
        QByteArray sql;
        if (targets != nullptr && place < targets->size() && (*targets)[place] != nullptr)
            sql = assigned(expression, parts.scope, *(*targets)[place]);
        else
            sql = value(expression, parts.scope);
        if (expression.is(Node::Column)) {
            if (const Resolved resolved =
                    find(parts.scope, expression.qualifier, expression.name)) {
                column.name = resolved.column->name;
                column.table = resolved.source->name;
            }
        } else {
            if (!m_postgres && isText(column.type) && targets == nullptr)
                sql = '(' + sql + ") COLLATE NOCASE";
            column.name = item.alias.isEmpty() ? u"Expr%1"_s.arg(unnamed++) : QString();
        }
        if (!item.alias.isEmpty())
            column.name = item.alias;
        if (!expression.is(Node::Column) || !item.alias.isEmpty())
            sql += " AS " + quoted(column.name);
        parts.list << sql;
        parts.columns.push_back(column);
        parts.expressions.push_back(&expression);
        parts.aggregated = parts.aggregated || hasAggregate(expression);
    }
    if (select.where)
        parts.where = condition(*select.where, parts.scope);
    for (const ExpressionPtr& group : select.groupBy) {
        if (!parts.groupBy.isEmpty())
            parts.groupBy += ", ";
        const QByteArray sql = value(*group, parts.scope);
        parts.groupBy += !m_postgres && isText(typeOf(*group, parts.scope)) ? lowered(sql) : sql;
    }
    if (select.having)
        parts.having = condition(*select.having, parts.scope);
    return parts;
}

QByteArray Emitter::joined(const SelectParts& parts, const QByteArray& list,
                           const QByteArray& orderBy, const QByteArray& extraCondition,
                           const QByteArray& extraColumns) {
    QByteArray sql = parts.distinct ? "SELECT DISTINCT " : "SELECT ";
    sql += list + extraColumns;
    if (!parts.from.isEmpty())
        sql += " FROM " + parts.from;
    if (!extraCondition.isEmpty())
        sql += " WHERE " + (parts.where.isEmpty() ? QByteArray() : '(' + parts.where + ") AND ") +
               '(' + extraCondition + ')';
    else if (!parts.where.isEmpty())
        sql += " WHERE " + parts.where;
    if (!parts.groupBy.isEmpty())
        sql += " GROUP BY " + parts.groupBy;
    if (!parts.having.isEmpty())
        sql += " HAVING " + parts.having;
    if (!orderBy.isEmpty())
        sql += " ORDER BY " + orderBy;
    if (parts.top >= 0)
        sql += " LIMIT " + QByteArray::number(parts.top);
    return sql;
}

/// Which column of the select list an ORDER BY means and must be named by its number: an alias, any
/// column of a union, any shown one of a DISTINCT. -1 for none.
int Emitter::placeOf(const Expression& order, const SelectParts& parts, bool compound) const {
    const Resolved resolved = find(parts.scope, order.qualifier, order.name);
    for (std::size_t i = 0; i < parts.columns.size(); ++i) {
        const bool sameName = parts.columns[i].name.compare(order.name, Qt::CaseInsensitive) == 0;
        const Expression* item = parts.expressions[i];
        bool shown = false; // it is this very column
        if (item == nullptr) {
            shown = resolved && parts.list[static_cast<qsizetype>(i)] == columnSql(resolved);
        } else if (item->is(Node::Column)) {
            shown = resolved &&
                    find(parts.scope, item->qualifier, item->name).column == resolved.column;
        }
        const bool alias = item != nullptr && order.qualifier.isEmpty() && sameName && !shown;
        if (compound ? sameName : alias || (parts.distinct && shown))
            return static_cast<int>(i);
    }
    return -1;
}

/// The order of the rows, Nulls first. Columns of the select list are named by their number where
/// the engine asks for it; `expanded` writes them out, for a text that has other columns.
QByteArray Emitter::orderBy(const Query& query, const SelectParts& parts, bool expanded) {
    QByteArray sql;
    const bool compound = query.selects.size() > 1;
    for (const Order& order : query.orderBy) {
        const Expression& expression = *order.expression;
        QByteArray term;
        bool nullable = true;
        int place = -1;
        if (expression.is(Node::Literal) && expression.literal < 0 &&
            expression.kind == LiteralKind::Integer) {
            place = static_cast<int>(expression.value.toLong()) - 1;
            if (place < 0 || place >= static_cast<int>(parts.columns.size()))
                throw Error(errors::syntax,
                            u"The ORDER BY position number %1 is out of range of the "
                            "number of items in the select list."_s.arg(place + 1));
        } else if (expression.is(Node::Column)) {
            const Resolved resolved = find(parts.scope, expression.qualifier, expression.name);
            place = placeOf(expression, parts, compound);
            if (resolved && !compound)
                nullable =
                    resolved.column->nullable || resolved.source != &parts.scope.sources.front();
        }
        if (place >= 0 && expanded) {
            const Expression* item = parts.expressions[static_cast<std::size_t>(place)];
            term = item != nullptr ? value(*item, parts.scope) : parts.list[place];
            const Type type = parts.columns[static_cast<std::size_t>(place)].type;
            if (!m_postgres && item != nullptr && !item->is(Node::Column) && isText(type))
                term = '(' + term + ") COLLATE NOCASE";
        } else if (place >= 0) {
            term = QByteArray::number(place + 1);
        } else {
            term = value(expression, parts.scope);
            if (!m_postgres && !expression.is(Node::Column) &&
                isText(typeOf(expression, parts.scope)))
                term = '(' + term + ") COLLATE NOCASE";
        }
        const Type type = place >= 0 ? parts.columns[static_cast<std::size_t>(place)].type
                                     : typeOf(expression, parts.scope);
        if (parts.top >= 0 && isText(type) && !compound && !parts.distinct) {
            // The first rows have to be the right ones.
            const Expression* item =
                place >= 0 ? parts.expressions[static_cast<std::size_t>(place)] : &expression;
            term = sortedText(item != nullptr ? value(*item, parts.scope) : parts.list[place],
                              order.descending, nullable);
        } else {
            if (order.descending)
                term += " DESC";
            if (m_postgres && nullable)
                term += order.descending ? " NULLS LAST" : " NULLS FIRST";
        }
        sql += sql.isEmpty() ? term : ", " + term;
    }
    return sql;
}

/// The order of a select of one table that names none: its key, so that a list doesn't change its
/// order when a row was edited.
QByteArray Emitter::naturalOrder(const SelectParts& parts) const {
    if (parts.distinct || parts.aggregated || parts.scope.sources.size() != 1 ||
        parts.scope.sources.front().table == nullptr)
        return {};
    const ScopeSource& source = parts.scope.sources.front();
    return quoted(source.name) + '.' + keyColumn(*source.table);
}

QByteArray Emitter::query(const Query& query, const Scope* parent,
                          std::vector<ResultColumn>* columns,
                          const std::vector<const Column*>* targets) {
    QByteArray sql;
    SelectParts first;
    for (std::size_t i = 0; i < query.selects.size(); ++i) {
        SelectParts parts = select(query.selects[i], parent, targets);
        if (i == 0 && query.selects.size() == 1) {
            const bool outermost = parent == nullptr && columns != nullptr && targets == nullptr;
            const QByteArray order = query.orderBy.empty() && (outermost || parts.top >= 0)
                                         ? naturalOrder(parts)
                                         : orderBy(query, parts, false);
            QByteArrayList list = parts.list;
            if (outermost)
                m_sorted = sortTerms(query, parts, &list, nullptr);
            sql = joined(parts, list.join(", "), order);
        } else {
            QByteArray part = joined(parts, parts.list.join(", "),
                                     parts.top >= 0 ? naturalOrder(parts) : QByteArray());
            if (parts.top >= 0)
                part = "SELECT * FROM (" + part + ") AS part" +
                       QByteArray::number(static_cast<int>(i));
            if (i > 0) {
                if (parts.columns.size() != first.columns.size())
                    throw Error(errors::syntax,
                                u"The number of columns in the two selected tables or "
                                "queries of a union query do not match."_s);
                sql += query.all[i - 1] ? " UNION ALL " : " UNION ";
            }
            sql += part;
        }
        if (i == 0)
            first = std::move(parts);
    }
    if (query.selects.size() > 1 && !query.orderBy.empty())
        sql += " ORDER BY " + orderBy(query, first, false);
    if (query.selects.size() > 1 && parent == nullptr && columns != nullptr && targets == nullptr)
        m_sorted = sortTerms(query, first, nullptr, nullptr);
    if (columns != nullptr)
        *columns = first.columns;
    return sql;
}

/// The columns of a query, without leaving a trace of having read it.
std::vector<ResultColumn> Emitter::columnsOf(const Query& query, const Scope* parent) {
    const auto parameters = m_parameters;
    const auto types = m_parameterTypes;
    const auto used = m_used;
    const SelectParts parts = select(query.selects.front(), parent);
    m_parameters = parameters;
    m_parameterTypes = types;
    m_used = used;
    return parts.columns;
}

/// Whether a select has rows, without its columns and order; empty where they matter for that.
QByteArray Emitter::exists(const SelectParts& parts) const {
    if (parts.aggregated || parts.from.isEmpty())
        return {};
    SelectParts any = parts;
    any.distinct = false;
    const QByteArray unused = unusedParameters(joined(any, "1", {}));
    return "SELECT EXISTS (" + joined(any, "1", {}, {}, unused) + ')';
}

std::optional<DynasetPlan> Emitter::plan(const Query& query, const SelectParts& parts) {
    if (query.selects.size() != 1 || parts.distinct || parts.aggregated ||
        parts.scope.sources.empty())
        return std::nullopt;
    const ScopeSource& base = parts.scope.sources.front();
    const std::vector<Source>& from = query.selects.front().from;
    if (base.table == nullptr)
        return std::nullopt;
    // Behind a right join the base row may be missing.
    for (const Source* source = &from.front(); source != nullptr; source = source->left.get())
        if (source->kind == Source::Kind::Right)
            return std::nullopt;

    DynasetPlan plan;
    plan.table = base.table->name;
    const QByteArray key = quoted(base.name) + '.' + keyColumn(*base.table, &plan.keyColumn);
    plan.singleTable = parts.scope.sources.size() == 1;
    const QByteArray shownOrder =
        query.orderBy.empty() ? naturalOrder(parts) : orderBy(query, parts, false);
    QByteArrayList behindKey{key}, terms;
    sortTerms(query, parts, &behindKey, &terms);
    const QByteArray whole =
        joined(parts, parts.list.join(", "), shownOrder, {}, ", " + behindKey.join(", "));
    if (!plan.singleTable) {
        plan.keysSql = whole;
        return plan;
    }
    plan.keyedSql = whole;
    const QByteArray order =
        query.orderBy.empty() ? naturalOrder(parts) : orderBy(query, parts, true);
    terms.prepend(key);
    const QByteArray keyed = terms.join(", ");
    plan.keysSql = joined(parts, keyed, order, {}, unusedParameters(joined(parts, keyed, order)));

    SelectParts row = parts;
    row.where.clear();
    row.top = -1;
    const QByteArray list = parts.list.join(", ");
    const QByteArray number = QByteArray::number(static_cast<int>(m_parameters.size()) + 1);
    const Column* keyOf = base.table->key();
    const ColumnType keyType = keyOf != nullptr ? keyOf->type : ColumnType::Long;
    QByteArray test = key + " = ";
    test += m_postgres ? '$' + number + "::" + declaredType(keyType, 0, Dialect::postgres())
                       : '?' + number;
    row.where = test;
    plan.rowSql = joined(row, list, {}, {}, unusedParameters(joined(row, list, {})));

    plan.inKeyOrder = parts.top < 0 && keyOf != nullptr && order == key &&
                      (keyType == ColumnType::Counter || keyType == ColumnType::Long);
    if (plan.inKeyOrder) {
        const QByteArray bound = test.mid(key.size() + 3);
        const QByteArray extra = ", " + key;
        plan.upSql = joined(parts, list, key, key + " >= " + bound, extra);
        plan.downSql = joined(parts, list, key + " DESC", key + " <= " + bound, extra);
        plan.lastSql = joined(parts, list, key + " DESC", {}, extra);
        const auto counted = [&](const QByteArray& condition) {
            return joined(parts, "1", {}, condition,
                          unusedParameters(joined(parts, "1", {}, condition)));
        };
        plan.countedSql = counted({});
        plan.countedBelowSql = counted(key + " < " + bound);
    }
    return plan;
}

} // namespace jet
