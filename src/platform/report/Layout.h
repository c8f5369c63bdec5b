#pragma once

#include "platform/report/Document.h"
#include "platform/report/RowSource.h"
#include "platform/values/Literals.h"

#include <functional>
#include <memory>

namespace report {

/// Called with the number of pages made so far, now and then; false breaks off.
using Progress = std::function<bool(int pages)>;

struct LayoutOptions {
    Progress progress = {};
    QString currencySymbol = u"$"_s; ///< what {currency} prints
};

/// Runs the report's queries, restricted by the selection formula, and lays out its pages. Throws
/// ReportError with the engine's code.
std::unique_ptr<Document> layOut(const ReportFile& file, RowSource& source, const QString& formula,
                                 const LayoutOptions& options = {});

/// The select of the report's own rows with the condition of the formula in its place.
QString reportSql(const Query& query, const RowSource& source, const QString& formula);

} // namespace report
