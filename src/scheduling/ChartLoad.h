#pragma once

#include "scheduling/Load.h"
#include "scheduling/ScheduleChart.h"

namespace scheduling {

/// The load of the departments whose operations are on a chart: what all other jobs have planned
/// within its range, as it was read, and what is on the chart as it is now.
class ChartLoad {
  public:
    /// Both outlive it.
    ChartLoad(const gantt::Model& model, const ScheduleChart& chart)
        : m_model(model), m_chart(chart) {}

    /// Reads what the other jobs have planned.
    void read(jet::Database& database, const Capacity& capacity);
    /// Entries that are being dragged count where they would be dropped.
    LoadTable whole(const std::vector<gantt::BarMove>& moving) const;
    /// By all jobs but one.
    LoadTable without(qint64 jobNo) const;

  private:
    const gantt::Model& m_model;
    const ScheduleChart& m_chart;
    LoadTable m_others; ///< without what is on the chart
};

} // namespace scheduling
