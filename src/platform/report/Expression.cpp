#include "platform/report/Expression.h"

#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <cmath>
#include <stdexcept>

namespace report {

using jet::Value;

struct ExpressionNode {
    enum class Op {
        Literal,
        Field,
        Total,
        Negate,
        Not,
        And,
        Or,
        Equal,
        NotEqual,
        Less,
        Greater,
        LessEqual,
        GreaterEqual,
        Add,
        Subtract,
        Multiply,
        Divide,
        Join,
        Iif,
        IsEmpty,
        Left,
        Upper,
        Days,
        Week,
        JoinFilled
    };
    Op op = Op::Literal;
    Value literal;
    QString name;
    TotalKind totalKind = TotalKind::Sum;
    int totalId = -1;
    std::vector<std::shared_ptr<ExpressionNode>> kids;
};

namespace {

using Op = ExpressionNode::Op;
using NodePtr = std::shared_ptr<ExpressionNode>;

[[noreturn]] void fail(const QString& message) {
    throw std::invalid_argument(message.toStdString());
}

NodePtr node(Op op, std::vector<NodePtr> kids = {}) {
    auto made = std::make_shared<ExpressionNode>();
    made->op = op;
    made->kids = std::move(kids);
    return made;
}

/// Recursive descent over a text, up to its end or to a terminator that no expression contains.
class Parser {
  public:
    Parser(const QString& text, qsizetype at) : m_text(text), m_at(at) {}

    NodePtr expression() { return orExpression(); }
    qsizetype position() {
        skipBlanks();
        return m_at;
    }

  private:
    void skipBlanks() {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
    }
    bool take(QLatin1String symbol) {
        skipBlanks();
        if (QStringView(m_text).mid(m_at).startsWith(symbol)) {
            m_at += symbol.size();
            return true;
        }
        return false;
    }
    static bool isNameCharacter(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'.'; }
    bool takeWord(QLatin1String word) {
        skipBlanks();
        const QStringView rest = QStringView(m_text).mid(m_at);
        if (!rest.startsWith(word, Qt::CaseInsensitive))
            return false;
        if (rest.size() > word.size() && isNameCharacter(rest[word.size()]))
            return false;
        m_at += word.size();
        return true;
    }
    void expect(QLatin1String symbol) {
        if (!take(symbol))
            fail(u"\"%1\" is missing in the expression %2"_s.arg(symbol, m_text));
    }

