#include "platform/screen/Form.h"

#include "platform/controls/Field.h"
#include "platform/controls/GridTools.h"
#include "platform/controls/Guard.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/SaveFile.h"
#include "platform/screen/Seams.h"
#include "platform/screen/Suspension.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>

namespace screen {

namespace {

QPointer<Form>& activeDocument() {
    static QPointer<Form> form;
    return form;
}

/// Where the place of a form's window is remembered.
QString placeKey(const Form& form) {
    return u"windows/"_s + form.name().toLower();
}

/// The window that a dialog stands over: the active one, or where none is (right after another
/// dialog closed) the topmost dialog or main window to be seen.
QWidget* windowBelow(const QWidget* dialog) {
    const auto fits = [dialog](const QWidget* window) {
        return window && window != dialog && window->isVisible();
    };
    if (fits(QApplication::activeWindow()))
        return QApplication::activeWindow();
    if (fits(QApplication::activeModalWidget()))
        return QApplication::activeModalWidget();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (fits(window) && qobject_cast<QMainWindow*>(window))
            return window;
    }
    return nullptr;
}

/// Takes what is being typed into a cell of a grid below the form.
void commitCell(const Form* form) {
    const QWidget* focus = QApplication::focusWidget();
    if (!focus || !form->isAncestorOf(focus))
        return;
    for (QWidget* above = focus->parentWidget(); above && above != form;
         above = above->parentWidget()) {
        if (auto* view = qobject_cast<QAbstractItemView*>(above)) {
            view->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

QMdiSubWindow* subWindowOf(const Form* form) {
    auto* subWindow = qobject_cast<QMdiSubWindow*>(form->parentWidget());
    return subWindow && subWindow->widget() == form ? subWindow : nullptr;
}

} // namespace

Form::Form(const QString& name, const QString& caption) {
    static const bool guards = [] {
        controls::setGuard([](const std::function<void()>& action) { guardedCall(action); });
        controls::setFileSaver(saveFile);
        return true;
    }();
    Q_UNUSED(guards);
    setObjectName(name);
    setWindowTitle(caption);
    // A dialog may be the only window for a moment; the program goes on.
    setAttribute(Qt::WA_QuitOnClose, false);
}

Form::~Form() {
    // The application lives on, and tells of the focus while the controls are taken down.
    disconnect(qApp, nullptr, this, nullptr);
    if (m_endModal)
        m_endModal();
    Forms::gone(this);
}

bool Form::guarded(const std::function<void()>& handler) {
    const QPointer<Form> self(this);
    ++m_running;
    const bool ended = guardedCall(handler);
    if (self) {
        --m_running;
        if (m_running == 0 && m_closing)
            deleteWhenIdle();
    }
    return ended;
}

bool Form::load() {
    if (m_loaded)
        return !m_refused;
    m_loaded = true;
    m_refused = false;
    m_closing = false;
    Forms::opened(this);
    const bool ended = guarded([this] { Form_Load(); });
    if (!ended || m_closing)
        m_refused = true;
    if (m_refused) {
        m_loaded = false;
        Forms::gone(this);
    }
    return !m_refused;
}

bool Form::unload() {
    if (m_closing)
        return true;
    if (m_loaded) {
        commitCell(this);
        bool leaves = false;
        if (!guarded([&] { leaves = Form_QueryUnload(); }) || !leaves)
            return false;
    }
    finishUnload();
    if (auto* subWindow = subWindowOf(this))
        subWindow->close();
    else
        close();
    if (m_running == 0)
        deleteWhenIdle();
    return true;
}

void Form::finishUnload() {
    m_closing = true;
    m_loaded = false;
    Forms::gone(this);
    if (activeDocument() == this)
        activeDocument() = nullptr;
    if (m_endModal)
        m_endModal();
    // The frame deletes itself and what is in it; a form with a handler on the stack must not go
    // with it.
    if (m_running > 0)
        QMetaObject::invokeMethod(
            this, [this] { leaveSubWindow(); }, Qt::QueuedConnection);
}

void Form::leaveSubWindow() {
    auto* subWindow = subWindowOf(this);
    if (!subWindow)
        return;
    subWindow->setWidget(nullptr);
    setParent(nullptr);
}

void Form::deleteWhenIdle() {
    if (m_ownsItself && m_closing && m_running == 0)
        deleteLater();
}

void Form::closeEvent(QCloseEvent* event) {
    if (m_closing) {
        event->accept();
        return;
    }
    if (m_modal && m_cancel && m_cancel->isEnabled() && !m_cancel->isHidden()) {
        event->ignore();
        m_cancel->click();
        return;
    }
    bool leaves = !m_loaded;
    commitCell(this);
    if (m_loaded && !guarded([&] { leaves = Form_QueryUnload(); }))
        leaves = false;
    event->setAccepted(leaves || m_closing);
    if (leaves && !m_closing) {
        finishUnload();
        deleteWhenIdle();
    }
}

void Form::showModal() {
    if (m_modal || !load())
        return;
    const QPointer<Form> self(this);
    const QPointer<QWidget> below(windowBelow(this));
    const QPointer<QWidget> belowFocus(QApplication::focusWidget());
    Forms::opened(this);
    m_closing = false;
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint | (windowFlags() & Qt::FramelessWindowHint));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_QuitOnClose, false);
    restoreSize();
    if (below) {
        // Above its window without being its child: whoever made the form deletes it.
        create();
        if (windowHandle() && below->windowHandle())
            windowHandle()->setTransientParent(below->windowHandle());
    }
    const QRect room = (below ? below->screen() : screen())->availableGeometry();
    QRect place(QPoint(), size().boundedTo(room.size()));
    place.moveCenter(below ? below->frameGeometry().center() : room.center());
    place.moveLeft(
        std::clamp(place.left(), room.left(), std::max(room.left(), room.right() - place.width())));
    place.moveTop(
        std::clamp(place.top(), room.top(), std::max(room.top(), room.bottom() - place.height())));
    setGeometry(place);

    const Suspension arrow;
    QEventLoop loop;
    m_modal = true;
    bool over = false;
    m_endModal = [&] {
        over = true;
        loop.quit();
    };
    show();
    raise();
    activateWindow();
    guarded([this] { Form_Activate(); });
    // The first field is entered as by Tab, its text selected. The window's own activation comes
    // later and is none of the fields' business.
    if (auto* first = over ? nullptr : qobject_cast<QLineEdit*>(focusWidget())) {
        QFocusEvent enters(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(first, &enters);
    }
    if (!over)
        loop.exec(QEventLoop::DialogExec);
    if (!self)
        return;
    m_endModal = nullptr;
    m_modal = false;
    hide();
    if (below && below->isVisible()) {
        below->activateWindow();
        if (belowFocus && below->isAncestorOf(belowFocus))
            belowFocus->setFocus(Qt::ActiveWindowFocusReason);
    }
}

void Form::hideModal() {
    if (m_endModal)
        m_endModal();
    hide();
}

QObject* Form::findControl(const QString& controlName) const {
    if (auto* exact = findChild<QObject*>(controlName))
        return exact;
    const auto below = findChildren<QObject*>();
    for (QObject* object : below) {
        if (object->objectName().compare(controlName, Qt::CaseInsensitive) == 0)
            return object;
    }
    return nullptr;
}

void Form::setDefaultButton(QPushButton* button) {
    if (m_default)
        m_default->setDefault(false);
    m_default = button;
    if (button)
        button->setDefault(true);
}

void Form::setCancelButton(QPushButton* button) {
    m_cancel = button;
}

QPushButton* Form::addOkCancel(QBoxLayout* inside, const QString& ok, const QString& cancel) {
    ButtonBar bar(this, inside);
    bar.stretch();
    QPushButton* cmdOK = bar.button(u"cmdOK"_s, ok);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, cancel);
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    on(cmdCancel, [this] { hideModal(); });
    return cmdOK;
}

void Form::onClick(QAbstractButton* button, std::function<void()> handler) {
    connect(button, &QAbstractButton::clicked, this, [this, button, handler = std::move(handler)] {
        // A mnemonic or Enter clicks without moving the focus; the field that has it must first
        // take and reformat what was typed. Cancel leaves it as it is.
        QWidget* focus = QApplication::focusWidget();
        if (button != m_cancel && focus && focus != button && isAncestorOf(focus) &&
            button->focusPolicy() != Qt::NoFocus)
            button->setFocus(Qt::ShortcutFocusReason);
        guarded(handler);
    });
}

void Form::onTrigger(QAction* action, std::function<void()> handler) {
    connect(action, &QAction::triggered, this,
            [this, handler = std::move(handler)] { guarded(handler); });
}

void Form::pressDefault() {
    const QPointer<Form> self(this);
    const QPointer<QWidget> before(focusWidget());
    const QPointer<QPushButton> button(m_default);
    button->click();
    // Another screen that the handler opened keeps the focus, and the front.
    const QWidget* now = QApplication::focusWidget();
    if (!self || (now && !isAncestorOf(now)))
        return;
    // Enter doesn't move the focus unless the handler did.
    if (button && before && before != button && isVisible() && before->isVisible() &&
        before->isEnabled() && (focusWidget() == button || !focusWidget()))
        before->setFocus(Qt::OtherFocusReason);
}

void Form::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto ready = [](const QPointer<QPushButton>& button) {
        return button && button->isEnabled() && button->isVisible();
    };
    if (plain && enter) {
        auto* focused = qobject_cast<QPushButton*>(focusWidget());
        if (focused && focused->isEnabled()) {
            focused->click();
            return;
        }
        if (ready(m_default)) {
            pressDefault();
            return;
        }
    }
    if (plain && event->key() == Qt::Key_Escape && ready(m_cancel)) {
        m_cancel->click();
        return;
    }
    QWidget::keyPressEvent(event);
}

