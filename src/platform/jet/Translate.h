#pragma once

#include "platform/jet/Dialect.h"
#include "platform/jet/Error.h"
#include "platform/jet/Schema.h"
#include "platform/jet/Types.h"
#include "platform/jet/Value.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace jet {

/// A statement with its literals lifted out. Two statements that differ only in the values of their
/// literals, or in the case of their words, have the same key, so that one translation and one
/// prepared statement serve both.
struct Normalized {
    /// The statement with each lifted literal as a placeholder of its kind, in small letters but
    /// for texts and the aliases of columns, which name the fields of the rows.
    QString key;
    std::vector<Value> literals; ///< in order: Text, Integer, Double or Date
    QString statement;           ///< as it was given
};

/// One pass over the text, no parsing: the fast path of every statement. A literal that shapes the
/// statement (TOP n, a LIKE pattern with a class) stays in the key. Throws Error(syntax) on an
/// unclosed quote, bracket or date.
Normalized normalize(const QString& statement);
inline Normalized normalize(QStringView statement) {
    return normalize(statement.toString());
}
/// The same with all letters as they were written, which is what is parsed: messages show it.
Normalized asWritten(const Normalized& statement);

/// How a literal is turned into a bound value; by the column that it meets.
enum class Conversion {
    AsIs,
    ToDate,  ///< text to a moment, for a DATETIME column; Error(typeMismatch) if it is none
    ToYesNo, ///< true, false, -1 and any other non-zero number to 1 or 0
    ToWhole, ///< ties to even, for LONG and INTEGER columns
    ToMoney, ///< four decimals, ties to even
    ToReal,
    ToText,
    ToSpellings, ///< all spellings of a text that are the same, as a JSON list
    ToLowered,   ///< values::lowered of a text
    ToFolded,    ///< values::folded of a text
    ToPattern,   ///< LIKE's * and ? to % and _, the rest escaped with a backslash
};

struct Parameter {
    /// In place of a literal: the moment of values::now() when the statement runs, its day, its
    /// time of day on 12/30/1899.
    static constexpr int now = -1;
    static constexpr int today = -2;
    static constexpr int timeOfDay = -3;

    int literal = 0; ///< index into Normalized::literals, or one of the above
    Conversion conversion = Conversion::AsIs;
};

/// What a column of the result is, so that the engine's cells become the right kind of Value.
struct ResultColumn {
    QString name;  ///< alias, column name, or Expr1000, Expr1001 ... for unnamed expressions
    QString table; ///< the table (or alias) it comes from; empty for expressions
    std::optional<ColumnType> type; ///< nothing where only the engine knows
};

enum class StatementKind {
    Select,
    Insert,
    Update,
    Delete,
    CreateTable,
    CreateIndex,
    DropTable,
    AlterTable
};

/// A term of a select's order.
struct SortTerm {
    int column = -1; ///< of the select; -1 if it stands behind them, and behind a key
    std::optional<ColumnType> type;
    bool descending = false;
};

/// How a select is held by its keys. Selects that are no single select (UNION), are DISTINCT,
/// grouped or read no table first have none: they are read whole and not edited.
struct DynasetPlan {
    QString table;            ///< base table (the first one) whose rows are edited and deleted
    QString keyColumn;        ///< its key; "rowid" or `hiddenIdentity` on a table without one
    bool singleTable = false; ///< true: rows can be fetched one by one through rowSql
    /// singleTable: the keys in the select's order, in the first column. A join: the whole select
    /// with the base row's key in one more column, behind `columns`. The same parameters as the
    /// select. Columns behind those named here are to be ignored (they keep parameters in use).
    QByteArray keysSql;
    /// singleTable only: the whole select with the key in one more column, behind `columns`.
    QByteArray keyedSql;
    /// singleTable only: the select's columns of the row whose key is bound behind the select's
    /// parameters.
    QByteArray rowSql;
    /// singleTable only: the rows stand in the order of the key, which is a whole number. The set
    /// may then be held in part, and read around any of its rows.
    bool inKeyOrder = false;
    /// inKeyOrder only, as keyedSql: from a key on upwards, from one on downwards (both bound
    /// behind the select's parameters), and from the last on downwards.
    QByteArray upSql, downSql, lastSql;
    /// inKeyOrder only: a row for each of the set's, and for each with a smaller key than the
    /// bound.
    QByteArray countedSql, countedBelowSql;
};

/// The statement as the engine takes it.
struct Translation {
    StatementKind kind = StatementKind::Select;
    QByteArray sql; ///< parameters as ?1, ?2 ... on SQLite, $1, $2 ... on PostgreSQL
    std::vector<Parameter> parameters; ///< one for each engine parameter, in number order
    std::vector<ResultColumn> columns; ///< of a select
    /// Of a select that is ordered by texts: its terms. The engine's own order has letters beyond
    /// ASCII at other places than values::compareText; who reads the rows puts them in order.
    /// Terms that are no column of the select are read behind its columns; by `keysSql` of a single
    /// table all are.
    std::vector<SortTerm> sorted;
    /// SQLite only: rows that differ only in the case of letters beyond ASCII are to be dropped.
    bool dropsRepeated = false;
    /// Of a select: whether it has a row, in its one field, with the select's parameters.
    QByteArray existsSql;
    QString table;                      ///< target of a write; first table of a select
    std::optional<DynasetPlan> dynaset; ///< where a select can be one
    /// Statements to run behind this one, without parameters: a table's indexes; PostgreSQL's
    /// sequence after an INSERT that gave a counter its value.
    std::vector<QByteArray> more;
};

/// Parses the key of a normalized statement and writes it for an engine. Throws Error: syntax,
/// noSuchTable, tooFewParameters for unknown names.
Translation translate(const Normalized& statement, const Schema& schema, const Dialect& dialect);

/// The keys of a select's rows that also meet a criterion (`JobNo = 12 and Default = true`): the
/// select of FindFirst, in the select's order, key in the first column. The literals of the
/// criterion come behind those of the select. Only for selects with a DynasetPlan;
/// Error(notUpdatable) for others, whose rows are tested one by one with Criteria.
Translation translateFind(const Normalized& select, const Normalized& criteria,
                          const Schema& schema, const Dialect& dialect);

/// A criterion of FindFirst for rows that are held in memory. Compares as the engines do: text
/// without regard to case, a comparison with Null is not met.
class Criteria {
  public:
    /// Throws Error(syntax).
    explicit Criteria(const Normalized& criteria);
    ~Criteria();
    Criteria(Criteria&&) noexcept;
    Criteria& operator=(Criteria&&) noexcept;
    /// `field` gives a field of the row by name and throws Error for unknown names.
    bool matches(const std::function<Value(const QString&)>& field) const;

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

/// A CREATE TABLE of the dialect as a Table, for comparing a database with what it should be.
Table tableFromDefinition(QStringView createTable);

} // namespace jet
