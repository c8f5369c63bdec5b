#pragma once

#include "platform/gantt/Model.h"
#include "scheduling/ScheduleStore.h"

#include <QHash>

namespace scheduling {

inline constexpr gantt::Rgb red = 0xff0000;
inline constexpr gantt::Rgb green = 0x00ff00;

/// What a row of the schedule's chart stands for.
struct ChartRow {
    enum class Kind {
        Header,    ///< begins a job of a purchase order
        Operation, ///< of a routing; its place in the job is `seqNo`
        Lost,      ///< gathers the entries whose sequence number has no row
    };
    Kind kind = Kind::Operation;
    qint64 jobNo = 0;
    int seqNo = 0;
    RoutingRow operation;
};

/// Jobs on a chart: which row is which operation, which bar is which entry, and what of it is to be
/// saved. Knows nothing of windows.
class ScheduleChart {
  public:
    explicit ScheduleChart(gantt::Model& model);

    void clear();
    /// One job, its dates the chart's range.
    void showJob(const ScheduledJob& job);
    /// The jobs of a purchase order under a header row each, with blocks before date in and behind
    /// due date. The range has to be set before.
    void showOrder(const std::vector<ScheduledJob>& jobs);
    /// Draws the blocks for the model's range afresh, by the jobs' dates as they are given.
    void redrawBlocks(const std::vector<std::pair<qint64, Limits>>& jobs);

    bool isOrder() const { return m_order; }
    const std::vector<qint64>& jobs() const { return m_jobs; }
    const ChartRow& row(int number) const { return m_rows.at(static_cast<size_t>(number) - 1); }
    /// Whether entries can be added to it.
    bool isOperation(int number) const;
    /// The row of a job's operation; 0 for none.
    int rowOf(qint64 jobNo, int seqNo) const;
    /// The entry that a bar stands for, as it is now.
    Entry entry(int row, int bar) const;
    /// Adds or changes a bar so that it says what the entry says. Returns its number.
    int addEntry(int row, const Entry& entry);
    void changeEntry(int row, int bar, const Entry& entry);
    void deleteEntry(int row, int bar);
    void undoDelete(int row, int bar);

    /// The text of the first entry outside its job's dates; empty where there is none.
    QString firstOutOfRange(const QHash<qint64, Limits>& limits) const;
    /// What a save has to write, in the order of rows and bars.
    std::vector<EntryChange> changes() const;
    /// Whether the chart differs from what was loaded.
    bool isChanged() const;

  private:
    void addRows(const ScheduledJob& job, bool withHours);
    void addBlocks(int row, const Limits& limits);
    bool isLive(const gantt::Bar& bar) const;

    gantt::Model& m_model;
    int m_before, m_behind; ///< styles of the blocks
    bool m_order = false;
    std::vector<qint64> m_jobs;
    std::vector<ChartRow> m_rows;
    QHash<QString, Entry> m_loaded; ///< by the bar's key
};

} // namespace scheduling
