#pragma once

#include "platform/jet/Lexer.h"
#include "platform/jet/Translate.h"
#include "platform/jet/Tree.h"

namespace jet {

/// Reads a normalized statement into a tree. A bare name is a select of that table. Throws
/// Error(syntax) with the place in the text.
class Parser {
  public:
    explicit Parser(const Normalized& statement);

    Statement statement();
    /// A whole text that is one expression: the criterion of FindFirst.
    ExpressionPtr criterion();

  private:
    Query query();
    Select select();
    Item item();
    Source source();
    Source sourcePrimary();
    Statement insert();
    Statement update();
    Statement remove();

    ExpressionPtr expression();
    ExpressionPtr conjunction();
    ExpressionPtr negation();
    ExpressionPtr comparison();
    ExpressionPtr binary(int level);
    ExpressionPtr unary();
    ExpressionPtr primary();
    ExpressionPtr call(const QString& name);
    ExpressionPtr literal();

    const Token& peek(int ahead = 0) const;
    const Token& take();
    bool acceptWord(QStringView word);
    bool acceptSymbol(QStringView symbol);
    void expectWord(QStringView word);
    void expectSymbol(QStringView symbol);
    bool isName() const;
    QString name();
    [[noreturn]] void fail() const;

    /// Counts how deep expressions and joins are nested, so that a text can't exhaust the stack.
    class Nesting;
    /// A chain of operators is a tree as deep as it is long.
    void checkChain(int length) const;

    const Normalized& m_statement;
    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
    int m_depth = 0;
    int m_expressionStart = -1;         ///< place in the key of the expression being read
    const char16_t* m_clause = nullptr; ///< what to call the statement in a message
};

} // namespace jet
