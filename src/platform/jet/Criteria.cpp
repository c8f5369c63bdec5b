#include "platform/jet/Parser.h"
#include "platform/values/Literals.h"

#include "platform/values/Letters.h"
#include "platform/values/Numbers.h"

#include <cmath>

namespace jet {

using Node = Expression::Node;
using Field = std::function<Value(const QString&)>;

struct Criteria::Data {
    Normalized text;
    ExpressionPtr root;

    Value value(const Expression& expression, const Field& field) const;
    /// True, false, or nothing where a Null leaves it open.
    std::optional<bool> test(const Expression& expression, const Field& field) const;
};

namespace {

/// Equality tells accents apart, a range doesn't: so do the engines.
enum class Asked { Same, Range };
int compareTexts(const QString& a, const QString& b, Asked asked) {
    if (asked == Asked::Same)
        return values::sameText(a, b) ? 0 : 1;
    return values::folded(a).toUtf8().compare(values::folded(b).toUtf8());
}

/// Less than 0, 0 or greater, nothing for Null. Text against a number is compared as text, text
/// against a date as a date.
std::optional<int> compare(const Value& a, const Value& b, Asked asked) {
    if (a.isNull() || b.isNull())
        return std::nullopt;
    const auto order = [](auto x, auto y) { return x < y ? -1 : y < x ? 1 : 0; };
    if (a.kind() == Value::Kind::Date || b.kind() == Value::Kind::Date) {
        const auto moment = [](const Value& v) {
            return v.kind() == Value::Kind::Text ? momentFromText(v.toText()) : v.toDateTime();
        };
        const auto x = moment(a), y = moment(b);
        if (!x || !y)
            throw Error(errors::typeMismatch, u"Data type mismatch in criteria expression."_s);
        return order(*x, *y);
    }
    if (a.kind() == Value::Kind::Text || b.kind() == Value::Kind::Text)
        return compareTexts(a.toText(), b.toText(), asked);
    if (a.kind() == Value::Kind::Boolean || b.kind() == Value::Kind::Boolean)
        return order(b.toBool(), a.toBool()); // True is -1
    return order(a.toDouble(), b.toDouble());
}

QChar small(QChar letter) {
    return values::lowered(QStringView(&letter, 1)).at(0);
}

bool matchesPattern(QStringView text, QStringView pattern) {
    if (pattern.isEmpty())
        return text.isEmpty();
    const QChar p = pattern[0];
    if (p == u'*') {
        for (qsizetype i = 0; i <= text.size(); ++i)
            if (matchesPattern(text.mid(i), pattern.mid(1)))
                return true;
        return false;
    }
    if (text.isEmpty())
        return false;
    const QChar c = small(text[0]);
    if (p == u'[') {
        const qsizetype end = pattern.indexOf(u']');
        if (end < 0)
            throw Error(errors::syntax, u"Invalid pattern string."_s);
        QStringView set = pattern.mid(1, end - 1);
        const bool negated = set.size() > 1 && set[0] == u'!';
        if (negated)
            set = set.mid(1);
        bool inside = false;
        for (qsizetype i = 0; i < set.size(); ++i) {
            if (i + 2 < set.size() && set[i + 1] == u'-') {
                inside = inside || (c >= small(set[i]) && c <= small(set[i + 2]));
                i += 2;
            } else {
                inside = inside || c == small(set[i]);
            }
        }
        return inside != negated && matchesPattern(text.mid(1), pattern.mid(end + 1));
    }
    const bool fits = p == u'?' || (p == u'#' ? c.isDigit() : small(p) == c);
    return fits && matchesPattern(text.mid(1), pattern.mid(1));
}

std::optional<bool> negated(std::optional<bool> test, bool negate) {
    return test && negate ? std::optional<bool>(!*test) : test;
}

bool compares(Operator op, int order) {
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessOrEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

} // namespace

Value Criteria::Data::value(const Expression& expression, const Field& field) const {
    switch (expression.node) {
    case Node::Column:
        return field(expression.qualifier.isEmpty()
                         ? expression.name
                         : expression.qualifier + u'.' + expression.name);
    case Node::Literal:
        return expression.literal < 0 ? expression.value
                                      : text.literals[static_cast<std::size_t>(expression.literal)];
    case Node::Null:
        return {};
    case Node::Boolean:
        return Value(expression.flag);
    case Node::Negate: {
        const Value inner = value(*expression.children[0], field);
        return inner.isNull() ? inner : Value(-inner.toDouble());
    }
    case Node::Arithmetic: {
        const Value a = value(*expression.children[0], field);
        const Value b = value(*expression.children[1], field);
        if (expression.op == Operator::Concatenate)
            return Value(a.toText() + b.toText());
        if (a.isNull() || b.isNull())
            return {};
        if (expression.op == Operator::Add &&
            (a.kind() == Value::Kind::Text || b.kind() == Value::Kind::Text))
            return Value(a.toText() + b.toText());
        const double x = a.toDouble(), y = b.toDouble();
        switch (expression.op) {
        case Operator::Add:
            return Value(x + y);
        case Operator::Subtract:
            return Value(x - y);
        case Operator::Multiply:
            return Value(x * y);
        case Operator::Divide:
            return y == 0 ? Value() : Value(x / y);
        default:
            break;
        }
        break;
    }
    default:
        if (const auto result = test(expression, field))
            return Value(*result);
        return {};
    }
    throw Error(errors::syntax, u"Syntax error in query expression '%1'."_s.arg(
                                    textOfKey(text.key, text.literals)));
}

std::optional<bool> Criteria::Data::test(const Expression& expression, const Field& field) const {
    const auto child = [&](std::size_t i) { return value(*expression.children[i], field); };
    switch (expression.node) {
    case Node::And: {
        const auto a = test(*expression.children[0], field);
        if (a && !*a)
            return false;
        const auto b = test(*expression.children[1], field);
        return b && !*b ? b : a && b ? std::optional<bool>(true) : std::nullopt;
    }
    case Node::Or: {
        const auto a = test(*expression.children[0], field);
        if (a && *a)
            return true;
        const auto b = test(*expression.children[1], field);
        return b && *b ? b : a && b ? std::optional<bool>(false) : std::nullopt;
    }
    case Node::Not:
        return negated(test(*expression.children[0], field), true);
    case Node::Comparison: {
        const bool equality =
            expression.op == Operator::Equal || expression.op == Operator::NotEqual;
        const auto order = compare(child(0), child(1), equality ? Asked::Same : Asked::Range);
        return order ? std::optional<bool>(compares(expression.op, *order)) : std::nullopt;
    }
    case Node::Between: {
        const Value subject = child(0);
        const auto low = compare(subject, child(1), Asked::Range),
                   high = compare(subject, child(2), Asked::Range);
        if (!low || !high)
            return std::nullopt;
        return negated(*low >= 0 && *high <= 0, expression.flag);
    }
    case Node::Like: {
        const Value subject = child(0), pattern = child(1);
        if (subject.isNull() || pattern.isNull())
            return std::nullopt;
        return negated(matchesPattern(subject.toText(), pattern.toText()), expression.flag);
    }
    case Node::In: {
        if (expression.query)
            break;
        const Value subject = child(0);
        bool open = subject.isNull();
        for (std::size_t i = 1; i < expression.children.size(); ++i) {
            const auto order = compare(subject, child(i), Asked::Same);
            if (order && *order == 0)
                return !expression.flag;
            open = open || !order;
        }
        return open ? std::nullopt : std::optional<bool>(expression.flag);
    }
    case Node::IsNull:
        return child(0).isNull() != expression.flag;
    case Node::Exists:
    case Node::Scalar:
    case Node::Call:
        break;
    default: {
        const Value result = value(expression, field);
        return result.isNull() ? std::nullopt : std::optional<bool>(result.toBool());
    }
    }
    throw Error(errors::syntax, u"Syntax error in query expression '%1'."_s.arg(
                                    textOfKey(text.key, text.literals)));
}

Criteria::Criteria(const Normalized& criteria) : m_data(std::make_unique<Data>()) {
    m_data->text = asWritten(criteria);
    m_data->root = Parser(m_data->text).criterion();
}

Criteria::~Criteria() = default;
Criteria::Criteria(Criteria&&) noexcept = default;
Criteria& Criteria::operator=(Criteria&&) noexcept = default;

bool Criteria::matches(const Field& field) const {
    return m_data->test(*m_data->root, field).value_or(false);
}

} // namespace jet
