#include "platform/controls/DropMenu.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "scheduling/ChartLooks.h"
#include "scheduling/frmSchedule.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace scheduling {

frmSchedule::frmSchedule()
    : ChartForm(QString::fromLatin1(formName), u"Schedule"_s, u"Job schedule"_s),
      fraSelect(new JobSelection(this)), ctDropMenu1(new controls::DropMenu(this)),
      m_chart(ctSchedule->model()), m_load(ctSchedule->model(), m_chart) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    outside->addLayout(head);
    head->addWidget(fraSelect, 2);
    head->addWidget(datesPane());
    head->addWidget(viewPane());
    head->addWidget(movePane());
    addChart(outside);
    makeButtons(outside);
    wire();
    wireChart();
}

QWidget* frmSchedule::datesPane() {
    auto* pane = new QGroupBox(u"Dates"_s, this);
    pane->setObjectName(u"fraDates"_s);
    auto* grid = new QGridLayout(pane);
    const auto line = [&](int row, QLabel*& caption, controls::DateField*& field,
                          controls::DateField*& lock, const QString& name, const QString& text) {
        caption = new QLabel(text + u':', pane);
        field = screen::named(new controls::DateField(pane), u"txtJob"_s + name, text);
        lock = screen::named(new controls::DateField(pane), u"txtLock"_s + name, text);
        lock->setLocked(true);
        for (controls::DateField* one : {field, lock})
            one->setMinimumWidth(one->fontMetrics().averageCharWidth() * 15 + 16);
        grid->addWidget(caption, row, 0);
        grid->addWidget(field, row, 1);
        grid->addWidget(lock, row, 2);
    };
    line(0, lblDateIn, txtJobDateIn, txtLockDateIn, u"DateIn"_s, u"Date In"_s);
    line(1, lblDueDate, txtJobDueDate, txtLockDueDate, u"DueDate"_s, u"Due Date"_s);
    return pane;
}

QWidget* frmSchedule::viewPane() {
    auto* pane = new QGroupBox(u"View"_s, this);
    pane->setObjectName(u"fraView"_s);
    screen::Fields fields(pane);
    cmbSizes = fields.listCombo(u"cmbSizes"_s, u"&Zoom:"_s);
    cmbRulerDiv = fields.listCombo(u"cmbRulerDiv"_s, u"Displa&y:"_s);
    joinLooks(*ctSchedule, *cmbSizes, *cmbRulerDiv, ZoomOrder::NearestFirst);
    return pane;
}

QWidget* frmSchedule::movePane() {
    auto* pane = new QGroupBox(u"Moving Entries"_s, this);
    pane->setObjectName(u"fraMove"_s);
    screen::Fields fields(pane);
    chkMultiMove = fields.check(u"chkMultiMove"_s, u"Enable &Multi-Move"_s);
    chkMultiResize = fields.check(u"chkMultiResize"_s, u"Enable Multi-Resize"_s);
    fields.nextColumn();
    optDate = fields.option(u"optDate"_s, u"Move By Date"_s);
    optSeq = fields.option(u"optSeq"_s, u"Move By Sequence"_s);
    optDate->setChecked(true);
    return pane;
}

void frmSchedule::makeButtons(QBoxLayout* inside) {
    auto* row = new QHBoxLayout;
    inside->addLayout(row);
    const auto add = [&](const QString& name, const QString& caption, auto handler) {
        QPushButton* button = addButton(row, name, caption);
        on(button, handler);
        return button;
    };
    add(u"cmdEdit"_s, u"Ed&it Schedule"_s, &frmSchedule::cmdEdit_Click);
    add(u"cmdSave"_s, u"&Save"_s, &frmSchedule::cmdSave_Click);
    add(u"cmdCancel"_s, u"&Cancel"_s, &frmSchedule::cmdCancel_Click);
    add(u"cmdAddEntry"_s, u"&New Vs. Load"_s, &frmSchedule::cmdAddEntry_Click);
    add(u"cmdEditEntry"_s, u"&Edit Vs. Load"_s, &frmSchedule::cmdEditEntry_Click);
    add(u"cmdDeleteEntry"_s, u"&Delete Entry"_s, &frmSchedule::cmdDeleteEntry_Click);
    add(u"cmdFit"_s, u"&Fit"_s, &frmSchedule::cmdFit_Click)
        ->setToolTip(u"Places the job's entries one after another into free hours of their "
                     "departments. Ctrl+Z takes it back."_s);
    const auto step = [&](const QString& name, const QString& caption, const QKeySequence& key,
                          auto handler) {
        add(name, caption, handler)->setToolTip(key.toString(QKeySequence::NativeText));
        // Not the button's own, which would take keys that follow fast for one.
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        on(shortcut, &QShortcut::activated, [this, handler] { (this->*handler)(); });
    };
    step(u"cmdUndo"_s, u"Undo"_s, QKeySequence(Qt::CTRL | Qt::Key_Z), &frmSchedule::cmdUndo_Click);
    step(u"cmdRedo"_s, u"Redo"_s, QKeySequence(Qt::CTRL | Qt::Key_Y), &frmSchedule::cmdRedo_Click);
    row->addStretch(1);
    add(u"cmdViewer"_s, u"Schedule &Viewer"_s, &frmSchedule::cmdViewer_Click);
    add(u"cmdQryRpt"_s, u"&Query/Report"_s, &frmSchedule::cmdQryRpt_Click);
    add(u"cmdQuery"_s, u"Quick &Report Shown"_s, &frmSchedule::cmdQuery_Click);
    add(u"cmdDone"_s, u"D&one"_s, [this] { unload(); });
}

} // namespace scheduling
