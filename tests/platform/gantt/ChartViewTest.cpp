#include "../controls/ControlsTest.h"
#include "platform/gantt/LoadStrip.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using gantt::Bar;
using gantt::BarMove;
using gantt::ChartView;
using gantt::minuteOf;
using gantt::Span;
using gantt::State;

namespace {

const QDate monday(2026, 3, 2);

class ChartTest : public ControlsTest {
  protected:
    ChartTest() {
        QWidget* parent = build();
        auto* layout = new QVBoxLayout(parent);
        chart = screen::named(new ChartView(parent), u"ctSchedule"_s, u"Schedule"_s);
        strip = screen::named(new gantt::LoadStrip(chart, parent), u"ctLoad"_s);
        layout->addWidget(chart);
        layout->addWidget(strip);
        parent->resize(700, 400);
        gantt::Model& model = chart->model();
        model.addColumn(u"Operation"_s);
        model.setViewRange(monday, monday.addDays(27));
        for (const char* name : {"Boring", "Milling", "Plating"})
            model.addRow(QString::fromLatin1(name));
        add(1, 0, 2, u"first"_s);
        add(2, 2, 4, u"second"_s);
        add(2, 3, 5, u"third"_s);
        add(3, 20, 22, u"last"_s);
        model.forgetHistory();
        chart->setRuler(
            {.division = gantt::Division::Days, .dateFormat = u"D, M n, Y"_s, .unitWidth = 60});
        show();
        settle();
        chart->setFocus();
        chart->barChanged.connect([this](int row, int bar, const Span&, const Span&) {
            happened << u"changed %1/%2"_s.arg(row).arg(bar);
        });
        chart->barSelected.connect(
            [this](int row, int bar) { happened << u"bar %1/%2"_s.arg(row).arg(bar); });
        chart->selectionLost.connect([this] { happened << u"lost"_s; });
        chart->doubleClicked.connect(
            [this](int row, int bar) { happened << u"double %1/%2"_s.arg(row).arg(bar); });
        chart->keyPressed.connect([this](int) { happened << u"delete"_s; });
        chart->menuRequested.connect([this](QPoint) { happened << u"menu"_s; });
    }
    void add(int row, int from, int to, const QString& text) {
        Bar bar;
        bar.span = {minuteOf(monday.addDays(from), 420), minuteOf(monday.addDays(to), 900)};
        bar.text = text;
        chart->model().addBar(row, bar);
    }
    void drag(const QPoint& from, const QPoint& to, bool letGo = true) {
        QWidget* area = chart->viewport();
        QTest::mousePress(area, Qt::LeftButton, {}, from);
        QTest::mouseMove(area, (from + to) / 2);
        mouseMoved((from + to) / 2);
        mouseMoved(to);
        if (letGo)
            QTest::mouseRelease(area, Qt::LeftButton, {}, to);
    }
    void mouseMoved(const QPoint& place) {
        QWidget* area = chart->viewport();
        QMouseEvent event(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(area, &event);
    }
    Span span(int row, int bar) { return chart->model().bar(row, bar).span; }
    QStringList taken() { return std::exchange(happened, {}); }

    ChartView* chart;
    gantt::LoadStrip* strip;
    QStringList happened;
};

} // namespace

TEST_F(ChartTest, ABarIsMovedByItsMiddleAndResizedByItsEnds) {
    const Span before = span(2, 1);
    const QRect rect = chart->barRect(2, 1);
    drag(rect.center(), rect.center() + QPoint(70, 0));
    EXPECT_EQ(span(2, 1), (Span{before.start + 1440, before.end + 1440})) << "by whole days";
    EXPECT_EQ(taken(), QStringList({u"bar 2/1"_s, u"changed 2/1"_s}));
    chart->model().undo();
    EXPECT_EQ(span(2, 1), before);

    drag({rect.right() - 1, rect.center().y()}, {rect.right() + 118, rect.center().y()});
    EXPECT_EQ(span(2, 1), (Span{before.start, before.end + 2 * 1440}));
    chart->model().undo();
    drag({rect.left() + 1, rect.center().y()}, {rect.left() + 500, rect.center().y()});
    EXPECT_EQ(span(2, 1), (Span{before.end, before.end})) << "never past its end";
    chart->model().undo();

    drag(rect.center(), rect.center() + QPoint(70, 0), false);
    EXPECT_EQ(chart->moving().size(), 1U);
    EXPECT_EQ(span(2, 1), before) << "until it is let go";
    key(Qt::Key_Escape);
    EXPECT_TRUE(chart->moving().empty());
    EXPECT_EQ(span(2, 1), before);
    EXPECT_FALSE(chart->model().canUndo());
}

TEST_F(ChartTest, FollowersAreShownWhileDraggingAndMoveWithTheBarInOneChange) {
    chart->followers = [](int, int, const Span& before, const Span& after) {
        const Span last{minuteOf(monday.addDays(20), 420), minuteOf(monday.addDays(22), 900)};
        const auto by = after.start - before.start;
        return std::vector<BarMove>{{3, 1, {last.start + by, last.end + by}}};
    };
    const Span before = span(3, 1);
    const QRect rect = chart->barRect(1, 1);
    drag(rect.center(), rect.center() + QPoint(130, 0), false);
    ASSERT_EQ(chart->moving().size(), 2U);
    EXPECT_EQ(chart->moving()[1].span.start, before.start + 2 * 1440);
    EXPECT_EQ(span(3, 1), before);
    QTest::mouseRelease(chart->viewport(), Qt::LeftButton, {}, rect.center() + QPoint(130, 0));
    EXPECT_EQ(span(3, 1).start, before.start + 2 * 1440);
    chart->model().undo();
    EXPECT_EQ(span(3, 1), before);
    EXPECT_FALSE(chart->model().canUndo()) << "one step";
}

TEST_F(ChartTest, TheChartScrollsWhenABarIsDraggedToItsEdge) {
    const QRect rect = chart->barRect(1, 1);
    drag(rect.center(), {chart->viewport()->width() - 4, rect.center().y()}, false);
    const Span there = chart->moving().front().span;
    QTest::qWait(300);
    EXPECT_GT(chart->horizontalScrollBar()->value(), 0);
    EXPECT_GT(chart->moving().front().span.start, there.start);
    key(Qt::Key_Escape);
}

TEST_F(ChartTest, LockedDeletedAndReadOnlyStayWhereTheyAre) {
    const auto tryIt = [&] {
        const Span before = span(1, 1);
        const QRect rect = chart->barRect(1, 1);
        drag(rect.center(), rect.center() + QPoint(130, 0));
        chart->model().select(1, 1);
        key(Qt::Key_Right, Qt::ControlModifier);
        EXPECT_EQ(span(1, 1), before);
    };
    chart->model().setState(1, 1, State::Locked, false);
    tryIt();
    chart->model().setState(1, 1, State::Deleted, true);
    tryIt();
    chart->model().setState(1, 1, State::Normal, false);
    chart->model().setReadOnly(true);
    tryIt();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(chart->model().bar(1, 1).state, State::Normal) << "nothing is undone in browse";
}

TEST_F(ChartTest, EverythingGoesByKeyboard) {
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(chart->model().selectedRow(), 2);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(taken(), QStringList({u"bar 2/1"_s, u"bar 2/2"_s}));
    EXPECT_TRUE(chart->accessibleDescription().contains(u"Milling"));
    EXPECT_TRUE(chart->accessibleDescription().contains(u"third"));
    const Span before = span(2, 2);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(span(2, 2), (Span{before.start + 1440, before.end + 1440}));
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(span(2, 2), (Span{before.start, before.end + 2 * 1440}));
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(span(2, 2), (Span{before.start + 1440, before.end + 2 * 1440}));
    taken();
    key(Qt::Key_Return);
    key(Qt::Key_Delete);
    key(Qt::Key_Up);
    EXPECT_EQ(taken(), QStringList({u"double 2/2"_s, u"delete"_s, u"lost"_s}));
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_End);
    EXPECT_EQ(taken(), QStringList(u"bar 3/1"_s));
    const QRect rect = chart->barRect(3, 1);
    EXPECT_TRUE(chart->viewport()->rect().contains(rect.center())) << "it is brought into sight";
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(chart, &menu);
    EXPECT_EQ(taken(), QStringList(u"menu"_s));
}