    NodePtr orExpression() {
        auto left = andExpression();
        while (takeWord(QLatin1String("or")))
            left = node(Op::Or, {left, andExpression()});
        return left;
    }
    NodePtr andExpression() {
        auto left = notExpression();
        while (takeWord(QLatin1String("and")))
            left = node(Op::And, {left, notExpression()});
        return left;
    }
    NodePtr notExpression() {
        const Nesting nesting(*this);
        if (takeWord(QLatin1String("not")))
            return node(Op::Not, {notExpression()});
        return comparison();
    }
    NodePtr comparison() {
        auto left = sum();
        static constexpr std::pair<const char*, Op> operators[] = {
            {"<>", Op::NotEqual}, {"<=", Op::LessEqual}, {">=", Op::GreaterEqual},
            {"=", Op::Equal},     {"<", Op::Less},       {">", Op::Greater}};
        for (const auto& [symbol, op] : operators) {
            if (take(QLatin1String(symbol)))
                return node(op, {left, sum()});
        }
        return left;
    }
    NodePtr sum() {
        auto left = product();
        for (;;) {
            if (take(QLatin1String("+")))
                left = node(Op::Add, {left, product()});
            else if (take(QLatin1String("-")))
                left = node(Op::Subtract, {left, product()});
            else if (take(QLatin1String("&")))
                left = node(Op::Join, {left, product()});
            else
                return left;
        }
    }
    NodePtr product() {
        auto left = factor();
        for (;;) {
            if (take(QLatin1String("*")))
                left = node(Op::Multiply, {left, factor()});
            else if (take(QLatin1String("/")))
                left = node(Op::Divide, {left, factor()});
            else
                return left;
        }
    }
    NodePtr factor() {
        const Nesting nesting(*this);
        if (take(QLatin1String("-")))
            return node(Op::Negate, {factor()});
        if (take(QLatin1String("("))) {
            auto inner = orExpression();
            expect(QLatin1String(")"));
            return inner;
        }
        skipBlanks();
        if (m_at >= m_text.size())
            fail(u"the expression ends too early: %1"_s.arg(m_text));
        const QChar c = m_text[m_at];
        if (c == u'\'')
            return text();
        if (c.isDigit())
            return number();
        if (c == u'[') {
            const auto end = m_text.indexOf(u']', m_at);
            if (end < 0)
                fail(u"\"]\" is missing in the expression %1"_s.arg(m_text));
            auto made = node(Op::Field);
            made->name = m_text.mid(m_at + 1, end - m_at - 1);
            m_at = end + 1;
            return made;
        }
        if (c.isLetter() || c == u'_')
            return named();
        fail(u"unexpected \"%1\" in the expression %2"_s.arg(c).arg(m_text));
    }
    NodePtr text() {
        QString content;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] == u'\'') {
                if (m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\'')
                    ++m_at;
                else
                    break;
            }
            content += m_text[m_at];
        }
        if (m_at >= m_text.size())
            fail(u"a text isn't closed in the expression %1"_s.arg(m_text));
        ++m_at;
        auto made = node(Op::Literal);
        made->literal = Value(content);
        return made;
    }
    NodePtr number() {
        const auto start = m_at;
        while (m_at < m_text.size() && (m_text[m_at].isDigit() || m_text[m_at] == u'.'))
            ++m_at;
        auto made = node(Op::Literal);
        const QStringView digits = QStringView(m_text).mid(start, m_at - start);
        bool whole = false;
        const qlonglong integer = digits.toLongLong(&whole);
        made->literal = whole ? Value(integer) : Value(digits.toDouble());
        return made;
    }
    NodePtr named() {
        const auto start = m_at;
        while (m_at < m_text.size() && isNameCharacter(m_text[m_at]))
            ++m_at;
        const QString name = m_text.mid(start, m_at - start);
        if (!take(QLatin1String("("))) {
            if (name.compare(u"true", Qt::CaseInsensitive) == 0 ||
                name.compare(u"false", Qt::CaseInsensitive) == 0) {
                auto made = node(Op::Literal);
                made->literal = Value(name.compare(u"true", Qt::CaseInsensitive) == 0);
                return made;
            }
            auto made = node(Op::Field);
            made->name = name;
            return made;
        }
        std::vector<NodePtr> arguments;
        if (!take(QLatin1String(")"))) {
            do
                arguments.push_back(orExpression());
            while (take(QLatin1String(",")));
            expect(QLatin1String(")"));
        }
        return call(name, std::move(arguments));
    }
    NodePtr call(const QString& name, std::vector<NodePtr> arguments) {
        const auto dot = name.lastIndexOf(u'.');
        const QString function = name.mid(dot + 1).toLower();
        const auto count = arguments.size();
        if (dot < 0 && function == u"iif" && count == 3)
            return node(Op::Iif, std::move(arguments));
        if (dot < 0 && function == u"isempty" && count == 1)
            return node(Op::IsEmpty, std::move(arguments));
        if (dot < 0 && function == u"left" && count == 2)
            return node(Op::Left, std::move(arguments));
        if (dot < 0 && function == u"upper" && count == 1)
            return node(Op::Upper, std::move(arguments));
        if (dot < 0 && function == u"days" && (count == 1 || count == 2))
            return node(Op::Days, std::move(arguments));
        if (dot < 0 && function == u"week" && count == 1)
            return node(Op::Week, std::move(arguments));
        if (dot < 0 && function == u"join" && count > 1)
            return node(Op::JoinFilled, std::move(arguments));
        static const QHash<QString, TotalKind> totals{{u"sum"_s, TotalKind::Sum},
                                                      {u"count"_s, TotalKind::Count},
                                                      {u"avg"_s, TotalKind::Average},
                                                      {u"min"_s, TotalKind::Minimum},
                                                      {u"max"_s, TotalKind::Maximum}};
        const auto found = totals.find(function);
        if (found == totals.end())
            fail(u"unknown function %1 in the expression %2"_s.arg(name, m_text));
        if (count > 1 || (count == 0 && *found != TotalKind::Count))
            fail(u"%1 needs one value in the expression %2"_s.arg(name, m_text));
        auto made = node(Op::Total, std::move(arguments));
        made->totalKind = *found;
        made->name = dot < 0 ? QString() : name.left(dot);
        return made;
    }

    /// Trees are walked by recursion: no text may make one that overflows the stack.
    class Nesting {
      public:
        explicit Nesting(Parser& parser) : m_depth(parser.m_depth) {
            constexpr int mostDepth = 400, mostFactors = 2000;
            if (++m_depth > mostDepth || ++parser.m_factors > mostFactors)
                fail(u"the expression is too long: %1 ..."_s.arg(parser.m_text.left(60)));
        }
        ~Nesting() { --m_depth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

      private:
        int& m_depth;
    };

    const QString& m_text;
    qsizetype m_at;
    int m_depth = 0;
    int m_factors = 0;
};

