#include "inventory/StockPanel.h"

#include "platform/screen/Layout.h"
#include "platform/values/Format.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace inventory {

StockChart::StockChart(QWidget* parent) : QWidget(parent) {
    screen::named(this, u"picStock"_s, u"Stock over time"_s);
    setMinimumHeight(130);
}

QSize StockChart::sizeHint() const {
    return {320, 180};
}

void StockChart::show(const std::vector<StockPoint>& series, qint64 minimum) {
    m_series = series;
    m_minimum = minimum;
    QString said;
    if (!series.empty()) {
        const auto lowest = std::min_element(
            series.begin(), series.end(),
            [](const StockPoint& a, const StockPoint& b) { return a.stock < b.stock; });
        said = u"%1 now, the least was %2 on %3"_s.arg(series.back().stock)
                   .arg(lowest->stock)
                   .arg(values::format(lowest->date, u"Short Date"));
    }
    if (minimum > 0)
        said += u", the minimum is %1"_s.arg(minimum);
    setAccessibleDescription(said);
    setToolTip(said);
    update();
}

void StockChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (m_series.empty())
        return;
    qint64 most = std::max<qint64>(m_minimum, 1);
    for (const StockPoint& point : m_series)
        most = std::max(most, point.stock);
    const QFontMetrics letters = fontMetrics();
    const int left = letters.horizontalAdvance(QString::number(most)) + 10;
    const QRectF field =
        QRectF(rect()).adjusted(left, letters.height() / 2.0 + 4, -8, -letters.height() - 6);
    const QDate first = m_series.front().date;
    const double days =
        std::max<double>(1, static_cast<double>(first.daysTo(m_series.back().date)));
    const auto x = [&](const QDate& date) {
        return field.left() + field.width() * static_cast<double>(first.daysTo(date)) / days;
    };
    const auto y = [&](qint64 stock) {
        return field.bottom() -
               field.height() * static_cast<double>(stock) / static_cast<double>(most);
    };
    painter.setPen(palette().color(QPalette::Text));
    const auto label = [&](qint64 stock) {
        painter.drawText(QRectF(0, y(stock) - letters.height() / 2.0, left - 5, letters.height()),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(stock));
    };
    label(most);
    label(0);
    const QRectF below(field.left(), field.bottom() + 2, field.width(), letters.height());
    painter.drawText(below, Qt::AlignLeft, values::format(first, u"Short Date"));
    painter.drawText(below, Qt::AlignRight, values::format(m_series.back().date, u"Short Date"));
    painter.drawLine(field.bottomLeft(), field.bottomRight());
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF steps;
    for (const StockPoint& point : m_series) {
        if (!steps.isEmpty())
            steps << QPointF(x(point.date), steps.last().y());
        steps << QPointF(x(point.date), y(point.stock));
    }
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawPolyline(steps);
    if (m_minimum <= 0)
        return;
    painter.setPen(QPen(QColor(0xd0, 0x40, 0x40), 1.5, Qt::DashLine));
    painter.drawLine(QPointF(field.left(), y(m_minimum)), QPointF(field.right(), y(m_minimum)));
}

StockPanel::StockPanel(QWidget* parent) : QWidget(parent) {
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(0, 0, 0, 0);
    down->addWidget(new QLabel(u"Stock over time (dashed: minimum)"_s, this));
    m_chart = new StockChart(this);
    down->addWidget(m_chart, 1);
    lblOnOrder = screen::named(new QLabel(this), u"lblOnOrder"_s);
    down->addWidget(lblOnOrder);
    sprOnOrder = screen::named(new controls::Grid(this), u"sprOnOrder"_s, u"On order"_s);
    using Kind = controls::GridColumn::Kind;
    sprOnOrder->setColumns({{u"PO"_s, 7, Kind::Number},
                            {.title = u"Vendor"_s, .characters = 18, .stretches = true},
                            {u"Required"_s, 10},
                            {u"To Come"_s, 8, Kind::Number}});
    sprOnOrder->setMinimumHeight(110);
    down->addWidget(sprOnOrder, 1);
}

void StockPanel::show(const StockOutlook& outlook, const Item& item) {
    m_chart->show(outlook.series, item.flagQuantity);
    qint64 sum = 0;
    std::vector<QStringList> rows;
    for (const OnOrder& line : outlook.orders) {
        sum += line.quantity;
        rows.push_back({QString::number(line.poNumber), line.vendor,
                        line.required ? values::format(*line.required, u"Short Date") : QString(),
                        QString::number(line.quantity)});
    }
    sprOnOrder->setRows(std::move(rows));
    lblOnOrder->setText(sum == 0 ? u"Nothing on order"_s
                                 : u"On order: %1 %2"_s.arg(sum).arg(item.units));
}

} // namespace inventory
