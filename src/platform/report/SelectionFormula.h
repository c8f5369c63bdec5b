#pragma once

#include "platform/jet/Schema.h"

#include <QString>

#include <functional>
#include <optional>

namespace report {

/// A field of a formula as a query knows it.
struct FormulaField {
    QString sql; ///< `[Job].[JobNo]`
    jet::ColumnType type = jet::ColumnType::Text;
    /// Where the field belongs to rows below those of the query: `Job.JobNo IN (SELECT ... WHERE `,
    /// which the comparison and a closing parenthesis follow. Otherwise empty.
    QString through;
};

/// Gives the field `{table.field}`; nothing if the query doesn't know it.
using FieldResolver =
    std::function<std::optional<FormulaField>(const QString& table, const QString& field)>;

/// Turns a selection formula in Crystal's syntax into the condition of a where clause in the
/// dialect. Taken are: not, and, or (in that order of strength) and parentheses; = <> < > <= >=;
/// `in a to b` (both ends belong to it), `in [a, b]`; `like` with * and ?; isnull(field); a
/// Yes/No field alone; numbers, true, false, text in single or double quotes (a doubled quote
/// stands for itself), date(y, m, d), datetime(y, m, d, h, m, s), #m/d/yyyy#; fields as
/// {Table.Field}, texts of which are joined by +. A date without a time means that whole day.
/// Letters' case doesn't matter. An empty formula gives an empty text. Throws
/// ReportError(errorInFormula) on bad syntax, unknown fields and values that don't fit their field.
QString whereCondition(const QString& formula, const FieldResolver& fields);

} // namespace report
