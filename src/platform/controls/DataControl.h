#pragma once

#include "platform/controls/Event.h"
#include "platform/jet/Recordset.h"

#include <QWidget>

#include <functional>

class QLabel;
class QToolButton;

namespace controls {

/// The four arrows (first, previous, next, last) over a recordset; Alt with the left and right
/// arrow keys goes to the previous and next row while the control is enabled. `reposition` fires
/// whenever another row became current, also after setRecordset and refresh.
class DataControl : public QWidget {
  public:
    explicit DataControl(QWidget* parent = nullptr);

    jet::Recordset& recordset() { return m_recordset; }
    const jet::Recordset& recordset() const { return m_recordset; }
    void setRecordset(jet::Recordset recordset);
    /// Reads the set again and goes to its first row, as refresh always has.
    void refresh();
    /// Reads the set again and goes back to the same row, or to its neighbour if it has gone.
    void requeryKeepingRow();

    void moveFirst();
    void movePrevious(); ///< stays on the first row
    void moveNext();     ///< stays on the last row
    void moveLast();
    /// Goes to the first row that meets the criterion; false if there is none (the row stays).
    bool findFirst(const QString& criteria);

    controls::Event<> reposition;
    /// Fires before the row of that key is read, where the key is known: what is shown with the row
    /// can then be read along with it.
    controls::Event<const jet::Value&> approaching;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void approach(int step);
    void showPlace();
    void countPlace();
    jet::Recordset m_recordset;
    QToolButton* m_first;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_last;
    QLabel* m_caption;
};

} // namespace controls
