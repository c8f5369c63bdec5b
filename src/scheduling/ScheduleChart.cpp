#include "scheduling/ScheduleChart.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <algorithm>

namespace scheduling {

using gantt::Bar;
using gantt::Model;
using gantt::State;

namespace {

constexpr gantt::Rgb grey = 0x808080;
constexpr gantt::Rgb lostRow = 0xd06000;

gantt::Align alignOf(int textAlign) {
    return textAlign >= 0 && textAlign <= 3 ? static_cast<gantt::Align>(textAlign)
                                            : gantt::Align::Left;
}

} // namespace

ScheduleChart::ScheduleChart(Model& model)
    : m_model(model), m_before(model.defineStyle({grey, grey})),
      m_behind(model.defineStyle({grey, grey})) {}

void ScheduleChart::clear() {
    m_model.clear();
    m_rows.clear();
    m_jobs.clear();
    m_loaded.clear();
}

// Showing

void ScheduleChart::showJob(const ScheduledJob& job) {
    const Model::Change change(m_model);
    clear();
    m_order = false;
    const bool withHours = job.hasHours();
    if (withHours && m_model.columnCount() < 2)
        m_model.addColumn(u"Est. Hours"_s);
    else if (!withHours && m_model.columnCount() == 2)
        m_model.removeColumn(2);
    m_jobs.push_back(job.jobNo);
    addRows(job, withHours);
    m_model.forgetHistory();
}

void ScheduleChart::showOrder(const std::vector<ScheduledJob>& jobs) {
    const Model::Change change(m_model);
    clear();
    m_order = true;
    const bool withHours = std::any_of(jobs.begin(), jobs.end(),
                                       [](const ScheduledJob& job) { return job.hasHours(); });
    if (withHours && m_model.columnCount() < 2)
        m_model.addColumn(u"Est. Hours"_s);
    else if (!withHours && m_model.columnCount() == 2)
        m_model.removeColumn(2);
    for (const ScheduledJob& job : jobs) {
        m_jobs.push_back(job.jobNo);
        const int header = m_model.addRow(u"Job No.: "_s + QString::number(job.jobNo));
        m_model.setHeaderRow(header, true);
        m_model.setRowColour(header, red);
        m_rows.push_back({ChartRow::Kind::Header, job.jobNo, 0, {}});
        const int first = m_model.rowCount() + 1;
        addRows(job, withHours);
        for (int row = first; row <= m_model.rowCount(); ++row)
            addBlocks(row, job.limits);
    }
    m_model.forgetHistory();
}

void ScheduleChart::addRows(const ScheduledJob& job, bool withHours) {
    const int before = m_model.rowCount();
    int seqNo = 0;
    for (const RoutingRow& operation : job.routing) {
        const int row = m_model.addRow(QString());
        m_model.setCellText(row, 1,
                            operation.contractor ? operation.description + u" *oc"_s
                                                 : operation.description);
        if (withHours)
            m_model.setCellText(row, 2, values::format(operation.estimated.value_or(0), u"0.00"));
        if (operation.located)
            m_model.setRowColour(row, green);
        m_rows.push_back({ChartRow::Kind::Operation, job.jobNo, ++seqNo, operation});
    }
    const Model::Unrecorded loading(m_model);
    int lost = 0;
    for (const Entry& entry : job.entries) {
        const bool hasRow = entry.seqNo >= 1 && entry.seqNo <= seqNo;
        if (!hasRow && lost == 0) {
            lost = m_model.addRow(QString());
            m_model.setCellText(lost, 1, u"Without operation"_s);
            m_model.setRowColour(lost, lostRow);
            m_rows.push_back({ChartRow::Kind::Lost, job.jobNo, 0, {}});
        }
        Bar bar;
        bar.span = entry.span;
        bar.key = QString::number(entry.id);
        bar.align = alignOf(entry.textAlign);
        bar.text = entry.description;
        bar.colour = red;
        if (hasRow) {
            const RoutingRow& operation = job.routing[static_cast<size_t>(entry.seqNo) - 1];
            if (operation.status == u"F")
                bar.state = State::Locked;
            if (operation.located)
                bar.colour = green;
        }
        m_model.addBar(hasRow ? before + entry.seqNo : lost, bar);
        m_loaded.insert(bar.key, entry);
    }
}

void ScheduleChart::addBlocks(int row, const Limits& limits) {
    const Model::Unrecorded drawing(m_model);
    Bar block;
    block.state = State::Locked;
    block.hatched = true;
    block.colour = grey;
    const gantt::Minute first = gantt::minuteOf(m_model.firstDay());
    // The ends of the days are theirs: the due date itself is still open.
    const gantt::Minute last = gantt::minuteOf(m_model.lastDay(), gantt::minutesPerDay);
    if (limits.dateIn && *limits.dateIn > m_model.firstDay()) {
        block.style = m_before;
        block.span = {first, gantt::minuteOf(*limits.dateIn)};
        m_model.addBar(row, block);
    }
    if (limits.dueDate && *limits.dueDate < m_model.lastDay()) {
        block.style = m_behind;
        block.span = {gantt::minuteOf(*limits.dueDate, gantt::minutesPerDay), last};
        m_model.addBar(row, block);
    }
}

void ScheduleChart::redrawBlocks(const std::vector<std::pair<qint64, Limits>>& jobs) {
    const Model::Change change(m_model);
    const Model::Unrecorded drawing(m_model);
    QHash<qint64, Limits> limits;
    for (const auto& [jobNo, dates] : jobs)
        limits.insert(jobNo, dates);
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        for (int bar = m_model.barCount(row); bar >= 1; --bar) {
            if (m_model.bar(row, bar).style != 0)
                m_model.removeBar(row, bar);
        }
        if (this->row(row).kind != ChartRow::Kind::Header)
            addBlocks(row, limits.value(this->row(row).jobNo));
    }
}

