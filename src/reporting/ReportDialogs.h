#pragma once

#include <QString>

#include <optional>

namespace reporting {

/// What the dialog "frmNewReport" offers: a report file of the program folder is chosen.
class NewReportDialog {
  public:
    virtual ~NewReportDialog() = default;
    /// The file's name without a path.
    virtual std::optional<QString> choose() = 0;
};

/// What the dialog "frmImportSelected" offers: a chosen file is given its place in the catalogue.
class ImportReportDialog {
  public:
    virtual ~ImportReportDialog() = default;
    /// True if the report was added. `type` is proposed.
    virtual bool import(const QString& fileName, const QString& type) = 0;
};

} // namespace reporting
