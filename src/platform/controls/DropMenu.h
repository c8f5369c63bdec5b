#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

class QAbstractButton;
class QMenu;
class QTimer;
class QWidget;

namespace controls {

/// A menu that drops down where it is asked for. What was chosen is done when the menu has closed,
/// by a timer, so that a command may open dialogs and change what the menu hung on.
class DropMenu : public QObject {
  public:
    explicit DropMenu(QWidget* owner);
    ~DropMenu() override;

    void clear();
    bool isEmpty() const;
    void add(const QString& text, std::function<void()> action, bool enabled = true);
    /// What a button does, under its caption; nothing for a button that isn't shown.
    void add(QAbstractButton* button);
    void addSeparator();
    /// A key that does the same, shown beside the entry that was added last.
    void showKey(const QString& key);

    /// Shows the menu and returns at once.
    void open(const QPoint& globalPlace);

  private:
    QMenu* m_menu;
    QTimer* tmrMenu;
    std::function<void()> m_chosen;
};

/// Offers in the context menu of a list, grid or tree what buttons of its screen do.
template <class List>
void offerInMenu(List* list, std::vector<QAbstractButton*> buttons) {
    list->menuAsked.connect([buttons = std::move(buttons)](DropMenu& menu) {
        for (QAbstractButton* button : buttons)
            menu.add(button);
    });
}

} // namespace controls
