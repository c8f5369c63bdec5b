#include "platform/jet/Parser.h"

#include "platform/values/Literals.h"

#include <array>

namespace jet {

namespace {

using Node = Expression::Node;

/// Words that end an expression or a list of sources, so that they aren't names there.
bool isReserved(const QString& word) {
    static const QSet<QString> reserved = {
        u"select"_s, u"from"_s,   u"where"_s, u"group"_s,  u"order"_s,   u"having"_s,
        u"union"_s,  u"on"_s,     u"inner"_s, u"left"_s,   u"right"_s,   u"join"_s,
        u"and"_s,    u"or"_s,     u"not"_s,   u"in"_s,     u"like"_s,    u"between"_s,
        u"is"_s,     u"as"_s,     u"set"_s,   u"values"_s, u"by"_s,      u"into"_s,
        u"mod"_s,    u"exists"_s, u"asc"_s,   u"desc"_s,   u"distinct"_s};
    return reserved.contains(word.toLower());
}

ExpressionPtr make(Node node) {
    auto expression = std::make_unique<Expression>();
    expression->node = node;
    return expression;
}

ExpressionPtr make(Node node, ExpressionPtr left, ExpressionPtr right) {
    auto expression = make(node);
    expression->children.push_back(std::move(left));
    if (right)
        expression->children.push_back(std::move(right));
    return expression;
}

/// The arithmetic operators from weakest to strongest.
struct Level {
    const char16_t* symbol;
    Operator op;
    int level;
};
constexpr std::array<Level, 8> levels = {{{u"&", Operator::Concatenate, 0},
                                          {u"+", Operator::Add, 1},
                                          {u"-", Operator::Subtract, 1},
                                          {u"mod", Operator::Modulo, 2},
                                          {u"\\", Operator::IntegerDivide, 3},
                                          {u"*", Operator::Multiply, 4},
                                          {u"/", Operator::Divide, 4},
                                          {u"^", Operator::Power, 6}}};
constexpr int deepest = 200;
constexpr int longestChain = 500;

Error tooComplex() {
    return Error(errors::syntax, u"Query is too complex."_s);
}

constexpr int unaryLevel = 5;
constexpr int powerLevel = 6;

} // namespace

class Parser::Nesting {
  public:
    explicit Nesting(Parser& parser) : m_depth(parser.m_depth) {
        if (++m_depth > deepest) {
            --m_depth;
            throw tooComplex();
        }
    }
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

