#include "platform/controls/EntryRule.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>

#include <algorithm>

namespace controls {

bool isPassing(const QWidget* field, const QFocusEvent* event) {
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        return true;
    for (const QWidget* above = field; above; above = above->parentWidget()) {
        const bool isForm = above->isWindow() || qobject_cast<const QMdiSubWindow*>(above) ||
                            qobject_cast<const QMdiSubWindow*>(above->parentWidget());
        if (isForm && above->isHidden())
            return true;
    }
    return false;
}

QChar typedCharacter(const QKeyEvent* event) {
    const QString text = event->text();
    if (text.isEmpty() || !text.at(0).isPrint())
        return {};
    // AltGr reaches us as Ctrl+Alt on some systems; either of the two alone types nothing.
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    const bool alt = event->modifiers().testFlag(Qt::AltModifier);
    return control == alt ? text.at(0) : QChar();
}

EntryRule::EntryRule(QLineEdit* line) : QValidator(line), m_line(line) {
    line->setValidator(this);
    QObject::connect(line, &QLineEdit::textChanged, this,
                     [this](const QString& text) { m_before = text; });
}

void EntryRule::setText(const QString& text) {
    m_program = true;
    m_line->setText(limit > 0 ? text.left(limit) : text);
    m_program = false;
}

bool EntryRule::swallows(const QKeyEvent* event) const {
    if (event->key() == Qt::Key_Backspace)
        return !filter.allowBackspace;
    const QChar typed = typedCharacter(event);
    if (typed.isNull())
        return false;
    if (values::validKey(typed.unicode(), filter) == 0)
        return true;
    QString kept = m_line->text();
    if (m_line->hasSelectedText())
        kept.remove(m_line->selectionStart(), m_line->selectionLength());
    return limit > 0 && kept.trimmed().size() >= limit;
}

QValidator::State EntryRule::validate(QString& text, int& position) const {
    if (m_program || text == m_before)
        return Acceptable;
    const auto shorter = std::min(m_before.size(), text.size());
    qsizetype head = 0;
    while (head < shorter && m_before.at(head) == text.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           m_before.at(m_before.size() - 1 - tail) == text.at(text.size() - 1 - tail))
        ++tail;

    const QString inserted = text.mid(head, text.size() - head - tail);
    QString taken = filter.isOpen() ? inserted : values::filtered(inserted, filter);
    if (upper)
        taken = taken.toUpper();
    if (taken != inserted) {
        text.replace(head, inserted.size(), taken);
        position = int(std::clamp<qsizetype>(position - (inserted.size() - taken.size()), head,
                                             head + taken.size()));
    }
    if (limit > 0 && text.size() > limit) {
        text.truncate(limit);
        position = std::min(position, limit);
    }
    return Acceptable;
}

} // namespace controls
