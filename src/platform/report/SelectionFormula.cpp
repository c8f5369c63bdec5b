#include "platform/report/SelectionFormula.h"

#include "platform/jet/Types.h"
#include "platform/report/ReportError.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QDateTime>

#include <memory>
#include <vector>

namespace report {

namespace {

struct Operand {
    enum class Kind { Field, Number, Text, Boolean, Day, Moment };
    Kind kind = Kind::Number;
    QString text; ///< of a text; the digits of a number
    bool truth = false;
    QDateTime moment;
    FormulaField field;
};

struct Node {
    enum class Kind { And, Or, Not, Compare, Between, InList, Like, IsNull, Truth };
    Kind kind = Kind::And;
    QString comparison;
    std::vector<Operand> operands; ///< Compare, Between, InList, Like: the tested one first
    std::vector<std::unique_ptr<Node>> kids;
};
using NodePtr = std::unique_ptr<Node>;

struct Token {
    enum class Kind { End, Word, Number, Text, Field, Date, Symbol };
    Kind kind = Kind::End;
    QString text;
};

[[noreturn]] void fail(const QString& detail) {
    throw ReportError(codes::errorInFormula, detail);
}

QString quotedText(const QString& text) {
    return u'\'' + values::quoted(text) + u'\'';
}

std::vector<Token> tokens(const QString& formula) {
    std::vector<Token> result;
    qsizetype at = 0;
    const auto closed = [&](QChar end, const QString& what) {
        const auto found = formula.indexOf(end, at + 1);
        if (found < 0)
            fail(u"%1 isn't closed in: %2"_s.arg(what, formula));
        QString inside = formula.mid(at + 1, found - at - 1);
        at = found + 1;
        return inside;
    };
    while (at < formula.size()) {
        const QChar c = formula[at];
        if (c.isSpace()) {
            ++at;
        } else if (c == u'{') {
            result.push_back({Token::Kind::Field, closed(u'}', u"A field"_s)});
        } else if (c == u'#') {
            result.push_back({Token::Kind::Date, closed(u'#', u"A date"_s)});
        } else if (c == u'\'' || c == u'"') {
            QString content;
            do {
                content += closed(c, u"A text"_s);
                if (at < formula.size() && formula[at] == c)
                    content += c;
                else
                    break;
            } while (true);
            result.push_back({Token::Kind::Text, content});
        } else if (c.isDigit() ||
                   (c == u'.' && at + 1 < formula.size() && formula[at + 1].isDigit())) {
            const auto start = at;
            while (at < formula.size() && (formula[at].isDigit() || formula[at] == u'.'))
                ++at;
            result.push_back({Token::Kind::Number, formula.mid(start, at - start)});
            if (!values::isNumeric(result.back().text))
                fail(u"%1 is no number in: %2"_s.arg(result.back().text, formula));
        } else if (c.isLetter()) {
            const auto start = at;
            while (at < formula.size() && formula[at].isLetterOrNumber())
                ++at;
            result.push_back({Token::Kind::Word, formula.mid(start, at - start).toLower()});
        } else {
            const QString two = formula.mid(at, 2);
            const bool pair = two == u"<>" || two == u"<=" || two == u">=";
            result.push_back({Token::Kind::Symbol, pair ? two : QString(c)});
            at += pair ? 2 : 1;
        }
    }
    result.push_back({});
    return result;
}

class Parser {
  public:
    Parser(const QString& formula, const FieldResolver& fields)
        : m_formula(formula), m_tokens(tokens(formula)), m_fields(fields) {}

    NodePtr parse() {
        auto root = any(Node::Kind::Or);
        if (peek().kind != Token::Kind::End)
            unexpected();
        return root;
    }