bool isNumber(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Boolean:
    case Value::Kind::Integer:
    case Value::Kind::Double:
    case Value::Kind::Money:
        return true;
    default:
        return false;
    }
}

int compare(const Value& a, const Value& b) {
    if (a.kind() == Value::Kind::Date && b.kind() == Value::Kind::Date) {
        const auto left = *a.toDateTime();
        const auto right = *b.toDateTime();
        return left < right ? -1 : left > right ? 1 : 0;
    }
    if (isNumber(a) || isNumber(b)) {
        const double left = a.toDouble();
        const double right = b.toDouble();
        return left < right ? -1 : left > right ? 1 : 0;
    }
    return values::compareText(a.toText(), b.toText());
}

/// Days since the beginning of 1900, with the part of the day of the moment or of a time as text.
/// Null where there is no date.
Value daysOf(const Value& date, const Value& time) {
    const auto moment = date.toDateTime();
    if (!moment)
        return {};
    const double days = static_cast<double>(QDate(1900, 1, 1).daysTo(moment->date()));
    QTime clock = QLocale::c().toTime(time.toText().trimmed().toUpper(), u"h:mm AP"_s);
    if (!clock.isValid())
        clock = moment->time();
    return days + clock.msecsSinceStartOfDay() / 86400000.0;
}

Value arithmetic(Op op, const Value& a, const Value& b) {
    if (op == Op::Add && a.kind() == Value::Kind::Text && b.kind() == Value::Kind::Text)
        return a.toText() + b.toText();
    const auto exact = [](const Value& value) {
        return value.kind() == Value::Kind::Money || value.kind() == Value::Kind::Integer ||
               value.isNull();
    };
    if ((op == Op::Add || op == Op::Subtract) && exact(a) && exact(b)) {
        const auto left = a.toCurrency();
        const auto right = b.toCurrency();
        return op == Op::Add ? left + right : left - right;
    }
    const double left = a.toDouble();
    const double right = b.toDouble();
    switch (op) {
    case Op::Add:
        return left + right;
    case Op::Subtract:
        return left - right;
    case Op::Multiply:
        return left * right;
    default:
        return right == 0 ? 0.0 : left / right;
    }
}

void collect(ExpressionNode& node, std::vector<TotalRequest>& totals) {
    if (node.op == Op::Total) {
        totals.push_back(
            {node.totalKind, node.name,
             node.kids.empty() ? nullptr : std::shared_ptr<const ExpressionNode>(node.kids.front()),
             &node.totalId});
        return;
    }
    for (const auto& kid : node.kids)
        collect(*kid, totals);
}

} // namespace

Value nodeValue(const ExpressionNode& node, const Scope& scope) {
    const auto kid = [&](std::size_t index) { return nodeValue(*node.kids[index], scope); };
    switch (node.op) {
    case Op::Literal:
        return node.literal;
    case Op::Field:
        return scope.field(node.name);
    case Op::Total:
        return scope.total(node.totalId);
    case Op::Negate: {
        const Value value = kid(0);
        return value.kind() == Value::Kind::Money ? Value(-value.toCurrency())
                                                  : Value(-value.toDouble());
    }
    case Op::Not:
        return !kid(0).toBool();
    case Op::And:
        return kid(0).toBool() && kid(1).toBool();
    case Op::Or:
        return kid(0).toBool() || kid(1).toBool();
    case Op::Equal:
        return compare(kid(0), kid(1)) == 0;
    case Op::NotEqual:
        return compare(kid(0), kid(1)) != 0;
    case Op::Less:
        return compare(kid(0), kid(1)) < 0;
    case Op::Greater:
        return compare(kid(0), kid(1)) > 0;
    case Op::LessEqual:
        return compare(kid(0), kid(1)) <= 0;
    case Op::GreaterEqual:
        return compare(kid(0), kid(1)) >= 0;
    case Op::Join:
        return kid(0).toText() + kid(1).toText();
    case Op::Iif:
        return kid(0).toBool() ? kid(1) : kid(2);
    case Op::IsEmpty:
        return kid(0).toText().trimmed().isEmpty();
    case Op::Left:
        return kid(0).toText().left(static_cast<qsizetype>(kid(1).toDouble()));
    case Op::Upper:
        return kid(0).toText().toUpper();
    case Op::Days:
        return daysOf(kid(0), node.kids.size() > 1 ? kid(1) : Value());
    case Op::Week: {
        // The first of 1900 was a Monday.
        const Value days = daysOf(kid(0), {});
        return days.isNull() ? days : Value(std::floor(days.toDouble() / 7) * 7);
    }
    case Op::JoinFilled: {
        QStringList filled;
        for (std::size_t index = 1; index < node.kids.size(); ++index) {
            const QString text = kid(index).toText().trimmed();
            if (!text.isEmpty())
                filled.append(text);
        }
        return filled.join(kid(0).toText());
    }
    default:
        return arithmetic(node.op, kid(0), kid(1));
    }
}

