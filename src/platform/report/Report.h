#pragma once

#include "platform/report/Document.h"
#include "platform/report/Layout.h"
#include "platform/report/RowSource.h"
#include "platform/values/Literals.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

namespace report {

/// Where a preview opens. Pixels of the screen; no width or height: its own choice.
struct WindowPlacing {
    QString title;
    int left = 0, top = 0, width = 0, height = 0;
    QPointer<QWidget> parent; ///< the calling window
};

/// Shows the pages of a finished report.
using Previewer =
    std::function<void(std::shared_ptr<const Document> document, const WindowPlacing& placing)>;

/// Puts another previewer in the place of the preview window; an empty one brings the window back.
/// For tests, and for whoever wants the pages themselves.
void setPreviewer(Previewer previewer);

/// The report engine's face: set the properties, call printReport().
class Report {
  public:
    explicit Report(RowSource& source) : m_source(source) {}

    QString reportFileName;   ///< with its path
    QString selectionFormula; ///< empty: all records
    QString windowTitle;
    QString currencySymbol = u"$"_s;
    bool showMoney = true; ///< false: what the file marks as money is left out
    int windowHeight = 0, windowWidth = 0, windowTop = 0, windowLeft = 0;
    QPointer<QWidget> parentWindow;
    /// Puts further pages behind the report's own, before they are shown.
    std::function<void(Document& document, const Progress& progress)> append;

    /// Makes the report and opens its preview. 0, or the engine's code: 20504 no such file, 20515
    /// error in the formula, 20509 and 20525 faults of the file, 20530 no room for the pages, 20533
    /// the database refused, 20545 cancelled. Nothing is shown unless it succeeds, but for a
    /// progress dialog with Cancel when it takes longer.
    int printReport();
    /// After a failure: what was wrong, for whoever writes the report file.
    const QString& errorDetail() const { return m_errorDetail; }

  private:
    RowSource& m_source;
    QString m_errorDetail;
};

} // namespace report