  private:
    const Token& peek() const { return m_tokens[m_at]; }
    bool isWord(QStringView word) const {
        return peek().kind == Token::Kind::Word && peek().text == word;
    }
    bool isSymbol(QStringView symbol) const {
        return peek().kind == Token::Kind::Symbol && peek().text == symbol;
    }
    bool takeWord(QStringView word) {
        const bool found = isWord(word);
        m_at += found;
        return found;
    }
    bool takeSymbol(QStringView symbol) {
        const bool found = isSymbol(symbol);
        m_at += found;
        return found;
    }
    [[noreturn]] void unexpected() const {
        fail(peek().kind == Token::Kind::End
                 ? u"The formula ends too early: %1"_s.arg(m_formula)
                 : u"Unexpected \"%1\" in: %2"_s.arg(peek().text, m_formula));
    }
    void expectSymbol(QStringView symbol) {
        if (!takeSymbol(symbol))
            unexpected();
    }

    /// A row of terms joined by the same word.
    NodePtr any(Node::Kind kind) {
        const bool isOr = kind == Node::Kind::Or;
        const QStringView word = isOr ? u"or" : u"and";
        auto first = isOr ? any(Node::Kind::And) : negated();
        if (!isWord(word))
            return first;
        auto joined = std::make_unique<Node>();
        joined->kind = kind;
        joined->kids.push_back(std::move(first));
        while (takeWord(word))
            joined->kids.push_back(isOr ? any(Node::Kind::And) : negated());
        return joined;
    }

    NodePtr negated() {
        // Deeper than anybody writes; keeps a hostile formula off the stack's end.
        struct Depth {
            int& depth;
            explicit Depth(int& counter) : depth(counter) { ++depth; }
            ~Depth() { --depth; }
        } depth(m_depth);
        if (m_depth > 200)
            fail(u"The formula is nested too deeply."_s);
        if (takeWord(u"not")) {
            auto node = std::make_unique<Node>();
            node->kind = Node::Kind::Not;
            node->kids.push_back(negated());
            return node;
        }
        if (takeSymbol(u"(")) {
            auto inner = any(Node::Kind::Or);
            expectSymbol(u")");
            return inner;
        }
        return comparison();
    }

    NodePtr comparison() {
        auto node = std::make_unique<Node>();
        if (takeWord(u"isnull")) {
            expectSymbol(u"(");
            node->kind = Node::Kind::IsNull;
            node->operands.push_back(operand());
            if (node->operands.front().kind != Operand::Kind::Field)
                unexpected();
            expectSymbol(u")");
            return node;
        }
        node->operands.push_back(operand());
        if (takeWord(u"in")) {
            if (takeSymbol(u"[")) {
                node->kind = Node::Kind::InList;
                do
                    node->operands.push_back(operand());
                while (takeSymbol(u","));
                expectSymbol(u"]");
                return node;
            }
            node->kind = Node::Kind::Between;
            node->operands.push_back(operand());
            if (!takeWord(u"to"))
                unexpected();
            node->operands.push_back(operand());
            return node;
        }
        if (takeWord(u"like")) {
            node->kind = Node::Kind::Like;
            if (peek().kind != Token::Kind::Text)
                unexpected();
            node->operands.push_back(operand());
            return node;
        }
        static const QStringList comparisons{u"="_s, u"<>"_s, u"<"_s, u">"_s, u"<="_s, u">="_s};
        if (peek().kind == Token::Kind::Symbol && comparisons.contains(peek().text)) {
            node->kind = Node::Kind::Compare;
            node->comparison = m_tokens[m_at++].text;
            node->operands.push_back(operand());
            return node;
        }
        const auto& alone = node->operands.front();
        const bool truth =
            alone.kind == Operand::Kind::Boolean ||
            (alone.kind == Operand::Kind::Field && alone.field.type == jet::ColumnType::YesNo);
        if (!truth)
            unexpected();
        node->kind = Node::Kind::Truth;
        return node;
    }