Expression Expression::parse(const QString& text) {
    Parser parser(text, 0);
    Expression made;
    made.m_root = parser.expression();
    if (parser.position() != text.size())
        fail(u"unexpected \"%1\" in the expression %2"_s.arg(text.mid(parser.position()), text));
    return made;
}

Value Expression::value(const Scope& scope) const {
    return nodeValue(*m_root, scope);
}

void Expression::collectTotals(std::vector<TotalRequest>& totals) const {
    if (m_root)
        collect(*m_root, totals);
}

Template Template::parse(const QString& text) {
    Template made;
    QString literal;
    const auto endLiteral = [&] {
        if (!literal.isEmpty())
            made.m_pieces.push_back({literal, nullptr, {}});
        literal.clear();
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        const bool doubled = at + 1 < text.size() && text[at + 1] == c;
        if (c == u'}' && !doubled)
            fail(u"\"}\" without \"{\" in the text: %1"_s.arg(text));
        if (c != u'{' || doubled) {
            literal += c;
            at += c == u'{' || c == u'}';
            continue;
        }
        endLiteral();
        Parser parser(text, at + 1);
        auto expression = parser.expression();
        at = parser.position();
        QString mask;
        if (at < text.size() && text[at] == u':') {
            const auto end = text.indexOf(u'}', at);
            mask = text.mid(at + 1, end - at - 1);
            at = end;
        }
        if (at < 0 || at >= text.size() || text[at] != u'}')
            fail(u"\"}\" is missing in the text: %1"_s.arg(text));
        made.m_pieces.push_back({{}, std::move(expression), mask});
    }
    endLiteral();
    return made;
}

QString Template::text(const Scope& scope) const {
    QString result;
    for (const auto& piece : m_pieces)
        result +=
            piece.node ? shownValue(nodeValue(*piece.node, scope), piece.mask) : piece.literal;
    return result;
}

QString Template::sql(const Scope& scope) const {
    QString result;
    for (const auto& piece : m_pieces)
        result += piece.node ? sqlLiteral(nodeValue(*piece.node, scope)) : piece.literal;
    return result;
}

void Template::collectTotals(std::vector<TotalRequest>& totals) const {
    for (const auto& piece : m_pieces) {
        if (piece.node)
            collect(*piece.node, totals);
    }
}

QString shownValue(const Value& value, const QString& mask) {
    if (mask.isEmpty() || value.isNull())
        return value.toText();
    switch (value.kind()) {
    case Value::Kind::Date:
        return values::format(*value.toDateTime(), mask);
    case Value::Kind::Money:
        return values::format(value.toCurrency(), mask);
    case Value::Kind::Boolean: {
        // "Yes;No" names the two states.
        const auto states = mask.split(u';');
        return value.toBool() ? states.value(0) : states.value(1);
    }
    case Value::Kind::Text: {
        if (values::isNumeric(value.toText()))
            return values::format(value.toDouble(), mask);
        return value.toText();
    }
    default:
        return values::format(value.toDouble(), mask);
    }
}

QString sqlLiteral(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        return u"Null"_s;
    case Value::Kind::Text:
        return u'\'' + values::quoted(value.toText()) + u'\'';
    case Value::Kind::Date: {
        const auto moment = *value.toDateTime();
        QString text = values::sqlDate(moment.date());
        if (moment.time() != QTime(0, 0))
            text += moment.time().toString(u" HH:mm:ss"_s);
        return u'#' + text + u'#';
    }
    default:
        return value.toText();
    }
}

} // namespace report
