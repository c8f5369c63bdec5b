#include "platform/controls/ToolTable.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/GridTools.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

namespace controls {

ToolTable::ToolTable(QWidget* parent)
    : QTableView(parent), m_model(std::make_unique<GridModel>()),
      m_looks(std::make_unique<GridLooks>(*this, *m_model)),
      m_tools(std::make_unique<GridTools>(*this, *m_model)), m_menu(new DropMenu(this)) {}

ToolTable::~ToolTable() {
    // The view's own end must not report to a model that is gone.
    setModel(nullptr);
}

bool ToolTable::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        GridTools::isOwn(*static_cast<QKeyEvent*>(event)))
        event->accept();
    return QTableView::event(event);
}

void ToolTable::contextMenuEvent(QContextMenuEvent* event) {
    m_menu->clear();
    menuAsked(*m_menu);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    m_tools->openMenu(*m_menu, byKey ? visualRect(currentIndex()).center() : event->pos());
}

void ToolTable::keyPressEvent(QKeyEvent* event) {
    if (m_tools->press(*event))
        return;
    if (event->key() == Qt::Key_Escape)
        event->ignore();
    else
        QTableView::keyPressEvent(event);
}

void ToolTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (m_looks)
        m_looks->stretch();
}

void ToolTable::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    m_looks->shown();
}

void ToolTable::hideEvent(QHideEvent* event) {
    m_looks->hidden();
    QTableView::hideEvent(event);
}

void ToolTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (m_looks && event->type() == QEvent::FontChange)
        m_looks->applyWidths();
}

} // namespace controls
