#include "scheduling/MultiMove.h"

#include "platform/values/Literals.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <map>
#include <random>

using gantt::Bar;
using gantt::BarMove;
using gantt::Model;
using gantt::Span;
using gantt::State;
using scheduling::MultiMove;

namespace {

/// A bar as day numbers and minutes of the day, as the rules speak of it.
struct Parts {
    long startDate, startTime, endDate, endTime;
};

Parts partsOf(const Span& span) {
    const auto day = [](gantt::Minute m) { return static_cast<long>(m / 1440); };
    const auto time = [](gantt::Minute m) { return static_cast<long>(m % 1440); };
    return {day(span.start), time(span.start), day(span.end), time(span.end)};
}

/// The rules word by word, over the parts of the bars.
std::map<std::pair<int, int>, Span> byTheRules(const Model& model, int row, int bar,
                                               const Span& now, const MultiMove& how) {
    std::map<std::pair<int, int>, Span> moved;
    const Bar& dragged = model.bar(row, bar);
    if (dragged.style != 0 || dragged.state == State::Deleted)
        return moved;
    const Parts old = partsOf(dragged.span);
    const Parts next = partsOf(now);
    const int firstRow = how.bySequence ? row : 1;
    const long lengthBefore = (old.endDate - old.startDate) * 1440 + old.endTime - old.startTime;
    const long lengthAfter = (next.endDate - next.startDate) * 1440 + next.endTime - next.startTime;
    if (!how.enabled || (lengthBefore != lengthAfter && !how.resize))
        return moved;
    for (int r = firstRow; r <= model.rowCount(); ++r) {
        for (int b = 1; b <= model.barCount(r); ++b) {
            const Bar& other = model.bar(r, b);
            if (other.style != 0 || other.state == State::Deleted || (r == row && b == bar))
                continue;
            if (other.state == State::Locked)
                continue; // can't be moved
            const Parts is = partsOf(other.span);
            if (!how.bySequence &&
                is.startDate * 1440 + is.startTime <= old.startDate * 1440 + old.startTime)
                continue;
            const long startTime = is.startTime + (next.startTime - old.startTime);
            const long endTime = is.endTime + (next.endTime - old.endTime);
            const long startDate = is.startDate + (next.startDate - old.startDate);
            const long endDate = is.endDate + (next.endDate - old.endDate);
            Span span{startDate * 1440 + startTime, endDate * 1440 + endTime};
            span.end = std::max(span.end, span.start);
            moved[{r, b}] = span;
        }
    }
    return moved;
}

Span randomSpan(std::mt19937& random) {
    const auto start = static_cast<gantt::Minute>(1440 * 100 + random() % 20000);
    // Equal starts are common: they decide who follows.
    return {start - start % 30, start - start % 30 + static_cast<gantt::Minute>(random() % 3000)};
}

} // namespace

TEST(MultiMoveRules, AgreesWithTheRulesWordByWordOnRandomCharts) {
    std::mt19937 random(42);
    int moved = 0;
    for (int chart = 0; chart < 10000; ++chart) {
        Model model;
        const int style = model.defineStyle({});
        const int rows = 1 + static_cast<int>(random() % 5);
        for (int row = 1; row <= rows; ++row) {
            model.addRow(QString());
            const auto bars = random() % 4 + (row == 1 ? 1 : 0);
            for (unsigned i = 0; i < bars; ++i) {
                Bar bar;
                bar.span = randomSpan(random);
                const auto kind = random() % 8;
                if (kind == 0)
                    bar.style = style;
                else if (kind == 1)
                    bar.state = State::Deleted;
                else if (kind == 2)
                    bar.state = State::Locked;
                model.addBar(row, bar);
            }
        }
        MultiMove how;
        how.enabled = random() % 4 != 0;
        how.resize = random() % 2 == 0;
        how.bySequence = random() % 2 == 0;
        const int row = 1;
        const int bar = 1 + static_cast<int>(random() % static_cast<unsigned>(model.barCount(row)));
        const Span before = model.bar(row, bar).span;
        Span after = randomSpan(random);
        if (random() % 2 == 0)
            after.end = after.start + before.length();
        const auto expected = byTheRules(model, row, bar, after, how);
        std::map<std::pair<int, int>, Span> found;
        for (const BarMove& move : how.followers(model, row, bar, before, after))
            found[{move.row, move.bar}] = move.span;
        ASSERT_EQ(found, expected) << "chart " << chart;
        moved += static_cast<int>(found.size());
    }
    EXPECT_GT(moved, 5000) << "the charts have to give it something to do";
}

TEST(MultiMoveRules, MinutesPastMidnightAreCarried) {
    Model model;
    model.addRow(QString());
    model.addRow(QString());
    model.addBar(1, Span{600, 700});
    model.addBar(2, Span{23 * 60 + 50, 1440 + 60});
    MultiMove how{.enabled = true};
    const auto moves = how.followers(model, 1, 1, {600, 700}, {630, 730});
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].span, (Span{1440 + 20, 1440 + 90}));
    EXPECT_TRUE(how.followers(model, 1, 1, {600, 700}, {600, 730}).empty())
        << "a resize needs its own switch";
}
