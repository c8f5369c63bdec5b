#pragma once

#include <QObject>

class QKeyEvent;
class QKeySequence;
class QMdiArea;
class QMenuBar;
class QWidget;

namespace core {

/// Keys with Alt, and the way into the menus. Where a document and the menu bar claim the same
/// mnemonic, the document has it, as people expect who type in it; a letter that the document
/// doesn't use opens its menu; F10, and Alt pressed and let go alone, go to the menu bar. A letter
/// with Alt is never typed into a field, whether anything takes it or not. Ctrl+F4 closes the
/// active child. The toolkit by itself would give a key that is claimed twice to one after the
/// other.
class Mnemonics : public QObject {
  public:
    /// Watches the application as long as the area lives.
    Mnemonics(QMdiArea* area, QMenuBar* menus);

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool keyPressed(const QKeyEvent& key);
    bool keyReleased(const QKeyEvent& key);
    bool isShellInFront() const;
    void enterMenus();
    bool openMenu(const QKeySequence& key);

    QMdiArea* m_area;
    QMenuBar* m_menus;
    bool m_altAlone = false; ///< Alt is down, and nothing else was pressed since
};

/// Presses the button, turns to the tab, or goes to the field that a mnemonic names among the
/// widgets shown in a form. False if there is none.
bool pressMnemonic(QWidget* form, const QKeySequence& key);

} // namespace core
