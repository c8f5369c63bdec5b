#include "scheduling/Fit.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>
#include <cmath>

namespace scheduling {

using gantt::Bar;
using gantt::Minute;
using gantt::Span;
using gantt::State;

namespace {

/// Pieces shorter than this are of no use on the floor.
constexpr int smallestPiece = 15;

struct Placing {
    int row = 0;
    std::vector<int> bars; ///< entries that are to be placed
    std::vector<Span> pieces;
};

/// Whether the department doesn't work from the one moment to the other.
bool closedBetween(const Capacity& capacity, qint64 department, Minute from, Minute to) {
    for (QDate day = gantt::dateOf(from); day <= gantt::dateOf(to); day = day.addDays(1)) {
        for (const Interval& open : capacity.timesOn(department, day)) {
            if (gantt::minuteOf(day, open.from) < to && gantt::minuteOf(day, open.to) > from)
                return false;
        }
    }
    return true;
}

void append(const Capacity& capacity, qint64 department, std::vector<Span>& pieces,
            const Span& piece) {
    if (!pieces.empty() && closedBetween(capacity, department, pieces.back().end, piece.start))
        pieces.back().end = piece.end;
    else
        pieces.push_back(piece);
}

void place(gantt::Model& model, ScheduleChart& chart, const Placing& placing) {
    size_t next = 0;
    for (const Span& piece : placing.pieces) {
        if (next < placing.bars.size()) {
            model.moveBar(placing.row, placing.bars[next++], piece);
            continue;
        }
        // What doesn't fit in one stretch goes on in an entry of its own.
        Entry entry;
        entry.description = placing.bars.empty()
                                ? chart.row(placing.row).operation.description
                                : model.bar(placing.row, placing.bars.front()).text;
        entry.textAlign =
            placing.bars.empty()
                ? 0
                : static_cast<int>(model.bar(placing.row, placing.bars.front()).align);
        entry.span = piece;
        chart.addEntry(placing.row, entry);
    }
    for (; next < placing.bars.size(); ++next)
        chart.deleteEntry(placing.row, placing.bars[next]);
}

} // namespace

FreePlaces findFree(LoadTable& load, const PlannedWork& work, double hours, Minute from,
                    const QDate& lastDay) {
    FreePlaces found;
    Minute needed = std::llround(hours * 60);
    const Capacity& capacity = load.capacity();
    for (QDate day = gantt::dateOf(from); day <= lastDay && needed > 0; day = day.addDays(1)) {
        auto free = static_cast<Minute>(std::floor(load.freeOn(work.department, day) * 60 + 0.001));
        for (const Interval& open : capacity.timesOn(work.department, day)) {
            const Minute start = std::max(from, gantt::minuteOf(day, open.from));
            const Minute length = std::min({needed, free, gantt::minuteOf(day, open.to) - start});
            if (length < std::min<Minute>(smallestPiece, needed) || length <= 0)
                continue;
            append(capacity, work.department, found.pieces, {start, start + length});
            needed -= length;
            free -= length;
        }
    }
    for (const Span& piece : found.pieces) {
        PlannedWork taken = work;
        taken.span = piece;
        load.add(taken);
    }
    found.left = static_cast<double>(needed) / 60.0;
    return found;
}

QString fit(gantt::Model& model, ScheduleChart& chart, qint64 jobNo, const Limits& limits,
            LoadTable load) {
    if (!limits.dateIn || !limits.dueDate)
        return u"The job needs a date in and a due date before its entries can be fitted."_s;
    std::vector<Placing> placings;
    Minute from = gantt::minuteOf(*limits.dateIn);
    for (int row = 1; row <= model.rowCount(); ++row) {
        if (!chart.isOperation(row) || chart.row(row).jobNo != jobNo)
            continue;
        const ChartRow& of = chart.row(row);
        Placing placing;
        placing.row = row;
        double before = 0;
        Minute length = 0;
        for (int bar = 1; bar <= model.barCount(row); ++bar) {
            const Bar& shown = model.bar(row, bar);
            if (shown.style != 0 || shown.state == State::Deleted)
                continue;
            if (shown.state == State::Locked) {
                // Finished: what follows comes behind it.
                from = std::max(from, shown.span.end);
                continue;
            }
            placing.bars.push_back(bar);
            before += plannedHours(load.capacity(), of.operation.department, shown.span);
            length += shown.span.length();
        }
        if (of.operation.status == u"F")
            continue;
        if (of.operation.contractor) {
            if (placing.bars.empty())
                continue;
            // The contractor's working times aren't ours: the entry keeps its length.
            const Span span{from, from + length};
            if (gantt::dateOf(span.end) > *limits.dueDate) {
                return u"%1 (operation %2 of Job %3) doesn't fit: its %4 hours at the contractor "
                       "end behind the due date."_s.arg(of.operation.description)
                           .arg(of.seqNo)
                           .arg(jobNo)
                           .arg(values::numberText(std::round(static_cast<double>(length) / 6.0) /
                                                   10));
            }
            placing.pieces = {span};
        } else {
            const double estimated = of.operation.estimated.value_or(0);
            const double hours = estimated > 0 ? estimated : before;
            if (hours <= 0)
                continue;
            const PlannedWork work{of.operation.department, jobNo, of.operation.description, {}};
            const FreePlaces free = findFree(load, work, hours, from, *limits.dueDate);
            if (free.left > 0) {
                return u"%1 (operation %2 of Job %3) doesn't fit: %4 of its %5 hours are left over "
                       "at the due date."_s.arg(of.operation.description)
                           .arg(of.seqNo)
                           .arg(jobNo)
                           .arg(values::numberText(std::round(free.left * 10) / 10),
                                values::numberText(std::round(hours * 10) / 10));
            }
            placing.pieces = free.pieces;
        }
        if (!placing.pieces.empty())
            from = placing.pieces.back().end;
        placings.push_back(std::move(placing));
    }
    if (placings.empty())
        return u"The job has no operation whose hours could be fitted."_s;
    const gantt::Model::Change change(model);
    for (const Placing& placing : placings)
        place(model, chart, placing);
    return {};
}

} // namespace scheduling
