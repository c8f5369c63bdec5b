#include "scheduling/frmScheduleView.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "scheduling/ChartLooks.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

namespace scheduling {

namespace {

constexpr int pageOfJobs = 60;
constexpr int pageOfDepartments = 20;
constexpr int daysAhead = 28;
constexpr gantt::Rgb headerColour = 0x4070b0;

gantt::Minute momentOf(const controls::DateField* date, const controls::TimeField* time) {
    return gantt::minuteOf(date->date().value_or(values::today()),
                           time->time().value_or(QTime(0, 0)).msecsSinceStartOfDay() / 60000);
}

} // namespace

frmScheduleView::frmScheduleView()
    : ChartForm(QString::fromLatin1(formName), u"Schedule Viewer"_s, u"Load of the shop"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    outside->addLayout(head);
    head->addWidget(rangePane());
    head->addWidget(optionPane());
    head->addWidget(gotoPane());
    head->addStretch(1);
    addChart(outside);

    auto* foot = new QHBoxLayout;
    outside->addLayout(foot);
    fraInfo = screen::frame(this, foot, u"fraInfo"_s, u"Information"_s);
    auto* info = new QHBoxLayout(fraInfo);
    lblJobNo = screen::named(new QLabel(fraInfo), u"lblJobNo"_s);
    lblJobNo->setTextFormat(Qt::PlainText);
    lblJobNo->setMinimumWidth(lblJobNo->fontMetrics().averageCharWidth() * 60);
    info->addWidget(lblJobNo);
    foot->addStretch(1);
    on(addButton(foot, u"cmdRefresh"_s, u"&Refresh"_s), &frmScheduleView::cmdRefresh_Click);
    auto* done = addButton(foot, u"cmdDone"_s, u"D&one"_s);
    on(done, [this] { unload(); });
    setCancelButton(done);

    for (QCheckBox* box : {chkGroup, chkJobs, chkOp})
        on(box, &frmScheduleView::read);
    on(ctSchedule->barSelected, &frmScheduleView::barClicked);
    connect(ctSchedule->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { guarded([this] { readMore(); }); });
}

QWidget* frmScheduleView::rangePane() {
    auto* pane = new QGroupBox(u"Range"_s, this);
    pane->setObjectName(u"fraRange"_s);
    auto* grid = new QGridLayout(pane);
    const auto line = [&](int row, const QString& caption, const QString& name,
                          controls::DateField*& date, controls::TimeField*& time) {
        auto* label = new QLabel(caption, pane);
        date = screen::named(new controls::DateField(pane), u"txt%1Date"_s.arg(name),
                             name + u" date"_s);
        time = screen::named(new controls::TimeField(pane), u"ct%1Time"_s.arg(name),
                             name + u" time"_s);
        date->setMinimumWidth(date->fontMetrics().averageCharWidth() * 14 + 16);
        time->setMinimumWidth(time->fontMetrics().averageCharWidth() * 10 + 16);
        time->setTime(QTime(0, 0));
        label->setBuddy(date);
        auto* go = screen::named(new QPushButton(u"Go"_s, pane), u"cmd%1DateGo"_s.arg(name),
                                 u"Go to the "_s + name.toLower() + u" date"_s);
        go->setAutoDefault(false);
        grid->addWidget(label, row, 0);
        grid->addWidget(date, row, 1);
        grid->addWidget(time, row, 2);
        grid->addWidget(go, row, 3);
        return go;
    };
    on(line(0, u"&Start:"_s, u"Start"_s, txtStartDate, ctStartTime),
       &frmScheduleView::cmdStartDateGo_Click);
    on(line(1, u"&End:"_s, u"End"_s, txtEndDate, ctEndTime), &frmScheduleView::cmdEndDateGo_Click);
    return pane;
}

QWidget* frmScheduleView::optionPane() {
    auto* pane = new QGroupBox(u"View Options"_s, this);
    pane->setObjectName(u"fraView"_s);
    screen::Fields fields(pane);
    cmbSizes = fields.listCombo(u"cmbSizes"_s, u"&Zoom:"_s);
    cmbRuler = fields.listCombo(u"cmbRuler"_s, u"R&uler:"_s);
    cmbRulerDiv = fields.listCombo(u"cmbRulerDiv"_s, u"Displa&y:"_s);
    joinLooks(*ctSchedule, *cmbSizes, *cmbRulerDiv, ZoomOrder::FarthestFirst, cmbRuler);
    fields.nextColumn();
    chkGroup = fields.check(u"chkGroup"_s, u"&Group by Department"_s);
    chkJobs = fields.check(u"chkJobs"_s, u"View Unscheduled &Jobs"_s);
    chkOp = fields.check(u"chkOp"_s, u"View Unscheduled O&perations"_s);
    return pane;
}

QWidget* frmScheduleView::gotoPane() {
    auto* pane = new QGroupBox(u"Go to"_s, this);
    pane->setObjectName(u"fraGoto"_s);
    screen::Fields fields(pane);
    dbcJob = fields.dataCombo(u"dbcJob"_s, u"Go to Jo&b"_s, {.characters = 8});
    dbcDept = fields.dataCombo(u"dbcDept"_s, u"Go to &Dept."_s, {.characters = 14});
    txtDate = fields.date(u"txtDate"_s, u"Go to D&ate"_s);
    fields.nextColumn();
    auto* go = new QPushButton(u"Go &To"_s, pane);
    go->setAutoDefault(false);
    fields.add(go, u"cmdGotoGo"_s);
    on(go, &frmScheduleView::cmdGotoGo_Click);
    return pane;
}

// Opening and closing

void frmScheduleView::Form_Load() {
    const screen::BusyPointer busy;
    txtStartDate->setDate(values::today());
    txtEndDate->setDate(values::today().addDays(daysAhead));
    const jet::Recordset departments =
        core::MainDatabase().openLater(u"SELECT * FROM OperDepartment ORDER BY Department"_s);
    cmdStartDateGo_Click();
    dbcDept->setRows(departments, u"Department"_s, u"ID"_s);
}

bool frmScheduleView::Form_QueryUnload() {
    emptyScheduleView(core::MainDatabase());
    return true;
}

// The range

/// Takes the range of the fields for the chart. False after a message.
bool frmScheduleView::takeRange() {
    const auto complainOf = [this](const QString& text, QWidget* field) {
        complain(text, field, screen::Icon::Exclamation, u"System Message"_s);
        return false;
    };
    if (!txtStartDate->date())
        return complainOf(u"Please enter a start date."_s, txtStartDate);
    if (!txtEndDate->date())
        return complainOf(u"Please enter an end date."_s, txtEndDate);
    if (*txtStartDate->date() > *txtEndDate->date())
        return complainOf(u"Start date cannot be after end date."_s, txtStartDate);
    fillScheduleView(core::MainDatabase(), *txtStartDate->date(), *txtEndDate->date());
    ctSchedule->model().setViewRange(*txtStartDate->date(), *txtEndDate->date());
    const QString jobs = u"SELECT JobNo FROM Job WHERE "_s +
                         jobsOfPeriod(*txtStartDate->date(), *txtEndDate->date()) +
                         u"ORDER BY JobNo DESC"_s;
    beginAnew();
    const QStringList all = capacitySelects(values::today()) << jobs << selects();
    core::MainDatabase().expect({all.cbegin(), all.cend()});
    m_capacity = loadCapacity(core::MainDatabase(), values::today());
    dbcJob->setRows(core::MainDatabase().openRecordset(jobs, jet::RecordsetType::Snapshot),
                    u"JobNo"_s, u"JobNo"_s);
    readRows();
    return true;
}

void frmScheduleView::cmdStartDateGo_Click() {
    const screen::BusyPointer busy;
    if (takeRange())
        ctSchedule->showMoment(momentOf(txtStartDate, ctStartTime));
}

void frmScheduleView::cmdEndDateGo_Click() {
    const screen::BusyPointer busy;
    if (!takeRange())
        return;
    // The end at the right edge.
    const gantt::TimeScale& scale = ctSchedule->scale();
    const int right = scale.xOf(
        momentOf(txtEndDate, ctEndTime) +
        (ctEndTime->time().value_or(QTime(0, 0)) == QTime(0, 0) ? gantt::minutesPerDay : 0));
    ctSchedule->showMoment(scale.at(std::max(0, right - ctSchedule->chartWidth())));
}

void frmScheduleView::cmdRefresh_Click() {
    const screen::BusyPointer busy;
    const gantt::Minute left = ctSchedule->leftMoment();
    if (takeRange())
        ctSchedule->showMoment(left);
}

// Rows

/// The load and the next page.
QStringList frmScheduleView::selects() const {
    const gantt::Model& model = ctSchedule->model();
    return QStringList(plannedSelect(model.firstDay(), model.lastDay()))
           << (chkGroup->isChecked() ? pageSelects(departmentsWanted())
                                     : pageSelects(jobsWanted(0)));
}

JobsWanted frmScheduleView::jobsWanted(qint64 downTo) const {
    const gantt::Model& model = ctSchedule->model();
    return {model.firstDay(), model.lastDay(), chkJobs->isChecked(), m_lastJob, pageOfJobs, downTo};
}

DepartmentsWanted frmScheduleView::departmentsWanted() const {
    const gantt::Model& model = ctSchedule->model();
    return {model.firstDay(), model.lastDay(), chkOp->isChecked(), m_lastDepartment,
            pageOfDepartments};
}

void frmScheduleView::read() {
    beginAnew();
    const QStringList all = selects();
    core::MainDatabase().expect({all.cbegin(), all.cend()});
    readRows();
}

/// The next page is the first one.
void frmScheduleView::beginAnew() {
    m_lastJob = 0;
    m_lastDepartment.clear();
    m_atEnd = false;
}

void frmScheduleView::readRows() {
    const screen::BusyPointer busy;
    const QScopedValueRollback reading(m_reading, true);
    gantt::Model& model = ctSchedule->model();
    model.clear();
    m_headerOf.clear();
    m_rowOf.clear();
    m_jobOf.clear();
    lblJobNo->clear();
    chkJobs->setEnabled(!chkGroup->isChecked());
    chkOp->setEnabled(chkGroup->isChecked());
    const std::vector<PlannedWork> planned =
        loadPlanned(core::MainDatabase(), model.firstDay(), model.lastDay(), {});
    readPage();

    std::vector<qint64> departments;
    for (auto it = m_capacity.departments.cbegin(); it != m_capacity.departments.cend(); ++it)
        departments.push_back(it.key());
    LoadTable load(m_capacity, departments, model.firstDay(), model.lastDay());
    for (const PlannedWork& work : planned)
        load.add(work);
    showLoad(std::move(load));
}

/// Adds the next page. False where there is none.
bool frmScheduleView::readPage(qint64 downTo) {
    if (m_atEnd)
        return false;
    jet::Database& database = core::MainDatabase();
    gantt::Model& model = ctSchedule->model();
    const gantt::Model::Change change(model);
    const gantt::Model::Unrecorded loading(model);
    const bool byJob = !chkGroup->isChecked();
    LoadPage page;
    if (byJob) {
        page = scheduling::readPage(database, jobsWanted(downTo));
        m_atEnd = downTo == 0 && std::ssize(page.groups) < pageOfJobs;
        if (!page.groups.empty())
            m_lastJob = page.groups.back().key;
    } else {
        page = scheduling::readPage(database, departmentsWanted());
        m_atEnd = std::ssize(page.groups) < pageOfDepartments;
        if (!page.groups.empty())
            m_lastDepartment = page.groups.back().title;
    }
    for (const LoadGroup& group : page.groups)
        addGroup(group);
    addEntries(page.entries, byJob);
    return !page.groups.empty();
}

/// Reads on when the last rows come into sight.
void frmScheduleView::readMore() {
    const QScrollBar* bar = ctSchedule->verticalScrollBar();
    // Rows that come and go move the bar as well.
    if (m_reading)
        return;
    const QScopedValueRollback reading(m_reading, true);
    if (!m_atEnd && bar->value() + bar->pageStep() >= bar->maximum())
        readOn();
}

/// The page behind those that are shown. False where there is none.
bool frmScheduleView::readOn(qint64 downTo) {
    const QStringList all =
        chkGroup->isChecked() ? pageSelects(departmentsWanted()) : pageSelects(jobsWanted(downTo));
    core::MainDatabase().expect({all.cbegin(), all.cend()});
    return readPage(downTo);
}

void frmScheduleView::addGroup(const LoadGroup& group) {
    gantt::Model& model = ctSchedule->model();
    const int header = model.addRow(QString());
    model.setCellText(header, 1, group.title);
    model.setHeaderRow(header, true);
    model.setRowColour(header, headerColour);
    m_headerOf.insert(group.key, header);
    const bool byJob = !chkGroup->isChecked();
    for (const LoadRow& operation : group.rows) {
        const int row = model.addRow(QString());
        model.setCellText(row, 1, operation.description);
        m_rowOf.insert({byJob ? group.key : 0, operation.operNo}, row);
    }
}

void frmScheduleView::addEntries(const std::vector<LoadEntry>& entries, bool byJob) {
    gantt::Model& model = ctSchedule->model();
    for (const LoadEntry& load : entries) {
        const int row = m_rowOf.value({byJob ? load.entry.jobNo : 0, load.entry.operNo});
        if (row == 0)
            continue;
        gantt::Bar bar = loadBar(load);
        if (!byJob && bar.text.isEmpty())
            bar.text = QString::number(load.entry.jobNo);
        m_jobOf.insert(bar.key, load.entry.jobNo);
        model.addBar(row, bar);
    }
}

void frmScheduleView::barClicked(int row, int bar) {
    const gantt::Bar& shown = ctSchedule->model().bar(row, bar);
    const qint64 jobNo = core::MainDatabase()
                             .lookup(u"SELECT JobNo FROM JobOperSchedule WHERE ID = "_s + shown.key)
                             .toLong();
    // Saved at another station meanwhile, the row has another number.
    lblJobNo->setText(u"Job No.: %1"_s.arg(jobNo != 0 ? jobNo : m_jobOf.value(shown.key)));
}

// Going somewhere

void frmScheduleView::goToRow(qint64 key) {
    const int row = m_headerOf.value(key);
    if (row == 0)
        return;
    ctSchedule->showRow(row);
    ctSchedule->model().select(row);
    ctSchedule->setFocus();
}

void frmScheduleView::cmdGotoGo_Click() {
    const screen::BusyPointer busy;
    if (const auto date = txtDate->date()) {
        const gantt::Model& model = ctSchedule->model();
        if (*date < model.firstDay() || *date > model.lastDay()) {
            complain(u"The date isn't in the range that is shown."_s, txtDate,
                     screen::Icon::Exclamation, u"System Message"_s);
            return;
        }
        ctSchedule->showMoment(gantt::minuteOf(*date));
    }
    const auto groupBy = [this](bool department) {
        if (chkGroup->isChecked() == department)
            return;
        chkGroup->setChecked(department);
        read();
    };
    const qint64 jobNo = dbcJob->boundText().toLongLong();
    if (!dbcJob->text().isEmpty() && jobNo == 0) {
        complain(u"That job isn't in the range that is shown."_s, dbcJob, screen::Icon::Exclamation,
                 u"System Message"_s);
        return;
    }
    if (jobNo != 0) {
        groupBy(false);
        if (!m_headerOf.contains(jobNo))
            readOn(jobNo);
        if (!m_headerOf.contains(jobNo) && !chkJobs->isChecked()) {
            // It has no entries: shown with the others of its kind.
            chkJobs->setChecked(true);
            read();
            if (!m_headerOf.contains(jobNo))
                readOn(jobNo);
        }
        goToRow(jobNo);
    } else if (const qint64 department = dbcDept->boundText().toLongLong(); department != 0) {
        groupBy(true);
        while (!m_headerOf.contains(department) && readOn()) {
        }
        goToRow(department);
    }
}

} // namespace scheduling
