#include "core/EditActions.h"

#include "platform/controls/Field.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <QTextEdit>

namespace core::edit {

namespace {

/// The text part of a control: a line, a memo, or the line of a combo.
struct Text {
    QLineEdit* line = nullptr;
    QPlainTextEdit* memo = nullptr;
    QTextEdit* rich = nullptr;

    explicit operator bool() const { return line || memo || rich; }
    QString selected() const {
        if (line)
            return line->echoMode() == QLineEdit::Normal ? line->selectedText() : QString();
        return (memo ? memo->textCursor() : rich->textCursor()).selection().toPlainText();
    }
    void replace(const QString& text) const {
        if (line)
            line->insert(text);
        else if (memo)
            memo->insertPlainText(text);
        else
            rich->insertPlainText(text);
    }
    void paste() const {
        if (line)
            line->paste();
        else if (memo)
            memo->paste();
        else
            rich->paste();
    }
};

Text textOf(QWidget* control) {
    Text text;
    if (auto* combo = qobject_cast<QComboBox*>(control))
        text.line = combo->lineEdit();
    else
        text.line = qobject_cast<QLineEdit*>(control);
    text.memo = qobject_cast<QPlainTextEdit*>(control);
    text.rich = qobject_cast<QTextEdit*>(control);
    return text;
}

} // namespace

bool isLocked(QWidget* control) {
    if (!control)
        return true;
    if (auto* field = dynamic_cast<controls::Field*>(control))
        return field->isLocked();
    const Text text = textOf(control);
    return !text || !control->isEnabled() || (text.line && text.line->isReadOnly()) ||
           (text.memo && text.memo->isReadOnly()) || (text.rich && text.rich->isReadOnly());
}

void copy(QWidget* control) {
    const Text text = textOf(control);
    if (!text)
        return;
    const QString selected = text.selected();
    if (!selected.isEmpty())
        QGuiApplication::clipboard()->setText(selected);
}

void cut(QWidget* control) {
    if (isLocked(control))
        return;
    copy(control);
    deleteSelection(control);
}

void paste(QWidget* control) {
    const Text text = textOf(control);
    if (text && !isLocked(control))
        text.paste();
}

void deleteSelection(QWidget* control) {
    const Text text = textOf(control);
    if (text && !isLocked(control) && !text.selected().isEmpty())
        text.replace({});
}

} // namespace core::edit
