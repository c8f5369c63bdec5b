#pragma once

#include "inventory/StockOverTime.h"
#include "platform/controls/Grid.h"

#include <QWidget>

class QLabel;

namespace inventory {

/// Draws an item's stock by days, with the line of its minimum.
class StockChart : public QWidget {
  public:
    explicit StockChart(QWidget* parent);
    void show(const std::vector<StockPoint>& series, qint64 minimum);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<StockPoint> m_series;
    qint64 m_minimum = 0;
};

/// What is shown beside an item: its stock over time, and what is on order.
class StockPanel : public QWidget {
  public:
    explicit StockPanel(QWidget* parent);
    void show(const StockOutlook& outlook, const Item& item);

  private:
    StockChart* m_chart;
    QLabel* lblOnOrder;
    controls::Grid* sprOnOrder;
};

} // namespace inventory
