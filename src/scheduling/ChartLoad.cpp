#include "scheduling/ChartLoad.h"

#include <algorithm>

namespace scheduling {

void ChartLoad::read(jet::Database& database, const Capacity& capacity) {
    std::vector<qint64> departments;
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        const qint64 department = m_chart.row(row).operation.department;
        if (m_chart.isOperation(row) && capacity.departments.contains(department) &&
            std::find(departments.begin(), departments.end(), department) == departments.end())
            departments.push_back(department);
    }
    m_others = LoadTable(capacity, departments, m_model.firstDay(), m_model.lastDay());
    if (departments.empty())
        return;
    for (const PlannedWork& work :
         loadPlanned(database, m_model.firstDay(), m_model.lastDay(), m_chart.jobs()))
        m_others.add(work);
}

namespace {

void add(LoadTable& table, const ChartRow& of, const std::vector<gantt::Bar>& bars,
         const QHash<gantt::BarId, gantt::Span>& moving) {
    for (const gantt::Bar& bar : bars) {
        if (bar.style == 0 && bar.state != gantt::State::Deleted)
            table.add({of.operation.department, of.jobNo, of.operation.description,
                       moving.value(bar.id, bar.span)});
    }
}

} // namespace

LoadTable ChartLoad::whole(const std::vector<gantt::BarMove>& moving) const {
    QHash<gantt::BarId, gantt::Span> spans;
    for (const gantt::BarMove& move : moving)
        spans.insert(m_model.bar(move.row, move.bar).id, move.span);
    LoadTable table = m_others;
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        if (m_chart.isOperation(row))
            add(table, m_chart.row(row), m_model.bars(row), spans);
    }
    return table;
}

LoadTable ChartLoad::without(qint64 jobNo) const {
    LoadTable table = m_others;
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        if (m_chart.isOperation(row) && m_chart.row(row).jobNo != jobNo)
            add(table, m_chart.row(row), m_model.bars(row), {});
    }
    return table;
}

} // namespace scheduling
