#include "platform/controls/GridDelegate.h"

#include "platform/controls/DataCombo.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/TextField.h"

#include <QKeyEvent>
#include <QPersistentModelIndex>
#include <QToolTip>

namespace controls {

namespace {

constexpr char cellProperty[] = "cell";

QString typedIn(QWidget* editor) {
    const auto* field = dynamic_cast<Field*>(editor);
    // A choice is written as the list has it, however it was typed.
    if (const auto* combo = dynamic_cast<DataCombo*>(editor);
        combo && !combo->boundText().isEmpty())
        return combo->boundText();
    return field ? field->text() : QString();
}

} // namespace

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
    editor->setProperty(cellProperty, QVariant::fromValue(QPersistentModelIndex(index)));
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
    if (dynamic_cast<Field*>(editor))
        model->setData(index, typedIn(editor), Qt::EditRole);
}

// Says why an entry makes no sense, and leaves it in the editor.
bool GridDelegate::refuses(QWidget* editor) const {
    const auto cell = editor->property(cellProperty).value<QPersistentModelIndex>();
    if (!m_model.refusal || !cell.isValid())
        return false;
    const QString typed = typedIn(editor);
    if (m_model.isShown(cell.row(), cell.column(), typed) &&
        cell.data(Qt::ToolTipRole).toString() == typed)
        return false;
    const QString why = m_model.refusal(cell.row(), cell.column(), typed);
    if (why.isEmpty())
        return false;
    editor->setAccessibleDescription(why);
    QToolTip::showText(editor->mapToGlobal(editor->rect().bottomLeft()), why, editor);
    return true;
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(object);
    if (editor && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool leaves = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter ||
                            key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab;
        if (leaves && refuses(editor))
            return true;
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
