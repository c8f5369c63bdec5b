#pragma once

#include "platform/gantt/LoadStrip.h"
#include "platform/screen/Form.h"
#include "scheduling/Load.h"

namespace controls {
class ListCombo;
}

namespace scheduling {

/// A screen around a chart of entries, with the load of the departments on a band below it.
class ChartForm : public screen::Form {
  public:
    QSize sizeHint() const override { return {1180, 640}; }

  protected:
    /// `spoken` is what a screen reader calls the chart.
    ChartForm(const QString& name, const QString& caption, const QString& spoken);
    /// Chart and band as the next items of the layout.
    void addChart(QBoxLayout* inside);
    /// A button at the end of the layout, which Enter doesn't press.
    QPushButton* addButton(QBoxLayout* inside, const QString& name, const QString& caption);
    void showLoad(LoadTable load);

    gantt::ChartView* ctSchedule;
    gantt::LoadStrip* ctLoad;
    controls::ListCombo* cmbSizes = nullptr;
    controls::ListCombo* cmbRuler = nullptr; ///< where there is one
    controls::ListCombo* cmbRulerDiv = nullptr;
    Capacity m_capacity;

  private:
    LoadTable m_load; ///< as it is shown
};

} // namespace scheduling
