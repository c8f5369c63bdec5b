#include "platform/controls/DataControl.h"

#include "platform/controls/Guard.h"
#include "platform/jet/Waiting.h"
#include "platform/values/Literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

namespace controls {

namespace {

constexpr std::chrono::milliseconds countAfter(400);

} // namespace

DataControl::DataControl(QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    const auto arrow = [&](QStyle::StandardPixmap icon, const QString& name, const QString& keys,
                           void (DataControl::*move)()) {
        auto* button = new QToolButton(this);
        button->setIcon(style()->standardIcon(icon));
        button->setToolTip(keys.isEmpty() ? name : u"%1 (%2)"_s.arg(name, keys));
        button->setAccessibleName(name);
        button->setFocusPolicy(Qt::TabFocus);
        const auto go = [this, move] { guarded([&] { (this->*move)(); }); };
        connect(button, &QToolButton::clicked, this, go);
        if (!keys.isEmpty()) {
            auto* shortcut = new QShortcut(QKeySequence(keys), this);
            connect(shortcut, &QShortcut::activated, this, go);
        }
        return button;
    };
    m_first = arrow(QStyle::SP_MediaSkipBackward, u"First record"_s, {}, &DataControl::moveFirst);
    m_previous = arrow(QStyle::SP_MediaSeekBackward, u"Previous record"_s, u"Alt+Left"_s,
                       &DataControl::movePrevious);
    m_caption = new QLabel(this);
    m_caption->setAlignment(Qt::AlignCenter);
    m_caption->setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    m_next = arrow(QStyle::SP_MediaSeekForward, u"Next record"_s, u"Alt+Right"_s,
                   &DataControl::moveNext);
    m_last = arrow(QStyle::SP_MediaSkipForward, u"Last record"_s, {}, &DataControl::moveLast);
    for (QWidget* part :
         std::initializer_list<QWidget*>{m_first, m_previous, m_caption, m_next, m_last})
        layout->addWidget(part, part == m_caption ? 1 : 0);
    showPlace();
}

void DataControl::setRecordset(jet::Recordset recordset) {
    m_recordset = std::move(recordset);
    showPlace();
    reposition();
}

void DataControl::refresh() {
    if (m_recordset.isOpen())
        m_recordset.requery();
    showPlace();
    reposition();
}

void DataControl::requeryKeepingRow() {
    if (!m_recordset.isOpen())
        return;
    if (m_recordset.bof() || m_recordset.eof()) {
        m_recordset.requery();
    } else {
        jet::Value mark; // Null where the current row was just deleted
        try {
            mark = m_recordset.bookmark();
        } catch (const jet::Error& error) {
            if (error.number() != jet::errors::rowDeleted)
                throw;
        }
        if (!mark.isNull())
            approaching(mark);
        m_recordset.requeryAt(mark);
    }
    showPlace();
    reposition();
}

void DataControl::moveFirst() {
    if (!m_recordset.isOpen() || m_recordset.isEmpty())
        return;
    m_recordset.moveFirst();
    showPlace();
    reposition();
}

void DataControl::movePrevious() {
    if (!m_recordset.isOpen() || m_recordset.isEmpty() || m_recordset.isFirst())
        return;
    if (m_recordset.bof()) {
        m_recordset.moveFirst();
    } else {
        approach(-1);
        m_recordset.movePrevious();
    }
    // Rows that other stations deleted are passed over; there may be none left in this direction.
    if (m_recordset.bof() && !m_recordset.eof())
        m_recordset.moveFirst();
    showPlace();
    reposition();
}

void DataControl::moveNext() {
    if (!m_recordset.isOpen() || m_recordset.isEmpty() || m_recordset.isLast())
        return;
    if (m_recordset.eof()) {
        m_recordset.moveLast();
    } else {
        approach(1);
        m_recordset.moveNext();
    }
    if (m_recordset.eof() && !m_recordset.bof())
        m_recordset.moveLast();
    showPlace();
    reposition();
}

void DataControl::approach(int step) {
    if (const jet::Value key = m_recordset.keyAhead(step); !key.isNull())
        approaching(key);
}

void DataControl::moveLast() {
    if (!m_recordset.isOpen() || m_recordset.isEmpty())
        return;
    m_recordset.moveLast();
    showPlace();
    reposition();
}

bool DataControl::findFirst(const QString& criteria) {
    if (!m_recordset.isOpen())
        return false;
    m_recordset.findFirst(criteria);
    if (m_recordset.noMatch())
        return false;
    showPlace();
    reposition();
    return true;
}

void DataControl::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // Rows may have come and gone while the module edited.
    if (event->type() == QEvent::EnabledChange && isEnabled())
        showPlace();
}

void DataControl::showPlace() {
    const bool onRow = m_recordset.isOpen() && !m_recordset.bof() && !m_recordset.eof();
    const bool rows = m_recordset.isOpen() && !m_recordset.isEmpty();
    QString shown;
    if (onRow && m_recordset.knowsPlace()) {
        shown =
            u"%1 of %2"_s.arg(m_recordset.absolutePosition() + 1).arg(m_recordset.recordCount());
    } else if (onRow) {
        // Counting takes its time in a large set, and nobody waits for it.
        QTimer::singleShot(countAfter, this, [this] { guarded([this] { countPlace(); }); });
    }
    m_caption->setText(shown);
    m_first->setEnabled(onRow && !m_recordset.isFirst());
    m_previous->setEnabled(rows && !m_recordset.isFirst());
    m_next->setEnabled(rows && !m_recordset.isLast());
    m_last->setEnabled(m_next->isEnabled());
}

void DataControl::countPlace() {
    if (!m_recordset.isOpen() || jet::Waiting::isAsking() || m_recordset.knowsPlace())
        return;
    m_recordset.absolutePosition();
    m_recordset.recordCount();
    showPlace();
}

} // namespace controls
