#include "platform/gantt/Model.h"
#include "platform/gantt/RowLayouts.h"
#include "platform/gantt/TimeScale.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

#include <random>

using gantt::Bar;
using gantt::BarMove;
using gantt::Minute;
using gantt::minuteOf;
using gantt::Model;
using gantt::Span;
using gantt::State;

namespace {

/// Everything that a person sees of the bars.
QStringList shown(const Model& model) {
    QStringList all;
    for (int row = 1; row <= model.rowCount(); ++row) {
        for (const Bar& bar : model.bars(row)) {
            all << u"%1: %2-%3 %4 %5 %6 %7"_s.arg(row)
                       .arg(bar.span.start)
                       .arg(bar.span.end)
                       .arg(bar.text, bar.key)
                       .arg(static_cast<int>(bar.state))
                       .arg(bar.hatched);
        }
    }
    return all;
}

void fillRows(Model& model, int rows, int bars) {
    for (int row = 1; row <= rows; ++row) {
        model.addRow(u"Row %1;%2"_s.arg(row).arg(row * 1.5));
        for (int bar = 0; bar < bars; ++bar)
            model.addBar(row, Span{bar * 100, bar * 100 + 60});
    }
    model.forgetHistory();
}

/// A random change of some bars, the same for the same numbers.
void changeSomething(Model& model, std::mt19937& random) {
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const int row = 1 + below(model.rowCount());
    if (model.barCount(row) == 0 || below(6) == 0) {
        model.addBar(row, Span{below(5000), 5000 + below(500)});
        return;
    }
    const int bar = 1 + below(model.barCount(row));
    switch (below(5)) {
    case 0:
        model.removeBar(row, bar);
        break;
    case 1:
        model.setState(row, bar, State::Deleted, true);
        break;
    case 2: {
        Bar next = model.bar(row, bar);
        next.text = u"t%1"_s.arg(below(1000));
        model.setBar(row, bar, next);
        break;
    }
    case 3: {
        // Several bars of all kinds of changes at once, as a proposal makes them.
        const Model::Change change(model);
        model.moveBar(row, bar, {below(1000), 1000 + below(1000)});
        model.addBar(row, Span{1, 2});
        model.removeBar(row, 1);
        break;
    }
    default: {
        std::vector<BarMove> moves;
        for (int r = 1; r <= model.rowCount(); ++r) {
            for (int b = 1; b <= model.barCount(r); ++b) {
                const Span span = model.bar(r, b).span;
                moves.push_back({r, b, {span.start + 30, span.end + 30}});
            }
        }
        model.moveBars(moves);
    }
    }
}

} // namespace

TEST(GanttModel, UndoAndRedoEndWhereAReplayEnds) {
    for (unsigned run = 0; run < 1000; ++run) {
        std::mt19937 choice(run);
        Model model;
        fillRows(model, 3, 3);
        std::vector<unsigned> done; // the seeds of the changes that stand
        std::vector<unsigned> undone;
        for (unsigned step = 0; step < 25; ++step) {
            const auto what = choice() % 4;
            if (what == 0 && !done.empty()) {
                ASSERT_TRUE(model.canUndo());
                model.undo();
                undone.push_back(done.back());
                done.pop_back();
            } else if (what == 1 && !undone.empty()) {
                ASSERT_TRUE(model.canRedo());
                model.redo();
                done.push_back(undone.back());
                undone.pop_back();
            } else {
                const unsigned seed = run * 1000 + step;
                std::mt19937 random(seed);
                const auto before = model.revision();
                changeSomething(model, random);
                // What changes nothing is no step.
                if (model.revision() != before) {
                    done.push_back(seed);
                    undone.clear();
                }
            }
        }
        Model replayed;
        fillRows(replayed, 3, 3);
        for (const unsigned seed : done) {
            std::mt19937 random(seed);
            changeSomething(replayed, random);
        }
        ASSERT_EQ(shown(model), shown(replayed)) << "run " << run;
        while (model.canUndo())
            model.undo();
        Model fresh;
        fillRows(fresh, 3, 3);
        ASSERT_EQ(shown(model), shown(fresh)) << "run " << run;
    }
}

TEST(GanttModel, WhatIsNoPartOfTheHistoryLeavesItWhole) {
    Model model;
    fillRows(model, 1, 2);
    const int style = model.defineStyle({0x808080, 0x808080});
    model.moveBar(1, 2, {500, 600});
    {
        const Model::Unrecorded drawing(model);
        Bar block;
        block.style = style;
        block.span = {0, 50};
        model.addBar(1, block);
    }
    model.undo();
    EXPECT_EQ(model.bar(1, 2).span, (Span{100, 160}));
    EXPECT_EQ(model.barCount(1), 3) << "the block stands";
    EXPECT_FALSE(model.canUndo());
    model.redo();
    EXPECT_EQ(model.bar(1, 2).span, (Span{500, 600}));
}

TEST(GanttModel, WhatItsOwnerNotesIsTakenBackAmongTheChangesOfBars) {
    Model model;
    fillRows(model, 1, 1);
    const Span first = model.bar(1, 1).span;
    int noted = 1;
    model.note([&](bool again) {
        noted = again ? 1 : 0;
        model.setViewRange(QDate(2026, 3, again ? 2 : 1), QDate(2026, 4, 1));
    });
    model.moveBar(1, 1, {500, 600});
    model.undo();
    EXPECT_EQ(model.bar(1, 1).span, first);
    EXPECT_EQ(noted, 1);
    model.undo();
    EXPECT_EQ(noted, 0);
    EXPECT_FALSE(model.canUndo());
    model.redo();
    model.redo();
    EXPECT_EQ(noted, 1);
    EXPECT_EQ(model.bar(1, 1).span, (Span{500, 600}));
}

