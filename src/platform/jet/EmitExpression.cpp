#include "platform/jet/Emit.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

namespace jet {

using Node = Expression::Node;

namespace {

bool isConstant(const Expression& expression) {
    return expression.is(Node::Literal) || expression.is(Node::Null) ||
           expression.is(Node::Boolean) ||
           (expression.is(Node::Negate) && expression.children[0]->is(Node::Literal));
}

bool isCondition(const Expression& expression) {
    switch (expression.node) {
    case Node::Not:
    case Node::Comparison:
    case Node::And:
    case Node::Or:
    case Node::Between:
    case Node::In:
    case Node::Like:
    case Node::IsNull:
    case Node::Exists:
        return true;
    case Node::Call:
        return expression.name == u"isnull";
    default:
        return false;
    }
}

QByteArray operatorSql(Operator op) {
    switch (op) {
    case Operator::Add:
        return "+";
    case Operator::Subtract:
        return "-";
    case Operator::Multiply:
        return "*";
    case Operator::Divide:
    case Operator::IntegerDivide:
        return "/";
    case Operator::Modulo:
        return "%";
    case Operator::Power:
    case Operator::Concatenate:
        return {};
    case Operator::Equal:
        return "=";
    case Operator::NotEqual:
        return "<>";
    case Operator::Less:
        return "<";
    case Operator::LessOrEqual:
        return "<=";
    case Operator::Greater:
        return ">";
    case Operator::GreaterOrEqual:
        return ">=";
    }
    return {};
}

} // namespace

Type Emitter::typeOf(const Expression& expression, const Scope& scope) {
    switch (expression.node) {
    case Node::Column: {
        if (m_criteriaColumns != nullptr && expression.qualifier.isEmpty()) {
            for (std::size_t i = 0; i < m_criteriaColumns->columns.size(); ++i)
                if (m_criteriaColumns->columns[i].name.compare(expression.name,
                                                               Qt::CaseInsensitive) == 0)
                    return m_criteriaColumns->columns[i].type;
        }
        const Resolved resolved = resolve(scope, expression);
        return resolved ? resolved.column->type : Type();
    }
    case Node::Literal:
        switch (expression.kind) {
        case LiteralKind::Text:
            return ColumnType::Memo;
        case LiteralKind::Integer:
            return ColumnType::Long;
        case LiteralKind::Double:
            return ColumnType::Double;
        case LiteralKind::Date:
            return ColumnType::DateTime;
        }
        return {};
    case Node::Null:
        return {};
    case Node::Negate:
        return typeOf(*expression.children[0], scope);
    case Node::Scalar: {
        const auto columns = columnsOf(*expression.query, &scope);
        return columns.empty() ? Type() : columns.front().type;
    }
    case Node::Call:
        return typeOfCall(expression, scope);
    case Node::Arithmetic:
        break;
    default:
        return ColumnType::YesNo;
    }
    if (expression.op == Operator::Concatenate)
        return ColumnType::Memo;
    const Type left = typeOf(*expression.children[0], scope);
    const Type right = typeOf(*expression.children[1], scope);
    switch (expression.op) {
    case Operator::Add:
        if (isText(left) || isText(right))
            return ColumnType::Memo;
        if (left == ColumnType::DateTime || right == ColumnType::DateTime)
            return ColumnType::DateTime;
        break;
    case Operator::Subtract:
        if (left == ColumnType::DateTime)
            return right == ColumnType::DateTime ? ColumnType::Double : ColumnType::DateTime;
        break;
    case Operator::Divide:
    case Operator::Power:
        return ColumnType::Double;
    case Operator::IntegerDivide:
    case Operator::Modulo:
        return ColumnType::Long;
    default:
        break;
    }
    if (left == ColumnType::Double || right == ColumnType::Double || !left || !right ||
        isText(left) || isText(right))
        return ColumnType::Double;
    if (left == ColumnType::Currency || right == ColumnType::Currency)
        return ColumnType::Currency;
    return ColumnType::Long;
}

QByteArray Emitter::citext(const QByteArray& sql) const {
    return m_postgres ? '(' + sql + ")::citext" : sql;
}

/// Rounds to a number of decimals, ties to even. Neither engine does so by itself.
QByteArray Emitter::rounded(const QByteArray& sql, int decimals) const {
    if (decimals == 0 && m_postgres)
        return "round((" + sql + ")::double precision)::integer";
    const QByteArray scale = decimals == 0 ? "" : " * 10000";
    // Binary noise would hide a tie of money.
    const QByteArray x = decimals == 0 ? '(' + sql + ')'
                         : m_postgres  ? "round((" + sql + ")::numeric" + scale + ", 6)"
                                       : "round((" + sql + ")" + scale + ", 6)";
    const QByteArray fraction = m_postgres ? "abs(" + x + " - trunc(" + x + "))"
                                           : "abs(" + x + " - CAST(" + x + " AS INTEGER))";
    const QByteArray half = m_postgres ? "round(" + x + " / 2)" : "round(" + x + " / 2.0)";
    const QByteArray whole =
        "CASE WHEN " + fraction + " = 0.5 THEN 2 * " + half + " ELSE round(" + x + ") END";
    if (decimals == 0)
        return "CAST(" + whole + " AS INTEGER)";
    return m_postgres ? "((" + whole + ") / 10000)" : "((" + whole + ") / 10000.0)";
}

/// A value. A literal is written for `target` if that is known, else by its own kind.
QByteArray Emitter::value(const Expression& expression, const Scope& scope, Type target) {
    if (isCondition(expression))
        return "CASE WHEN " + condition(expression, scope) + " THEN 1 ELSE 0 END";
    switch (expression.node) {
    case Node::Column: {
        if (m_criteriaColumns != nullptr && expression.qualifier.isEmpty()) {
            const SelectParts& parts = *m_criteriaColumns;
            for (std::size_t i = 0; i < parts.columns.size(); ++i) {
                if (parts.columns[i].name.compare(expression.name, Qt::CaseInsensitive) != 0)
                    continue;
                m_criteriaColumns = nullptr;
                QByteArray sql = parts.expressions[i] != nullptr
                                     ? value(*parts.expressions[i], scope)
                                     : parts.list[static_cast<qsizetype>(i)];
                m_criteriaColumns = &parts;
                return sql;
            }
        }
        const Resolved resolved = resolve(scope, expression);
        return resolved ? columnSql(resolved) : QByteArray("NULL");
    }
    case Node::Literal:
        return literal(expression, target, Use::Compare);
    case Node::Null:
        return "NULL";
    case Node::Boolean:
        return expression.flag ? (target && target != ColumnType::YesNo ? "-1" : "1") : "0";
    case Node::Negate:
        if (expression.children[0]->is(Node::Literal))
            return "-" + bracketed(*expression.children[0], scope, target);
        return "-(" + asNumber(*expression.children[0], scope) + ')';
    case Node::Scalar:
        return '(' + query(*expression.query, &scope) + ')';
    case Node::Call:
        return call(expression, scope);
    default:
        return arithmetic(expression, scope);
    }
}

QByteArray Emitter::bracketed(const Expression& expression, const Scope& scope, Type target) {
    const QByteArray sql = value(expression, scope, target);
    const bool plain =
        expression.is(Node::Column) || expression.is(Node::Literal) ||
        expression.is(Node::Scalar) || expression.is(Node::Null) || expression.is(Node::Boolean) ||
        (expression.is(Node::Call) && (isAggregate(expression.name) || expression.name == u"now" ||
                                       expression.name == u"date" || expression.name == u"time"));
    return plain && m_criteriaColumns == nullptr ? sql : '(' + sql + ')';
}

/// Any value as the text that & makes of it.
QByteArray Emitter::asText(const Expression& expression, const Scope& scope) {
    const Type type = typeOf(expression, scope);
    if (expression.is(Node::Literal))
        return literal(expression, ColumnType::Memo, Use::Compare);
    if (isText(type) || expression.is(Node::Null))
        return bracketed(expression, scope);
    const QByteArray sql = bracketed(expression, scope);
    if (type == ColumnType::YesNo)
        return "(CASE WHEN " + sql + " <> 0 THEN 'True' ELSE 'False' END)";
    if (type == ColumnType::DateTime) {
        if (m_postgres)
            return "to_char(" + sql + ", 'FMMM/FMDD/YYYY')";
        return "(CAST(substr(" + sql + ", 6, 2) AS INTEGER) || '/' || CAST(substr(" + sql +
               ", 9, 2) AS INTEGER) || '/' || substr(" + sql + ", 1, 4))";
    }
    if (m_postgres)
        return type == ColumnType::Currency ? "trim_scale(" + sql + ")::text" : sql + "::text";
    if (type == ColumnType::Double || type == ColumnType::Currency)
        return "(CASE WHEN " + sql + " IS NOT NULL THEN printf('%.15g', " + sql + ") END)";
    return "CAST(" + sql + " AS TEXT)";
}

QByteArray Emitter::asNumber(const Expression& expression, const Scope& scope) {
    if (expression.is(Node::Boolean))
        return expression.flag ? "-1" : "0";
    const Type type = typeOf(expression, scope);
    if (expression.is(Node::Literal))
        return literal(expression,
                       expression.kind == LiteralKind::Text ? Type(ColumnType::Double) : Type(),
                       Use::Compare);
    QByteArray sql = bracketed(expression, scope);
    if (type == ColumnType::YesNo)
        return "(CASE WHEN " + sql + " <> 0 THEN -1 ELSE 0 END)";
    if (isText(type)) {
        if (!m_postgres)
            return "CAST(" + sql + " AS REAL)";
        return "coalesce(substring(" + sql +
               "::text from '^\\s*([-+]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][-+]?\\d+)?)')"
               "::double precision, 0)";
    }
    return sql;
}

QByteArray Emitter::arithmetic(const Expression& expression, const Scope& scope) {
    const Expression& left = *expression.children[0];
    const Expression& right = *expression.children[1];
    const Type leftType = typeOf(left, scope);
    const Type rightType = typeOf(right, scope);
    const bool leftDate = leftType == ColumnType::DateTime;
    const bool rightDate = rightType == ColumnType::DateTime;

    if (expression.op == Operator::Concatenate) {
        // & takes a Null for an empty text, + makes the whole Null.
        const QByteArray text = "coalesce(" + asText(left, scope) + ", '') || coalesce(" +
                                asText(right, scope) + ", '')";
        return citext(text);
    }
    if (expression.op == Operator::Add && (isText(leftType) || isText(rightType))) {
        const QByteArray cast = m_postgres ? "::text" : "";
        return citext(asText(left, scope) + cast + " || " + asText(right, scope) + cast);
    }
    if (expression.op == Operator::Subtract && leftDate && rightDate) {
        const QByteArray a = bracketed(left, scope), b = bracketed(right, scope);
        if (m_postgres)
            return "extract(epoch from " + a + " - " + b + ")::double precision / 86400";
        return "(strftime('%s', " + a + ") - strftime('%s', " + b + ")) / 86400.0";
    }
    if ((expression.op == Operator::Add || expression.op == Operator::Subtract) &&
        (leftDate || rightDate)) {
        const QByteArray date = bracketed(leftDate ? left : right, scope);
        const QByteArray days = asNumber(leftDate ? right : left, scope);
        const QByteArray sign = operatorSql(expression.op);
        if (m_postgres)
            return date + ' ' + sign + " (" + days + ") * interval '1 day'";
        return "datetime(" + date + ", (" + (sign == "-" ? "-" : "") + '(' + days +
               ")) || ' days')";
    }

    const QByteArray a = asNumber(left, scope), b = asNumber(right, scope);
    switch (expression.op) {
    case Operator::Divide:
        if (m_postgres)
            return "(" + a + ")::double precision / nullif((" + b + ")::double precision, 0)";
        return "CAST(" + a + " AS REAL) / " + b;
    case Operator::IntegerDivide:
    case Operator::Modulo: {
        const QByteArray x = isWhole(leftType) ? a : rounded(a, 0);
        const QByteArray y = isWhole(rightType) ? b : rounded(b, 0);
        return x + ' ' + operatorSql(expression.op) + " nullif(" + y + ", 0)";
    }
    case Operator::Power:
        return "power(" + a + ", " + b + ')';
    default:
        return a + ' ' + operatorSql(expression.op) + ' ' + b;
    }
}

/// A test. A value that stands for one is true unless it is 0.
QByteArray Emitter::condition(const Expression& expression, const Scope& scope) {
    switch (expression.node) {
    case Node::And:
    case Node::Or: {
        const char* word = expression.is(Node::And) ? " AND " : " OR ";
        QByteArray sql;
        for (const ExpressionPtr& child : expression.children) {
            if (!sql.isEmpty())
                sql += word;
            // Only an OR inside an AND, or a like pair, needs its brackets.
            const bool brackets =
                child->is(Node::Or) || (child->is(Node::And) && expression.is(Node::Or));
            const QByteArray part = condition(*child, scope);
            sql += brackets ? '(' + part + ')' : part;
        }
        return sql;
    }
    case Node::Not:
        return "NOT (" + condition(*expression.children[0], scope) + ')';
    case Node::Comparison:
        return withDays(expression, scope, comparison(expression, scope));
    case Node::Between: {
        const Type types[3] = {typeOf(*expression.children[0], scope),
                               typeOf(*expression.children[1], scope),
                               typeOf(*expression.children[2], scope)};
        if (comparesTexts(*expression.children[0], *expression.children[1], scope) &&
            comparesTexts(*expression.children[0], *expression.children[2], scope))
            return foldedSide(*expression.children[0], scope) +
                   (expression.flag ? " NOT BETWEEN " : " BETWEEN ") +
                   foldedSide(*expression.children[1], scope) + " AND " +
                   foldedSide(*expression.children[2], scope);
        // A literal is read by the column among the three.
        Type subject = isConstant(*expression.children[0]) ? Type() : types[0];
        Type bounds = subject;
        for (std::size_t i = 1; i < 3; ++i)
            if (!isConstant(*expression.children[i]))
                bounds = subject ? subject : types[i];
        if (!subject)
            subject = bounds ? bounds : types[1];
        if (!bounds)
            bounds = types[0];
        return withDays(expression, scope,
                        compared(*expression.children[0], scope, subject, true) +
                            (expression.flag ? " NOT BETWEEN " : " BETWEEN ") +
                            compared(*expression.children[1], scope, bounds, false) + " AND " +
                            compared(*expression.children[2], scope, bounds, false));
    }
    case Node::In:
        return in(expression, scope);
    case Node::Like:
        return like(expression, scope);
    case Node::IsNull:
        return bracketed(*expression.children[0], scope) +
               (expression.flag ? " IS NOT NULL" : " IS NULL");
    case Node::Exists:
        return "EXISTS (" + query(*expression.query, &scope) + ')';
    case Node::Boolean:
        return expression.flag ? "1 = 1" : "1 = 0";
    case Node::Call:
        if (expression.name == u"isnull" && expression.children.size() == 1)
            return bracketed(*expression.children[0], scope) + " IS NULL";
        break;
    default:
        break;
    }
    return bracketed(expression, scope) + " <> 0";
}

/// One side of a comparison with something of type `other`. The leading side carries the rule that
/// text is compared without regard to case.
QByteArray Emitter::compared(const Expression& expression, const Scope& scope, Type other,
                             bool leading) {
    const Type type = typeOf(expression, scope);
    if (expression.is(Node::Literal)) {
        const QByteArray sql = literal(expression, other, Use::Compare);
        const bool text = isText(other) || (!other && isText(type));
        return text && leading && !m_postgres ? sql + " COLLATE NOCASE" : sql;
    }
    QByteArray sql;
    if (isText(other) && type && !isText(type) && !expression.is(Node::Boolean))
        sql = citext(asText(expression, scope));
    else if (isText(type) && isNumber(other))
        sql =
            isConstant(expression) ? value(expression, scope, other) : bracketed(expression, scope);
    else if (isConstant(expression) && expression.is(Node::Boolean))
        sql = asNumber(expression, scope);
    else
        sql = bracketed(expression, scope, other);
    const bool plainColumn = expression.is(Node::Column) && m_criteriaColumns == nullptr;
    if (!m_postgres && leading && !plainColumn && (isText(type) || isText(other)))
        sql += " COLLATE NOCASE";
    return sql;
}

/// A condition on the day of a column together with what follows from it for the column itself, so
/// that an index on the column finds the rows. Any other condition as it is.
QByteArray Emitter::withDays(const Expression& expression, const Scope& scope,
                             const QByteArray& sql) {
    const Expression& day = *expression.children[0];
    if (m_criteriaColumns != nullptr || !day.is(Node::Call) || day.name != u"datevalue" ||
        day.children.size() != 1 || !day.children[0]->is(Node::Column) ||
        typeOf(*day.children[0], scope) != ColumnType::DateTime)
        return sql;
    const Expression* from = expression.children[1].get();
    const Expression* to = from;
    if (expression.is(Node::Between)) {
        to = expression.flag ? nullptr : expression.children[2].get();
        from = expression.flag ? nullptr : from;
    } else if (expression.op == Operator::Less || expression.op == Operator::LessOrEqual) {
        from = nullptr;
    } else if (expression.op == Operator::Greater || expression.op == Operator::GreaterOrEqual) {
        to = nullptr;
    } else if (expression.op != Operator::Equal) {
        return sql;
    }
    const QByteArray column = bracketed(*day.children[0], scope);
    const auto bound = [&](const Expression& moment) {
        const QByteArray text = compared(moment, scope, ColumnType::DateTime, false);
        return m_postgres ? "date_trunc('day', " + text + ')' : "substr(" + text + ", 1, 10)";
    };
    QByteArray range;
    if (from != nullptr && isConstant(*from))
        range += " AND " + column + " >= " + bound(*from);
    if (to != nullptr && isConstant(*to))
        range += " AND " + column + " < " + bound(*to) +
                 (m_postgres ? " + interval '1 day'" : " || ' 24'");
    return range.isEmpty() ? sql : '(' + sql + range + ')';
}

QByteArray Emitter::truth(const Expression& expression, const Scope& scope, bool wanted) {
    if (isCondition(expression) || expression.is(Node::Boolean)) {
        const QByteArray sql = condition(expression, scope);
        return wanted ? sql : "NOT (" + sql + ')';
    }
    return bracketed(expression, scope) + (wanted ? " <> 0" : " = 0");
}

QByteArray Emitter::comparison(const Expression& expression, const Scope& scope) {
    const Expression& left = *expression.children[0];
    const Expression& right = *expression.children[1];
    const Type leftType = typeOf(left, scope), rightType = typeOf(right, scope);
    const bool equality = expression.op == Operator::Equal || expression.op == Operator::NotEqual;

    if (equality && right.is(Node::Boolean) && (leftType == ColumnType::YesNo || !leftType))
        return truth(left, scope, right.flag == (expression.op == Operator::Equal));
    if (equality && left.is(Node::Boolean) && (rightType == ColumnType::YesNo || !rightType))
        return truth(right, scope, left.flag == (expression.op == Operator::Equal));
    // Yes/No may be stored as any number: only 0 or not counts.
    if (equality && (leftType == ColumnType::YesNo || rightType == ColumnType::YesNo) &&
        !isText(leftType) && !isText(rightType)) {
        const auto test = [&](const Expression& side) -> QByteArray {
            if (isCondition(side))
                return '(' + condition(side, scope) + ')';
            return '(' + bracketed(side, scope) + " <> 0)";
        };
        return test(left) + ' ' + operatorSql(expression.op) + ' ' + test(right);
    }
    if (!equality && comparesTexts(left, right, scope))
        return foldedSide(left, scope) + ' ' + operatorSql(expression.op) + ' ' +
               foldedSide(right, scope);
    if (equality && !m_postgres && comparesTexts(left, right, scope)) {
        const bool negated = expression.op == Operator::NotEqual;
        if (hasSpellings(right))
            return sameText(left, right, scope, negated);
        if (hasSpellings(left))
            return sameText(right, left, scope, negated);
    }
    // A constant is read by what it is compared with; of two constants the text decides.
    Type target;
    if (isConstant(left) && isConstant(right))
        target = isText(leftType) && isText(rightType) ? leftType : Type();
    else if (isConstant(right))
        target = leftType;
    else if (isConstant(left))
        target = rightType;
    const Type forLeft = target ? target : rightType;
    const Type forRight = target ? target : leftType;
    // Of a text and a number that are both no constants the number is taken as text.
    return compared(left, scope, forLeft, true) + ' ' + operatorSql(expression.op) + ' ' +
           compared(right, scope, forRight, false);
}

QByteArray Emitter::in(const Expression& expression, const Scope& scope) {
    const Expression& subject = *expression.children[0];
    Type type = isConstant(subject) ? Type() : typeOf(subject, scope);
    QByteArray list, spelled;
    Type listType = type;
    if (expression.query) {
        const auto columns = columnsOf(*expression.query, &scope);
        if (columns.size() != 1)
            throw Error(errors::syntax,
                        u"You have written a subquery that can return more than one "
                        "field without using the EXISTS reserved word in the main "
                        "query's FROM clause."_s);
        listType = columns.front().type;
        list = query(*expression.query, &scope);
    } else {
        for (std::size_t i = 1; i < expression.children.size(); ++i) {
            const Expression& one = *expression.children[i];
            if (!m_postgres && hasSpellings(one) && comparesTexts(subject, one, scope)) {
                spelled += (expression.flag ? " AND " : " OR ") +
                           sameText(subject, one, scope, expression.flag);
                continue;
            }
            if (!list.isEmpty())
                list += ", ";
            list += compared(one, scope, type, false);
            if (!listType)
                listType = typeOf(one, scope);
        }
        if (list.isEmpty())
            return '(' + spelled.mid(spelled.indexOf(' ', 1) + 1) + ')';
    }
    const QByteArray sql = compared(subject, scope, listType, true) +
                           (expression.flag ? " NOT IN (" : " IN (") + list + ')';
    return spelled.isEmpty() ? sql : '(' + sql + spelled + ')';
}

namespace {

struct ClassPattern {
    QString glob;  ///< SQLite's GLOB, small letters
    QString regex; ///< PostgreSQL's
};

/// A pattern with # or [..]. Throws on a bracket that isn't closed.
ClassPattern classPattern(const QString& text) {
    ClassPattern result;
    result.regex = u"^"_s;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'*') {
            result.glob += u'*';
            result.regex += u".*"_s;
        } else if (c == u'?') {
            result.glob += u'?';
            result.regex += u'.';
        } else if (c == u'#') {
            result.glob += u"[0-9]"_s;
            result.regex += u"[0-9]"_s;
        } else if (c == u'[') {
            const qsizetype end = text.indexOf(u']', i + 1);
            if (end < 0)
                throw Error(errors::syntax, u"Invalid pattern string."_s);
            QString inner = text.mid(i + 1, end - i - 1);
            i = end;
            if (inner.isEmpty())
                continue;
            const bool negated = inner.size() > 1 && inner.startsWith(u'!');
            if (negated)
                inner.remove(0, 1);
            result.glob += (negated ? u"[^"_s : u"["_s) + values::lowered(inner) + u']';
            result.regex += negated ? u"[^"_s : u"["_s;
            for (const QChar in : inner)
                result.regex +=
                    in == u'\\' || in == u'[' || in == u'^' ? u"\\"_s + in : QString(in);
            result.regex += u']';
        } else {
            result.glob += values::lowered(QStringView(&c, 1));
            if (!c.isLetterOrNumber() && !c.isSpace() && c.unicode() < 128)
                result.regex += u'\\';
            result.regex += c;
        }
    }
    result.regex += u'$';
    return result;
}

} // namespace