// Entries

bool ScheduleChart::isOperation(int number) const {
    return number >= 1 && number <= m_model.rowCount() &&
           row(number).kind == ChartRow::Kind::Operation;
}

int ScheduleChart::rowOf(qint64 jobNo, int seqNo) const {
    for (int number = 1; number <= m_model.rowCount(); ++number) {
        if (isOperation(number) && row(number).jobNo == jobNo && row(number).seqNo == seqNo)
            return number;
    }
    return 0;
}

bool ScheduleChart::isLive(const Bar& bar) const {
    return bar.style == 0 && bar.state != State::Deleted;
}

Entry ScheduleChart::entry(int row, int bar) const {
    const Bar& shown = m_model.bar(row, bar);
    const ChartRow& of = this->row(row);
    Entry entry = m_loaded.value(shown.key);
    entry.jobNo = of.jobNo;
    if (of.kind == ChartRow::Kind::Operation) {
        entry.seqNo = of.seqNo;
        if (entry.operNo == 0)
            entry.operNo = of.operation.operNo;
    }
    entry.description = shown.text;
    // A number that the chart doesn't know is kept until somebody chooses another.
    if (alignOf(entry.textAlign) != shown.align)
        entry.textAlign = static_cast<int>(shown.align);
    entry.span = shown.span;
    return entry;
}

int ScheduleChart::addEntry(int row, const Entry& entry) {
    Bar bar;
    bar.span = entry.span;
    bar.text = entry.description;
    bar.align = alignOf(entry.textAlign);
    bar.colour = this->row(row).operation.located ? green : red;
    return m_model.addBar(row, bar);
}

void ScheduleChart::changeEntry(int row, int bar, const Entry& entry) {
    Bar next = m_model.bar(row, bar);
    next.span = entry.span;
    next.text = entry.description;
    next.align = alignOf(entry.textAlign);
    m_model.setBar(row, bar, next);
}

void ScheduleChart::deleteEntry(int row, int bar) {
    m_model.setState(row, bar, State::Deleted, true);
}

void ScheduleChart::undoDelete(int row, int bar) {
    // A finished operation's entry is locked again.
    const bool finished = isOperation(row) && this->row(row).operation.status == u"F" &&
                          !m_model.bar(row, bar).key.isEmpty();
    m_model.setState(row, bar, finished ? State::Locked : State::Normal, false);
}

// Saving

QString ScheduleChart::firstOutOfRange(const QHash<qint64, Limits>& limits) const {
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        const qint64 jobNo = this->row(row).jobNo;
        const Limits within = limits.value(jobNo);
        for (int bar = 1; bar <= m_model.barCount(row); ++bar) {
            if (!isLive(m_model.bar(row, bar)))
                continue;
            const OutOfRange what = outOfRange(m_model.bar(row, bar).span, within);
            if (what != OutOfRange::No)
                return rangeText(bar, row, jobNo, what, m_order);
        }
    }
    return {};
}

std::vector<EntryChange> ScheduleChart::changes() const {
    std::vector<EntryChange> all;
    for (int row = 1; row <= m_model.rowCount(); ++row) {
        for (int bar = 1; bar <= m_model.barCount(row); ++bar) {
            const Bar& shown = m_model.bar(row, bar);
            if (shown.style != 0)
                continue;
            EntryChange change;
            change.place = bar;
            if (const auto loaded = m_loaded.constFind(shown.key); loaded != m_loaded.cend())
                change.loaded = *loaded;
            if (isLive(shown)) {
                change.now = entry(row, bar);
                if (this->row(row).kind == ChartRow::Kind::Operation)
                    change.operation = this->row(row).operation.description;
            }
            if (change.loaded || change.now)
                all.push_back(std::move(change));
        }
    }
    return all;
}

bool ScheduleChart::isChanged() const {
    const auto all = changes();
    return std::any_of(all.begin(), all.end(), [](const EntryChange& change) {
        return !change.loaded || !change.now || !change.now->saysTheSame(*change.loaded);
    });
}

} // namespace scheduling