TEST(GanttModel, TimesPastMidnightAreTheNextDays) {
    Model model;
    fillRows(model, 1, 1);
    const QDate day(2026, 3, 2);
    model.moveBar(1, 1, day, 23 * 60 + 50 + 30, day, 1440 + 90);
    const Span span = model.bar(1, 1).span;
    EXPECT_EQ(gantt::dateOf(span.start), day.addDays(1));
    EXPECT_EQ(gantt::minuteOfDay(span.start), 20);
    EXPECT_EQ(gantt::dateOf(span.end), day.addDays(1));
    EXPECT_EQ(gantt::minuteOfDay(span.end), 90);
    EXPECT_EQ(minuteOf(day, -10), minuteOf(day.addDays(-1), 1430));
    EXPECT_EQ(gantt::minuteOfDay(minuteOf(day, -10)), 1430);
}

TEST(GanttModel, ColumnsAndCellsFollowOneAnother) {
    Model model;
    model.addColumn(u"Operation"_s);
    fillRows(model, 2, 0);
    model.addColumn(u"Est. Hours"_s);
    EXPECT_EQ(model.cellText(2, 2), u"3"_s);
    model.removeColumn(2);
    EXPECT_EQ(model.cellText(2, 1), u"Row 2"_s);
    EXPECT_EQ(model.cellText(2, 2), QString());
    model.select(2);
    model.clear();
    EXPECT_EQ(model.selectedRow(), 0);
    EXPECT_EQ(model.columnCount(), 1);
}

TEST(GanttRows, BarsOfOneMomentStandBelowOneAnother) {
    std::vector<Bar> bars(4);
    bars[0].span = {100, 300};
    bars[1].span = {0, 150};
    bars[2].span = {150, 200}; // begins as the second one ends
    bars[3].span = {0, 1000};
    bars[3].style = 1; // a block shares with nobody
    const auto layout = gantt::RowLayout::of(bars);
    EXPECT_EQ(layout.lanes, 2);
    QStringList placed;
    for (const auto& p : layout.byStart)
        placed << u"%1/%2"_s.arg(p.bar).arg(p.lane);
    EXPECT_EQ(placed, QStringList({u"2/0"_s, u"4/0"_s, u"1/1"_s, u"3/0"_s}));

    // Random bars: none that share a moment share a lane, while there are lanes enough.
    std::mt19937 random(7);
    for (int run = 0; run < 200; ++run) {
        std::vector<Bar> some(8);
        for (Bar& bar : some) {
            bar.span.start = static_cast<Minute>(random() % 100);
            bar.span.end = bar.span.start + 1 + static_cast<Minute>(random() % 40);
        }
        const auto rows = gantt::RowLayout::of(some);
        for (const auto& a : rows.byStart) {
            for (const auto& b : rows.byStart) {
                const Span& x = some[static_cast<size_t>(a.bar) - 1].span;
                const Span& y = some[static_cast<size_t>(b.bar) - 1].span;
                if (a.bar != b.bar && a.lane == b.lane) {
                    EXPECT_TRUE(x.end <= y.start || y.end <= x.start);
                }
            }
        }
    }
}

TEST(GanttScale, MomentsStandWhereTheRulerSaysAndSnapToIt) {
    const QDate first(2026, 3, 4); // a Wednesday
    gantt::Ruler ruler{.division = gantt::Division::Hours,
                       .dateFormat = u"D, M n, Y"_s,
                       .unitWidth = 60,
                       .subdivisions = 4,
                       .am = u"A"_s,
                       .pm = u"P"_s};
    const gantt::TimeScale hours(ruler, first, first.addDays(1));
    EXPECT_EQ(hours.width(), 48 * 60);
    EXPECT_EQ(hours.xOf(minuteOf(first, 90)), 90);
    EXPECT_EQ(hours.at(90), minuteOf(first, 90));
    EXPECT_EQ(hours.snapped(minuteOf(first, 98), minuteOf(first, 3)), minuteOf(first, 105));
    EXPECT_EQ(hours.step(), 15);
    EXPECT_EQ(hours.upper(0, 100).front().label, u"Wed, Mar 4, 2026"_s);
    const auto ticks = hours.lower(0, 13 * 60);
    EXPECT_EQ(ticks[0].label, u"12:00A"_s);
    EXPECT_EQ(ticks[13].label, u"1:00P"_s);

    ruler.division = gantt::Division::Days;
    const gantt::TimeScale days(ruler, first, first.addDays(30));
    EXPECT_EQ(days.xOf(minuteOf(first.addDays(2), 720)), 150);
    EXPECT_EQ(days.snapped(minuteOf(first.addDays(1), 1000), minuteOf(first, 420)),
              minuteOf(first.addDays(1), 420))
        << "the time of day stays";

    ruler.division = gantt::Division::Weeks;
    ruler.dateFormat = u"M Y"_s;
    const gantt::TimeScale weeks(ruler, first, first.addDays(60));
    const auto weekTicks = weeks.lower(0, 200);
    EXPECT_EQ(weekTicks[0].label, u"Mar 2"_s);
    EXPECT_EQ(weekTicks[1].x, weeks.xOf(minuteOf(QDate(2026, 3, 9))));
    EXPECT_EQ(weeks.upper(0, 600)[1].label, u"Apr 2026"_s);
}
