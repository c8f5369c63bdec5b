#include "platform/controls/TimeField.h"

#include "platform/controls/EntryRule.h"
#include "platform/controls/Look.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>

namespace controls {

namespace {

QDateTime momentOf(const QTime& time) {
    return {QDate(1899, 12, 30), time, Qt::UTC};
}

} // namespace

TimeField::TimeField(QWidget* parent) : QLineEdit(parent) {
    showHint();
    setMaxLength(11);
    connect(this, &QLineEdit::textEdited, this, [this] {
        takeText();
        tellChange();
    });
}

std::optional<QTime> TimeField::timeFromText(const QString& text) {
    static const QRegularExpression form(
        u"^(\\d{1,2})(?::?(\\d{2})(?::?(\\d{2}))?)?\\s*(?:([ap])m?)?$"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch())
        return {};
    int hour = match.captured(1).toInt();
    const QString marker = match.captured(4).toUpper();
    if (!marker.isEmpty()) {
        if (hour < 1 || hour > 12)
            return {};
        hour = hour % 12 + (marker == u"P" ? 12 : 0);
    }
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    return time.isValid() ? std::optional(time) : std::nullopt;
}

void TimeField::setTime(const std::optional<QTime>& time) {
    m_time = time && time->isValid() ? time : std::nullopt;
    QLineEdit::setText(text());
    setCursorPosition(0);
    mark();
    if (text() != m_told)
        tellChange();
}

bool TimeField::isValid() const {
    return m_time || QLineEdit::text().trimmed().isEmpty();
}

QString TimeField::text() const {
    if (!m_time)
        return {};
    return values::format(momentOf(*m_time),
                          m_time->second() != 0 ? u"hh:nn:ss AM/PM" : u"hh:nn AM/PM");
}

void TimeField::setText(const QString& text) {
    const auto time = timeFromText(text);
    if (time || text.trimmed().isEmpty()) {
        setTime(time);
        return;
    }
    QLineEdit::setText(text);
    takeText();
    if (this->text() != m_told)
        tellChange();
}

jet::Value TimeField::value() const {
    return m_time ? jet::Value(momentOf(*m_time)) : jet::Value();
}

void TimeField::setValue(const jet::Value& value) {
    const auto moment = value.toDateTime();
    if (moment || value.isNull())
        setTime(moment ? std::optional(moment->time()) : std::nullopt);
    else
        setText(value.toText());
}

void TimeField::setLocked(bool locked) {
    setReadOnly(locked);
    showHint();
    showLocked(this, locked);
}

void TimeField::takeText() {
    m_time = timeFromText(QLineEdit::text());
    mark();
}

void TimeField::mark() {
    // While somebody is still typing, half a time is no mistake.
    const bool wrong = !isValid() && !m_editing;
    setTextColour(this, wrong ? redText(palette()) : QColor());
    setToolTip(wrong ? u"This isn't a time."_s : QString());
    setAccessibleDescription(toolTip());
}

void TimeField::tellChange() {
    m_told = text();
    changed();
}

void TimeField::showHint() {
    // Where nothing can be typed it would pass for a time.
    const bool open = isEnabled() && !isReadOnly();
    setPlaceholderText(open ? u"h:mm AM"_s : QString());
}

void TimeField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        showHint();
}

void TimeField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The first field of a window is entered as the window becomes active.
    if (m_editing && isPassing(this, event))
        return;
    m_editing = true;
    m_atEntry = m_time;
    mark();
    if (event->reason() != Qt::MouseFocusReason)
        selectAll();
    entered();
}

void TimeField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (isPassing(this, event))
        return;
    m_editing = false;
    if (isValid())
        QLineEdit::setText(text());
    mark();
    left();
}

void TimeField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !isReadOnly() && (m_time != m_atEntry || !isValid())) {
        setTime(m_atEntry);
        selectAll();
        return;
    }
    const QChar typed = typedCharacter(event);
    const bool fits = typed.isNull() || typed.isDigit() || u": aApPmM"_s.contains(typed);
    if (isReadOnly() || fits)
        QLineEdit::keyPressEvent(event);
    else
        event->accept();
}

} // namespace controls
