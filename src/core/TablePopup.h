#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace core {

/// What "frmTblPopup" offers: one row out of a list.
class TablePopup {
  public:
    virtual ~TablePopup() = default;
    /// The row chosen, which is none of those without a text. An empty list is told and not shown,
    /// in the caller's words if it has any.
    virtual std::optional<QString> pick(const QString& caption, const QStringList& items,
                                        const QString& emptyMessage = {}) = 0;
};

} // namespace core
