#pragma once

#include "platform/report/Layout.h"

namespace report {

/// Puts a file's pages behind those of a document, each on a page of its own: a PDF, which
/// `pdftoppm` draws in a process of its own that a damaged one may bring down, or a picture. What
/// is wider than high is turned as the paper is. Why it can't be done, in a few words, and then
/// there is no page of it; empty if it was. Throws ReportError: cancelled, or no room for pages.
QString appendFile(Document& document, const QString& path, const Progress& progress = {});

} // namespace report
