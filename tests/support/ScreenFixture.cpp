#include "support/ScreenFixture.h"

#include "platform/controls/Field.h"
#include "platform/jet/Database.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

namespace testsupport {

using screen::Answer;
using screen::Buttons;
using screen::Form;
using screen::Forms;

/// Sees every window that shows itself, to drive dialogs and to end those that nobody drives.
class ScreenFixture::Watcher : public QObject {
  public:
    explicit Watcher(ScreenFixture& fixture) : m_fixture(fixture) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Show)
            return false;
        if (auto* form = dynamic_cast<Form*>(object); form && form->isModalNow()) {
            QTimer::singleShot(0, form, [this, form] { m_fixture.dialogShown(form); });
        } else if (auto* dialog = qobject_cast<QDialog*>(object);
                   dialog && !qobject_cast<QProgressDialog*>(object)) { // that one asks nothing
            QTimer::singleShot(0, dialog, [dialog] {
                ADD_FAILURE() << "A dialog of the toolkit came up: "
                              << dialog->windowTitle().toStdString();
                dialog->reject();
            });
        }
        return false;
    }

  private:
    ScreenFixture& m_fixture;
};

ScreenFixture::ScreenFixture() {
    platform::keepRememberedIn(m_remembered.filePath(u"remembered.ini"_s));
    platform::setPerson({});
    m_shell = std::make_unique<QMainWindow>();
    m_shell->setObjectName(u"shell"_s);
    m_area = new QMdiArea(m_shell.get());
    m_shell->setCentralWidget(m_area);
    m_shell->resize(1280, 800);
    m_shell->show();
    QApplication::setActiveWindow(m_shell.get());
    Forms::setHost(
        [this](Form& made) {
            m_area->addSubWindow(&made);
            made.show();
        },
        [this](Form& open) {
            for (auto* sub : m_area->subWindowList()) {
                if (sub->widget() == &open)
                    m_area->setActiveSubWindow(sub);
            }
        });
    m_watcher = std::make_unique<Watcher>(*this);
    installSeams();
}

ScreenFixture::~ScreenFixture() {
    Forms::setHost({}, {});
    m_watcher.reset();
    m_shell.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    screen::resetSeams();
}

void ScreenFixture::TearDown() {
    settle();
    expectNothingLeft();
}

void ScreenFixture::expectNothingLeft() {
    for (const Box& box : m_boxes)
        ADD_FAILURE() << "This box didn't come: " << box.text.toStdString();
    for (const auto& input : m_inputs)
        ADD_FAILURE() << "This question didn't come: " << input.first.toStdString();
    for (const QString& file : m_saveFiles)
        ADD_FAILURE() << "Nobody asked where to save " << file.toStdString();
    for (const QString& file : m_openFiles)
        ADD_FAILURE() << "Nobody asked which file to open: " << file.toStdString();
    for (const int error : m_expectedErrors)
        ADD_FAILURE() << "Run-time error " << error << " didn't come";
    for (const auto& [name, drivers] : m_drivers) {
        if (!drivers.empty())
            ADD_FAILURE() << "This dialog didn't come: " << name.toStdString();
    }
    if (m_endExpected)
        ADD_FAILURE() << "The process wasn't ended";
    m_boxes.clear();
    m_inputs.clear();
    m_saveFiles.clear();
    m_openFiles.clear();
    m_expectedErrors.clear();
    m_drivers.clear();
    m_endExpected = false;
}

