#pragma once

#include <QString>

namespace core {

/// The dialogs that add a row of a table or change one.
class AddEditDialog {
  public:
    virtual ~AddEditDialog() = default;
    /// Shows the dialog in the mode "New" (key 0) or "Edit". True if something was saved. A row
    /// that has gone is told with a message, and the dialog doesn't open.
    virtual bool ShowForm(const QString& mode, qint64 key) = 0;
};

} // namespace core
