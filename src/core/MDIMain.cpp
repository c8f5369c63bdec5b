#include "core/MDIMain.h"

#include "core/Companions.h"
#include "core/EditActions.h"
#include "core/Login.h"
#include "core/MemoryScreen.h"
#include "core/MirsaMain.h"
#include "core/Mnemonics.h"
#include "core/ReportLaunch.h"
#include "core/Spelling.h"
#include "core/ToolIcons.h"
#include "core/UndoScreen.h"
#include "core/journal/JournalTables.h"
#include "core/journal/RecordHistory.h"
#include "core/papers/PaperDrop.h"
#include "core/papers/PaperKinds.h"
#include "core/papers/PaperScreen.h"
#include "core/records/RecordScreen.h"
#include "platform/jet/Location.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

namespace core {

namespace {

const QString placeKey = u"shell"_s; ///< of its window's place

/// The number of the record that a form shows; 0 where it shows none that is stored.
qint64 recordOf(const screen::Form* form) {
    if (const auto* module = dynamic_cast<const RecordScreen*>(form))
        return module->currentKey();
    const auto* other = dynamic_cast<const ShownRecord*>(form);
    return other ? other->shownRecord() : 0;
}

QStringList entriesWithoutScreen() {
    QStringList names;
    const QStringList all = menuNames();
    for (const QString& name : all) {
        const MenuEntry* entry = menuEntry(name);
        if (!entry->screen.isEmpty() && !screen::Forms::isKnown(entry->screen))
            names << name;
    }
    return names;
}

} // namespace

MDIMain::MDIMain() : m_area(new QMdiArea(this)) {
    setObjectName(u"MDIMain"_s);
    setWindowTitle(u"Mirsa Project Manager"_s);
    setWindowIcon(programIcon());
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_area);

    for (const MenuEntry& entry : mainMenu())
        menuBar()->addMenu(makeMenu(entry, this));
    for (const MenuEntry& entry : popupMenus())
        m_popups.insert(entry.name.toLower(), makeMenu(entry, this));
    m_windowMenu = menuAction(u"mnuWindow"_s)->menu();
    connect(menuAction(u"mnuEdit"_s)->menu(), &QMenu::aboutToShow, this, [this] { nameSteps(); });
    connect(m_windowMenu, &QMenu::aboutToShow, this, [this] { listWindows(); });
    makeToolBar();
    makeStatusBar();
    takeInitialPlace();

    new Mnemonics(m_area, menuBar());
    new PaperDrop(this, [this](screen::Form& form, const QStringList& files) {
        screen::guardedCall([&] { showPapers(&form, files); });
    });
    auto* closeChild = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4), this);
    connect(closeChild, &QShortcut::activated, m_area, &QMdiArea::closeActiveSubWindow);
    // Who closes a screen is back where he came from.
    m_area->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(m_area, &QMdiArea::subWindowActivated, this, [this] { showStatus(); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && now != menuBar() && isAncestorOf(now))
            m_lastControl = now;
    });

    screen::Forms::setHost([this](screen::Form& form) { place(form); },
                           [this](screen::Form& form) { bringForward(form); });
    setShell(this);
    openHelpFromDialogs(this);
}

MDIMain::~MDIMain() {
    // The focus still moves while the children go, when this is no shell any more.
    qApp->disconnect(this);
    m_area->disconnect(this);
    screen::Forms::setHost({}, {});
    if (shell() == this)
        setShell(nullptr);
}

QMenu* MDIMain::makeMenu(const MenuEntry& entry, QWidget* parent) {
    auto* menu = new QMenu(entry.caption, parent);
    menu->menuAction()->setObjectName(entry.name);
    m_actions.insert(entry.name.toLower(), menu->menuAction());
    for (const MenuEntry& child : entry.children) {
        if (child.does == MenuEntry::Does::Menu) {
            menu->addMenu(makeMenu(child, menu));
            continue;
        }
        QAction* action = menu->addAction(child.caption);
        action->setObjectName(child.name);
        m_actions.insert(child.name.toLower(), action);
        if (!child.shortcut.isEmpty())
            action->setShortcut(QKeySequence(child.shortcut));
        connect(action, &QAction::triggered, this, [this, &child] { perform(child); });
    }
    return menu;
}

