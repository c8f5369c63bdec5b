#include "platform/controls/DateField.h"

#include "platform/controls/EntryRule.h"
#include "platform/controls/Look.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace controls {

namespace {

QIcon calendarIcon(const QPalette& palette) {
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QColor ink = palette.color(QPalette::Text);
    painter.setPen(QPen(ink, 2));
    painter.drawRect(4, 6, 24, 22);
    painter.fillRect(4, 6, 24, 7, ink);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column)
            painter.fillRect(8 + column * 7, 16 + row * 6, 3, 3, ink);
    }
    painter.end();
    return QIcon(picture);
}

} // namespace

DateField::DateField(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(u"m/d/yyyy"_s);
    auto* pick = addAction(calendarIcon(palette()), QLineEdit::TrailingPosition);
    pick->setToolTip(u"Choose from a calendar (F4)"_s);
    connect(pick, &QAction::triggered, this, [this] { openCalendar(); });
    connect(this, &QLineEdit::textEdited, this, [this] { takeText(); });
}

std::optional<QDate> DateField::date() const {
    return m_date;
}

void DateField::setDate(const std::optional<QDate>& date) {
    m_date = date && date->isValid() ? date : std::nullopt;
    showDate();
    mark();
    tellChange();
}

void DateField::setShown(Shown shown) {
    m_shown = shown;
    // The longest there is, with the calendar's button behind it.
    if (m_shown == Shown::Long)
        setMinimumWidth(
            fontMetrics().horizontalAdvance(values::format(QDate(2026, 9, 30), u"Long Date")) + 40);
    if (isValid())
        showDate();
}

bool DateField::isValid() const {
    const QString shown = QLineEdit::text().trimmed();
    return m_date || shown.isEmpty() || shown == QStringView(values::blankDate).trimmed();
}

QString DateField::text() const {
    return m_date ? values::format(*m_date, u"Short Date") : QString();
}

void DateField::setText(const QString& text) {
    const QDate date = values::dateFromText(text);
    if (date.isValid() || text.trimmed().isEmpty() || text == QStringView(values::blankDate)) {
        setDate(date.isValid() ? std::optional(date) : std::nullopt);
        return;
    }
    QLineEdit::setText(text);
    takeText();
}

jet::Value DateField::value() const {
    return jet::Value(m_date);
}

void DateField::setValue(const jet::Value& value) {
    const auto date = value.toDate();
    if (date || value.isNull())
        setDate(date);
    else
        setText(value.toText());
}

void DateField::setLocked(bool locked) {
    setReadOnly(locked);
    showLocked(this, locked);
    const auto buttons = actions();
    for (QAction* button : buttons)
        button->setEnabled(!locked);
}

void DateField::showDate() {
    const bool asLong = m_shown == Shown::Long && !m_editing && m_date;
    QLineEdit::setText(asLong ? values::format(*m_date, u"long date") : text());
    setCursorPosition(0);
}

void DateField::takeText() {
    const QDate date = values::dateFromText(QLineEdit::text());
    m_date = date.isValid() ? std::optional(date) : std::nullopt;
    mark();
    tellChange();
}

void DateField::mark() {
    // While somebody is still typing, half a date is no mistake.
    const bool wrong = !isValid() && !m_editing;
    const bool late = m_latest && m_date && *m_date > *m_latest && !m_editing;
    setTextColour(this, wrong || late ? redText(palette()) : QColor());
    setToolTip(wrong  ? u"This isn't a date."_s
               : late ? u"This is later than "_s + values::format(*m_latest, u"Short Date") + u'.'
                      : QString());
    setAccessibleDescription(toolTip());
}

void DateField::tellChange() {
    if (text() == m_told)
        return;
    m_told = text();
    changed();
}

void DateField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The first field of a window is entered as the window becomes active.
    if (m_editing && isPassing(this, event))
        return;
    m_editing = true;
    m_atEntry = m_date;
    if (isValid())
        showDate();
    mark();
    if (event->reason() != Qt::MouseFocusReason)
        selectAll();
    entered();
}

void DateField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (isPassing(this, event))
        return;
    m_editing = false;
    if (isValid())
        showDate();
    mark();
    left();
}

void DateField::keyPressEvent(QKeyEvent* event) {
    const bool altDown =
        event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier);
    if (event->key() == Qt::Key_F4 || altDown) {
        openCalendar();
        return;
    }
    if (event->key() == Qt::Key_Escape && !isReadOnly() && (m_date != m_atEntry || !isValid())) {
        setDate(m_atEntry);
        selectAll();
        return;
    }
    const QChar typed = typedCharacter(event);
    if (isReadOnly() || typed.isNull()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    if (typed == u't' || typed == u'T') {
        setDate(values::today());
        selectAll();
    } else if ((typed == u'+' || typed == u'-') && m_date) {
        if (typed == u'-' || !m_latest || *m_date < *m_latest)
            setDate(m_date->addDays(typed == u'+' ? 1 : -1));
        selectAll();
    } else if (typed.isDigit() || typed == u'/' || typed == u'-') {
        QLineEdit::keyPressEvent(event);
    }
}

void DateField::openCalendar() {
    if (isReadOnly() || !isEnabled())
        return;
    setFocus(Qt::OtherFocusReason);
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(popup);
    layout->setContentsMargins(1, 1, 1, 1);
    auto* calendar = new QCalendarWidget(popup);
    calendar->setObjectName(u"calendar"_s);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    if (m_latest)
        calendar->setMaximumDate(*m_latest);
    calendar->setSelectedDate(m_date.value_or(values::today()));
    layout->addWidget(calendar);
    const auto take = [this, popup = QPointer<QFrame>(popup)](const QDate& date) {
        setDate(date);
        selectAll();
        if (popup)
            popup->close();
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    popup->adjustSize();
    QPoint place = mapToGlobal(QPoint(0, height()));
    const QRect room = screen()->availableGeometry();
    if (place.y() + popup->height() > room.bottom())
        place.setY(mapToGlobal(QPoint()).y() - popup->height());
    place.setX(
        std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - popup->width())));
    popup->move(place);
    popup->show();
    calendar->setFocus();
}

} // namespace controls
