#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Seams.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

class QMdiArea;
class QMenu;

namespace jet {
class Database;
}

namespace testsupport {

/// Drives screens as a person does, without a display: by real key and mouse events on controls by
/// their names. The words work on the form last opened, or on the dialog that is on top. Boxes,
/// files, other programs and run-time errors are expected beforehand; one that nobody expected
/// fails the test and gets the answer that changes nothing, and so does an expectation left over.
/// Document screens stand in a shell window of 1280 x 800.
class ScreenFixture : public ::testing::Test {
  public:
    ScreenFixture();
    ~ScreenFixture() override;

  protected:
    void TearDown() override;

    // --- the database that rows() looks into; not owned
    void useDatabase(jet::Database& database) { m_database = &database; }
    /// The rows of a select, each as its fields' texts parted by "|".
    QStringList rows(const QString& select) const;

    // --- forms
    screen::Form* open(const QString& name);
    template <class F>
    F* openAs(const QString& name) {
        return dynamic_cast<F*>(open(name));
    }
    /// Shows a form that the test made as a document in the shell, and works on it.
    void showInShell(screen::Form& form);
    /// Makes a form the one that the words below work on, and active.
    void use(screen::Form* form);
    screen::Form& form() const;
    /// Runs when the next dialog of that name is shown; the words then work on it. It has to end
    /// the dialog. Drivers wait in a queue for each name.
    void whenShown(const QString& name, std::function<void()> driver);
    QMdiArea& shellArea() const { return *m_area; }
    QMainWindow& shell() const { return *m_shell; }

    /// A control of the current form; fails the test and gives nullptr where there is none.
    template <class T = QWidget>
    T* control(const QString& name) const {
        auto* found = form().control<T>(name);
        if (!found)
            ADD_FAILURE() << form().name().toStdString() << " has no " << name.toStdString()
                          << " of that kind";
        return found;
    }

    // --- what a person does
    void press(const QString& button);
    /// Goes to the field and types over what stands there; "\n" is Return. The focus stays.
    void type(const QString& field, const QString& text);
    /// Types where the focus is.
    void typeOn(const QString& text);
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Goes to the field and pastes at the place of the caret, or over everything.
    void paste(const QString& field, const QString& text, bool over = true);
    void go(const QString& field);
    void leave();
    void choose(const QString& combo, const QString& text);
    void check(const QString& box, bool on = true);
    void setCell(const QString& grid, int row, int column, const QString& text);
    void clickCell(const QString& grid, int row, int column);
    void doubleClickRow(const QString& grid, int row);
    void selectRow(const QString& list, int row);
    /// Opens the context menu of a list or tree at its current row and chooses the entry of that
    /// text, mnemonics and keys aside; fails the test where there is none that can be chosen.
    void pickFromMenu(const QString& list, const QString& entry);
    /// The texts of that menu, those that can't be chosen in brackets.
    QStringList menuOf(const QString& list);
    /// Lets what waits in the event loop happen.
    void settle() const;

    // --- what a person sees
    QString text(const QString& control) const;
    bool isEnabled(const QString& control) const;
    /// Whether it would be seen if its tab page were in front.
    bool isVisible(const QString& control) const;
    bool isLocked(const QString& control) const;
    bool isChecked(const QString& box) const;
    QString cell(const QString& grid, int row, int column) const;
    int rowCount(const QString& grid) const;
    /// The rows of a grid or list, each as its texts parted by "|".
    QStringList cells(const QString& grid) const;
    QString focusName() const;
    /// The controls that Tab goes to, from the one that has the focus until it comes back there.
    QStringList tabOrder();

    // --- what is to happen
    void expectBox(const QString& text, screen::Answer answer = screen::Answer::Ok,
                   const std::optional<QString>& title = {},
                   const std::optional<screen::Buttons>& buttons = {},
                   const std::optional<screen::Icon>& icon = {});
    void expectBoxContaining(const QString& part, screen::Answer answer = screen::Answer::Ok);
    void expectInput(const QString& prompt, const QString& answer);
    void expectSaveFile(const QString& path) { m_saveFiles.push_back(path); }
    /// Several are parted by "|".
    void expectOpenFile(const QString& path) { m_openFiles.push_back(path); }
    void expectRunTimeError(int number) { m_expectedErrors.push_back(number); }
    void expectEndOfProcess() { m_endExpected = true; }
    /// Nothing is expected to have stayed out so far (boxes, dialogs, errors).
    void expectNothingLeft();

    std::map<QString, bool> runningWindows; ///< titles that activateWindow finds
    bool programsStart = true;
    QStringList started;   ///< programs with their arguments, parted by blanks
    QStringList activated; ///< window titles
    int beeps = 0;
    QString lastRunTimeError;

  private:
    struct Box {
        QString text;
        bool part = false;
        screen::Answer answer;
        std::optional<QString> title;
        std::optional<screen::Buttons> buttons;
        std::optional<screen::Icon> icon;
    };
    class Watcher;
    void installSeams();
    screen::Answer answerBox(const QString& text, screen::Buttons buttons, screen::Icon icon,
                             const QString& title);
    void dialogShown(screen::Form* dialog);
    void reveal(QWidget* widget) const;
    bool mayUse(QWidget* widget) const;
    QMenu* openMenu(const QString& list);
    QTableView* view(const QString& name) const;

    QTemporaryDir m_remembered;
    jet::Database* m_database = nullptr;
    std::unique_ptr<QMainWindow> m_shell;
    QMdiArea* m_area = nullptr;
    QPointer<screen::Form> m_form;
    std::unique_ptr<Watcher> m_watcher;
    std::map<QString, std::deque<std::function<void()>>> m_drivers;
    std::deque<Box> m_boxes;
    std::deque<std::pair<QString, QString>> m_inputs;
    std::deque<QString> m_saveFiles;
    std::deque<QString> m_openFiles;
    std::deque<int> m_expectedErrors;
    bool m_endExpected = false;
};

} // namespace testsupport
