#pragma once

#include "platform/controls/Event.h"

#include <QListWidget>

namespace controls {

/// A list whose items have a tick and a number behind them. A click on the tick box and the space
/// bar turn the tick over; a click elsewhere on an item only makes it the current one.
class CheckList : public QListWidget {
  public:
    explicit CheckList(QWidget* parent = nullptr);

    void addRow(const QString& text, qint64 itemData, bool ticked = false);
    void clearRows() { QListWidget::clear(); }
    QString itemText(int row) const;
    void setItemText(int row, const QString& text);
    qint64 itemNumber(int row) const;
    /// The row with that number; -1 if there is none.
    int findNumber(qint64 itemData) const;
    int findRow(const QString& text) const; ///< the row with that text; -1 if there is none
    void removeRow(int row);
    bool isTicked(int row) const;
    /// Ticks as the program: no event.
    void setTicked(int row, bool ticked);

    Event<int> itemCheck; ///< the user turned over the tick of a row
    Event<> click;        ///< the user clicked an item, went to it or turned over its tick

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool m_program = false;
};

} // namespace controls