TEST_F(ChartTest, TheLoadStripStandsOnTheChartsAxisAndTellsTheWork) {
    gantt::LoadLine line{u"Mill"_s, std::vector<gantt::LoadCell>(28)};
    for (auto& cell : line.days)
        cell.available = 8;
    line.days[1] = {.planned = 10.5, .available = 8};
    line.days[2].planned = 4;
    strip->setLines(monday, {line});
    strip->workOf = [](int, int day, int days) {
        return day <= 1 && day + days > 1 ? QStringList(u"Job 12 Milling: 10.5 h"_s)
                                          : QStringList();
    };
    EXPECT_EQ(strip->tip(0, 1), u"Mill, Tue, Mar 3, 2026\n10.5 of 8 hours planned, 2.5 too many\n"
                                "Job 12 Milling: 10.5 h"_s);
    settle();
    const QImage picture = strip->viewport()->grab().toImage();
    const auto colourOf = [&](int day) {
        const int x = chart->labelWidth() + chart->scale().xOf(minuteOf(monday.addDays(day))) + 4;
        return picture.pixelColor(x, 6);
    };
    EXPECT_GT(colourOf(1).red(), colourOf(1).blue() + 60) << "too much is red";
    EXPECT_LT(colourOf(2).red(), colourOf(2).blue() + 60);

    chart->setRuler({.division = gantt::Division::Weeks, .dateFormat = u"M Y"_s});
    EXPECT_TRUE(
        strip->tip(0, 3).startsWith(u"Mill, week of Mon, Mar 2, 2026\n14.5 of 56 hours planned"));
    strip->setFocus();
    key(Qt::Key_Right);
    EXPECT_TRUE(strip->accessibleDescription().contains(u"week of Mon, Mar 9, 2026"));
}
