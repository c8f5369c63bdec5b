#pragma once

#include <QObject>

class QKeySequence;
class QMdiArea;
class QWidget;

namespace core {

/// Where a document and the menu bar claim the same mnemonic, the document has it, as people expect
/// who type in it; F10 or Alt alone still opens the menus. Ctrl+F4 closes the active child. The
/// toolkit by itself would give a key that is claimed twice to one after the other.
class Mnemonics : public QObject {
  public:
    /// Watches the application as long as the area lives.
    explicit Mnemonics(QMdiArea* area);

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QMdiArea* m_area;
};

/// Presses the button, turns to the tab, or goes to the field that a mnemonic names among the
/// widgets shown in a form. False if there is none.
bool pressMnemonic(QWidget* form, const QKeySequence& key);

} // namespace core
