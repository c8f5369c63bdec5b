#pragma once

#include "scheduling/Load.h"
#include "scheduling/ScheduleChart.h"

#include <QString>

namespace scheduling {

/// Finds free hours for work of a department, from a moment on and before the end of a last day.
/// The pieces follow one another; where the department is taken in between, there are several.
/// `hours` is what is left over: 0 where all of it fits. What is found counts as taken from then
/// on.
struct FreePlaces {
    std::vector<gantt::Span> pieces;
    double left = 0;
};
FreePlaces findFree(LoadTable& load, const PlannedWork& work, double hours, gantt::Minute from,
                    const QDate& lastDay);

/// Places the entries of one job one after another, by sequence, into free hours of their
/// departments between date in and due date, in one change that can be undone: operations that are
/// not finished take their estimated hours, or what their entries had; those without an entry get
/// one. What a contractor does keeps its length. `load` holds what all other jobs have planned.
/// Returns the text that says which operation doesn't fit and by how many hours, and changes
/// nothing in that case; empty where all was placed.
QString fit(gantt::Model& model, ScheduleChart& chart, qint64 jobNo, const Limits& limits,
            LoadTable load);

} // namespace scheduling
