#include "platform/controls/EntryRule.h"
#include "platform/controls/Look.h"
#include "platform/controls/TextField.h"
#include "platform/values/Literals.h"

#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextCursor>

namespace controls {

MemoField::MemoField(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        cutToLimit();
        changed();
    });
}

QString MemoField::text() const {
    return toPlainText().replace(u'\n', u"\r\n"_s);
}

void MemoField::setText(const QString& text) {
    QString plain = text;
    plain.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    if (plain != toPlainText())
        setPlainText(plain);
    moveCursor(QTextCursor::Start);
}

void MemoField::setLocked(bool locked) {
    setReadOnly(locked);
    // A locked text can still be walked through and copied by keyboard.
    setTextInteractionFlags(locked ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                   : Qt::TextEditorInteraction);
    showLocked(this, locked);
}

void MemoField::setKeyFilter(values::KeyFilter filter) {
    m_filter = std::move(filter);
}

void MemoField::setLimit(int characters) {
    m_limit = characters;
    cutToLimit();
}

void MemoField::cutToLimit() {
    if (m_limit <= 0)
        return;
    const QString plain = toPlainText();
    if (plain.size() + plain.count(u'\n') <= m_limit)
        return;
    int room = m_limit;
    int kept = 0;
    for (const QChar c : plain) {
        room -= c == u'\n' ? 2 : 1;
        if (room < 0)
            break;
        ++kept;
    }
    const QSignalBlocker quiet(this);
    QTextCursor cut(document());
    cut.setPosition(kept);
    cut.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cut.removeSelectedText();
}

void MemoField::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    if (!isPassing(this, event))
        entered();
}

void MemoField::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    if (!isPassing(this, event))
        left();
}

void MemoField::keyPressEvent(QKeyEvent* event) {
    if (!isReadOnly()) {
        const QChar typed = typedCharacter(event);
        bool swallow = !typed.isNull() && values::validKey(typed.unicode(), m_filter) == 0;
        if (event->key() == Qt::Key_Backspace)
            swallow = !m_filter.allowBackspace;
        if (!typed.isNull() && m_limit > 0 && !textCursor().hasSelection())
            swallow = swallow || text().trimmed().size() >= m_limit;
        if (swallow) {
            event->accept();
            return;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

void MemoField::insertFromMimeData(const QMimeData* source) {
    if (!source->hasText())
        return;
    QString lines = source->text();
    lines.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList kept = lines.split(u'\n');
    for (QString& line : kept)
        line = values::filtered(line, m_filter);
    QMimeData taken;
    taken.setText(kept.join(u'\n'));
    QPlainTextEdit::insertFromMimeData(&taken);
}

void MemoField::inputMethodEvent(QInputMethodEvent* event) {
    if (m_filter.isOpen() || event->commitString().isEmpty()) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent taken(event->preeditString(), event->attributes());
    taken.setCommitString(values::filtered(event->commitString(), m_filter),
                          event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&taken);
    event->setAccepted(taken.isAccepted());
}

} // namespace controls