  private:
    int& m_depth;
};

void Parser::checkChain(int length) const {
    if (length > longestChain)
        throw tooComplex();
}

Parser::Parser(const Normalized& statement)
    : m_statement(statement), m_tokens(tokenize(statement.key)) {}

const Token& Parser::peek(int ahead) const {
    return m_tokens[std::min(m_at + static_cast<std::size_t>(ahead), m_tokens.size() - 1)];
}

const Token& Parser::take() {
    const Token& token = m_tokens[m_at];
    if (m_at + 1 < m_tokens.size())
        ++m_at;
    return token;
}

bool Parser::acceptWord(QStringView word) {
    if (!peek().isWord(word))
        return false;
    take();
    return true;
}

bool Parser::acceptSymbol(QStringView symbol) {
    if (!peek().isSymbol(symbol))
        return false;
    take();
    return true;
}

void Parser::expectWord(QStringView word) {
    if (!acceptWord(word))
        fail();
}

void Parser::expectSymbol(QStringView symbol) {
    if (!acceptSymbol(symbol))
        fail();
}

void Parser::fail() const {
    if (m_expressionStart >= 0) {
        const Token& token = peek();
        // Two operands side by side lack an operator; anything else is simply wrong there.
        const bool operand = token.kind == Token::Kind::Literal ||
                             token.kind == Token::Kind::Name ||
                             (token.kind == Token::Kind::Word && !isReserved(token.text));
        const bool afterOperand = m_at > 0 && m_tokens[m_at - 1].kind != Token::Kind::Symbol;
        const bool atEnd = token.kind == Token::Kind::End || token.isSymbol(u",");
        throw Error(errors::syntax,
                    ((operand && afterOperand) || atEnd
                         ? u"Syntax error (missing operator) in query expression '%1'."_s
                         : u"Syntax error in query expression '%1'."_s)
                        .arg(textOfKey(m_statement.key, m_statement.literals, m_expressionStart)));
    }
    if (m_clause != nullptr)
        throw Error(errors::syntax, u"Syntax error in %1."_s.arg(QStringView(m_clause)));
    throw Error(errors::syntax, u"Invalid SQL statement; expected 'DELETE', 'INSERT', "
                                "'SELECT', or 'UPDATE'."_s);
}

bool Parser::isName() const {
    return peek().kind == Token::Kind::Name ||
           (peek().kind == Token::Kind::Word && !isReserved(peek().text));
}

QString Parser::name() {
    if (!isName())
        fail();
    return take().text;
}

Statement Parser::statement() {
    Statement result;
    if (acceptWord(u"insert")) {
        result = insert();
    } else if (acceptWord(u"update")) {
        result = update();
    } else if (acceptWord(u"delete")) {
        result = remove();
    } else if (peek().isWord(u"select") || peek().isSymbol(u"(")) {
        m_clause = u"SELECT statement";
        result.query = query();
    } else if (isName() && peek(1).kind == Token::Kind::End) {
        Select all;
        all.items.emplace_back();
        all.items.back().star = true;
        all.from.emplace_back();
        all.from.back().name = take().text;
        result.query.selects.push_back(std::move(all));
    } else {
        fail();
    }
    if (peek().kind != Token::Kind::End)
        fail();
    return result;
}

ExpressionPtr Parser::criterion() {
    m_expressionStart = 0;
    ExpressionPtr result = expression();
    m_expressionStart = 0;
    if (peek().kind != Token::Kind::End)
        fail();
    return result;
}

Query Parser::query() {
    const Nesting nesting(*this);
    Query result;
    do {
        if (!result.selects.empty())
            result.all.push_back(acceptWord(u"all"));
        if (acceptSymbol(u"(")) {
            Query inner = query();
            expectSymbol(u")");
            if (inner.selects.size() != 1 || !inner.orderBy.empty())
                fail();
            result.selects.push_back(std::move(inner.selects.front()));
        } else {
            result.selects.push_back(select());
        }
    } while (acceptWord(u"union"));
    if (acceptWord(u"order")) {
        m_clause = u"ORDER BY clause";
        expectWord(u"by");
        do {
            Order order;
            order.expression = expression();
            if (acceptWord(u"desc"))
                order.descending = true;
            else
                acceptWord(u"asc");
            result.orderBy.push_back(std::move(order));
        } while (acceptSymbol(u","));
        m_expressionStart = -1;
    }
    return result;
}

Select Parser::select() {
    Select result;
    expectWord(u"select");
    m_clause = u"SELECT statement";
    m_expressionStart = -1;
    if (acceptWord(u"distinct"))
        result.distinct = true;
    else if (!acceptWord(u"distinctrow"))
        acceptWord(u"all");
    if (peek().isWord(u"top") && peek(1).kind == Token::Kind::Literal) {
        take();
        result.top = static_cast<int>(take().value.toLong());
    }
    do
        result.items.push_back(item());
    while (acceptSymbol(u","));
    m_expressionStart =
        peek().kind == Token::Kind::Word && isReserved(peek().text) ? -1 : m_expressionStart;
    if (acceptWord(u"from")) {
        m_clause = u"FROM clause";
        m_expressionStart = -1;
        do
            result.from.push_back(source());
        while (acceptSymbol(u","));
    }
    if (acceptWord(u"where"))
        result.where = expression();
    if (acceptWord(u"group")) {
        m_clause = u"GROUP BY clause";
        m_expressionStart = -1;
        expectWord(u"by");
        do
            result.groupBy.push_back(expression());
        while (acceptSymbol(u","));
    }
    if (acceptWord(u"having"))
        result.having = expression();
    return result;
}

Item Parser::item() {
    Item result;
    if (acceptSymbol(u"*")) {
        result.star = true;
        return result;
    }
    if (isName() && (peek(1).isSymbol(u".") || peek(1).isSymbol(u"!")) && peek(2).isSymbol(u"*")) {
        result.star = true;
        result.starOf = take().text;
        take();
        take();
        return result;
    }
    result.expression = expression();
    if (acceptWord(u"as"))
        result.alias = name();
    return result;
}

Source Parser::source() {
    Source left = sourcePrimary();
    while (true) {
        Source join;
        if (acceptWord(u"inner") || peek().isWord(u"join")) {
            join.kind = Source::Kind::Inner;
        } else if (peek().isWord(u"left") || peek().isWord(u"right")) {
            join.kind = take().isWord(u"left") ? Source::Kind::Left : Source::Kind::Right;
            acceptWord(u"outer");
        } else {
            return left;
        }
        expectWord(u"join");
        join.left = std::make_unique<Source>(std::move(left));
        join.right = std::make_unique<Source>(sourcePrimary());
        expectWord(u"on");
        join.on = expression();
        m_expressionStart = -1;
        left = std::move(join);
    }
}

Source Parser::sourcePrimary() {
    const Nesting nesting(*this);
    Source result;
    if (acceptSymbol(u"(")) {
        if (peek().isWord(u"select")) {
            result.kind = Source::Kind::Derived;
            result.query = std::make_unique<Query>(query());
            m_expressionStart = -1;
            m_clause = u"FROM clause";
            expectSymbol(u")");
        } else {
            result = source();
            expectSymbol(u")");
            return result;
        }
    } else {
        result.name = name();
    }
    if (acceptWord(u"as") || isName())
        result.alias = name();
    return result;
}

Statement Parser::insert() {
    m_clause = u"INSERT INTO statement";
    Statement result;
    result.kind = Statement::Kind::Insert;
    expectWord(u"into");
    result.table = name();
    if (peek().isSymbol(u"(") && !peek(1).isWord(u"select")) {
        take();
        result.hasColumns = true;
        do {
            QString column = name();
            if (acceptSymbol(u".") || acceptSymbol(u"!"))
                column = name();
            result.columns << column;
        } while (acceptSymbol(u","));
        expectSymbol(u")");
    }
    if (acceptWord(u"values")) {
        expectSymbol(u"(");
        do {
            // An empty place among the values is no fault of an expression.
            if (peek().isSymbol(u",") || peek().isSymbol(u")")) {
                m_expressionStart = -1;
                m_clause = u"INSERT INTO statement";
                fail();
            }
            result.values.push_back(expression());
        } while (acceptSymbol(u","));
        expectSymbol(u")");
        m_expressionStart = -1;
    } else {
        result.query = query();
    }
    return result;
}

Statement Parser::update() {
    m_clause = u"UPDATE statement";
    Statement result;
    result.kind = Statement::Kind::Update;
    do
        result.from.push_back(source());
    while (acceptSymbol(u","));
    m_clause = u"UPDATE statement";
    expectWord(u"set");
    do {
        m_expressionStart = -1;
        Assignment assignment;
        assignment.column = name();
        if (acceptSymbol(u".") || acceptSymbol(u"!")) {
            assignment.qualifier = assignment.column;
            assignment.column = name();
        }
        expectSymbol(u"=");
        if (peek().isSymbol(u",") || peek().kind == Token::Kind::End || peek().isWord(u"where"))
            fail();
        assignment.value = expression();
        result.assignments.push_back(std::move(assignment));
    } while (acceptSymbol(u","));
    if (acceptWord(u"where"))
        result.where = expression();
    return result;
}

Statement Parser::remove() {
    m_clause = u"DELETE statement";
    Statement result;
    result.kind = Statement::Kind::Delete;
    if (!acceptSymbol(u"*") && isName()) {
        result.table = name();
        if (acceptSymbol(u".") || acceptSymbol(u"!"))
            expectSymbol(u"*");
    }
    expectWord(u"from");
    m_clause = u"FROM clause";
    do
        result.from.push_back(source());
    while (acceptSymbol(u","));
    if (acceptWord(u"where"))
        result.where = expression();
    return result;
}

ExpressionPtr Parser::expression() {
    const Nesting nesting(*this);
    const int outer = m_expressionStart;
    m_expressionStart = peek().position;
    ExpressionPtr left = conjunction();
    for (int length = 0; acceptWord(u"or"); checkChain(++length))
        left = make(Node::Or, std::move(left), conjunction());
    // The place stays for what follows this expression, unless it is part of a greater one.
    if (outer >= 0 && (peek().isSymbol(u")") || peek().isSymbol(u",")))
        m_expressionStart = outer;
    return left;
}

ExpressionPtr Parser::conjunction() {
    ExpressionPtr left = negation();
    for (int length = 0; acceptWord(u"and"); checkChain(++length))
        left = make(Node::And, std::move(left), negation());
    return left;
}

ExpressionPtr Parser::negation() {
    const Nesting nesting(*this);
    if (acceptWord(u"not"))
        return make(Node::Not, negation(), nullptr);
    return comparison();
}

ExpressionPtr Parser::comparison() {
    static constexpr std::array<std::pair<const char16_t*, Operator>, 6> operators = {
        {{u"=", Operator::Equal},
         {u"<>", Operator::NotEqual},
         {u"<", Operator::Less},
         {u"<=", Operator::LessOrEqual},
         {u">", Operator::Greater},
         {u">=", Operator::GreaterOrEqual}}};
    ExpressionPtr left = binary(0);
    for (int length = 0;; checkChain(++length)) {
        if (peek().kind == Token::Kind::Symbol) {
            const auto found =
                std::find_if(operators.begin(), operators.end(),
                             [&](const auto& entry) { return peek().isSymbol(entry.first); });
            if (found == operators.end())
                return left;
            take();
            left = make(Node::Comparison, std::move(left), binary(0));
            left->op = found->second;
            continue;
        }
        if (acceptWord(u"is")) {
            const bool negated = acceptWord(u"not");
            expectWord(u"null");
            left = make(Node::IsNull, std::move(left), nullptr);
            left->flag = negated;
            continue;
        }
        const bool negated =
            peek().isWord(u"not") &&
            (peek(1).isWord(u"in") || peek(1).isWord(u"like") || peek(1).isWord(u"between"));
        if (negated)
            take();
        if (acceptWord(u"like")) {
            left = make(Node::Like, std::move(left), binary(0));
        } else if (acceptWord(u"between")) {
            ExpressionPtr low = binary(0);
            expectWord(u"and");
            left = make(Node::Between, std::move(left), std::move(low));
            left->children.push_back(binary(0));
        } else if (acceptWord(u"in")) {
            left = make(Node::In, std::move(left), nullptr);
            expectSymbol(u"(");
            if (peek().isWord(u"select")) {
                left->query = std::make_unique<Query>(query());
            } else {
                do
                    left->children.push_back(expression());
                while (acceptSymbol(u","));
            }
            expectSymbol(u")");
        } else {
            return left;
        }
        left->flag = negated;
    }
}

ExpressionPtr Parser::binary(int level) {
    if (level == unaryLevel)
        return unary();
    if (level > powerLevel)
        return primary();
    ExpressionPtr left = binary(level + 1);
    for (int length = 0;; checkChain(++length)) {
        const auto found = std::find_if(levels.begin(), levels.end(), [&](const Level& entry) {
            return entry.level == level &&
                   (peek().isSymbol(entry.symbol) || peek().isWord(entry.symbol));
        });
        if (found == levels.end())
            return left;
        take();
        // A sign may stand behind the power: 2 ^ -1.
        ExpressionPtr right =
            level == powerLevel && peek().isSymbol(u"-") ? unary() : binary(level + 1);
        left = make(Node::Arithmetic, std::move(left), std::move(right));
        left->op = found->op;
    }
}

ExpressionPtr Parser::unary() {
    const Nesting nesting(*this);
    if (acceptSymbol(u"-"))
        return make(Node::Negate, unary(), nullptr);
    if (acceptSymbol(u"+"))
        return unary();
    return binary(powerLevel);
}

ExpressionPtr Parser::primary() {
    const Token& token = peek();
    if (token.kind == Token::Kind::Literal)
        return literal();
    if (acceptSymbol(u"(")) {
        if (peek().isWord(u"select")) {
            ExpressionPtr scalar = make(Node::Scalar);
            const int outer = m_expressionStart;
            scalar->query = std::make_unique<Query>(query());
            expectSymbol(u")");
            m_expressionStart = outer;
            return scalar;
        }
        ExpressionPtr inner = expression();
        expectSymbol(u")");
        return inner;
    }
    if (token.kind != Token::Kind::Word && token.kind != Token::Kind::Name)
        fail();
    const bool callable = token.kind == Token::Kind::Word && peek(1).isSymbol(u"(");
    if (acceptWord(u"exists")) {
        ExpressionPtr exists = make(Node::Exists);
        expectSymbol(u"(");
        const int outer = m_expressionStart;
        exists->query = std::make_unique<Query>(query());
        expectSymbol(u")");
        m_expressionStart = outer;
        return exists;
    }
    // Left and Right are functions where a bracket follows.
    const bool side = token.isWord(u"left") || token.isWord(u"right");
    if (callable && (side || !isReserved(token.text)))
        return call(take().text);
    if (!isName())
        fail();
    if (token.kind == Token::Kind::Word && !peek(1).isSymbol(u".") && !peek(1).isSymbol(u"!")) {
        if (acceptWord(u"null"))
            return make(Node::Null);
        if (token.isWord(u"true") || token.isWord(u"false")) {
            ExpressionPtr boolean = make(Node::Boolean);
            boolean->flag = take().isWord(u"true");
            return boolean;
        }
    }
    ExpressionPtr column = make(Node::Column);
    column->name = take().text;
    if (acceptSymbol(u".") || acceptSymbol(u"!")) {
        if (peek().kind != Token::Kind::Word && peek().kind != Token::Kind::Name)
            fail();
        column->qualifier = column->name;
        column->name = take().text;
    }
    return column;
}

ExpressionPtr Parser::call(const QString& function) {
    ExpressionPtr result = make(Node::Call);
    result->name = function.toLower();
    expectSymbol(u"(");
    if (peek().isSymbol(u"*") && peek(1).isSymbol(u")")) {
        take();
        result->flag = true;
    } else if (!peek().isSymbol(u")")) {
        do
            result->children.push_back(expression());
        while (acceptSymbol(u","));
    }
    expectSymbol(u")");
    return result;
}

ExpressionPtr Parser::literal() {
    const Token& token = take();
    ExpressionPtr result = make(Node::Literal);
    result->kind = token.literalKind;
    result->spellings = token.spellings;
    result->literal = token.literal;
    result->value = token.value;
    return result;
}

} // namespace jet
