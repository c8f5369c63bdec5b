#pragma once

#include "platform/jet/Database.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace core {

/// Whether that login name is the administrator's, in whatever case it was typed.
bool isAdministrator(const QString& userName);

/// What of the shell a user may use: a pure function of the security catalogue, of what was granted
/// and of what this installation has. Names compare without regard to case.
class ShellRights {
  public:
    struct Input {
        QStringList menuNames;        ///< all menu entries of the shell
        QString userName;             ///< as typed at the login; empty before it
        QStringList catalogueCodes;   ///< codes of SecurityObjects that begin with "mnu"
        QStringList grantedCodes;     ///< those given to the user or to the user's group
        QStringList unavailableMenus; ///< entries whose screen is not installed
        QHash<QString, QString> sharedRights = {}; ///< entries with the right of another
    };
    ShellRights() = default;
    explicit ShellRights(const Input& input);

    bool isEnabled(const QString& menu) const;
    /// Five of the top menus go altogether when they are off; every other entry stays visible.
    bool isVisible(const QString& menu) const;
    /// Buttons and separators of the tool bar, 1 to 22.
    bool isButtonVisible(int number) const;

  private:
    QSet<QString> m_disabled; ///< folded to lower case
};

inline constexpr int toolButtons = 22;
/// The menu entry that a tool bar button presses; empty for separators and other numbers.
QString toolButtonMenu(int number);
bool isToolSeparator(int number);

/// The rights of the signed-in user, read from the catalogue and the grants; while nobody is signed
/// in, nothing is read.
ShellRights readShellRights(jet::Database& database, const QStringList& menuNames,
                            const QStringList& unavailableMenus);

} // namespace core