void ScreenFixture::installSeams() {
    auto& seams = screen::seams();
    seams.msgBox = [this](const QString& text, Buttons buttons, screen::Icon icon,
                          const QString& title,
                          Answer) { return answerBox(text, buttons, icon, title); };
    seams.inputBox = [this](const QString& prompt, const QString&, const QString&) {
        if (m_inputs.empty() || m_inputs.front().first != prompt) {
            ADD_FAILURE() << "Unexpected question: " << prompt.toStdString();
            return QString();
        }
        const QString answer = m_inputs.front().second;
        m_inputs.pop_front();
        return answer;
    };
    const auto takeFile = [](std::deque<QString>& files, const QString& title) {
        if (files.empty()) {
            ADD_FAILURE() << "Unexpected file dialog: " << title.toStdString();
            return QString();
        }
        const QString file = files.front();
        files.pop_front();
        return file;
    };
    seams.saveFile = [this, takeFile](const QString& title, const QString&, const QString&) {
        return takeFile(m_saveFiles, title);
    };
    seams.openFiles = [this, takeFile](const QString& title, const QString&, const QString&) {
        return takeFile(m_openFiles, title).split(u'|', Qt::SkipEmptyParts);
    };
    seams.isInstalled = [this](const QString&) { return programsStart; };
    seams.startMaximised = [this](const QString& program, QString& error) {
        started << program + u" maximised"_s;
        if (!programsStart)
            error = u"File not found: "_s + program;
        return programsStart;
    };
    seams.startProgram = [this](const QString& program, const QStringList& arguments,
                                QString& error) {
        started << (QStringList(program) + arguments).join(u' ');
        if (!programsStart)
            error = u"File not found"_s;
        return programsStart;
    };
    seams.activateWindow = [this](const QString& title) {
        activated << title;
        return runningWindows.count(title) > 0 && runningWindows[title];
    };
    seams.beep = [this] { ++beeps; };
    seams.runTimeError = [this](int number, const QString& text) {
        lastRunTimeError = text;
        if (!m_expectedErrors.empty() && m_expectedErrors.front() == number) {
            m_expectedErrors.pop_front();
            return;
        }
        ADD_FAILURE() << "Run-time error " << number << ": " << text.toStdString();
    };
    seams.endProcess = [this](int) {
        if (!m_endExpected)
            ADD_FAILURE() << "The process was ended";
        m_endExpected = false;
    };
}

static bool offers(Buttons buttons, Answer answer) {
    switch (buttons) {
    case Buttons::Ok:
        return answer == Answer::Ok;
    case Buttons::OkCancel:
        return answer == Answer::Ok || answer == Answer::Cancel;
    case Buttons::YesNo:
        return answer == Answer::Yes || answer == Answer::No;
    case Buttons::YesNoCancel:
        return answer == Answer::Yes || answer == Answer::No || answer == Answer::Cancel;
    case Buttons::RetryClose:
        return answer == Answer::Retry || answer == Answer::Close;
    }
    return false;
}

Answer ScreenFixture::answerBox(const QString& text, Buttons buttons, screen::Icon icon,
                                const QString& title) {
    const Answer safe = buttons == Buttons::Ok           ? Answer::Ok
                        : buttons == Buttons::YesNo      ? Answer::No
                        : buttons == Buttons::RetryClose ? Answer::Close
                                                         : Answer::Cancel;
    const bool fits =
        !m_boxes.empty() &&
        (m_boxes.front().part ? text.contains(m_boxes.front().text) : text == m_boxes.front().text);
    if (!fits) {
        ADD_FAILURE() << "Unexpected box [" << title.toStdString() << "] \"" << text.toStdString()
                      << '"'
                      << (m_boxes.empty()
                              ? std::string()
                              : " before \"" + m_boxes.front().text.toStdString() + '"');
        return safe;
    }
    const Box box = m_boxes.front();
    m_boxes.pop_front();
    if (box.title)
        EXPECT_EQ(box.title->toStdString(), title.toStdString()) << text.toStdString();
    if (box.buttons)
        EXPECT_EQ(int(*box.buttons), int(buttons)) << text.toStdString();
    if (box.icon)
        EXPECT_EQ(int(*box.icon), int(icon)) << text.toStdString();
    if (!offers(buttons, box.answer)) {
        ADD_FAILURE() << "The box has no button for the answer: " << text.toStdString();
        return safe;
    }
    return box.answer;
}

void ScreenFixture::expectBox(const QString& text, Answer answer,
                              const std::optional<QString>& title,
                              const std::optional<Buttons>& buttons,
                              const std::optional<screen::Icon>& icon) {
    m_boxes.push_back({text, false, answer, title, buttons, icon});
}

void ScreenFixture::expectBoxContaining(const QString& part, Answer answer) {
    m_boxes.push_back({part, true, answer, {}, {}, {}});
}

void ScreenFixture::expectInput(const QString& prompt, const QString& answer) {
    m_inputs.emplace_back(prompt, answer);
}

QStringList ScreenFixture::rows(const QString& select) const {
    QStringList lines;
    if (!m_database) {
        ADD_FAILURE() << "No database to look into";
        return lines;
    }
    auto found = m_database->openRecordset(select, jet::RecordsetType::Snapshot);
    const auto fields = found.fieldNames().size();
    for (; !found.eof(); found.moveNext()) {
        QStringList texts;
        for (int i = 0; i < fields; ++i)
            texts << found.field(i).toText();
        lines << texts.join(u'|');
    }
    return lines;
}

Form* ScreenFixture::open(const QString& name) {
    if (!Forms::isKnown(name))
        ADD_FAILURE() << "No screen is known as " << name.toStdString();
    Form* shown = Forms::show(name);
    if (shown)
        use(shown);
    settle();
    return shown;
}