void MDIMain::makeToolBar() {
    ToolBarMainMenu = addToolBar(u"Modules"_s);
    ToolBarMainMenu->setObjectName(u"ToolBarMainMenu"_s);
    ToolBarMainMenu->setMovable(false);
    ToolBarMainMenu->setContextMenuPolicy(Qt::PreventContextMenu);
    for (int number = 1; number <= toolButtons; ++number) {
        if (isToolSeparator(number)) {
            m_buttons.insert(number, ToolBarMainMenu->addSeparator());
            continue;
        }
        const MenuEntry* entry = menuEntry(toolButtonMenu(number));
        QString caption = entry->caption;
        caption.remove(QLatin1Char('&'));
        QAction* button = ToolBarMainMenu->addAction(toolIcon(number), caption);
        button->setToolTip(entry->shortcut.isEmpty() ? caption
                                                     : caption + u" ("_s + entry->shortcut + u')');
        connect(button, &QAction::triggered, this,
                [this, number] { ToolBarMainMenu_ButtonClick(number); });
        m_buttons.insert(number, button);
    }
}

void MDIMain::makeStatusBar() {
    statusBar()->setObjectName(u"sbMainMenu"_s);
    const auto panel = [this](const char* name, const QString& meaning) {
        auto* label = screen::named(new QLabel(this), QString::fromLatin1(name), meaning);
        label->setToolTip(meaning);
        label->setMargin(2);
        statusBar()->addPermanentWidget(label);
        return label;
    };
    m_papers = screen::named(new QToolButton(this), u"cmdPapers"_s, u"Papers of this record"_s);
    m_papers->setAutoRaise(true);
    m_papers->setFocusPolicy(Qt::NoFocus); // it has Ctrl+O
    m_papers->setToolTip(u"Papers of this record (Ctrl+O); files can be dropped on its window"_s);
    connect(m_papers, &QToolButton::clicked, menuAction(u"mnuPapers"_s), &QAction::trigger);
    statusBar()->addPermanentWidget(m_papers);
    m_mode = panel("pnlMode", u"Mode of the active module"_s);
    m_user = panel("pnlUser", u"Signed-in user"_s);
    m_database = panel("pnlDatabase", u"Database"_s);
    showStatus();
}

void MDIMain::takeInitialPlace() {
    const QRect room = screen()->availableGeometry();
    resize(static_cast<int>(room.width() * 0.95), static_cast<int>(room.height() * 0.9));
    move(room.left() + static_cast<int>((room.width() - width()) / 2.0),
         room.top() + static_cast<int>((room.height() - height()) / 2.0));
    // Where it stood yesterday, if that can still be seen.
    restoreGeometry(platform::remembered(placeKey, {}, platform::Whose::Station).toByteArray());
}

// Rights

void MDIMain::SecureMenuObjects() {
    const ShellRights rights = readShellRights(MainDatabase(), menuNames(), entriesWithoutScreen());
    const QStringList names = menuNames();
    for (const QString& name : names) {
        QAction* action = menuAction(name);
        action->setEnabled(rights.isEnabled(name));
        action->setVisible(rights.isVisible(name));
    }
    const QStringList missing = companionsMissing();
    for (const QString& name : missing)
        menuAction(name)->setVisible(false);
    QAction* external = menuAction(u"mnuExternal"_s);
    const auto companions = external->menu()->actions();
    external->setVisible(external->isVisible() &&
                         std::any_of(companions.begin(), companions.end(),
                                     [](const QAction* one) { return one->isVisible(); }));
    for (auto button = m_buttons.cbegin(); button != m_buttons.cend(); ++button)
        button.value()->setVisible(rights.isButtonVisible(button.key()) &&
                                   !missing.contains(toolButtonMenu(button.key())));
    showStatus();
}

