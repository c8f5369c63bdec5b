#pragma once

#include "platform/jet/Translate.h"
#include "platform/jet/Tree.h"

#include <QByteArrayList>
#include <QSet>

namespace jet {

using Type = std::optional<ColumnType>;

bool isText(Type type);
bool isWhole(Type type);
bool isNumber(Type type);

/// One table (or derived table) that names are looked up in.
struct ScopeSource {
    struct Column {
        QString name;
        Type type;
        bool nullable = true;
    };
    QString name; ///< alias, or the table's name
    const Table* table = nullptr;
    std::vector<Column> columns;
};

/// The tables in sight, innermost first.
struct Scope {
    const Scope* parent = nullptr;
    std::vector<ScopeSource> sources;
};

struct Resolved {
    const ScopeSource* source = nullptr;
    const ScopeSource::Column* column = nullptr;
    explicit operator bool() const { return column != nullptr; }
};

/// The parts of one select, so that it can be written with other columns.
struct SelectParts {
    Scope scope;
    bool distinct = false;
    bool aggregated = false;
    QByteArrayList list;
    std::vector<ResultColumn> columns;
    /// What each column shows; nullptr for those that a star brought.
    std::vector<const Expression*> expressions;
    QByteArray from, where, groupBy, having;
    int top = -1;
};

/// Writes one statement for an engine.
class Emitter {
  public:
    Emitter(const Normalized& statement, const Schema& schema, const Dialect& dialect);

    Translation emit(const Statement& statement);
    /// The keys of the rows that also meet the criterion; its literals are numbered from
    /// `firstLiteral` on in the normalized statement that this emitter was made for.
    Translation emitFind(const Statement& select, const Expression& criterion);

  private:
    // Emit.cpp: names, literals, parameters
    QByteArray quoted(const QString& name) const { return m_dialect.quoted(name); }
    QByteArray columnSql(const Resolved& resolved) const;
    Resolved find(const Scope& scope, const QString& qualifier, const QString& name) const;
    Resolved resolve(const Scope& scope, const Expression& column);
    const Table& tableNamed(const QString& name) const;
    ScopeSource sourceOf(const Table& table, const QString& alias) const;
    QByteArray keyColumn(const Table& table, QString* name = nullptr) const;
    QByteArray parameter(int literal, Conversion conversion, const char* postgresType);
    QByteArray special(int which);
    QByteArray inlined(const Value& value, LiteralKind kind, Conversion conversion,
                       const char* postgresType) const;
    enum class Use { Compare, Assign };
    QByteArray literal(const Expression& expression, Type target, Use use);
    QByteArray moment(const QDateTime& value) const;
    /// Names the parameters that a text leaves out, which PostgreSQL has no type for.
    QByteArray unusedParameters(const QByteArray& sql) const;
    void checkNames() const;

    // EmitExpression.cpp
    Type typeOf(const Expression& expression, const Scope& scope);
    QByteArray value(const Expression& expression, const Scope& scope, Type target = {});
    QByteArray condition(const Expression& expression, const Scope& scope);
    QByteArray bracketed(const Expression& expression, const Scope& scope, Type target = {});
    QByteArray comparison(const Expression& expression, const Scope& scope);
    QByteArray compared(const Expression& expression, const Scope& scope, Type other, bool leading);
    QByteArray withDays(const Expression& expression, const Scope& scope, const QByteArray& sql);
    QByteArray truth(const Expression& expression, const Scope& scope, bool wanted);
    QByteArray like(const Expression& expression, const Scope& scope);
    QByteArray arithmetic(const Expression& expression, const Scope& scope);
    QByteArray in(const Expression& expression, const Scope& scope);
    QByteArray asText(const Expression& expression, const Scope& scope);
    QByteArray asNumber(const Expression& expression, const Scope& scope);
    QByteArray citext(const QByteArray& sql) const;
    QByteArray rounded(const QByteArray& sql, int decimals) const;
    QByteArray assigned(const Expression& expression, const Scope& scope, const Column& column);

    // EmitLetters.cpp: texts by values::Letters, where the engines have a rule of their own
    static bool hasSpellings(const Expression& expression);
    bool comparesTexts(const Expression& a, const Expression& b, const Scope& scope);
    QByteArray sameText(const Expression& subject, const Expression& literal, const Scope& scope,
                        bool negated);
    QByteArray foldedSide(const Expression& expression, const Scope& scope);
    QByteArray lowered(const QByteArray& sql) const;
    QByteArray folded(const QByteArray& sql) const;
    QByteArray sortedText(const QByteArray& sql, bool descending, bool nullable) const;
    int placeOfColumn(const Resolved& wanted, const SelectParts& parts) const;
    std::vector<SortTerm> sortTerms(const Query& query, const SelectParts& parts,
                                    QByteArrayList* hidden, QByteArrayList* all);

    // Functions.cpp
    Type typeOfCall(const Expression& call, const Scope& scope);
    QByteArray call(const Expression& call, const Scope& scope);
    QByteArray datePart(const Expression& call, const Scope& scope);
    QByteArray dateArithmetic(const Expression& call, const Scope& scope);
    static bool isAggregate(const QString& function);

    // EmitSelect.cpp
    QByteArray query(const Query& query, const Scope* parent,
                     std::vector<ResultColumn>* columns = nullptr,
                     const std::vector<const Column*>* targets = nullptr);
    SelectParts select(const Select& select, const Scope* parent,
                       const std::vector<const Column*>* targets = nullptr);
    void addStar(SelectParts& parts, const ScopeSource& source);
    QByteArray from(const std::vector<Source>& sources, Scope& scope, const Scope* parent);
    QByteArray source(const Source& source, Scope& scope, const Scope* parent);
    void declare(const Source& source, Scope& scope, const Scope* parent);
    int placeOf(const Expression& order, const SelectParts& parts, bool compound) const;
    QByteArray orderBy(const Query& query, const SelectParts& parts, bool expanded);
    QByteArray naturalOrder(const SelectParts& parts) const;
    static QByteArray joined(const SelectParts& parts, const QByteArray& list,
                             const QByteArray& orderBy, const QByteArray& extraCondition = {},
                             const QByteArray& extraColumns = {});
    std::optional<DynasetPlan> plan(const Query& query, const SelectParts& parts);
    QByteArray exists(const SelectParts& parts) const;
    static bool hasAggregate(const Expression& expression);
    std::vector<ResultColumn> columnsOf(const Query& query, const Scope* parent);

    // EmitWrite.cpp
    void insert(const Statement& statement, Translation& result);
    void update(const Statement& statement, Translation& result);
    void remove(const Statement& statement, Translation& result);

    const Normalized& m_statement;
    const Schema& m_schema;
    Dialect m_dialect;
    bool m_postgres;
    std::vector<Parameter> m_parameters;
    std::vector<QByteArray> m_parameterTypes; ///< PostgreSQL's type of each
    std::vector<bool> m_used;
    QSet<QString> m_unknown;
    std::vector<SortTerm> m_sorted; ///< of the whole select
    const SelectParts* m_criteriaColumns =
        nullptr; ///< names that the criterion of FindFirst may use
};

} // namespace jet
