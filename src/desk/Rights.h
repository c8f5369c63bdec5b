#pragma once

#include "platform/jet/Database.h"

#include <QSet>
#include <QString>

namespace desk {

/// What the signed-in user may use of the shell's menu, and whether money may be shown, read in one
/// wait.
class Rights {
  public:
    static Rights read(jet::Database& database);
    /// As the shell enables its entries: one that the catalogue doesn't know is anybody's.
    bool mayUse(const QString& menu) const;
    bool showsMoney() const { return m_money; }

  private:
    QSet<QString> m_refused; ///< in small letters
    bool m_money = false;
};

} // namespace desk