void ScreenFixture::showInShell(Form& made) {
    made.load();
    m_area->addSubWindow(&made);
    made.show();
    use(&made);
    settle();
}

void ScreenFixture::use(Form* form) {
    m_form = form;
    if (!form)
        return;
    if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget()))
        m_area->setActiveSubWindow(sub);
    QApplication::setActiveWindow(form->window());
}

Form& ScreenFixture::form() const {
    if (!m_form)
        throw std::logic_error("no form is open for the test to work on");
    return *m_form;
}

void ScreenFixture::whenShown(const QString& name, std::function<void()> driver) {
    m_drivers[name.toLower()].push_back(std::move(driver));
}

void ScreenFixture::dialogShown(Form* dialog) {
    const QPointer<Form> kept(dialog);
    const QPointer<Form> before(m_form);
    auto& waiting = m_drivers[dialog->name().toLower()];
    if (waiting.empty()) {
        ADD_FAILURE() << "Unexpected dialog: " << dialog->name().toStdString();
        dialog->hideModal();
        return;
    }
    const auto driver = waiting.front();
    waiting.pop_front();
    use(dialog);
    try {
        driver();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "While driving " << dialog->name().toStdString() << ": " << error.what();
    }
    if (kept && kept->isModalNow() && kept->isVisible()) {
        ADD_FAILURE() << "The dialog was left open: " << kept->name().toStdString();
        kept->hideModal();
    }
    m_form = before;
}

