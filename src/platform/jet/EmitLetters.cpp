#include "platform/jet/Emit.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

namespace jet {

using Node = Expression::Node;

/// Whether it is a text that SQLite's NOCASE, which knows the letters of ASCII alone, would compare
/// by another rule.
bool Emitter::hasSpellings(const Expression& expression) {
    return expression.is(Node::Literal) && expression.kind == LiteralKind::Text &&
           expression.spellings != values::Spellings::One;
}

/// Whether both sides are texts; of unknown type only one of them.
bool Emitter::comparesTexts(const Expression& a, const Expression& b, const Scope& scope) {
    const Type left = typeOf(a, scope), right = typeOf(b, scope);
    return (isText(left) && (isText(right) || !right)) || (isText(right) && !left);
}

/// SQLite: a comparison for equality that an index of NOCASE serves, with each spelling of a
/// literal; of a literal with too many with what is the same for all of them.
QByteArray Emitter::sameText(const Expression& subject, const Expression& literal,
                             const Scope& scope, bool negated) {
    const QByteArray text = compared(subject, scope, ColumnType::Memo, true);
    const bool few = literal.spellings == values::Spellings::Few;
    if (literal.literal < 0 && few) {
        QByteArrayList list;
        for (const QString& one : values::spellings(literal.value.toText()))
            list << inlined(Value(one), LiteralKind::Text, Conversion::AsIs, "");
        return text + (negated ? " NOT IN (" : " IN (") + list.join(", ") + ')';
    }
    if (few)
        return text + (negated ? " NOT IN " : " IN ") + "(SELECT value FROM json_each(" +
               parameter(literal.literal, Conversion::ToSpellings, "text") + "))";
    const QByteArray small =
        literal.literal < 0
            ? inlined(literal.value, LiteralKind::Text, Conversion::ToLowered, "text")
            : parameter(literal.literal, Conversion::ToLowered, "text");
    return lowered(text) + (negated ? " <> " : " = ") + small;
}

/// A side of a range of texts.
QByteArray Emitter::foldedSide(const Expression& expression, const Scope& scope) {
    if (!expression.is(Node::Literal))
        return folded(bracketed(expression, scope));
    const QByteArray sql =
        expression.literal < 0
            ? inlined(expression.value, LiteralKind::Text, Conversion::ToFolded, "text")
            : parameter(expression.literal, Conversion::ToFolded, "text");
    return m_postgres ? '(' + sql + " COLLATE \"C\")" : sql;
}

QByteArray Emitter::lowered(const QByteArray& sql) const {
    return m_postgres ? "lower((" + sql + ")::text)" : "letters_lower(" + sql + ')';
}

/// values::folded of a text. A server has no such function; it is written out, and done for texts
/// with letters beyond ASCII.
QByteArray Emitter::folded(const QByteArray& sql) const {
    if (!m_postgres)
        return "letters_fold(" + sql + ')';
    static const auto quotedText = [](const QString& text) { return '\'' + text.toUtf8() + '\''; };
    static const QByteArray behind = [] {
        const values::FoldedLetters& letters = values::foldedLetters();
        QByteArray text = ", " + quotedText(letters.from) + ", " + quotedText(letters.to) + ')';
        for (const auto& [letter, plain] : letters.longer)
            text += ", " + quotedText(letter) + ", " + quotedText(plain) + ')';
        return text;
    }();
    const QByteArray text = '(' + sql + ")::text";
    const QByteArray steps = QByteArray("replace(").repeated(values::foldedLetters().longer.size());
    return "((CASE WHEN octet_length(" + text + ") = char_length(" + text + ") THEN lower(" + text +
           ") ELSE " + steps + "translate(lower(" + text + ')' + behind + " END) COLLATE \"C\")";
}

/// A term of an order that the engine itself has to keep.
QByteArray Emitter::sortedText(const QByteArray& sql, bool descending, bool nullable) const {
    QByteArray way = descending ? " DESC" : "";
    if (m_postgres && nullable)
        way += descending ? " NULLS LAST" : " NULLS FIRST";
    return folded(sql) + way + ", " + lowered(sql) + (m_postgres ? " COLLATE \"C\"" : "") + way;
}

/// Which column of the select shows one of a table; -1 for none.
int Emitter::placeOfColumn(const Resolved& wanted, const SelectParts& parts) const {
    for (std::size_t i = 0; wanted && i < parts.columns.size(); ++i) {
        const Expression* item = parts.expressions[i];
        if (item == nullptr
                ? parts.list[static_cast<qsizetype>(i)] == columnSql(wanted)
                : item->is(Node::Column) &&
                      find(parts.scope, item->qualifier, item->name).column == wanted.column)
            return static_cast<int>(i);
    }
    return -1;
}

/// The terms of an order with a text among them; none of any other. What isn't among the columns is
/// added to `hidden`, and each of them to `all`.
std::vector<SortTerm> Emitter::sortTerms(const Query& query, const SelectParts& parts,
                                         QByteArrayList* hidden, QByteArrayList* all) {
    std::vector<SortTerm> terms;
    QByteArrayList added, written;
    const bool compound = query.selects.size() > 1;
    bool hasText = false;
    for (const Order& order : query.orderBy) {
        const Expression& expression = *order.expression;
        SortTerm term{-1, {}, order.descending};
        if (expression.is(Node::Literal))
            term.column = static_cast<int>(expression.value.toLong()) - 1;
        else if (expression.is(Node::Column))
            term.column = placeOf(expression, parts, compound);
        if (term.column < 0 && expression.is(Node::Column) && !compound)
            term.column =
                placeOfColumn(find(parts.scope, expression.qualifier, expression.name), parts);
        if (term.column < 0 && (compound || parts.distinct))
            return {};
        QByteArray sql;
        if (term.column < 0) {
            sql = value(expression, parts.scope);
            term.type = typeOf(expression, parts.scope);
        }
        if (term.column >= 0)
            term.type = parts.columns[static_cast<std::size_t>(term.column)].type;
        hasText = hasText || isText(term.type);
        if (term.column < 0)
            added << sql;
        if (all != nullptr) {
            const Expression* item =
                sql.isEmpty() ? parts.expressions[static_cast<std::size_t>(term.column)] : nullptr;
            written << (!sql.isEmpty()    ? sql
                        : item != nullptr ? value(*item, parts.scope)
                                          : parts.list[term.column]);
        }
        terms.push_back(term);
    }
    if (!hasText)
        return {};
    if (hidden != nullptr)
        *hidden += added;
    if (all != nullptr)
        *all += written;
    return terms;
}

} // namespace jet