void MDIMain::showToolBar(bool shown) {
    ToolBarMainMenu->setVisible(shown);
}

void MDIMain::openOnlyModule() {
    QString only;
    for (const MenuEntry& entry : menuEntry(u"mnuAddOns"_s)->children) {
        if (entry.does != MenuEntry::Does::Document || !menuAction(entry.name)->isEnabled())
            continue;
        if (!only.isEmpty())
            return;
        only = entry.screen;
    }
    if (!only.isEmpty())
        screen::Forms::show(only);
}

bool MDIMain::mayOpen(const QString& screen) const {
    const QStringList names = menuNames();
    return std::any_of(names.begin(), names.end(), [&](const QString& name) {
        return menuEntry(name)->screen.compare(screen, Qt::CaseInsensitive) == 0 &&
               menuAction(name)->isEnabled();
    });
}

void MDIMain::bringToFront() {
    raise();
    activateWindow();
}

QAction* MDIMain::menuAction(const QString& name) const {
    return m_actions.value(name.toLower());
}

QAction* MDIMain::toolButton(int number) const {
    return m_buttons.value(number);
}

void MDIMain::ToolBarMainMenu_ButtonClick(int number) {
    if (QAction* action = menuAction(toolButtonMenu(number)))
        action->trigger();
}

// Entries

void MDIMain::perform(const MenuEntry& entry) {
    // A menu that was opened by keys leaves the keyboard nowhere.
    QWidget* focus = QApplication::focusWidget();
    if ((!focus || focus == menuBar()) && m_lastControl && m_lastControl->isVisible())
        m_lastControl->setFocus(Qt::MenuBarFocusReason);
    screen::guardedCall([&] {
        switch (entry.does) {
        case MenuEntry::Does::Document:
            screen::Forms::show(entry.screen);
            break;
        case MenuEntry::Does::Dialog:
            screen::Forms::showModal(entry.screen);
            break;
        case MenuEntry::Does::Handler:
            performHandler(entry.name);
            break;
        case MenuEntry::Does::Menu:
            break;
        }
    });
}

void MDIMain::performHandler(const QString& name) {
    const auto is = [&name](const char16_t* other) { return name == QStringView(other); };
    if (is(u"mnuFileLogin"))
        SwitchUser();
    else if (is(u"mnuFileExit"))
        close();
    else if (is(u"mnuEditUndo") || is(u"mnuEditRedo"))
        undoHere(is(u"mnuEditRedo"));
    else if (is(u"mnuEditCut"))
        edit::cut(m_lastControl);
    else if (is(u"mnuEditCopy"))
        edit::copy(m_lastControl);
    else if (is(u"mnuEditPaste"))
        edit::paste(m_lastControl);
    else if (is(u"mnuEditDelete"))
        edit::deleteSelection(m_lastControl);
    else if (startCompanion(name))
        return;
    else if (is(u"mnuSpellCheck"))
        checkSpelling(m_lastControl);
    else if (is(u"mnuArrange"))
        arrangeIcons();
    else if (is(u"mnuCascade"))
        m_area->cascadeSubWindows();
    else if (is(u"mnuHelp32"))
        openHelp();
    else if (is(u"mnuUtilitiesRecordHistory"))
        showRecordHistory();
    else if (is(u"mnuMemory"))
        showMemory();
    else if (is(u"mnuPapers"))
        showPapers(screen::Forms::active());
    else if (is(u"mnuListHere"))
        showListHere();
    else if (is(u"mnuTravel"))
        launchTraveler(false);
    else if (is(u"mnuTravelwNotes"))
        launchTraveler(true);
}

/// The list of the module that is active; where it has none, the menu of all lists.
void MDIMain::showListHere() {
    const screen::Form* active = screen::Forms::active();
    for (const MenuEntry& list : menuEntry(u"mnuLists"_s)->children) {
        const MenuEntry* module = list.right.isEmpty() ? nullptr : menuEntry(list.right);
        if (!active || !module || !menuAction(list.name)->isEnabled())
            continue;
        if (active->name() == module->screen || active->name() == list.screen) {
            screen::Forms::show(list.screen);
            return;
        }
    }
    QMenu* lists = menuAction(u"mnuLists"_s)->menu();
    const QSize size = lists->sizeHint();
    lists->popup(
        m_area->mapToGlobal(m_area->rect().center() - QPoint(size.width() / 2, size.height() / 2)));
    lists->setActiveAction(lists->actions().value(1));
}

