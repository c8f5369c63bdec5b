#include "platform/controls/CheckList.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

namespace controls {

CheckList::CheckList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    setUniformItemSizes(true);
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!m_program)
            itemCheck(row(item));
    });
    connect(this, &QListWidget::clicked, this, [this] { click(); });
}

void CheckList::addRow(const QString& text, qint64 itemData, bool ticked) {
    auto* item = new QListWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setData(Qt::UserRole, itemData);
    item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    const QScopedValueRollback<bool> program(m_program, true);
    addItem(item);
}

QString CheckList::itemText(int row) const {
    return item(row)->text();
}

void CheckList::setItemText(int row, const QString& text) {
    const QScopedValueRollback<bool> program(m_program, true);
    item(row)->setText(text);
}

qint64 CheckList::itemNumber(int row) const {
    return item(row)->data(Qt::UserRole).toLongLong();
}

int CheckList::findNumber(qint64 itemData) const {
    for (int row = 0; row < count(); ++row) {
        if (itemNumber(row) == itemData)
            return row;
    }
    return -1;
}

int CheckList::findRow(const QString& text) const {
    for (int row = 0; row < count(); ++row) {
        if (itemText(row) == text)
            return row;
    }
    return -1;
}

void CheckList::removeRow(int row) {
    delete takeItem(row);
}

bool CheckList::isTicked(int row) const {
    return item(row)->checkState() == Qt::Checked;
}

void CheckList::setTicked(int row, bool ticked) {
    const QScopedValueRollback<bool> program(m_program, true);
    item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

void CheckList::keyPressEvent(QKeyEvent* event) {
    const int before = currentRow();
    QListWidget::keyPressEvent(event);
    if (currentRow() >= 0 && (event->key() == Qt::Key_Space || currentRow() != before))
        click();
}

} // namespace controls
