#include "core/records/EntryUndo.h"

#include "platform/controls/HistoryKeys.h"
#include "platform/values/Literals.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTabWidget>

#include <algorithm>

namespace core {

namespace {

constexpr std::size_t mostSteps = 1000;

/// Not as the database compares: a change of case is one.
bool isSame(const jet::Value& a, const jet::Value& b) {
    return a.isNull() == b.isNull() && a.toText() == b.toText();
}

bool holdsFocus(const QWidget* widget, const QWidget* focus) {
    return widget && focus && (widget == focus || widget->isAncestorOf(focus));
}

/// Whether people type into it, so that its value is not the one they mean before they leave.
bool isTypedIn(const QWidget* widget) {
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
           (combo && combo->isEditable());
}

} // namespace

EntryUndo::EntryUndo(QWidget& form, EntrySubject& subject,
                     std::function<void(const std::function<void()>&)> guarded)
    : QObject(&form), m_form(form), m_subject(subject), m_guarded(std::move(guarded)) {
    m_later.setSingleShot(true);
    connect(&m_later, &QTimer::timeout, this, [this] { look(false); });
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (m_subject.isInEntry())
            m_later.start(0);
    });
}

void EntryUndo::follow(controls::LineList& lines, const QString& word) {
    lines.word = word;
    lines.stepped.connect([this, &lines](const QString& name) { lineStep(lines, name); });
    lines.forgotten.connect([this] {
        if (!m_applying)
            restart();
    });
}

void EntryUndo::restart() {
    m_done.clear();
    m_undone.clear();
    m_parts.clear();
    m_begun = false;
    m_open = false;
    if (!m_subject.isInEntry()) {
        m_later.stop();
        qApp->removeEventFilter(this);
        return;
    }
    // What it begins with stands when the handler that begins it has ended.
    m_later.start(0);
    qApp->removeEventFilter(this);
    qApp->installEventFilter(this);
}

QString EntryUndo::undoName() const {
    return m_done.empty() ? QString() : m_done.back().name;
}

QString EntryUndo::redoName() const {
    return m_undone.empty() ? QString() : m_undone.back().name;
}

QString EntryUndo::wordsOf(const QWidget* widget) const {
    QString words;
    if (const auto* box = qobject_cast<const QAbstractButton*>(widget))
        words = box->text();
    const auto labels = m_form.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (words.isEmpty() && label->buddy() == widget)
            words = label->text();
    }
    if (words.isEmpty())
        words = widget->accessibleName();
    words.remove(u'&');
    while (words.endsWith(u':') || words.endsWith(u'?'))
        words.chop(1);
    return words;
}

void EntryUndo::push(Step step) {
    m_done.push_back(std::move(step));
    m_undone.clear();
    if (m_done.size() > mostSteps)
        m_done.erase(m_done.begin());
}

/// Compares the parts with how they stood. Of a field that is being typed in nothing is taken yet,
/// unless something has come of it already.
void EntryUndo::look(bool withFocus) {
    if (m_applying || !m_subject.isInEntry())
        return;
    std::vector<EntryPart> now = m_subject.entryParts();
    if (!std::exchange(m_begun, true) || now.size() != m_parts.size()) {
        m_parts = std::move(now);
        return;
    }
    const QWidget* focus = QApplication::focusWidget();
    std::vector<Change> changes;
    const Change* cause = nullptr;
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (isSame(now[i].value, m_parts[i].value))
            continue;
        changes.push_back(
            {now[i].key, m_parts[i].value, now[i].value, now[i].widget, now[i].reckoned});
    }
    const auto isAt = [focus](const Change& change) {
        return isTypedIn(change.widget) && holdsFocus(change.widget, focus);
    };
    const auto typed = std::count_if(changes.begin(), changes.end(),
                                     [](const Change& change) { return !change.reckoned; });
    const bool waits = !withFocus && typed == 1 &&
                       std::any_of(changes.begin(), changes.end(), [&](const Change& change) {
                           return !change.reckoned && isAt(change);
                       });
    if (waits && !m_open)
        return;
    if (changes.empty()) {
        m_open = false;
        return;
    }
    for (const Change& change : changes) {
        if (!change.reckoned && (!cause || isAt(change)))
            cause = &change;
    }
    if (!m_open && cause) {
        const QString words = cause->widget ? wordsOf(cause->widget) : QString();
        push({.name = words.isEmpty() ? u"change"_s : u"change of "_s + words});
    } else if (m_done.empty()) {
        return; // reckoned anew without cause: the first step will put it back
    }
    // What comes of a step belongs to it.
    for (const Change& change : changes) {
        auto& known = m_done.back().changes;
        const auto same = std::find_if(known.begin(), known.end(),
                                       [&](const Change& one) { return one.key == change.key; });
        if (same == known.end())
            known.push_back(change);
        else
            same->after = change.after;
    }
    m_open = false;
    m_parts = std::move(now);
}