QByteArray Emitter::like(const Expression& expression, const Scope& scope) {
    const Expression& subject = *expression.children[0];
    const Expression& pattern = *expression.children[1];
    const Type type = typeOf(subject, scope);
    QByteArray text = subject.is(Node::Literal) || (type && !isText(type))
                          ? asText(subject, scope)
                          : bracketed(subject, scope);

    if (pattern.is(Node::Literal) && pattern.literal < 0 && pattern.kind == LiteralKind::Text) {
        const QString raw = pattern.value.toText();
        if (raw.contains(u'#') || raw.contains(u'[')) {
            const ClassPattern classes = classPattern(raw);
            QString escaped = m_postgres ? classes.regex : classes.glob;
            const QByteArray quotedPattern = '\'' + escaped.replace(u'\'', u"''"_s).toUtf8() + '\'';
            const QByteArray test =
                m_postgres ? text + "::text ~* " + quotedPattern
                           : (hasSpellings(pattern) ? lowered(text) : "lower(" + text + ')') +
                                 " GLOB " + quotedPattern;
            return expression.flag ? "NOT (" + test + ')' : test;
        }
    }
    // Both as plain text, which an index of pieces of text stands on; citext's LIKE uses none.
    QByteArray mask;
    if (pattern.is(Node::Literal)) {
        mask = pattern.literal < 0
                   ? inlined(pattern.value, pattern.kind, Conversion::ToPattern, "text")
                   : parameter(pattern.literal, Conversion::ToPattern, "text");
    } else {
        mask = asText(pattern, scope) + (m_postgres ? "::text" : "");
        for (const char* step :
             {"'\\', '\\\\'", "'%', '\\%'", "'_', '\\_'", "'*', '%'", "'?', '_'"})
            mask = "replace(" + mask + ", " + step + ')';
    }
    const QByteArray negation = expression.flag ? " NOT" : "";
    if (!m_postgres && (hasSpellings(pattern) || !pattern.is(Node::Literal)))
        return (expression.flag ? "NOT " : "") + ("letters_like(" + mask + ", " + text + ')');
    if (!m_postgres)
        return text + negation + " LIKE " + mask + " ESCAPE '\\'";
    if (!text.endsWith("::text"))
        text += "::text";
    return text + negation + " ILIKE " + mask;
}

