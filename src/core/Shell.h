#pragma once

#include <QString>

class QPoint;

namespace core {

/// The main window as the other parts of the program see it.
class Shell {
  public:
    virtual ~Shell() = default;
    /// Applies the signed-in user's rights to the menus and the tool bar.
    virtual void SecureMenuObjects() = 0;
    virtual void showToolBar(bool shown) = 0;
    virtual void bringToFront() = 0;
    /// After a sign-in: whoever may use one module only finds it open.
    virtual void openOnlyModule() = 0;
    /// Whether the signed-in user may open a document screen from the menu.
    virtual bool mayOpen(const QString& screen) const = 0;
    /// Shows one of the shell's popup menus ("InventoryNewPopup", "mnuTravelPopup") and does what
    /// the shell does for the entry that was chosen. The entry's name; empty if none was chosen.
    virtual QString popUp(const QString& menu, const QPoint& globalPlace) = 0;
};

/// The one shell; nullptr before it was made.
Shell* shell();
void setShell(Shell* made);

} // namespace core