void Form::becomeActive() {
    if (m_closing || m_modal || activeDocument() == this)
        return;
    activeDocument() = this;
    guarded([this] { Form_Activate(); });
}

bool Form::focusNextPrevChild(bool next) {
    QWidget* start = QApplication::focusWidget();
    if (!start || !isAncestorOf(start))
        start = this;
    QWidget* at = start;
    do {
        at = next ? at->nextInFocusChain() : at->previousInFocusChain();
        if (isAncestorOf(at) && at->isVisible() && at->isEnabled() && !at->focusProxy() &&
            (at->focusPolicy() & Qt::TabFocus) == Qt::TabFocus) {
            at->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    } while (at != start);
    return false;
}

void Form::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isWindow() && isActiveWindow() &&
        m_ownsItself && m_loaded)
        becomeActive();
}

QWidget* Form::sized() const {
    if (auto* subWindow = subWindowOf(this))
        return subWindow;
    return const_cast<Form*>(this);
}

void Form::restoreSize() {
    if (sized()->isMaximized())
        return;
    const QRect kept = platform::remembered(placeKey(*this)).toRect();
    auto* subWindow = subWindowOf(this);
    if (!kept.isEmpty())
        sized()->resize(kept.size());
    else if (isWindow() && !testAttribute(Qt::WA_Resized))
        adjustSize();
    if (subWindow && !kept.isEmpty())
        subWindow->move(kept.topLeft());
    if (subWindow && platform::remembered(placeKey(*this) + u".maximised"_s).toBool())
        subWindow->showMaximized();
}

