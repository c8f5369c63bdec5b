#include "scheduling/ChartLooks.h"

#include "platform/controls/DataCombo.h"
#include "platform/values/Literals.h"

#include <algorithm>

namespace scheduling {

namespace {

struct Zoom {
    const char16_t* name;
    int unitWidth, subdivisions, step;
    const char16_t* am;
    const char16_t* pm;
    bool hours, minutes;
};
constexpr Zoom zooms[] = {{u"200%", 120, 12, 10, u"AM", u"PM", true, true},
                          {u"100%", 60, 4, 6, u"A", u"P", true, true},
                          {u"50%", 30, 2, 3, u"AM", u"PM", true, false},
                          {u"33%", 20, 2, 2, u"A", u"P", false, false}};

struct Display {
    const char16_t* name;
    gantt::Division division;
    const char16_t* dateFormat;
    int height;
};
constexpr Display displays[] = {{u"Hours", gantt::Division::Hours, u"D, M n, Y", 10},
                                {u"Days", gantt::Division::Days, u"D, M n, Y", 20},
                                {u"Weeks", gantt::Division::Weeks, u"M Y", 10}};

} // namespace

gantt::Ruler rulerOf(int zoom, int display) {
    const Zoom& near =
        zooms[std::clamp<size_t>(static_cast<size_t>(std::max(0, zoom)), 0, std::size(zooms) - 1)];
    const Display& shown = displays[std::clamp<size_t>(static_cast<size_t>(std::max(0, display)), 0,
                                                       std::size(displays) - 1)];
    gantt::Ruler ruler;
    ruler.division = shown.division;
    ruler.dateFormat = QString::fromUtf16(shown.dateFormat);
    ruler.height = shown.height;
    ruler.unitWidth = near.unitWidth;
    ruler.subdivisions = shown.division == gantt::Division::Days ? 1 : near.subdivisions;
    ruler.step = near.step;
    ruler.am = QString::fromUtf16(near.am);
    ruler.pm = QString::fromUtf16(near.pm);
    ruler.showHours = near.hours;
    ruler.showMinutes = near.minutes;
    return ruler;
}

void joinLooks(gantt::ChartView& chart, controls::ListCombo& cmbSizes,
               controls::ListCombo& cmbRulerDiv, ZoomOrder order, controls::ListCombo* cmbRuler) {
    constexpr int last = static_cast<int>(std::size(zooms)) - 1;
    for (int i = 0; i <= last; ++i) {
        const int zoom = order == ZoomOrder::NearestFirst ? i : last - i;
        cmbSizes.addRow(QString::fromUtf16(zooms[zoom].name), zoom);
    }
    for (int i = 0; i < static_cast<int>(std::size(displays)); ++i)
        cmbRulerDiv.addRow(QString::fromUtf16(displays[i].name), i);
    cmbSizes.chooseNumber(1);
    cmbRulerDiv.chooseNumber(1);
    if (cmbRuler) {
        cmbRuler->addRow(u"Dates"_s, 0);
        cmbRuler->addRow(u"Months"_s, 2);
        cmbRuler->chooseNumber(0);
    }
    const auto apply = [&chart, &cmbSizes, &cmbRulerDiv, cmbRuler] {
        gantt::Ruler ruler = rulerOf(static_cast<int>(cmbSizes.itemNumber()),
                                     static_cast<int>(cmbRulerDiv.itemNumber()));
        if (cmbRuler)
            ruler.dateFormat = QString::fromUtf16(displays[cmbRuler->itemNumber()].dateFormat);
        chart.setRuler(ruler);
    };
    QObject::connect(&cmbSizes, &QComboBox::currentIndexChanged, &chart, apply);
    QObject::connect(&cmbRulerDiv, &QComboBox::currentIndexChanged, &chart,
                     [apply, &cmbRulerDiv, cmbRuler] {
                         // Weeks are read by their months.
                         if (cmbRuler)
                             cmbRuler->chooseNumber(cmbRulerDiv.itemNumber() == 2 ? 2 : 0);
                         apply();
                     });
    if (cmbRuler)
        QObject::connect(cmbRuler, &QComboBox::currentIndexChanged, &chart, apply);
    chart.zoomRequested.connect([&cmbSizes](int direction) {
        cmbSizes.chooseNumber(std::clamp<qint64>(cmbSizes.itemNumber() - direction, 0, last));
    });
    apply();
}

std::vector<gantt::LoadLine> linesOf(const LoadTable& table) {
    std::vector<gantt::LoadLine> lines;
    for (const qint64 department : table.departments()) {
        gantt::LoadLine line;
        line.name = table.capacity().departments.value(department);
        for (const DayLoad& day : table.days(department))
            line.days.push_back({day.planned, day.available});
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace scheduling
