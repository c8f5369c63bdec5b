#pragma once

#include "platform/controls/Event.h"

#include <QTableView>

#include <memory>

namespace controls {

class DropMenu;
class GridLooks;
class GridModel;
class GridTools;

/// What Grid and ListView have in common: the rows' model, the columns and the sort that are
/// remembered for the user, and what GridTools does by keys and in the context menu.
class ToolTable : public QTableView {
  public:
    /// The context menu opens: add what the screen offers for the row where the user is.
    Event<DropMenu&> menuAsked;

    GridTools& tools() { return *m_tools; }

  protected:
    explicit ToolTable(QWidget* parent);
    ~ToolTable() override;
    GridModel& cells() const { return *m_model; }
    GridLooks& looks() const { return *m_looks; }

    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Takes the tools' keys and leaves Escape to the screen.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    std::unique_ptr<GridModel> m_model;
    std::unique_ptr<GridLooks> m_looks;
    std::unique_ptr<GridTools> m_tools;
    DropMenu* m_menu;
};

} // namespace controls
