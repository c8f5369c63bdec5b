#include "platform/controls/GridDelegate.h"

#include "platform/controls/DataCombo.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/TextField.h"

#include <QKeyEvent>

namespace controls {

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    const GridColumn& column = m_model.column(index.column());
    QWidget* editor = nullptr;
    if (column.kind == GridColumn::Kind::Combo) {
        auto* combo = new DataCombo(parent);
        combo->setItems(column.choices);
        combo->setKeyFilter(column.filter);
        combo->setLimit(column.limit);
        combo->setFrame(false);
        editor = combo;
    } else {
        auto* line = new TextField(parent);
        line->setKeyFilter(column.filter);
        line->setLimit(column.limit);
        line->setFrame(false);
        if (column.kind == GridColumn::Kind::Number)
            line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        editor = line;
    }
    editor->setAutoFillBackground(true);
    editor->setAccessibleName(column.title);
    return editor;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* field = dynamic_cast<Field*>(editor);
    const QString text = index.data(Qt::EditRole).toString();
    if (field && field->text() != text)
        field->setText(text);
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
    const auto* field = dynamic_cast<Field*>(editor);
    if (!field)
        return;
    QString text = field->text();
    // A choice is written as the list has it, however it was typed.
    if (const auto* combo = dynamic_cast<DataCombo*>(editor);
        combo && !combo->boundText().isEmpty())
        text = combo->boundText();
    model->setData(index, text, Qt::EditRole);
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(object);
    if (editor && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            // At once, so that what reads the cell next reads what was typed.
            commitData(editor);
            closeEditor(editor, EditNextItem);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

} // namespace controls