void Form::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_placed)
        return;
    m_placed = true;
    if (auto* subWindow = subWindowOf(this)) {
        restoreSize();
        connect(subWindow, &QMdiSubWindow::windowStateChanged, this,
                [this](Qt::WindowStates before, Qt::WindowStates after) {
                    if (m_loaded && after.testFlag(Qt::WindowActive) &&
                        !before.testFlag(Qt::WindowActive))
                        becomeActive();
                });
    } else if (!m_modal) {
        restoreSize();
    }
    focusFirst();
}

void Form::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    rememberPlace();
    if (m_endModal)
        m_endModal();
}

void Form::rememberPlace() const {
    const QWidget* frame = sized();
    if (!frame->isMaximized() && !frame->isMinimized())
        platform::remember(placeKey(*this), frame->geometry());
    if (subWindowOf(this) && !frame->isMinimized())
        platform::remember(placeKey(*this) + u".maximised"_s, frame->isMaximized());
}

void Form::focusFirst() {
    // Qt itself stops at the tabs; people begin in the first field.
    if (focusWidget() && !qobject_cast<QTabBar*>(focusWidget()))
        return;
    for (QWidget* next = nextInFocusChain(); next && next != this;
         next = next->nextInFocusChain()) {
        if (isAncestorOf(next) && next->isEnabledTo(this) && next->isVisibleTo(this) &&
            (next->focusPolicy() & Qt::TabFocus) && !next->focusProxy() &&
            !qobject_cast<QTabBar*>(next)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void Form::complain(const QString& text, QWidget* field, Icon icon, const QString& title) {
    MsgBox(text, Buttons::Ok, icon, title);
    if (!field)
        return;
    for (QWidget* page = field; page && page != this; page = page->parentWidget()) {
        auto* stack = qobject_cast<QStackedWidget*>(page->parentWidget());
        if (!stack)
            continue;
        if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget()))
            tabs->setCurrentWidget(page);
        else
            stack->setCurrentWidget(page);
    }
    field->setFocus(Qt::OtherFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(field))
        line->selectAll();
    else if (auto* combo = qobject_cast<QComboBox*>(field); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
    else if (auto* memo = qobject_cast<QPlainTextEdit*>(field))
        memo->selectAll();
}

bool Form::mayDrop(bool changed, const std::function<void()>& take) {
    if (!changed)
        return true;
    switch (MsgBox(u"Would you like to keep what you changed?"_s, Buttons::YesNoCancel,
                   Icon::Question)) {
    case Answer::Yes:
        take();
        return true;
    case Answer::No:
        return true;
    default:
        return false;
    }
}

void Form::complain(const Complaint& complaint) {
    complain(complaint.text, complaint.field.isEmpty() ? nullptr : control(complaint.field),
             complaint.icon, complaint.title);
}

Form* Forms::active() {
    Form* form = activeDocument();
    return form && form->m_loaded && form->isVisible() ? form : nullptr;
}

} // namespace screen
