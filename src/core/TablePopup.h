#pragma once

#include <QString>
#include <QStringList>

namespace core {

/// What "frmTblPopup" offers: one row out of a list.
class TablePopup {
  public:
    virtual ~TablePopup() = default;
    /// The row chosen; empty for none. An empty list is told and not shown, in the caller's words
    /// if it has any.
    virtual QString pick(const QString& caption, const QStringList& items,
                         const QString& emptyMessage = {}) = 0;
};

} // namespace core