void ScreenFixture::settle() const {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void ScreenFixture::reveal(QWidget* widget) const {
    for (QWidget* page = widget; page && page->parentWidget(); page = page->parentWidget()) {
        auto* stack = qobject_cast<QStackedWidget*>(page->parentWidget());
        auto* tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr;
        if (tabs)
            tabs->setCurrentWidget(page);
    }
}

bool ScreenFixture::mayUse(QWidget* widget) const {
    if (!widget)
        return false;
    const std::string name = widget->objectName().toStdString();
    const QWidget* dialog = QApplication::activeModalWidget();
    if (dialog && dialog != widget->window()) {
        ADD_FAILURE() << name << " can't be reached below " << dialog->objectName().toStdString();
        return false;
    }
    if (!widget->isEnabled()) {
        ADD_FAILURE() << name << " is disabled";
        return false;
    }
    reveal(widget);
    if (!widget->isVisible()) {
        ADD_FAILURE() << name << " is not to be seen";
        return false;
    }
    if (QApplication::activeWindow() != widget->window())
        QApplication::setActiveWindow(widget->window());
    return true;
}

void ScreenFixture::press(const QString& button) {
    const QPointer<QAbstractButton> found(control<QAbstractButton>(button));
    if (!mayUse(found))
        return;
    if (found->focusPolicy() & Qt::ClickFocus)
        found->setFocus(Qt::MouseFocusReason);
    // Leaving a field may have disabled the button.
    if (found && found->isEnabled())
        QTest::mouseClick(found, Qt::LeftButton, {}, QPoint(8, found->height() / 2));
    settle();
}

void ScreenFixture::go(const QString& field) {
    auto* found = control<QWidget>(field);
    if (mayUse(found))
        found->setFocus(Qt::TabFocusReason);
}

void ScreenFixture::leave() {
    if (QWidget* focus = QApplication::focusWidget()) {
        QTest::keyClick(focus, Qt::Key_Tab);
        settle();
    }
}

static void selectWhole(QWidget* widget) {
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        line->selectAll();
    else if (auto* combo = qobject_cast<QComboBox*>(widget); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
    else if (auto* memo = qobject_cast<QPlainTextEdit*>(widget))
        memo->selectAll();
}

void ScreenFixture::type(const QString& field, const QString& text) {
    auto* found = control<QWidget>(field);
    if (!mayUse(found))
        return;
    found->setFocus(Qt::TabFocusReason);
    selectWhole(found);
    if (text.isEmpty())
        QTest::keyClick(found, Qt::Key_Delete);
    else
        typeOn(text);
}

void ScreenFixture::typeOn(const QString& text) {
    for (const QChar c : text) {
        QWidget* focus = QApplication::focusWidget();
        if (!focus) {
            ADD_FAILURE() << "Nothing has the focus";
            return;
        }
        if (c == u'\n') {
            QTest::keyClick(focus, Qt::Key_Return);
            continue;
        }
        const int code = c.toUpper().unicode();
        const auto shift = c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
        QKeyEvent down(QEvent::KeyPress, code, shift, QString(c));
        QApplication::sendEvent(focus, &down);
        QKeyEvent up(QEvent::KeyRelease, code, shift, QString(c));
        if (QWidget* still = QApplication::focusWidget())
            QApplication::sendEvent(still, &up);
    }
}

void ScreenFixture::key(int key, Qt::KeyboardModifiers modifiers) {
    // Without a desktop nobody gives the window back its activity when a dialog has closed, and an
    // inactive window has no shortcuts.
    if (QWidget* window = form().window(); !window->isActiveWindow()) {
        window->activateWindow();
        (void)QTest::qWaitForWindowActive(window, 2000);
    }
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : &form(), Qt::Key(key), modifiers);
    settle();
    // A mnemonic shows its button pressed for a tenth of a second before it clicks.
    if (modifiers.testFlag(Qt::AltModifier))
        QTest::qWait(130);
}

void ScreenFixture::paste(const QString& field, const QString& text, bool over) {
    auto* found = control<QWidget>(field);
    if (!mayUse(found))
        return;
    found->setFocus(Qt::MouseFocusReason);
    if (over)
        selectWhole(found);
    QApplication::clipboard()->setText(text);
    QTest::keyClick(found, Qt::Key_V, Qt::ControlModifier);
}

void ScreenFixture::choose(const QString& combo, const QString& text) {
    auto* found = control<QComboBox>(combo);
    if (!mayUse(found))
        return;
    if (auto* field = dynamic_cast<controls::Field*>(found); field && field->isLocked()) {
        ADD_FAILURE() << combo.toStdString() << " is locked";
        return;
    }
    const int row = found->findText(text);
    if (row < 0) {
        ADD_FAILURE() << combo.toStdString() << " doesn't offer " << text.toStdString();
        return;
    }
    found->setFocus(Qt::MouseFocusReason);
    found->setCurrentIndex(row);
    found->activated(row);
    settle();
}

void ScreenFixture::check(const QString& box, bool on) {
    auto* found = control<QAbstractButton>(box);
    if (found && found->isChecked() != on)
        press(box);
}

QTableView* ScreenFixture::view(const QString& name) const {
    auto* found = control<QTableView>(name);
    return mayUse(found) ? found : nullptr;
}

void ScreenFixture::setCell(const QString& grid, int row, int column, const QString& text) {
    auto* found = view(grid);
    if (!found)
        return;
    const auto cell = found->model()->index(row, column);
    found->setFocus(Qt::MouseFocusReason);
    found->setCurrentIndex(cell);
    if (!(cell.flags() & Qt::ItemIsEditable)) {
        ADD_FAILURE() << grid.toStdString() << " can't be edited at " << row << ", " << column;
        return;
    }
    QTest::keyClick(found, Qt::Key_F2);
    QWidget* editor = found->indexWidget(cell);
    if (!editor)
        editor = QApplication::focusWidget();
    if (!editor || editor == found) {
        ADD_FAILURE() << grid.toStdString() << " opened no editor";
        return;
    }
    const QPointer<QTableView> kept(found);
    selectWhole(editor);
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        typeOn(text);
    QTest::keyClick(editor, Qt::Key_Return);
    // Return opens the next cell; the hand leaves the grid alone there.
    QWidget* next = QApplication::focusWidget();
    if (kept && next && next != kept && kept->isAncestorOf(next))
        QTest::keyClick(next, Qt::Key_Escape);
    settle();
}

void ScreenFixture::clickCell(const QString& grid, int row, int column) {
    auto* found = view(grid);
    if (!found)
        return;
    const auto cell = found->model()->index(row, column);
    if (!cell.isValid()) {
        ADD_FAILURE() << grid.toStdString() << " has no cell " << row << ", " << column;
        return;
    }
    found->setFocus(Qt::MouseFocusReason);
    found->scrollTo(cell);
    QTest::mouseClick(found->viewport(), Qt::LeftButton, {}, found->visualRect(cell).center());
    settle();
}

void ScreenFixture::doubleClickRow(const QString& grid, int row) {
    auto* found = view(grid);
    if (!found)
        return;
    int column = 0;
    while (column + 1 < found->model()->columnCount() && found->isColumnHidden(column))
        ++column;
    const auto cell = found->model()->index(row, column);
    if (!cell.isValid()) {
        ADD_FAILURE() << grid.toStdString() << " has no row " << row;
        return;
    }
    clickCell(grid, row, column);
    QTest::mouseDClick(found->viewport(), Qt::LeftButton, {}, found->visualRect(cell).center());
    settle();
}

QMenu* ScreenFixture::openMenu(const QString& list) {
    auto* area = control<QAbstractItemView>(list);
    if (!area)
        return nullptr;
    reveal(area);
    area->setFocus();
    QContextMenuEvent asks(QContextMenuEvent::Keyboard, {}, area->mapToGlobal(QPoint()));
    QApplication::sendEvent(area, &asks);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu)
        ADD_FAILURE() << list.toStdString() << " has no context menu";
    return menu;
}

