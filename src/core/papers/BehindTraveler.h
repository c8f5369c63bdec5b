#pragma once

#include "core/papers/Papers.h"
#include "platform/report/Layout.h"

namespace core {

/// The papers of a job that are printed behind its traveler.
std::vector<Paper> papersBehind(qint64 jobNo);

/// Puts them behind a traveler's pages. One line for each that can't be, with the reason.
QStringList appendPapers(report::Document& document, const std::vector<Paper>& papers,
                         const report::Progress& progress);

} // namespace core
