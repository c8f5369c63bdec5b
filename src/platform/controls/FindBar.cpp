#include "platform/controls/FindBar.h"

#include "platform/controls/GridModel.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace controls {

FindBar::FindBar(QTableView& view, const GridModel& model)
    : QFrame(&view), m_view(view), m_model(model), m_text(new QLineEdit(this)),
      m_result(new QLabel(this)) {
    m_result->setObjectName(u"lblFindResult"_s);
    setObjectName(u"findBar"_s);
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    m_text->setObjectName(u"txtFindInList"_s);
    m_text->setAccessibleName(u"Find in list"_s);
    m_text->setPlaceholderText(u"Find"_s);
    m_text->setClearButtonEnabled(true);
    auto* across = new QHBoxLayout(this);
    across->setContentsMargins(4, 3, 4, 3);
    across->addWidget(m_text);
    across->addWidget(m_result);
    m_text->installEventFilter(this);
    view.installEventFilter(this);
    connect(m_text, &QLineEdit::textChanged, this, [this] { search(1, true); });
}

void FindBar::open() {
    place();
    show();
    raise();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void FindBar::place() {
    const int width = std::min(m_view.viewport()->width(), fontMetrics().averageCharWidth() * 40);
    resize(width, sizeHint().height());
    const QPoint corner = m_view.viewport()->geometry().bottomRight();
    move(corner.x() - width + 1, corner.y() - height() + 1);
}

bool FindBar::holds(int row, const QString& text) const {
    for (int column = 0; column < m_model.columnCount(); ++column) {
        if (!m_view.isColumnHidden(column) &&
            values::containsText(m_model.plainText(row, column), text))
            return true;
    }
    return false;
}

void FindBar::next(int step) {
    search(step, false);
}

void FindBar::search(int step, bool fromCurrent) {
    const QString text = m_text->text();
    const int rows = m_model.rows();
    m_result->clear();
    if (text.isEmpty() || rows == 0)
        return;
    const int current = std::max(0, m_view.currentIndex().row());
    for (int i = fromCurrent ? 0 : 1; i <= rows; ++i) {
        const int row = ((current + i * step) % rows + rows) % rows;
        if (!holds(row, text) || m_view.isRowHidden(row))
            continue;
        const int column = std::max(0, m_view.currentIndex().column());
        m_view.setCurrentIndex(m_model.index(row, column));
        m_view.scrollTo(m_view.currentIndex());
        return;
    }
    m_result->setText(u"not found"_s);
}

void FindBar::leave() {
    hide();
    m_view.setFocus(Qt::OtherFocusReason);
}

bool FindBar::eventFilter(QObject* object, QEvent* event) {
    if (object == &m_view) {
        // The rows' place follows only after this event.
        if (event->type() == QEvent::Resize && isVisible())
            QMetaObject::invokeMethod(
                this, [this] { place(); }, Qt::QueuedConnection);
        return false;
    }
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
        hide();
        return false;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    const bool back = key->modifiers().testFlag(Qt::ShiftModifier);
    if (!enter && key->key() != Qt::Key_F3 && key->key() != Qt::Key_Escape &&
        key->key() != Qt::Key_Down && key->key() != Qt::Key_Up)
        return false;
    event->accept();
    if (event->type() == QEvent::ShortcutOverride)
        return true;
    if (key->key() == Qt::Key_Escape)
        leave();
    else
        next((enter || key->key() == Qt::Key_F3) ? (back ? -1 : 1)
                                                 : (key->key() == Qt::Key_Up ? -1 : 1));
    return true;
}

} // namespace controls