static QString plainEntry(const QAction* action) {
    QString text = action->text().section(u'\t', 0, 0);
    return text.remove(u'&');
}

QStringList ScreenFixture::menuOf(const QString& list) {
    QStringList texts;
    QMenu* menu = openMenu(list);
    if (!menu)
        return texts;
    for (const QAction* action : menu->actions()) {
        if (!action->isSeparator())
            texts << (action->isEnabled() ? plainEntry(action) : u'[' + plainEntry(action) + u']');
    }
    menu->close();
    return texts;
}

void ScreenFixture::pickFromMenu(const QString& list, const QString& entry) {
    QMenu* menu = openMenu(list);
    if (!menu)
        return;
    for (QAction* action : menu->actions()) {
        if (plainEntry(action) == entry && action->isEnabled()) {
            menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
            settle();
            return;
        }
    }
    menu->close();
    ADD_FAILURE() << "The menu of " << list.toStdString() << " offers no " << entry.toStdString();
}

void ScreenFixture::selectRow(const QString& list, int row) {
    auto* found = view(list);
    if (!found)
        return;
    int column = 0;
    while (column + 1 < found->model()->columnCount() && found->isColumnHidden(column))
        ++column;
    clickCell(list, row, column);
}

QString ScreenFixture::text(const QString& name) const {
    auto* found = control<QWidget>(name);
    if (auto* field = dynamic_cast<controls::Field*>(found))
        return field->text();
    if (auto* label = qobject_cast<QLabel*>(found))
        return label->text();
    if (auto* button = qobject_cast<QAbstractButton*>(found))
        return button->text();
    if (auto* line = qobject_cast<QLineEdit*>(found))
        return line->text();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(found))
        return memo->toPlainText();
    if (auto* combo = qobject_cast<QComboBox*>(found))
        return combo->currentText();
    if (auto* box = qobject_cast<QGroupBox*>(found))
        return box->title();
    if (found)
        ADD_FAILURE() << name.toStdString() << " shows no text";
    return {};
}

bool ScreenFixture::isEnabled(const QString& name) const {
    auto* found = control<QWidget>(name);
    return found && found->isEnabled();
}

bool ScreenFixture::isVisible(const QString& name) const {
    auto* found = control<QWidget>(name);
    for (QWidget* part = found; part && part != &form(); part = part->parentWidget()) {
        const bool behindTab = qobject_cast<QStackedWidget*>(part->parentWidget()) != nullptr;
        if (part->isHidden() && !behindTab)
            return false;
    }
    return found != nullptr;
}

bool ScreenFixture::isLocked(const QString& name) const {
    auto* found = control<QWidget>(name);
    if (auto* field = dynamic_cast<controls::Field*>(found))
        return field->isLocked();
    if (auto* grid = dynamic_cast<controls::Grid*>(found))
        return grid->isLocked();
    return found && !found->isEnabled();
}

bool ScreenFixture::isChecked(const QString& box) const {
    auto* found = control<QAbstractButton>(box);
    return found && found->isChecked();
}

QString ScreenFixture::cell(const QString& grid, int row, int column) const {
    auto* found = control<QTableView>(grid);
    return found ? found->model()->index(row, column).data(Qt::EditRole).toString() : QString();
}

int ScreenFixture::rowCount(const QString& grid) const {
    auto* found = control<QTableView>(grid);
    return found ? found->model()->rowCount() : 0;
}

QStringList ScreenFixture::cells(const QString& grid) const {
    QStringList lines;
    auto* found = control<QTableView>(grid);
    for (int row = 0; found && row < found->model()->rowCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < found->model()->columnCount(); ++column)
            texts << cell(grid, row, column);
        lines << texts.join(u'|');
    }
    return lines;
}

QStringList ScreenFixture::tabOrder() {
    QStringList order;
    for (int i = 0; i < 90 && (i == 0 || order.value(0) != focusName()); ++i) {
        if (order.isEmpty() || order.last() != focusName())
            order << focusName();
        leave();
    }
    return order;
}

QString ScreenFixture::focusName() const {
    const QWidget* focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QString();
}

} // namespace testsupport