QString MDIMain::popUp(const QString& menu, const QPoint& globalPlace) {
    QMenu* popup = m_popups.value(menu.toLower());
    const QAction* chosen = popup ? popup->exec(globalPlace) : nullptr;
    return chosen ? chosen->objectName() : QString();
}

void MDIMain::showRecordHistory() {
    const screen::Form* active = screen::Forms::active();
    const qint64 key = recordOf(active);
    if (key == 0 || journalTablesOf(active->name()).isEmpty()) {
        screen::MsgBox(u"Open a record first, a job or a customer for instance: the history is "
                       "that of the record in front."_s,
                       screen::Buttons::Ok, screen::Icon::Information, u"System Message"_s);
        return;
    }
    const QString name = active->name();
    screen::Forms::show(u"frmRecordHistory"_s);
    if (auto* history = screen::Forms::find<RecordHistory>(u"frmRecordHistory"_s))
        history->showRecord(name, key);
}

void MDIMain::undoHere(bool again) {
    auto* entry = dynamic_cast<UndoScreen*>(screen::Forms::active());
    if (entry)
        again ? entry->redoEntry() : entry->undoEntry();
}

/// What Undo and Redo would do. Their keys belong to the screens.
void MDIMain::nameSteps() {
    auto* entry = dynamic_cast<UndoScreen*>(screen::Forms::active());
    if (entry)
        entry->settleEntry();
    const auto name = [this](const QString& action, const QString& word, const QString& step,
                             const QString& key) {
        QString caption =
            step.isEmpty() ? word : word + u' ' + QString(step).replace(u"&"_s, u"&&"_s);
        menuAction(action)->setText(caption + u'\t' + key);
        menuAction(action)->setEnabled(!step.isEmpty());
    };
    name(u"mnuEditUndo"_s, u"&Undo"_s, entry ? entry->undoName() : QString(), u"Ctrl+Z"_s);
    name(u"mnuEditRedo"_s, u"&Redo"_s, entry ? entry->redoName() : QString(), u"Ctrl+Y"_s);
}

void MDIMain::showMemory() {
    if (auto* screen = dynamic_cast<MemoryScreen*>(screen::Forms::active()))
        screen->showMemory();
    else
        screen::MsgBox(u"Open an estimate first: the memory of the shop tells what its part and "
                       "its operations took before."_s,
                       screen::Buttons::Ok, screen::Icon::Information, u"System Message"_s);
}

/// Of the record of a form, with files that were dropped there.
void MDIMain::showPapers(const screen::Form* form, const QStringList& files) {
    const QString papers = u"frmPapers"_s;
    if (form && form->name() == papers) {
        screen::Forms::find<PaperScreen>(papers)->addFiles(files);
        return;
    }
    const qint64 key = recordOf(form);
    if (key == 0 || !paperKindOf(form->name())) {
        screen::MsgBox(u"Open a record first, a job or an estimate for instance, and save it if it "
                       "is new: papers lie beside a record."_s,
                       screen::Buttons::Ok, screen::Icon::Information, u"System Message"_s);
        return;
    }
    const QString name = form->name();
    screen::Forms::show(papers);
    if (auto* shown = screen::Forms::find<PaperScreen>(papers)) {
        shown->showRecord(name, key);
        shown->addFiles(files);
    }
}

void MDIMain::launchTraveler(bool withNotes) {
    auto* jobs = screen::Forms::find<RecordScreen>(u"frmJob"_s);
    if (jobs && jobs->currentKey() != 0)
        core::launchTraveler(jobs->currentKey(), withNotes, this);
}

// Children

