#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;
class QTableView;

namespace controls {

class GridModel;

/// The field that searches in a list, in the list's lower right corner. What is typed is looked for
/// in all columns from the current row on; Enter and F3 go to the next row that holds it, Shift
/// with them to the one before, Escape goes back to the list.
class FindBar : public QFrame {
  public:
    FindBar(QTableView& view, const GridModel& model);

    void open();
    /// Goes to the next (1) or previous (-1) row that holds the text; from the last on to the
    /// first.
    void next(int step);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void search(int step, bool fromCurrent);
    void place();
    bool holds(int row, const QString& text) const;
    void leave();

    QTableView& m_view;
    const GridModel& m_model;
    QLineEdit* m_text;
    QLabel* m_result;
};

} // namespace controls
