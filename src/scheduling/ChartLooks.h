#pragma once

#include "platform/gantt/ChartView.h"
#include "platform/gantt/LoadStrip.h"
#include "scheduling/Load.h"

namespace controls {
class ListCombo;
}

namespace scheduling {

/// The ruler of a zoom, 0 "200%" to 3 "33%", and a display, 0 "Hours", 1 "Days", 2 "Weeks".
gantt::Ruler rulerOf(int zoom, int display);

/// Fills the lists of a chart's looks and gives the chart the ruler that they choose, now and
/// whenever one is changed; the chart's own zooming chooses in the list. The numbers behind the
/// lists' rows are those of rulerOf. `cmbRuler`, where there is one, chooses between whole dates
/// and months on the ruler.
enum class ZoomOrder { NearestFirst, FarthestFirst };
void joinLooks(gantt::ChartView& chart, controls::ListCombo& cmbSizes,
               controls::ListCombo& cmbRulerDiv, ZoomOrder order,
               controls::ListCombo* cmbRuler = nullptr);

/// A table of hours as the lines of a strip.
std::vector<gantt::LoadLine> linesOf(const LoadTable& table);

} // namespace scheduling
