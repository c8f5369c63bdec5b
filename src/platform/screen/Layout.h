#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"

#include <QGridLayout>
#include <QString>

#include <vector>

class QBoxLayout;
class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace screen {

/// What a line field takes.
struct Line {
    int limit = 0; ///< most characters; 0 for none
    values::KeyFilter filter = {};
    QString mask = {};   ///< number mask on leaving the field
    int characters = 20; ///< width to show
    bool password = false;
};

/// A line that is shown that many characters wide.
Line wide(int characters);
/// A number, to the right and reformatted through the mask on leaving.
Line number(const QString& mask, int limit, int characters = 10);

/// Labelled fields set out in a grid, in the order in which Tab goes: each word makes a control
/// with its object name, a label in front of it (its buddy, so that the mnemonic works and a screen
/// reader says it) and puts both at the next place: one below the other, until nextRow(),
/// nextColumn() or at() move on.
class Fields {
  public:
    /// Lays out in `parent`, which gets a grid layout unless it has one.
    explicit Fields(QWidget* parent);
    /// Lays out as an item of an existing layout.
    Fields(QWidget* parent, QBoxLayout* inside);

    controls::TextField* text(const QString& name, const QString& label, const Line& line = {});
    controls::CurrencyField* currency(const QString& name, const QString& label,
                                      const QString& mask = {});
    controls::MemoField* memo(const QString& name, const QString& label, int lines = 4,
                              int limit = 0, const values::KeyFilter& filter = {});
    controls::DateField* date(const QString& name, const QString& label);
    /// A date that shows as a long one while it isn't typed in.
    controls::DateField* longDate(const QString& name, const QString& label);
    controls::DataCombo* dataCombo(const QString& name, const QString& label,
                                   const Line& line = {});
    controls::ListCombo* listCombo(const QString& name, const QString& label);
    QCheckBox* check(const QString& name, const QString& caption);
    QRadioButton* option(const QString& name, const QString& caption);
    /// A label that shows a value (`lblEstno`), with a caption in front of it.
    QLabel* shown(const QString& name, const QString& label, int characters = 12);
    /// The same to the right, for a figure.
    QLabel* figure(const QString& name, const QString& label, int characters = 12);
    /// Any control, with a label in front of it unless that is empty; `inside` takes its place
    /// where it stands in a row with others.
    void add(QWidget* control, const QString& name, const QString& label = {},
             QLayout* inside = nullptr);
    void add(QLayout* layout);
    /// A small button "..." behind the control made last, which offers what to choose for it.
    QPushButton* pick(const QString& name, const QString& spoken);
    /// A plain text over the whole width of the column.
    QLabel* note(const QString& text);

    void nextColumn(); ///< goes on at the top, to the right
    void nextRow();    ///< goes on at the left, below everything
    /// The next control goes to that row and column of fields, counted from the first one of this
    /// layout; those after it go on below.
    Fields& at(int row, int column);
    /// How many columns of fields the next control takes.
    Fields& span(int fields);
    /// The next control and its label go to that list too: what is hidden from those who may not
    /// see money.
    Fields& secured(std::vector<QWidget*>& hidden);
    /// The label of the control made last; nullptr if it has none.
    QLabel* label() const { return m_label; }
    /// Rows and columns close together, without margins: the head of a document.
    Fields& tight();
    /// Leaves spare height below the fields.
    void keepTogether() const;
    QGridLayout* grid() const { return m_grid; }

  private:
    void place(QWidget* control, const QString& name, const QString& label,
               QLayout* inside = nullptr);
    QWidget* m_parent;
    QGridLayout* m_grid;
    QLabel* m_label = nullptr;
    std::vector<QWidget*>* m_hidden = nullptr; ///< for the next control
    int m_first = 0, m_row = 0, m_column = 0, m_top = 0, m_span = 1;
};

/// The words before a field as they are shown: closed by a colon.
QString fieldTitle(const QString& words);
/// The least width of a button in a bar, for its font.
int buttonWidth(const QWidget& button);

/// Push buttons: in a row where the layout goes down, at its right but for those before a
/// stretch(); in a column where it goes across.
class ButtonBar {
  public:
    ButtonBar(QWidget* parent, QBoxLayout* inside);
    QPushButton* button(const QString& name, const QString& caption);
    void stretch();
    QBoxLayout* layout() const { return m_layout; }

  private:
    QWidget* m_parent;
    QBoxLayout* m_layout;
    bool m_trailing = true; ///< a row's buttons stand at its right
};

/// A frame with a title; its content is laid out in the widget that is returned.
QGroupBox* frame(QWidget* parent, QBoxLayout* inside, const QString& name, const QString& title);
/// A tab of a tab control; the page that is returned is laid out by the caller.
QWidget* tab(QTabWidget* tabs, const QString& caption);
/// Names a control and gives it an accessible name.
template <class W>
W* named(W* widget, const QString& name, const QString& accessibleName = {}) {
    widget->setObjectName(name);
    if (!accessibleName.isEmpty())
        widget->setAccessibleName(accessibleName);
    return widget;
}

} // namespace screen