void EntryUndo::lineStep(controls::LineList& lines, const QString& name) {
    if (m_applying || !m_subject.isInEntry())
        return;
    push({.name = name, .lines = &lines});
    m_open = true;
    m_later.start(0);
}

bool EntryUndo::undo() {
    look(true);
    return step(m_done, m_undone, false);
}

bool EntryUndo::redo() {
    look(true);
    return step(m_undone, m_done, true);
}

bool EntryUndo::step(std::vector<Step>& from, std::vector<Step>& to, bool forward) {
    if (from.empty() || !m_subject.isInEntry())
        return false;
    {
        const QScopedValueRollback applying(m_applying, true);
        apply(from.back(), forward);
    }
    to.push_back(std::move(from.back()));
    from.pop_back();
    m_open = false;
    m_parts = m_subject.entryParts();
    return true;
}

void EntryUndo::apply(Step& step, bool forward) {
    const auto put = [&](bool reckoned) {
        for (const Change& change : step.changes) {
            if (change.reckoned == reckoned)
                m_subject.restorePart(change.key, forward ? change.after : change.before);
        }
    };
    // Where the line breaks amid a step, the next try doesn't take another step of the lines.
    if (step.lines && step.linesBack == forward) {
        forward ? step.lines->redo() : step.lines->undo();
        step.linesBack = !forward;
    }
    put(false);
    put(false); // one may have changed another that was put back before it
    m_subject.entryRestored();
    goTo(step); // what is left on the way there reckons
    put(true);
}

/// Where the step was made, so that it is seen.
void EntryUndo::goTo(const Step& step) const {
    const auto typed =
        std::find_if(step.changes.begin(), step.changes.end(),
                     [](const Change& change) { return !change.reckoned && change.widget; });
    if (step.lines || typed == step.changes.end())
        return;
    for (QWidget* page = typed->widget; page && page != &m_form; page = page->parentWidget()) {
        auto* stack = qobject_cast<QStackedWidget*>(page->parentWidget());
        if (auto* tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr)
            tabs->setCurrentWidget(page);
    }
    typed->widget->setFocus(Qt::OtherFocusReason);
}

// Keys

/// Whether the field where the focus is has something of its own to take back or do again.
bool EntryUndo::isTyping(const QWidget* focus, bool forward) const {
    for (const QWidget* above = focus->parentWidget(); above && above != &m_form;
         above = above->parentWidget()) {
        if (qobject_cast<const QAbstractItemView*>(above))
            return qobject_cast<const QLineEdit*>(focus); // a cell's editor
    }
    const auto* line = qobject_cast<const QLineEdit*>(focus);
    if (const auto* combo = qobject_cast<const QComboBox*>(focus))
        line = combo->lineEdit();
    const auto* memo = qobject_cast<const QPlainTextEdit*>(focus);
    if (!line && !memo)
        return false;
    const bool has = line ? (forward ? line->isRedoAvailable() : line->isUndoAvailable())
                          : (forward ? memo->document()->isRedoAvailable()
                                     : memo->document()->isUndoAvailable());
    if (!has)
        return false;
    if (forward)
        return m_undone.empty();
    const std::vector<EntryPart> now = m_subject.entryParts();
    for (std::size_t i = 0; i < now.size() && i < m_parts.size(); ++i) {
        if (holdsFocus(now[i].widget, focus))
            return !isSame(now[i].value, m_parts[i].value);
    }
    return true; // it is no part of the entry
}

bool EntryUndo::handle(QWidget* focus, QEvent* event) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool forward = controls::isRedo(key);
    if (!forward && !controls::isUndo(key)) {
        if (!m_begun)
            look(false); // keys may come before the timer
        // What is typed in a field counts when it is left.
        const bool types =
            key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter && isTypedIn(focus);
        if (!types)
            m_later.start(0);
        return false;
    }
    if (isTyping(focus, forward))
        return false;
    event->accept();
    if (event->type() == QEvent::KeyPress)
        m_guarded([&] { forward ? redo() : undo(); });
    return true;
}

bool EntryUndo::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        auto* focus = qobject_cast<QWidget*>(object);
        if (focus && focus == QApplication::focusWidget() && m_form.isAncestorOf(focus))
            return handle(focus, event);
        break;
    }
    case QEvent::MouseButtonPress:
        if (!m_begun)
            look(false);
        break;
    case QEvent::MouseButtonRelease:
        m_later.start(0);
        break;
    default:
        break;
    }
    return false;
}

} // namespace core
