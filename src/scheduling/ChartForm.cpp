#include "scheduling/ChartForm.h"

#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "scheduling/ChartLooks.h"

#include <QBoxLayout>

namespace scheduling {

ChartForm::ChartForm(const QString& name, const QString& caption, const QString& spoken)
    : Form(name, caption),
      ctSchedule(screen::named(new gantt::ChartView(this), u"ctSchedule"_s, spoken)),
      ctLoad(screen::named(new gantt::LoadStrip(ctSchedule, this), u"ctLoad"_s,
                           u"Load of the departments"_s)) {
    ctSchedule->model().addColumn(u"Operation"_s);
    ctSchedule->model().setReadOnly(true);
    ctLoad->workOf = [this](int line, int day, int days) {
        return m_load.workOf(m_load.departments().at(static_cast<size_t>(line)), day, days);
    };
}

void ChartForm::addChart(QBoxLayout* inside) {
    // Tab comes to them behind all that stands above.
    for (QWidget* widget : {static_cast<QWidget*>(ctSchedule), static_cast<QWidget*>(ctLoad)}) {
        widget->setParent(nullptr);
        widget->setParent(this);
    }
    inside->addWidget(ctSchedule, 1);
    inside->addWidget(ctLoad);
    ctLoad->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
}

QPushButton* ChartForm::addButton(QBoxLayout* inside, const QString& name, const QString& caption) {
    auto* button = screen::named(new QPushButton(caption, this), name);
    button->setAutoDefault(false);
    inside->addWidget(button, 0, Qt::AlignBottom);
    return button;
}

void ChartForm::showLoad(LoadTable load) {
    m_load = std::move(load);
    ctLoad->setLines(m_load.firstDay(), linesOf(m_load));
}

} // namespace scheduling
