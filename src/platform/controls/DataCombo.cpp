#include "platform/controls/DataCombo.h"

#include "platform/controls/EntryRule.h"
#include "platform/controls/Look.h"
#include "platform/values/Letters.h"

#include <QCompleter>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>
#include <QWheelEvent>

#include <algorithm>

namespace controls {

DataCombo::DataCombo(QWidget* parent) : QComboBox(parent), m_list(new QStringListModel(this)) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setModel(m_list);
    m_rule = new EntryRule(lineEdit());
    m_completer = new QCompleter(model(), this);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setCompletionMode(QCompleter::InlineCompletion);
    setCompleter(m_completer);
    // Measuring every row of a long list would take longer than reading it.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    if (auto* list = qobject_cast<QListView*>(view()))
        list->setUniformItemSizes(true);
    connect(lineEdit(), &QLineEdit::textChanged, this, [this] { changed(); });
    connect(this, &QComboBox::activated, this, [this] {
        m_lastChosen = text();
        chosen();
    });
}

void DataCombo::setRows(jet::Recordset rows, const QString& listField, const QString& boundField) {
    QStringList texts;
    QStringList keys;
    if (rows.isOpen() && !rows.isEmpty()) {
        for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
            texts << rows.text(listField);
            keys << (boundField == listField ? texts.last() : rows.text(boundField));
        }
    }
    setList(texts, keys);
}

void DataCombo::setItems(const QStringList& items) {
    setList(items, items);
}

void DataCombo::setList(const QStringList& texts, const QStringList& keys) {
    const QString shown = text();
    const QString key = boundText();
    const QSignalBlocker quietLine(lineEdit());
    m_texts = texts;
    m_keys = keys;
    m_rowOfText.clear();
    m_rowOfText.reserve(texts.size());
    for (int row = 0; row < texts.size(); ++row) {
        const QString folded = values::lowered(texts.at(row));
        if (!m_rowOfText.contains(folded))
            m_rowOfText.insert(folded, row);
    }
    m_list->setStringList(texts);
    // A number that was typed is meant as it stands: 1 is not the beginning of 10.
    const bool numbers =
        std::any_of(texts.begin(), texts.end(),
                    [](const QString& text) { return !text.isEmpty(); }) &&
        std::all_of(texts.begin(), texts.end(), [](const QString& text) {
            return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
        });
    lineEdit()->setCompleter(numbers ? nullptr : m_completer);
    // The same row again if it still stands with its text, otherwise what the text says.
    const auto same = key.isEmpty() ? -1 : int(m_keys.indexOf(key));
    if (same >= 0 && values::sameText(m_texts.at(same), shown))
        setCurrentIndex(same);
    else
        setCurrentIndex(rowOf(shown));
    m_rule->setText(shown);
}

int DataCombo::rowOf(const QString& text) const {
    const int current = currentIndex();
    if (current >= 0 && current < m_texts.size() && values::sameText(m_texts.at(current), text))
        return current;
    return text.isEmpty() ? -1 : m_rowOfText.value(values::lowered(text), -1);
}

QString DataCombo::text() const {
    return lineEdit()->text();
}

void DataCombo::setText(const QString& text) {
    const QString before = this->text();
    {
        const QSignalBlocker quietLine(lineEdit());
        setCurrentIndex(rowOf(text));
        m_rule->setText(text);
    }
    lineEdit()->setCursorPosition(0);
    m_lastChosen = this->text();
    if (m_lastChosen != before)
        lineEdit()->textChanged(m_lastChosen);
}

QString DataCombo::boundText() const {
    const int row = rowOf(text());
    return row < 0 ? QString() : m_keys.at(row);
}

void DataCombo::setBoundText(const QString& key) {
    const auto row = key.isEmpty() ? -1 : int(m_keys.indexOf(key));
    if (row < 0) {
        setText(QString());
        return;
    }
    const QString before = text();
    {
        const QSignalBlocker quietLine(lineEdit());
        setCurrentIndex(row);
        m_rule->setText(m_texts.at(row));
    }
    m_lastChosen = text();
    if (m_lastChosen != before)
        lineEdit()->textChanged(m_lastChosen);
}

void DataCombo::setLocked(bool locked) {
    m_locked = locked;
    lineEdit()->setReadOnly(locked);
    showLocked(this, locked);
    showLocked(lineEdit(), locked);
}

void DataCombo::setTypingAllowed(bool allowed) {
    m_typingAllowed = allowed;
}

void DataCombo::setLimit(int characters) {
    m_rule->limit = characters;
    if (characters > 0 && text().size() > characters)
        setText(text());
}

void DataCombo::setKeyFilter(values::KeyFilter filter) {
    m_rule->filter = std::move(filter);
}

void DataCombo::setUpperCase(bool upper) {
    m_rule->upper = upper;
}

void DataCombo::takeTyped() {
    if (m_locked || text() == m_lastChosen)
        return;
    const int row = rowOf(text());
    if (row >= 0) {
        setCurrentIndex(row);
        m_rule->setText(m_texts.at(row));
        const bool isNew = text() != m_lastChosen;
        m_lastChosen = text();
        if (isNew)
            chosen();
    } else if (!m_typingAllowed && !text().isEmpty()) {
        setText(m_lastChosen);
    } else {
        m_lastChosen = text();
    }
}

void DataCombo::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (isPassing(this, event))
        return;
    if (event->reason() != Qt::MouseFocusReason)
        lineEdit()->selectAll();
    entered();
}

void DataCombo::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (isPassing(this, event))
        return;
    takeTyped();
    left();
}

void DataCombo::keyPressEvent(QKeyEvent* event) {
    if (m_locked) {
        // Only what moves through the text and copies it.
        const bool opens = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                           event->key() == Qt::Key_F4 || event->key() == Qt::Key_PageUp ||
                           event->key() == Qt::Key_PageDown;
        if (opens)
            event->ignore();
        else
            QComboBox::keyPressEvent(event);
        return;
    }
    if (m_rule->swallows(event)) {
        event->accept();
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && notOnList.isConnected() && !text().isEmpty() && rowOf(text()) < 0) {
        lineEdit()->selectAll();
        notOnList();
        return;
    }
    QComboBox::keyPressEvent(event);
    if (enter)
        takeTyped();
}

void DataCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void DataCombo::contextMenuEvent(QContextMenuEvent* event) {
    // The line's own menu, which knows about being read-only.
    if (auto* menu = lineEdit()->createStandardContextMenu()) {
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(event->globalPos());
    }
}

void DataCombo::showPopup() {
    if (!m_locked)
        QComboBox::showPopup();
}

ListCombo::ListCombo(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::currentTextChanged, this, [this] { changed(); });
    connect(this, &QComboBox::activated, this, [this] { chosen(); });
}

void ListCombo::addRow(const QString& text, qint64 itemData) {
    addItem(text, itemData);
}

qint64 ListCombo::itemNumber() const {
    return currentData().toLongLong();
}

bool ListCombo::chooseNumber(qint64 itemData) {
    const int row = findData(itemData);
    if (row >= 0)
        setCurrentIndex(row);
    return row >= 0;
}

void ListCombo::setText(const QString& text) {
    int row = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row < 0)
        row = findText(text, Qt::MatchFixedString);
    if (row < 0 && !text.isEmpty()) {
        addItem(text, 0);
        row = count() - 1;
    }
    setCurrentIndex(row);
}

void ListCombo::setLocked(bool locked) {
    setEnabled(!locked);
}

void ListCombo::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (!isPassing(this, event))
        entered();
}

void ListCombo::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (!isPassing(this, event))
        left();
}

void ListCombo::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace controls