    /// A value, or texts joined by +.
    Operand operand() {
        Operand made = single();
        if (!isSymbol(u"+"))
            return made;
        QString sql;
        bool hasField = false;
        const auto join = [&](const Operand& part) {
            const bool field = part.kind == Operand::Kind::Field && part.field.through.isEmpty();
            if (!field && part.kind != Operand::Kind::Text)
                fail(u"Only texts of one row can be joined in: %1"_s.arg(m_formula));
            hasField = hasField || field;
            sql += (sql.isEmpty() ? QString() : u" + "_s) +
                   (field ? part.field.sql : quotedText(part.text));
        };
        join(made);
        while (takeSymbol(u"+"))
            join(single());
        if (!hasField)
            fail(u"A joined text without a field in: %1"_s.arg(m_formula));
        made.kind = Operand::Kind::Field;
        made.field = {u'(' + sql + u')', jet::ColumnType::Text, {}};
        return made;
    }

    Operand single() {
        Operand made;
        const Token token = peek();
        switch (token.kind) {
        case Token::Kind::Field:
            ++m_at;
            return field(token.text);
        case Token::Kind::Number:
            ++m_at;
            made.text = token.text;
            return made;
        case Token::Kind::Text:
            ++m_at;
            made.kind = Operand::Kind::Text;
            made.text = token.text;
            return made;
        case Token::Kind::Date: {
            ++m_at;
            const auto moment = jet::momentFromText(token.text);
            if (!moment)
                fail(u"\"%1\" is no date in: %2"_s.arg(token.text, m_formula));
            made.kind = moment->time() == QTime(0, 0) ? Operand::Kind::Day : Operand::Kind::Moment;
            made.moment = *moment;
            return made;
        }
        case Token::Kind::Symbol:
            if (takeSymbol(u"-") && peek().kind == Token::Kind::Number) {
                made.text = u'-' + m_tokens[m_at++].text;
                return made;
            }
            break;
        case Token::Kind::Word:
            if (token.text == u"true" || token.text == u"false") {
                ++m_at;
                made.kind = Operand::Kind::Boolean;
                made.truth = token.text == u"true";
                return made;
            }
            if (token.text == u"date" || token.text == u"datetime")
                return date();
            break;
        case Token::Kind::End:
            break;
        }
        unexpected();
    }

    Operand date() {
        const bool withTime = takeWord(u"datetime");
        if (!withTime)
            ++m_at;
        expectSymbol(u"(");
        std::vector<int> parts;
        do {
            if (peek().kind != Token::Kind::Number)
                unexpected();
            parts.push_back(m_tokens[m_at++].text.toInt());
        } while (takeSymbol(u","));
        expectSymbol(u")");
        Operand made;
        made.kind = withTime ? Operand::Kind::Moment : Operand::Kind::Day;
        if (parts.size() == (withTime ? 6u : 3u)) {
            const QDate day(parts[0], parts[1], parts[2]);
            const QTime time = withTime ? QTime(parts[3], parts[4], parts[5]) : QTime(0, 0);
            if (day.isValid() && time.isValid()) {
                made.moment = QDateTime(day, time, Qt::UTC);
                return made;
            }
        }
        fail(u"There is no such date in: %1"_s.arg(m_formula));
    }

    Operand field(const QString& name) {
        const auto dot = name.indexOf(u'.');
        const QString table = name.left(dot).trimmed();
        const auto found = dot < 0 ? std::nullopt : m_fields(table, name.mid(dot + 1).trimmed());
        if (!found)
            fail(u"The report doesn't know the field {%1}."_s.arg(name));
        Operand made;
        made.kind = Operand::Kind::Field;
        made.field = *found;
        return made;
    }

