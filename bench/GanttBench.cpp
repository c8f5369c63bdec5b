#include "platform/gantt/LoadStrip.h"
#include "platform/values/Literals.h"
#include "scheduling/Load.h"
#include "scheduling/MultiMove.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

// The chart with 10,000 bars on 1,000 rows, 1600 x 900, painted by the raster engine that people's
// displays use.

namespace {

const QDate first(2026, 1, 5);

std::unique_ptr<gantt::ChartView> makeChart() {
    auto chart = std::make_unique<gantt::ChartView>();
    gantt::Model& model = chart->model();
    {
        const gantt::Model::Change change(model);
        const gantt::Model::Unrecorded loading(model);
        model.addColumn(u"Operation"_s);
        model.setViewRange(first, first.addDays(120));
        for (int row = 1; row <= 1000; ++row) {
            model.addRow(u"Operation %1"_s.arg(row));
            for (int i = 0; i < 10; ++i) {
                gantt::Bar bar;
                const auto start = gantt::minuteOf(first.addDays(i * 10 + row % 7), 420);
                bar.span = {start, start + 3 * gantt::minutesPerDay};
                bar.text = u"Job %1 on fixture %2"_s.arg(row * 10 + i).arg(i);
                model.addBar(row, bar);
            }
        }
    }
    chart->setRuler(
        {.division = gantt::Division::Days, .dateFormat = u"D, M n, Y"_s, .unitWidth = 20});
    chart->resize(1600, 900);
    chart->show();
    QCoreApplication::processEvents();
    return chart;
}

void move(QWidget* area, QEvent::Type type, const QPoint& place) {
    QMouseEvent event(type, place, area->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(area, &event);
}

void wholeRepaint(benchmark::State& state) {
    const auto chart = makeChart();
    for (auto _ : state)
        chart->viewport()->repaint();
}
BENCHMARK(wholeRepaint)->Unit(benchmark::kMillisecond);

/// One move of the pointer with everything that starts later going along, and its repaint.
void dragWithFollowers(benchmark::State& state) {
    const auto chart = makeChart();
    const scheduling::MultiMove how{.enabled = true};
    chart->followers = [&](int row, int bar, const gantt::Span& before, const gantt::Span& after) {
        return how.followers(chart->model(), row, bar, before, after);
    };
    QWidget* area = chart->viewport();
    const QPoint grabbed = chart->barRect(2, 2).center();
    move(area, QEvent::MouseButtonPress, grabbed);
    int step = 0;
    size_t moving = 0;
    for (auto _ : state) {
        move(area, QEvent::MouseMove, grabbed + QPoint(40 + 20 * (++step % 10), 0));
        area->repaint();
        moving = chart->moving().size();
    }
    state.counters["moving"] = static_cast<double>(moving);
}
BENCHMARK(dragWithFollowers)->Unit(benchmark::kMillisecond);

/// What the band of loads takes to follow such a drag: the hours of 10,000 entries in twenty
/// departments, summed up anew and painted.
void loadOfDrag(benchmark::State& state) {
    const auto chart = makeChart();
    gantt::LoadStrip strip(chart.get());
    strip.resize(1600, 120);
    strip.show();
    scheduling::Capacity capacity;
    std::vector<qint64> departments;
    for (int i = 1; i <= 20; ++i) {
        departments.push_back(i);
        for (int day = 0; day < 5; ++day)
            capacity.open[i][static_cast<size_t>(day)] = {{420, 900}};
        capacity.hours[i].fill(16);
    }
    const gantt::Model& model = chart->model();
    for (auto _ : state) {
        scheduling::LoadTable table(capacity, departments, model.firstDay(), model.lastDay());
        for (int row = 1; row <= model.rowCount(); ++row) {
            for (const gantt::Bar& bar : model.bars(row))
                table.add({1 + row % 20, row, u"Milling"_s, bar.span});
        }
        std::vector<gantt::LoadLine> lines;
        for (const qint64 department : departments) {
            lines.push_back({QString::number(department), {}});
            for (const scheduling::DayLoad& day : table.days(department))
                lines.back().days.push_back({day.planned, day.available});
        }
        strip.setLines(model.firstDay(), std::move(lines));
        strip.viewport()->repaint();
    }
}
BENCHMARK(loadOfDrag)->Unit(benchmark::kMillisecond);

/// One frame of scrolling through all rows.
void scrollRows(benchmark::State& state) {
    const auto chart = makeChart();
    QScrollBar* down = chart->verticalScrollBar();
    for (auto _ : state) {
        down->setValue((down->value() + 37) % down->maximum());
        chart->viewport()->repaint();
    }
}
BENCHMARK(scrollRows)->Unit(benchmark::kMillisecond);

/// The drop: 10,000 bars change in one step, and are laid out and painted.
void dropWithFollowers(benchmark::State& state) {
    const auto chart = makeChart();
    gantt::Model& model = chart->model();
    const scheduling::MultiMove how{.enabled = true};
    for (auto _ : state) {
        const gantt::Span before = model.bar(1, 1).span;
        const gantt::Span after{before.start + 60, before.end + 60};
        auto moves = how.followers(model, 1, 1, before, after);
        moves.push_back({1, 1, after});
        model.moveBars(moves);
        chart->viewport()->repaint();
    }
}
BENCHMARK(dropWithFollowers)->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