/// A value for a column that it is stored in: what the column's type makes of it.
QByteArray Emitter::assigned(const Expression& expression, const Scope& scope,
                             const Column& column) {
    const ColumnType target = column.type;
    if (expression.is(Node::Literal))
        return literal(expression, target, Use::Assign);
    if (expression.is(Node::Negate) && expression.children[0]->is(Node::Literal))
        return "-" + literal(*expression.children[0], target, Use::Assign);
    if (expression.is(Node::Null)) {
        if (target == ColumnType::YesNo)
            return "0";
        return m_postgres ? "NULL::" + declaredType(target, 0, Dialect::postgres()) : "NULL";
    }
    if (expression.is(Node::Boolean)) {
        if (isText(target))
            return expression.flag ? "'True'" : "'False'";
        return expression.flag ? (target == ColumnType::YesNo ? "1" : "-1") : "0";
    }
    if (target == ColumnType::YesNo) {
        if (isCondition(expression) || !expression.is(Node::Column) ||
            typeOf(expression, scope) != ColumnType::YesNo)
            return "CASE WHEN " + condition(expression, scope) + " THEN 1 ELSE 0 END";
        return value(expression, scope);
    }
    const Type type = typeOf(expression, scope);
    if (isText(target))
        return !type || isText(type) ? value(expression, scope) : asText(expression, scope);
    if (target == ColumnType::DateTime || !type)
        return value(expression, scope);
    QByteArray sql = asNumber(expression, scope);
    if (isWhole(target))
        return isWhole(type) ? sql : rounded(sql, 0);
    if (target == ColumnType::Currency && !isWhole(type) &&
        !(expression.is(Node::Column) && type == ColumnType::Currency))
        return rounded(sql, 4);
    return sql;
}

} // namespace jet