    const QString& m_formula;
    std::vector<Token> m_tokens;
    const FieldResolver& m_fields;
    std::size_t m_at = 0;
    int m_depth = 0;
};

QString sqlMoment(const QDateTime& moment) {
    QString text = values::sqlDate(moment.date());
    if (moment.time() != QTime(0, 0))
        text += moment.time().toString(u" HH:mm:ss"_s);
    return u'#' + text + u'#';
}

/// A value as a literal for a field of a type.
QString literal(const Operand& value, jet::ColumnType type) {
    using Kind = Operand::Kind;
    using Type = jet::ColumnType;
    const bool wordy = type == Type::Text || type == Type::Memo;
    switch (value.kind) {
    case Kind::Field:
        return value.field.sql;
    case Kind::Number:
        if (type == Type::DateTime)
            break;
        return wordy ? quotedText(value.text) : value.text;
    case Kind::Text:
        if (wordy)
            return quotedText(value.text);
        if (type == Type::DateTime) {
            if (const auto moment = jet::momentFromText(value.text))
                return sqlMoment(*moment);
            break;
        }
        if (type != Type::YesNo && values::isNumeric(value.text))
            return values::numberText(values::val(value.text));
        break;
    case Kind::Boolean:
        if (type == Type::YesNo)
            return value.truth ? u"True"_s : u"False"_s;
        break;
    case Kind::Day:
    case Kind::Moment:
        if (type == Type::DateTime)
            return sqlMoment(value.moment);
        if (wordy)
            return quotedText(values::format(value.moment.date(), u"Short Date"));
        break;
    }
    fail(u"A value doesn't fit the field it is compared with."_s);
}

class Emitter {
  public:
    QString condition(const Node& node) const {
        switch (node.kind) {
        case Node::Kind::And:
            return joined(node, u" AND "_s);
        case Node::Kind::Or:
            return joined(node, u" OR "_s);
        case Node::Kind::Not:
            return u"(NOT %1)"_s.arg(condition(*node.kids.front()));
        default:
            return tested(node);
        }
    }

  private:
    static const Operand* fieldOf(const Node& node) {
        for (const auto& operand : node.operands) {
            if (operand.kind == Operand::Kind::Field)
                return &operand;
        }
        return nullptr;
    }

    QString joined(const Node& node, const QString& word) const {
        QStringList terms;
        if (node.kind == Node::Kind::Or)
            terms = disjuncts(node);
        else
            for (const auto& kid : node.kids)
                terms.append(condition(*kid));
        return balanced(terms, 0, terms.size(), word);
    }

    /// The terms of an or; equalities with one field become a single list, since selected records
    /// may be thousands.
    QStringList disjuncts(const Node& node) const {
        QStringList terms;
        QHash<QString, qsizetype> places;
        std::vector<Node> lists;
        std::vector<qsizetype> listPlaces;
        for (const auto& kid : node.kids) {
            const bool equality = kid->kind == Node::Kind::Compare && kid->comparison == u"=" &&
                                  kid->operands[0].kind == Operand::Kind::Field &&
                                  kid->operands[1].kind != Operand::Kind::Field &&
                                  kid->operands[0].field.type != jet::ColumnType::DateTime;
            if (!equality) {
                terms.append(condition(*kid));
                continue;
            }
            const QString& sql = kid->operands[0].field.sql;
            const auto known = places.constFind(sql);
            if (known == places.constEnd()) {
                places.insert(sql, static_cast<qsizetype>(lists.size()));
                Node list;
                list.kind = Node::Kind::InList;
                list.operands = kid->operands;
                lists.push_back(std::move(list));
                listPlaces.push_back(terms.size());
                terms.append(QString());
            } else {
                lists[static_cast<std::size_t>(*known)].operands.push_back(kid->operands[1]);
            }
        }
        for (std::size_t index = 0; index < lists.size(); ++index)
            terms[listPlaces[index]] = tested(lists[index]);
        return terms;
    }

    /// Parenthesised as a tree of little depth: engines limit how deep a condition goes.
    static QString balanced(const QStringList& terms, qsizetype from, qsizetype to,
                            const QString& word) {
        if (to - from == 1)
            return terms[from];
        const auto middle = from + (to - from) / 2;
        return u'(' + balanced(terms, from, middle, word) + word +
               balanced(terms, middle, to, word) + u')';
    }

    /// A test, taken to the rows below where its field belongs there.
    QString tested(const Node& node) const {
        const auto* field = fieldOf(node);
        const QString through = field ? field->field.through : QString();
        for (const auto& operand : node.operands) {
            if (operand.kind == Operand::Kind::Field && operand.field.through != through)
                fail(u"The report can't compare these fields with each other."_s);
        }
        const QString test = bare(node);
        return through.isEmpty() ? test : u'(' + through + test + u"))"_s;
    }

