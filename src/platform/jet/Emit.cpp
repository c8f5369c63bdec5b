#include "platform/jet/Emit.h"

#include "platform/jet/Parser.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace jet {

using Node = Expression::Node;

bool isText(Type type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

bool isWhole(Type type) {
    return type == ColumnType::Counter || type == ColumnType::Long || type == ColumnType::Integer;
}

bool isNumber(Type type) {
    return isWhole(type) || type == ColumnType::Double || type == ColumnType::Currency ||
           type == ColumnType::YesNo;
}

Emitter::Emitter(const Normalized& statement, const Schema& schema, const Dialect& dialect)
    : m_statement(statement), m_schema(schema), m_dialect(dialect),
      m_postgres(dialect.isPostgres()) {
    const std::size_t count = statement.literals.size();
    m_parameters.resize(count);
    m_parameterTypes.resize(count);
    m_used.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        m_parameters[i].literal = static_cast<int>(i);
}

QByteArray Emitter::columnSql(const Resolved& resolved) const {
    return quoted(resolved.source->name) + '.' + quoted(resolved.column->name);
}

/// A name that several tables have is the first one's, as the joins that use such names make them
/// equal.
Resolved Emitter::find(const Scope& scope, const QString& qualifier, const QString& name) const {
    for (const Scope* level = &scope; level != nullptr; level = level->parent) {
        for (const ScopeSource& source : level->sources) {
            if (!qualifier.isEmpty() && source.name.compare(qualifier, Qt::CaseInsensitive) != 0)
                continue;
            for (const ScopeSource::Column& column : source.columns)
                if (column.name.compare(name, Qt::CaseInsensitive) == 0)
                    return {&source, &column};
        }
    }
    return {};
}

Resolved Emitter::resolve(const Scope& scope, const Expression& column) {
    const Resolved resolved = find(scope, column.qualifier, column.name);
    if (!resolved)
        m_unknown.insert((column.qualifier + u'.' + column.name).toLower());
    return resolved;
}

void Emitter::checkNames() const {
    if (!m_unknown.isEmpty())
        throw Error(errors::tooFewParameters,
                    u"Too few parameters. Expected %1."_s.arg(m_unknown.size()));
}

const Table& Emitter::tableNamed(const QString& name) const {
    const Table* table = m_schema.table(name);
    if (table == nullptr)
        throw noSuchTableError(name);
    return *table;
}

ScopeSource Emitter::sourceOf(const Table& table, const QString& alias) const {
    ScopeSource source;
    source.name = alias.isEmpty() ? table.name : alias;
    source.table = &table;
    source.columns.reserve(table.columns.size());
    for (const Column& column : table.columns) {
        const bool nullable = !column.primaryKey && column.type != ColumnType::Counter &&
                              column.type != ColumnType::YesNo;
        source.columns.push_back({column.name, column.type, nullable});
    }
    return source;
}

QByteArray Emitter::keyColumn(const Table& table, QString* name) const {
    const Column* key = table.key();
    QString column = u"rowid"_s;
    if (key != nullptr)
        column = key->name;
    else if (m_postgres)
        column = QString::fromUtf16(hiddenIdentity);
    if (name != nullptr)
        *name = column;
    return quoted(column);
}

QByteArray Emitter::parameter(int literal, Conversion conversion, const char* postgresType) {
    auto place = static_cast<std::size_t>(literal);
    if (literal < 0 || (m_used[place] && (m_parameters[place].conversion != conversion ||
                                          m_parameterTypes[place] != postgresType))) {
        // The same literal in another role: one more parameter, or the one made for it before.
        place = m_statement.literals.size();
        while (place < m_parameters.size() && (m_parameters[place].literal != literal ||
                                               m_parameters[place].conversion != conversion ||
                                               m_parameterTypes[place] != postgresType))
            ++place;
        if (place == m_parameters.size()) {
            m_parameters.push_back({literal, conversion});
            m_parameterTypes.emplace_back();
            m_used.push_back(false);
        }
    }
    m_parameters[place].conversion = conversion;
    m_parameterTypes[place] = postgresType;
    m_used[place] = true;
    const QByteArray number = QByteArray::number(static_cast<int>(place) + 1);
    return m_postgres ? '$' + number + "::" + postgresType : '?' + number;
}

QByteArray Emitter::special(int which) {
    return parameter(which, Conversion::AsIs, "timestamp");
}

QByteArray Emitter::moment(const QDateTime& value) const {
    const QByteArray text = '\'' + value.toString(u"yyyy-MM-dd HH:mm:ss"_s).toLatin1() + '\'';
    return m_postgres ? text + "::timestamp" : text;
}

QByteArray Emitter::inlined(const Value& value, LiteralKind kind, Conversion conversion,
                            const char* postgresType) const {
    const auto mismatch = [] {
        return Error(errors::typeMismatch, u"Data type mismatch in criteria expression."_s);
    };
    switch (conversion) {
    case Conversion::ToDate: {
        const auto date =
            kind == LiteralKind::Text ? momentFromText(value.toText()) : value.toDateTime();
        if (!date)
            throw mismatch();
        return moment(*date);
    }
    case Conversion::ToYesNo:
        return value.toBool() ? "1" : "0";
    case Conversion::ToWhole:
        return QByteArray::number(value.toLong());
    case Conversion::ToMoney:
        return value.toCurrency().toText().toLatin1();
    case Conversion::ToReal:
        return values::numberText(value.toDouble()).toLatin1();
    case Conversion::AsIs:
    case Conversion::ToText:
    case Conversion::ToSpellings:
    case Conversion::ToLowered:
    case Conversion::ToFolded:
    case Conversion::ToPattern:
        break;
    }
    if (kind == LiteralKind::Date && conversion == Conversion::AsIs)
        return moment(value.toDateTime().value());
    QString text = value.toText();
    if (kind != LiteralKind::Text && conversion == Conversion::AsIs)
        return text.toLatin1();
    if (conversion == Conversion::ToPattern) {
        QString pattern;
        for (const QChar c : text) {
            if (c == u'%' || c == u'_' || c == u'\\')
                pattern += u'\\';
            pattern += c == u'*' ? u'%' : c == u'?' ? u'_' : c;
        }
        text = pattern;
    } else if (conversion == Conversion::ToLowered) {
        text = values::lowered(text);
    } else if (conversion == Conversion::ToFolded) {
        text = values::folded(text);
    }
    const QByteArray sql = '\'' + text.replace(u'\'', u"''"_s).toUtf8() + '\'';
    return m_postgres ? sql + "::" + postgresType : sql;
}

/// A literal as the column that it meets wants it: compared with it, or stored in it.
QByteArray Emitter::literal(const Expression& expression, Type target, Use use) {
    Conversion conversion = Conversion::AsIs;
    const char* type = "citext";
    const bool assign = use == Use::Assign;
    switch (expression.kind) {
    case LiteralKind::Text:
        break;
    case LiteralKind::Integer:
        type = "integer";
        break;
    case LiteralKind::Double:
        type = "double precision";
        break;
    case LiteralKind::Date:
        type = "timestamp";
        break;
    }
    if (target && !(expression.kind == LiteralKind::Date && isNumber(target))) {
        switch (*target) {
        case ColumnType::Text:
        case ColumnType::Memo:
            if (expression.kind != LiteralKind::Text)
                conversion = Conversion::ToText;
            type = "citext";
            break;
        case ColumnType::DateTime:
            if (expression.kind != LiteralKind::Date)
                conversion = Conversion::ToDate;
            type = "timestamp";
            break;
        case ColumnType::Counter:
        case ColumnType::Long:
        case ColumnType::Integer:
            // Compared with a fraction a whole column keeps its own value.
            if (expression.kind != LiteralKind::Integer) {
                conversion = assign ? Conversion::ToWhole : Conversion::ToReal;
                type = assign ? "integer" : "double precision";
            }
            break;
        case ColumnType::Double:
            conversion = Conversion::ToReal;
            type = "double precision";
            break;
        case ColumnType::Currency:
            conversion = Conversion::ToMoney;
            type = "numeric";
            break;
        case ColumnType::YesNo:
            conversion = Conversion::ToYesNo;
            type = "smallint";
            break;
        }
    }
    if (expression.literal < 0)
        return inlined(expression.value, expression.kind, conversion, type);
    return parameter(expression.literal, conversion, type);
}

QByteArray Emitter::unusedParameters(const QByteArray& sql) const {
    QByteArray extra;
    if (!m_postgres)
        return extra;
    for (std::size_t i = 0; i < m_parameters.size(); ++i) {
        const QByteArray text =
            '$' + QByteArray::number(static_cast<int>(i) + 1) + "::" + m_parameterTypes[i];
        if (m_used[i] && !sql.contains(text))
            extra += ", " + text;
    }
    return extra;
}

namespace {

/// DISTINCT, or a UNION that isn't of all rows.
bool dropsRepeated(const Query& query) {
    return query.selects.size() == 1
               ? query.selects.front().distinct
               : std::find(query.all.begin(), query.all.end(), false) != query.all.end();
}

} // namespace

Translation Emitter::emit(const Statement& statement) {
    Translation result;
    switch (statement.kind) {
    case Statement::Kind::Select: {
        result.kind = StatementKind::Select;
        result.sql = query(statement.query, nullptr, &result.columns);
        checkNames();
        const Select& first = statement.query.selects.front();
        if (!first.from.empty()) {
            const Source* leading = &first.from.front();
            while (leading->left)
                leading = leading->left.get();
            if (const Table* table = m_schema.table(leading->name))
                result.table = table->name;
        }
        result.sorted = m_sorted;
        result.dropsRepeated =
            !m_postgres && dropsRepeated(statement.query) &&
            std::any_of(result.columns.begin(), result.columns.end(),
                        [](const ResultColumn& column) { return isText(column.type); });
        if (statement.query.selects.size() == 1) {
            const SelectParts parts = select(first, nullptr);
            result.dynaset = plan(statement.query, parts);
            result.existsSql = exists(parts);
        }
        if (result.existsSql.isEmpty())
            result.existsSql = "SELECT EXISTS (" + result.sql + ')';
        break;
    }
    case Statement::Kind::Insert:
        result.kind = StatementKind::Insert;
        insert(statement, result);
        break;
    case Statement::Kind::Update:
        result.kind = StatementKind::Update;
        update(statement, result);
        break;
    case Statement::Kind::Delete:
        result.kind = StatementKind::Delete;
        remove(statement, result);
        break;
    }
    checkNames();
    result.parameters = m_parameters;
    return result;
}

Translation Emitter::emitFind(const Statement& statement, const Expression& criterion) {
    const auto notKeyed = [] {
        return Error(errors::notUpdatable, u"Operation is not supported for this type "
                                           "of object."_s);
    };
    if (statement.kind != Statement::Kind::Select || statement.query.selects.size() != 1)
        throw notKeyed();
    const SelectParts parts = select(statement.query.selects.front(), nullptr);
    const auto dynaset = plan(statement.query, parts);
    if (!dynaset)
        throw notKeyed();
    const ScopeSource& base = parts.scope.sources.front();
    const QByteArray key = quoted(base.name) + '.' + keyColumn(*base.table);
    const QByteArray order = statement.query.orderBy.empty()
                                 ? naturalOrder(parts)
                                 : orderBy(statement.query, parts, true);
    m_criteriaColumns = &parts;
    const QByteArray extra = condition(criterion, parts.scope);
    m_criteriaColumns = nullptr;
    checkNames();

    Translation result;
    result.kind = StatementKind::Select;
    result.table = dynaset->table;
    ResultColumn column;
    column.name = dynaset->keyColumn;
    column.table = base.name;
    column.type = base.table->key() != nullptr ? base.table->key()->type : ColumnType::Long;
    result.columns.push_back(column);
    if (parts.top >= 0) {
        // TOP takes its rows before the criterion is tested.
        const QByteArray taken = key + " IN (" + joined(parts, key, order) + ')';
        SelectParts whole = parts;
        whole.top = -1;
        result.sql = joined(whole, key, order, taken + " AND " + extra);
        result.sql =
            joined(whole, key, order, taken + " AND " + extra, unusedParameters(result.sql));
    } else {
        result.sql = joined(parts, key, order, extra);
        result.sql = joined(parts, key, order, extra, unusedParameters(result.sql));
    }
    result.parameters = m_parameters;
    return result;
}

Translation translateDefinition(const Normalized& statement, const Schema& schema,
                                const Dialect& dialect);

Translation translate(const Normalized& statement, const Schema& schema, const Dialect& dialect) {
    for (const char16_t* word : {u"create ", u"alter ", u"drop "})
        if (statement.key.startsWith(QStringView(word), Qt::CaseInsensitive))
            return translateDefinition(statement, schema, dialect);
    const Normalized written = asWritten(statement);
    const Statement tree = Parser(written).statement();
    return Emitter(written, schema, dialect).emit(tree);
}

namespace {

void shiftLiterals(Expression& expression, int by) {
    if (expression.literal >= 0)
        expression.literal += by;
    for (const ExpressionPtr& child : expression.children)
        shiftLiterals(*child, by);
}

} // namespace

Translation translateFind(const Normalized& select, const Normalized& criteria,
                          const Schema& schema, const Dialect& dialect) {
    Normalized both = asWritten(select);
    const Normalized criteriaWritten = asWritten(criteria);
    const Statement statement = Parser(both).statement();
    const ExpressionPtr criterion = Parser(criteriaWritten).criterion();
    shiftLiterals(*criterion, static_cast<int>(both.literals.size()));
    both.literals.insert(both.literals.end(), criteria.literals.begin(), criteria.literals.end());
    return Emitter(both, schema, dialect).emitFind(statement, *criterion);
}

} // namespace jet
