#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"

#include <QGridLayout>
#include <QString>

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

/// Labelled fields set out in a grid, in the order in which Tab goes: each word makes a control
/// with its object name, a label in front of it (its buddy, so that the mnemonic works and a screen
/// reader says it) and puts both at the next place. nextRow() and nextColumn() move on.
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
    controls::DataCombo* dataCombo(const QString& name, const QString& label,
                                   const Line& line = {});
    controls::ListCombo* listCombo(const QString& name, const QString& label);
    QCheckBox* check(const QString& name, const QString& caption);
    QRadioButton* option(const QString& name, const QString& caption);
    /// A label that shows a value (`lblEstno`), with a caption in front of it.
    QLabel* shown(const QString& name, const QString& label, int characters = 12);
    /// Any control, with a label in front of it unless that is empty.
    void add(QWidget* control, const QString& name, const QString& label = {});
    void add(QLayout* layout);
    /// A plain text over the whole width of the column.
    QLabel* note(const QString& text);

    void nextColumn(); ///< goes on at the top, to the right
    void nextRow();    ///< goes on at the left, below everything
    /// How many grid columns the next control takes beside its label.
    Fields& span(int fields);
    QGridLayout* grid() const { return m_grid; }

  private:
    void place(QWidget* control, const QString& name, const QString& label);
    QWidget* m_parent;
    QGridLayout* m_grid;
    int m_row = 0, m_column = 0, m_top = 0, m_span = 1;
};

/// Push buttons: in a row where the layout goes down, in a column where it goes across.
class ButtonBar {
  public:
    ButtonBar(QWidget* parent, QBoxLayout* inside);
    QPushButton* button(const QString& name, const QString& caption);
    void stretch();
    QBoxLayout* layout() const { return m_layout; }

  private:
    QWidget* m_parent;
    QBoxLayout* m_layout;
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
