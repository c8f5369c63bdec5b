#include "estimating/memory/MemoryBeside.h"

#include "platform/screen/Forms.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QScreen>

namespace estimating {

namespace {

const QString wantedKey = u"memory/wanted"_s;
const QString formName = u"frmMemory"_s;

} // namespace

MemoryBeside::MemoryBeside(screen::Form& screen, Shown shown,
                           std::function<void(qint64, double)> bring)
    : m_screen(screen), m_shown(std::move(shown)), m_bring(std::move(bring)) {
    m_later.setSingleShot(true);
    m_screen.on(&m_later, &QTimer::timeout, [this] {
        if (m_form && m_form->isVisible())
            m_window->follow(m_shown());
    });
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* now) { focusMoved(now); });
}

MemoryBeside::~MemoryBeside() {
    delete m_form.data();
}

void MemoryBeside::make() {
    if (m_form && screen::Forms::isLoaded(formName))
        return;
    delete m_form.data();
    screen::Form* form = screen::Forms::make(formName).release();
    m_form = form;
    m_window = dynamic_cast<MemoryWindow*>(form);
    form->setParent(m_screen.window(), Qt::Tool);
    m_window->setHost({.bring =
                           [this](qint64 operNo, double figure) {
                               goBack();
                               m_bring(operNo, figure);
                           },
                       .goBack = [this] { goBack(); },
                       .closedByUser =
                           [this] {
                               platform::remember(wantedKey, false);
                               goBack();
                           }});
    if (form->load())
        platform::remember(wantedKey, true);
    place();
}

/// Where it was last; to begin with below at the right, over what has no routing in it.
void MemoryBeside::place() {
    const QWidget* window = m_screen.window();
    const QRect room = window->screen()->availableGeometry();
    QRect place = platform::remembered(u"windows/"_s + formName.toLower()).toRect();
    if (place.isEmpty()) {
        place = QRect(QPoint(), m_form->sizeHint().boundedTo(room.size()));
        place.moveBottomRight(window->geometry().bottomRight() - QPoint(8, 8));
    }
    if (!room.contains(place)) {
        place.setSize(place.size().boundedTo(room.size()));
        place.moveLeft(std::clamp(place.left(), room.left(), room.right() - place.width() + 1));
        place.moveTop(std::clamp(place.top(), room.top(), room.bottom() - place.height() + 1));
    }
    m_form->setGeometry(place);
}

void MemoryBeside::open() {
    make();
    m_form->setAttribute(Qt::WA_ShowWithoutActivating, false);
    m_form->show();
    m_form->raise();
    m_form->activateWindow();
    m_window->follow(m_shown());
}

void MemoryBeside::openIfWanted() {
    if (!platform::remembered(wantedKey, false).toBool() || !screen::Forms::isKnown(formName))
        return;
    make();
    m_form->setAttribute(Qt::WA_ShowWithoutActivating);
    m_form->show();
    m_window->follow(m_shown());
}

void MemoryBeside::followLater() {
    if (m_form && m_form->isVisible() && !m_later.isActive())
        m_later.start(0);
}

void MemoryBeside::goBack() {
    m_screen.window()->activateWindow();
    if (QWidget* last = m_screen.focusWidget())
        last->setFocus(Qt::OtherFocusReason);
}

/// Another screen in front has no use for it.
void MemoryBeside::focusMoved(const QWidget* now) {
    if (!m_form || !screen::Forms::isLoaded(formName))
        return;
    const QWidget* at = now;
    while (at && !dynamic_cast<const screen::Form*>(at))
        at = at->parentWidget();
    if (!at || at == m_form || (at != &m_screen && at->window() != m_screen.window()))
        return;
    const bool here = at == &m_screen;
    if (here == m_form->isVisible())
        return;
    if (!here) {
        m_form->hide();
        return;
    }
    m_form->setAttribute(Qt::WA_ShowWithoutActivating);
    m_form->show();
    followLater();
}

} // namespace estimating
