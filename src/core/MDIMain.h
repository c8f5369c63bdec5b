#pragma once

#include "core/MainMenu.h"
#include "core/Security.h"
#include "core/Shell.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;
class QToolButton;

namespace screen {
class Form;
}

namespace core {

/// The one main window: it holds the document screens as its children and owns the menu, the tool
/// bar and the status bar. It has no business of its own: each entry opens a screen. The process
/// ends with it.
class MDIMain : public QMainWindow, public Shell {
  public:
    MDIMain();
    ~MDIMain() override;

    void SecureMenuObjects() override;
    void showToolBar(bool shown) override;
    void bringToFront() override;
    void openOnlyModule() override;
    bool mayOpen(const QString& screen) const override;
    QString popUp(const QString& menu, const QPoint& globalPlace) override;

    /// The action of a menu entry; nullptr if there is none of that name.
    QAction* menuAction(const QString& name) const;
    /// A button of the tool bar by its number; nullptr for numbers that have none.
    QAction* toolButton(int number) const;
    /// What a click on that button does; nothing for separators and other numbers.
    void ToolBarMainMenu_ButtonClick(int number);
    QMdiArea* area() const { return m_area; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QMenu* makeMenu(const MenuEntry& entry, QWidget* parent);
    void makeToolBar();
    void makeStatusBar();
    void takeInitialPlace();

    void perform(const MenuEntry& entry);
    void performHandler(const QString& name);
    void place(screen::Form& form);
    void bringForward(screen::Form& form);
    void listWindows();
    void arrangeIcons();
    void showStatus();
    void launchTraveler(bool withNotes);
    void showRecordHistory();
    void showPapers(const screen::Form* form, const QStringList& files = {});
    void showListHere();
    void showMemory();
    void undoHere(bool again);
    void nameSteps();

    QMdiArea* m_area;
    QToolBar* ToolBarMainMenu;
    QLabel* m_user;
    QLabel* m_database;
    QLabel* m_mode;
    QToolButton* m_papers;
    QMenu* m_windowMenu = nullptr;
    QList<QAction*> m_windowList;
    QHash<QString, QAction*> m_actions; ///< by lower-cased name
    QHash<QString, QMenu*> m_popups;    ///< by lower-cased name
    QHash<int, QAction*> m_buttons;
    QPointer<QWidget> m_lastControl; ///< had the focus last, the menu bar apart
};

} // namespace core
