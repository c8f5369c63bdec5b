#pragma once

#include "platform/jet/Schema.h"
#include "platform/jet/Value.h"
#include "platform/values/Letters.h"

#include <QString>

#include <memory>
#include <vector>

namespace jet {

struct Expression;
struct Query;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class LiteralKind { Text, Integer, Double, Date };

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
};

/// A node of the syntax tree. Which members count is told by `node`.
struct Expression {
    enum class Node {
        Column,     ///< qualifier, name
        Literal,    ///< kind; literal or, if that is -1, value
        Null,       ///<
        Boolean,    ///< flag
        Negate,     ///< children[0]
        Not,        ///< children[0]
        Arithmetic, ///< op, children[0], children[1]
        Comparison, ///< op, children[0], children[1]
        And,        ///< children[0], children[1]
        Or,         ///< children[0], children[1]
        Between,    ///< children[0] between [1] and [2]; flag: not
        In,         ///< children[0] in the rest, or in query; flag: not
        Like,       ///< children[0] like [1]; flag: not
        IsNull,     ///< children[0]; flag: not
        Exists,     ///< query
        Scalar,     ///< query in parentheses
        Call,       ///< name, children; flag: the argument is `*`
    };

    Node node = Node::Null;
    QString qualifier;
    QString name;
    LiteralKind kind = LiteralKind::Text;
    values::Spellings spellings = values::Spellings::One; ///< of a text
    int literal = -1;                                     ///< index into Normalized::literals
    Value value;                                          ///< of a literal that stayed in the key
    bool flag = false;
    Operator op = Operator::Equal;
    std::vector<ExpressionPtr> children;
    std::unique_ptr<Query> query;

    bool is(Node other) const { return node == other; }
};

struct Item {
    bool star = false;
    QString starOf; ///< the table of `table.*`
    ExpressionPtr expression;
    QString alias;
};

struct Source {
    enum class Kind { Table, Derived, Inner, Left, Right };
    Kind kind = Kind::Table;
    QString name;
    QString alias;
    std::unique_ptr<Query> query; ///< of a derived table
    std::unique_ptr<Source> left, right;
    ExpressionPtr on;
};

struct Order {
    ExpressionPtr expression;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    int top = -1;
    std::vector<Item> items;
    std::vector<Source> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
};

/// One select, or several of a UNION.
struct Query {
    std::vector<Select> selects;
    std::vector<bool> all; ///< for each select but the first: joined by UNION ALL
    std::vector<Order> orderBy;
};

struct Assignment {
    QString qualifier;
    QString column;
    ExpressionPtr value;
};

struct Statement {
    enum class Kind { Select, Insert, Update, Delete };
    Kind kind = Kind::Select;
    Query query;         ///< of a select and of INSERT ... SELECT
    QString table;       ///< of INSERT; of DELETE where it names one before FROM
    QStringList columns; ///< of INSERT; empty if it has no list
    bool hasColumns = false;
    std::vector<ExpressionPtr> values; ///< of INSERT ... VALUES
    std::vector<Source> from;          ///< of UPDATE and DELETE
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

} // namespace jet
