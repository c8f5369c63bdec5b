#pragma once

#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace report {

/// What an expression asks of the row it is worked out for.
class Scope {
  public:
    virtual ~Scope() = default;
    /// A field by name, or one of page, pages, title, printdate, printtime, currency,
    /// rownumber. Throws ReportError
    /// (invalidFieldName).
    virtual jet::Value field(const QString& name) const = 0;
    virtual jet::Value total(int id) const = 0;
};

enum class TotalKind { Sum, Count, Average, Minimum, Maximum };

struct ExpressionNode;

/// A total that a text asks for: `sum(Hours)`, `count()`, `operations.sum(Cost)`.
struct TotalRequest {
    TotalKind kind = TotalKind::Sum;
    QString list; ///< name of the list that is totalled; empty: the rows that the band stands in
    std::shared_ptr<const ExpressionNode> of; ///< null for count()
    int* id = nullptr; ///< to be given the number under which Scope::total is asked
};

/// A value worked out of the fields of a row: names (`PartNo`, `Job.PartNo`, `[Part No]`), numbers,
/// text in single quotes, true, false, + - * / & (joins texts), = <> < > <= >=, and, or, not,
/// iif(condition, a, b), isempty(x), left(text, n), upper(text), join(separator, a, b, ...) of
/// those that aren't empty, and the totals sum, avg, min, max, count. Empty fields count as 0 in
/// arithmetic; text compares without regard to case.
class Expression {
  public:
    /// Throws std::invalid_argument with what is wrong.
    static Expression parse(const QString& text);

    jet::Value value(const Scope& scope) const;
    bool isTrue(const Scope& scope) const { return value(scope).toBool(); }
    void collectTotals(std::vector<TotalRequest>& totals) const;

  private:
    friend class Template;
    std::shared_ptr<ExpressionNode> m_root;
};

/// Value of a node alone, for the inside of totals.
jet::Value nodeValue(const ExpressionNode& node, const Scope& scope);

/// Text with expressions in braces, each with a mask of values::format behind a colon if wanted:
/// "Job {JobNo}, due {JobDueDate:Short Date}". A doubled brace stands for itself.
class Template {
  public:
    /// Throws std::invalid_argument.
    static Template parse(const QString& text);

    bool isEmpty() const { return m_pieces.empty(); }
    QString text(const Scope& scope) const;
    /// The text as SQL: expressions become literals of the dialect, text quoted, dates between #.
    QString sql(const Scope& scope) const;
    void collectTotals(std::vector<TotalRequest>& totals) const;

  private:
    struct Piece {
        QString literal;
        std::shared_ptr<ExpressionNode> node; ///< null: the literal
        QString mask;
    };
    std::vector<Piece> m_pieces;
};

/// A value as people read it: through the mask if there is one.
QString shownValue(const jet::Value& value, const QString& mask);
/// A value as a literal of the dialect.
QString sqlLiteral(const jet::Value& value);

/// Stands for the number of pages in laid out text until that is known.
inline constexpr char16_t pageTotalMark = 0xE000;

} // namespace report