    QString bare(const Node& node) const {
        const auto& operands = node.operands;
        const auto* field = fieldOf(node);
        const auto type = field ? field->field.type : jet::ColumnType::Double;
        const auto sql = [&](std::size_t index) { return literal(operands[index], type); };
        switch (node.kind) {
        case Node::Kind::Truth:
            if (operands[0].kind == Operand::Kind::Boolean)
                return operands[0].truth ? u"1 = 1"_s : u"1 = 0"_s;
            return sql(0) + u" = True"_s;
        case Node::Kind::IsNull:
            return sql(0) + u" Is Null"_s;
        case Node::Kind::Like:
            return sql(0) + u" LIKE "_s + pattern(operands[1]);
        case Node::Kind::Between:
            return between(operands, type);
        case Node::Kind::InList:
            return inList(operands, type);
        default:
            break;
        }
        if (type == jet::ColumnType::DateTime && field == &operands[0] &&
            operands[1].kind == Operand::Kind::Day)
            return compareDay(node.comparison, operands);
        return sql(0) + u' ' + node.comparison + u' ' + sql(1);
    }

    static QString inList(const std::vector<Operand>& operands, jet::ColumnType type) {
        if (operands.size() == 2)
            return literal(operands[0], type) + u" = "_s + literal(operands[1], type);
        if (type == jet::ColumnType::DateTime) {
            QStringList days;
            for (std::size_t index = 1; index < operands.size(); ++index)
                days.append(compareDay(u"="_s, {operands[0], operands[index]}));
            return balanced(days, 0, days.size(), u" OR "_s);
        }
        QStringList items;
        for (std::size_t index = 1; index < operands.size(); ++index)
            items.append(literal(operands[index], type));
        return literal(operands[0], type) + u" IN ("_s + items.join(u", "_s) + u')';
    }

    static QString between(const std::vector<Operand>& operands, jet::ColumnType type) {
        const QString tested = literal(operands[0], type);
        const QString low = literal(operands[1], type);
        if (type == jet::ColumnType::DateTime && operands[2].kind == Operand::Kind::Day)
            return u"(%1 >= %2 AND %1 < %3)"_s.arg(tested, low, dayAfter(operands[2]));
        return u"(%1 BETWEEN %2 AND %3)"_s.arg(tested, low, literal(operands[2], type));
    }

    static QString dayAfter(const Operand& day) { return sqlMoment(day.moment.addDays(1)); }

    /// A column may hold a time of day: a date alone stands for that whole day.
    static QString compareDay(const QString& comparison, const std::vector<Operand>& operands) {
        const QString tested = literal(operands[0], jet::ColumnType::DateTime);
        const QString start = literal(operands[1], jet::ColumnType::DateTime);
        const bool day = operands[1].kind == Operand::Kind::Day;
        const QString end = day ? dayAfter(operands[1]) : QString();
        if (!day || comparison == u"<" || comparison == u">=")
            return u"%1 %2 %3"_s.arg(tested, comparison, start);
        if (comparison == u"=")
            return u"(%1 >= %2 AND %1 < %3)"_s.arg(tested, start, end);
        if (comparison == u"<>")
            return u"(%1 < %2 OR %1 >= %3)"_s.arg(tested, start, end);
        return u"%1 %2 %3"_s.arg(tested, comparison == u">" ? u">="_s : u"<"_s, end);
    }

    /// The dialect knows more wildcards than a formula does: they stand for themselves.
    static QString pattern(const Operand& text) {
        QString result;
        for (const QChar c : text.text) {
            if (c == u'[' || c == u'#')
                result += u'[' + QString(c) + u']';
            else
                result += c;
        }
        return quotedText(result);
    }
};

} // namespace

QString whereCondition(const QString& formula, const FieldResolver& fields) {
    if (formula.trimmed().isEmpty())
        return {};
    return Emitter().condition(*Parser(formula, fields).parse());
}

} // namespace report