void MDIMain::place(screen::Form& form) {
    QMdiSubWindow* frame = m_area->addSubWindow(&form);
    frame->setWindowIcon(windowIcon());
    form.installEventFilter(this);
    if (!journalTablesOf(form.name()).isEmpty()) {
        form.addAction(menuAction(u"mnuUtilitiesRecordHistory"_s));
        form.setContextMenuPolicy(Qt::ActionsContextMenu);
    }
    if (paperKindOf(form.name())) {
        form.setAcceptDrops(true);
        form.addAction(menuAction(u"mnuPapers"_s));
        form.setContextMenuPolicy(Qt::ActionsContextMenu);
    }
    if (form.opensMaximized())
        frame->showMaximized();
    form.show();
    // As large as it wants to be, and no larger than there is room for.
    if (!frame->isMaximized()) {
        frame->resize(frame->size().boundedTo(m_area->viewport()->size()));
        const QRect room = m_area->viewport()->rect();
        if (!room.contains(frame->geometry()))
            frame->move(std::max(0, std::min(frame->x(), room.width() - frame->width())),
                        std::max(0, std::min(frame->y(), room.height() - frame->height())));
    }
    m_area->setActiveSubWindow(frame);
    showStatus();
}

void MDIMain::bringForward(screen::Form& form) {
    auto* frame = qobject_cast<QMdiSubWindow*>(form.parentWidget());
    if (!frame)
        return;
    if (frame->isMinimized())
        frame->showNormal();
    m_area->setActiveSubWindow(frame);
}

void MDIMain::listWindows() {
    qDeleteAll(m_windowList);
    m_windowList.clear();
    const auto frames = m_area->subWindowList();
    if (!frames.isEmpty())
        m_windowList << m_windowMenu->addSeparator();
    int number = 0;
    for (QMdiSubWindow* frame : frames) {
        ++number;
        QString title = frame->windowTitle();
        title.replace(QLatin1Char('&'), u"&&"_s);
        QAction* action =
            m_windowMenu->addAction(number < 10 ? u"&%1 %2"_s.arg(number).arg(title) : title);
        action->setCheckable(true);
        action->setChecked(frame == m_area->activeSubWindow());
        connect(action, &QAction::triggered, frame, [this, frame] {
            if (frame->isMinimized())
                frame->showNormal();
            m_area->setActiveSubWindow(frame);
        });
        m_windowList << action;
    }
}

void MDIMain::arrangeIcons() {
    const QRect room = m_area->viewport()->rect();
    int left = 0, bottom = room.height();
    const auto frames = m_area->subWindowList();
    for (QMdiSubWindow* frame : frames) {
        if (!frame->isMinimized())
            continue;
        if (left > 0 && left + frame->width() > room.width()) {
            left = 0;
            bottom -= frame->height();
        }
        frame->move(left, bottom - frame->height());
        left += frame->width();
    }
}

bool MDIMain::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange)
        showStatus();
    return QMainWindow::eventFilter(object, event);
}

void MDIMain::showStatus() {
    const SharedState& state = shared();
    m_user->setText(state.CurrentUserName);
    m_database->setText(jet::withoutPassword(state.DatabasePath));
    const QMdiSubWindow* frame = m_area->activeSubWindow();
    const QWidget* form = frame ? frame->widget() : nullptr;
    const auto* document = dynamic_cast<const screen::Form*>(form);
    const int papers = form ? form->property(papersProperty).toInt() : 0;
    m_papers->setVisible(document && paperKindOf(document->name()));
    m_papers->setText(papers > 0 ? u"Papers (%1)"_s.arg(papers) : u"Papers"_s);
    m_mode->setText(form ? form->property("mode").toString().toUpper() : QString());
}

void MDIMain::closeEvent(QCloseEvent* event) {
    const auto open = screen::Forms::all();
    for (screen::Form* form : open) {
        if (screen::Forms::all().contains(form) && !form->unload()) {
            event->ignore();
            return;
        }
    }
    event->accept();
    platform::remember(placeKey, saveGeometry(), platform::Whose::Station);
    screen::seams().endProcess(0);
}

} // namespace core
