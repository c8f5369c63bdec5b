#include "platform/controls/TextField.h"

#include "platform/controls/EntryRule.h"
#include "platform/controls/Look.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>

namespace controls {

TextField::TextField(QWidget* parent) : QLineEdit(parent), m_rule(new EntryRule(this)) {
    connect(this, &QLineEdit::textChanged, this, [this] { changed(); });
}

void TextField::setText(const QString& text) {
    m_rule->setText(text);
    setCursorPosition(0);
}

void TextField::setLocked(bool locked) {
    setReadOnly(locked);
    showLocked(this, locked);
}

void TextField::setKeyFilter(values::KeyFilter filter) {
    m_rule->filter = std::move(filter);
}

void TextField::setLimit(int characters) {
    m_rule->limit = characters;
    if (characters > 0 && text().size() > characters)
        setText(text());
}

void TextField::setNumberMask(const QString& mask, const QString& prefix) {
    m_mask = mask;
    m_prefix = prefix;
}

void TextField::setUpperCase(bool upper) {
    m_rule->upper = upper;
}

double TextField::number() const {
    QString plain = text();
    if (!m_prefix.isEmpty() && plain.startsWith(m_prefix))
        plain.remove(0, m_prefix.size());
    if (!m_mask.isEmpty())
        plain.remove(u',');
    return values::val(plain);
}

void TextField::reformat() {
    if (m_mask.isEmpty())
        return;
    QString plain = text();
    if (!m_prefix.isEmpty() && plain.startsWith(m_prefix))
        plain.remove(0, m_prefix.size());
    setText(values::numberField(plain, m_prefix + m_mask));
}

void TextField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (isPassing(this, event))
        return;
    if (event->reason() != Qt::MouseFocusReason)
        selectAll();
    entered();
}

void TextField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (isPassing(this, event))
        return;
    if (!isReadOnly())
        reformat();
    left();
}

void TextField::keyPressEvent(QKeyEvent* event) {
    if (!isReadOnly() && m_rule->swallows(event)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

CurrencyField::CurrencyField(QWidget* parent) : TextField(parent) {
    setKeyFilter({u"0123456789.-"_s, true, {}});
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

jet::Value CurrencyField::value() const {
    return text().trimmed().isEmpty() ? jet::Value() : jet::Value(amount());
}

void CurrencyField::setValue(const jet::Value& value) {
    if (value.isNull())
        clear();
    else
        setAmount(value.toCurrency());
}

values::Currency CurrencyField::amount() const {
    // The symbol in front of the mask may hold a point itself.
    const auto places = m_displayMask.indexOf(QRegularExpression(u"[#0]"_s));
    QString shown = text();
    if (places > 0)
        shown.remove(m_displayMask.left(places));
    QString digits;
    for (const QChar c : shown) {
        if (c.isDigit() || c == u'.' || c == u'-')
            digits += c;
    }
    return values::Currency::fromText(digits);
}

void CurrencyField::setAmount(values::Currency amount) {
    setText(values::format(amount, m_displayMask));
}

void CurrencyField::setMask(const QString& mask) {
    m_displayMask = mask;
    reformat();
}

void CurrencyField::reformat() {
    if (!text().trimmed().isEmpty())
        setAmount(amount());
}

void CurrencyField::keyPressEvent(QKeyEvent* event) {
    const QChar typed = typedCharacter(event);
    if (!isReadOnly() && (typed == u'.' || typed == u'-')) {
        QString kept = text();
        if (hasSelectedText())
            kept.remove(selectionStart(), selectionLength());
        if (kept.contains(typed)) {
            event->accept();
            return;
        }
    }
    TextField::keyPressEvent(event);
}

} // namespace controls
