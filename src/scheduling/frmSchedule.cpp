#include "scheduling/frmSchedule.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/HistoryKeys.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "scheduling/ChartLooks.h"
#include "scheduling/Dialogs.h"
#include "scheduling/Fit.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace scheduling {

using gantt::State;
using screen::Answer;
using screen::Buttons;
using screen::Forms;
using screen::Icon;

namespace {

const QString systemMessage = u"System Message"_s;

void say(const QString& text, Icon icon = Icon::Exclamation) {
    screen::MsgBox(text, Buttons::Ok, icon, systemMessage);
}

void expect(const QStringList& selects) {
    core::MainDatabase().expect({selects.cbegin(), selects.cend()});
}

/// The days that a chart shows for the dates of its fields.
std::pair<QDate, QDate> rangeOf(const Limits& dates) {
    const QDate first = dates.dateIn.value_or(dates.dueDate.value_or(values::today()));
    return {first, dates.dueDate.value_or(first.addDays(30))};
}

} // namespace

// Opening

void frmSchedule::Form_Load() {
    const screen::BusyPointer busy;
    jet::Database& database = core::MainDatabase();
    const QString names =
        u"SELECT DISTINCT Customer.CustID AS Custid, Customer.Company AS Company, Job.Custid FROM "
        "Customer, Job WHERE Customer.CustID = Job.CustID AND Job.Shipped = FALSE ORDER BY "
        "Company"_s;
    const auto* jobScreen = Forms::find<core::RecordScreen>(u"frmJob"_s);
    const qint64 jobNo = jobScreen ? jobScreen->currentKey() : 0;
    const QString ofJob =
        u"SELECT CustID, JobDateIn, JobDueDate FROM Job WHERE JobNo = "_s + QString::number(jobNo);
    expect(QStringList{names, ofJob} << capacitySelects(values::today()));
    jet::Recordset customers = database.openRecordset(names, jet::RecordsetType::Snapshot);
    if (customers.isEmpty()) {
        say(u"You must have at least one Customer with at least one active job."_s);
        refuse();
        return;
    }
    fraSelect->setCustomers(customers);
    m_capacity = loadCapacity(database, values::today());
    showDates({});
    setMode(false);
    if (!jobScreen)
        return;
    if (jobScreen->mode().compare(u"BROWSE", Qt::CaseInsensitive) != 0) {
        say(u"The job module must be in browse mode to use the scheduler."_s);
        refuse();
        return;
    }
    const jet::Recordset row = database.openRecordset(ofJob, jet::RecordsetType::Snapshot);
    if (jobNo == 0 || row.isEmpty())
        return;
    const qint64 custId = row[u"CustID"].toLong();
    const auto [first, last] = rangeOf({row[u"JobDateIn"].toDate(), row[u"JobDueDate"].toDate()});
    expect(JobSelection::selects(custId) << plannedSelect(first, last));
    const auto job = loadJob(database, jobNo);
    fraSelect->showCustomer(database, custId);
    fraSelect->chooseJob(jobNo);
    // One that was shipped meanwhile isn't among them.
    if (job && fraSelect->isChosen())
        show({*job});
}

void frmSchedule::wire() {
    on(fraSelect->customerChosen, [this](qint64 custId) {
        expect(JobSelection::selects(custId));
        fraSelect->showCustomer(core::MainDatabase(), custId);
        show();
    });
    on(fraSelect->chosen, [this] { show(); });
    for (QCheckBox* box : {chkMultiMove, chkMultiResize})
        on(box, &frmSchedule::arrange);
    for (controls::DateField* field : {txtJobDateIn, txtJobDueDate}) {
        on(field->changed, &frmSchedule::dateChanged);
        on(field->left, [this] { m_typing.reset(); });
        field->installEventFilter(this);
    }
}

void frmSchedule::wireChart() {
    ctSchedule->followers = [this](int row, int bar, const gantt::Span& before,
                                   const gantt::Span& after) {
        return multiMove().followers(ctSchedule->model(), row, bar, before, after);
    };
    on(ctSchedule->barSelected, [this](int, int) { arrange(); });
    on(ctSchedule->rowSelected, [this](int) { arrange(); });
    on(ctSchedule->selectionLost, &frmSchedule::arrange);
    on(ctSchedule->doubleClicked, [this](int row, int bar) { editEntry(row, bar); });
    on(ctSchedule->keyPressed, [this](int) { cmdDeleteEntry_Click(); });
    on(ctSchedule->menuRequested, [this](QPoint place) { openMenu(place); });
    on(ctSchedule->dragged, &frmSchedule::followLoad);
    on(ctSchedule->model().changed, [this] {
        if (m_showing)
            return;
        followLoad();
        arrange();
    });
    on(ctSchedule->model().selectionChanged, &frmSchedule::arrange);
}

bool frmSchedule::Form_QueryUnload() {
    if (!m_editing)
        return true;
    switch (screen::MsgBox(u"Save changes to Job Schedule before closing?"_s, Buttons::YesNoCancel,
                           Icon::Question, systemMessage)) {
    case Answer::Yes:
        return save();
    case Answer::No:
        return true;
    default:
        return false;
    }
}

// Showing

void frmSchedule::show() {
    const screen::BusyPointer busy;
    jet::Database& database = core::MainDatabase();
    // What is read again has mostly kept its dates.
    const gantt::Model& model = ctSchedule->model();
    if (fraSelect->isChosen() && !m_chart.jobs().empty())
        expect({plannedSelect(model.firstDay(), model.lastDay())});
    std::vector<ScheduledJob> jobs;
    if (fraSelect->byOrder() && fraSelect->isChosen())
        jobs = loadOrder(database, fraSelect->order(), fraSelect->customer());
    else if (auto job =
                 fraSelect->isChosen() ? loadJob(database, fraSelect->jobNo()) : std::nullopt)
        jobs.push_back(std::move(*job));
    show(jobs);
}

void frmSchedule::show(const std::vector<ScheduledJob>& jobs) {
    m_showing = true;
    m_typing.reset();
    m_limits.clear();
    for (const ScheduledJob& job : jobs)
        m_limits.emplace_back(job.jobNo, job.limits);
    if (jobs.empty()) {
        m_chart.clear();
        showDates({});
    } else {
        showLooks(jobs.front());
        showDates(jobs.front().limits);
        fraSelect->byOrder() ? m_chart.showOrder(jobs) : m_chart.showJob(jobs.front());
    }
    m_load.read(core::MainDatabase(), m_capacity);
    m_showing = false;
    followLoad();
    arrange();
}

void frmSchedule::showLooks(const ScheduledJob& job) {
    if (job.zoom && *job.zoom >= 0 && *job.zoom < cmbSizes->count())
        cmbSizes->setCurrentIndex(*job.zoom);
    if (job.period && *job.period >= 0 && *job.period < cmbRulerDiv->count())
        cmbRulerDiv->setCurrentIndex(*job.period);
}

void frmSchedule::showDates(const Limits& limits) {
    setDates(limits);
    txtLockDateIn->setDate(limits.dateIn);
    txtLockDueDate->setDate(limits.dueDate);
    const auto [first, last] = rangeOf(limits);
    ctSchedule->model().setViewRange(first, last);
    ctSchedule->showMoment(gantt::minuteOf(first));
}

void frmSchedule::setDates(const Limits& dates) {
    m_dates = dates;
    txtJobDateIn->setDate(dates.dateIn);
    txtJobDueDate->setDate(dates.dueDate);
}

void frmSchedule::dateChanged() {
    if (m_showing || !m_editing)
        return;
    const Limits now{txtJobDateIn->date(), txtJobDueDate->date()};
    if (m_typing) {
        m_typing->after = now;
    } else {
        auto step = std::make_shared<DateStep>(DateStep{m_dates, now});
        ctSchedule->model().note([this, step](bool again) {
            const QScopedValueRollback showing(m_showing, true);
            setDates(again ? step->after : step->before);
            showRange(m_dates);
        });
        m_typing = std::move(step);
    }
    m_dates = now;
    showRange(now);
    followLoad();
}

/// The chart for the dates of the fields, in edit.
void frmSchedule::showRange(const Limits& dates) {
    // While a year is being typed it may be any.
    const auto isPlausible = [](const std::optional<QDate>& date) {
        return date && date->year() >= 1980 && date->year() < 2100;
    };
    if (!isPlausible(dates.dateIn) || !isPlausible(dates.dueDate))
        return;
    ctSchedule->model().setViewRange(*dates.dateIn, *dates.dueDate);
    if (fraSelect->byOrder())
        m_chart.redrawBlocks(m_limits);
    m_load.read(core::MainDatabase(), m_capacity);
}

bool frmSchedule::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (controls::isUndo(*press) || controls::isRedo(*press)) {
            event->ignore();
            return true;
        }
    }
    return ChartForm::eventFilter(watched, event);
}

void frmSchedule::followLoad() {
    showLoad(m_load.whole(ctSchedule->moving()));
}

// Modes

void frmSchedule::setMode(bool editing) {
    m_editing = editing;
    ctSchedule->model().setReadOnly(!editing);
    for (QWidget* widget : {static_cast<QWidget*>(txtJobDateIn),
                            static_cast<QWidget*>(txtJobDueDate), control(u"cmdSave"_s),
                            control(u"cmdCancel"_s), control(u"cmdUndo"_s), control(u"cmdRedo"_s)})
        widget->setVisible(editing);
    for (QWidget* widget : {static_cast<QWidget*>(txtLockDateIn),
                            static_cast<QWidget*>(txtLockDueDate), control(u"cmdEdit"_s)})
        widget->setVisible(!editing);
    lblDateIn->setBuddy(editing ? txtJobDateIn : txtLockDateIn);
    lblDueDate->setBuddy(editing ? txtJobDueDate : txtLockDueDate);
    setDefaultButton(control<QPushButton>(editing ? u"cmdSave"_s : u"cmdDone"_s));
    // Cancel drops a plan without a question: not by a key that also ends a drag.
    setCancelButton(editing ? nullptr : control<QPushButton>(u"cmdDone"_s));
    arrange();
}

void frmSchedule::arrange() {
    const gantt::Model& model = ctSchedule->model();
    const int row = model.selectedRow();
    const int bar = model.selectedBar();
    fraSelect->setEnabled(!m_editing);
    for (const char16_t* name : {u"cmdQuery", u"cmdQryRpt"})
        control(QString::fromUtf16(name))->setEnabled(!m_editing);
    if (!Forms::isKnown(u"frmScheduleQuery"_s))
        control(u"cmdQryRpt"_s)->setEnabled(false);
    lblDateIn->setText(fraSelect->byOrder() ? u"View Start:"_s : u"Date In:"_s);
    lblDueDate->setText(fraSelect->byOrder() ? u"View End:"_s : u"Due Date:"_s);
    chkMultiMove->setEnabled(m_editing);
    for (QWidget* widget : {static_cast<QWidget*>(chkMultiResize), static_cast<QWidget*>(optSeq),
                            static_cast<QWidget*>(optDate)})
        widget->setEnabled(m_editing && chkMultiMove->isChecked());
    control(u"cmdAddEntry"_s)->setEnabled(m_editing && m_chart.isOperation(row));
    control(u"cmdEditEntry"_s)->setEnabled(m_editing && mayEdit(row, bar));
    control(u"cmdDeleteEntry"_s)->setEnabled(m_editing && mayEdit(row, bar));
    control(u"cmdFit"_s)->setEnabled(m_editing && !m_chart.jobs().empty());
    control(u"cmdUndo"_s)->setEnabled(m_editing && model.canUndo());
    control(u"cmdRedo"_s)->setEnabled(m_editing && model.canRedo());
}

void frmSchedule::cmdEdit_Click() {
    if (!fraSelect->isChosen())
        return;
    // What another station has saved since is worked on, not what was read when the job was chosen.
    show();
    if (m_chart.jobs().empty())
        return;
    setMode(true);
    ctSchedule->setFocus();
}

void frmSchedule::cmdCancel_Click() {
    setMode(false);
    show();
    control(u"cmdEdit"_s)->setFocus();
}

// Entries

MultiMove frmSchedule::multiMove() const {
    return {.enabled = chkMultiMove->isChecked(),
            .resize = chkMultiResize->isChecked(),
            .bySequence = optSeq->isChecked()};
}

bool frmSchedule::mayEdit(int row, int bar) const {
    return row > 0 && bar > 0 && ctSchedule->model().bar(row, bar).style == 0 &&
           ctSchedule->model().bar(row, bar).state != State::Deleted;
}

std::vector<Entry> frmSchedule::shownEntries() const {
    std::vector<Entry> entries;
    const gantt::Model& model = ctSchedule->model();
    for (int row = 1; row <= model.rowCount(); ++row) {
        for (int bar = 1; bar <= model.barCount(row); ++bar) {
            if (mayEdit(row, bar) && m_chart.isOperation(row))
                entries.push_back(m_chart.entry(row, bar));
        }
    }
    return entries;
}

QHash<qint64, Limits> frmSchedule::limitsNow() const {
    QHash<qint64, Limits> limits;
    for (const auto& [jobNo, dates] : m_limits)
        limits.insert(jobNo, dates);
    if (!fraSelect->byOrder() && !m_limits.empty())
        limits[m_limits.front().first] = {txtJobDateIn->date(), txtJobDueDate->date()};
    return limits;
}

void frmSchedule::cmdAddEntry_Click() {
    const int row = ctSchedule->model().selectedRow();
    if (!m_editing || !m_chart.isOperation(row))
        return;
    editEntry(row, 0);
}

void frmSchedule::cmdEditEntry_Click() {
    editEntry(ctSchedule->model().selectedRow(), ctSchedule->model().selectedBar());
}

/// The dialog on an entry, or on a new one where `bar` is 0.
void frmSchedule::editEntry(int row, int bar) {
    if (!m_editing || (bar != 0 && !mayEdit(row, bar)))
        return;
    const ChartRow& of = m_chart.row(row);
    EntryDialog::Request request;
    request.jobNo = of.jobNo;
    request.seqNo = of.seqNo;
    request.operation = of.operation;
    request.limits = limitsNow().value(of.jobNo);
    request.inOrder = fraSelect->byOrder();
    request.order = fraSelect->byOrder() ? fraSelect->order() : QString();
    request.shown = shownEntries();
    request.row = row;
    request.number = bar != 0 ? bar : ctSchedule->model().barCount(row) + 1;
    if (bar != 0) {
        request.entry = m_chart.entry(row, bar);
    } else {
        request.entry.jobNo = of.jobNo;
        request.entry.seqNo = of.seqNo;
        request.entry.operNo = of.operation.operNo;
        const QDate first = request.limits.dateIn.value_or(ctSchedule->model().firstDay());
        request.entry.span = {gantt::minuteOf(first), gantt::minuteOf(first)};
    }
    const auto entered =
        Forms::dialog<EntryDialog>(bar == 0 ? u"frmScheduleAdd"_s : u"frmScheduleEdit"_s)
            ->ask(request);
    if (!entered)
        return;
    if (bar == 0)
        bar = m_chart.addEntry(row, *entered);
    else
        m_chart.changeEntry(row, bar, *entered);
    ctSchedule->model().select(row, bar);
    ctSchedule->ensureVisible(row, bar);
    ctSchedule->setFocus();
}

void frmSchedule::cmdDeleteEntry_Click() {
    gantt::Model& model = ctSchedule->model();
    const int row = model.selectedRow();
    const int bar = model.selectedBar();
    if (!m_editing || !mayEdit(row, bar))
        return;
    m_chart.deleteEntry(row, bar);
    model.select(row);
}

void frmSchedule::cmdFit_Click() {
    if (!m_editing || m_chart.jobs().empty())
        return;
    gantt::Model& model = ctSchedule->model();
    qint64 jobNo = m_chart.jobs().front();
    if (fraSelect->byOrder()) {
        if (model.selectedRow() == 0) {
            say(u"Please select the job whose entries are to be fitted."_s);
            return;
        }
        jobNo = m_chart.row(model.selectedRow()).jobNo;
    }
    const QString refusal =
        fit(model, m_chart, jobNo, limitsNow().value(jobNo), m_load.without(jobNo));
    if (!refusal.isEmpty())
        say(refusal);
    ctSchedule->setFocus();
}

void frmSchedule::cmdUndo_Click() {
    m_typing.reset();
    ctSchedule->undo();
}

void frmSchedule::cmdRedo_Click() {
    m_typing.reset();
    ctSchedule->redo();
}

void frmSchedule::openMenu(const QPoint& place) {
    const gantt::Model& model = ctSchedule->model();
    const int row = model.selectedRow();
    const int bar = model.selectedBar();
    ctDropMenu1->clear();
    if (m_editing) {
        if (m_chart.isOperation(row))
            ctDropMenu1->add(u"New vs. Load"_s,
                             [this] { guarded([this] { cmdAddEntry_Click(); }); });
        if (mayEdit(row, bar)) {
            ctDropMenu1->add(u"Edit vs. Load"_s,
                             [this] { guarded([this] { cmdEditEntry_Click(); }); });
            ctDropMenu1->add(u"Delete Entry"_s,
                             [this] { guarded([this] { cmdDeleteEntry_Click(); }); });
        } else if (bar > 0 && model.bar(row, bar).state == State::Deleted) {
            ctDropMenu1->add(u"Undo Delete"_s, [this, row, bar] {
                guarded([this, row, bar] { m_chart.undoDelete(row, bar); });
            });
        }
        ctDropMenu1->addSeparator();
    } else {
        ctDropMenu1->add(u"Edit Schedule"_s, [this] { guarded([this] { cmdEdit_Click(); }); });
    }
    ctDropMenu1->add(u"Schedule Viewer"_s, [this] { guarded([this] { cmdViewer_Click(); }); });
    ctDropMenu1->open(place);
}

// Saving

void frmSchedule::cmdSave_Click() {
    if (!save())
        return;
    setMode(false);
    show();
    control(u"cmdEdit"_s)->setFocus();
}

bool frmSchedule::save() {
    jet::Database& database = core::MainDatabase();
    std::optional<JobDates> dates;
    if (fraSelect->byOrder()) {
        m_limits = loadLimits(database, fraSelect->order(), fraSelect->customer());
    } else {
        if (!txtJobDateIn->date()) {
            complain(u"Please enter Date In!"_s, txtJobDateIn);
            return false;
        }
        if (!txtJobDueDate->date()) {
            complain(u"Please enter Due Date!"_s, txtJobDueDate);
            return false;
        }
        dates = JobDates{m_chart.jobs().front(), txtJobDateIn->date(), txtJobDueDate->date(),
                         cmbSizes->currentIndex(), cmbRulerDiv->currentIndex()};
    }
    if (const QString complaint = m_chart.firstOutOfRange(limitsNow()); !complaint.isEmpty()) {
        say(complaint);
        return false;
    }
    {
        const screen::BusyPointer busy;
        if (const auto conflict = saveEntries(database, m_chart.jobs(), m_chart.changes(), dates)) {
            say(*conflict);
            return false;
        }
    }
    if (dates) {
        auto* jobScreen = Forms::find<core::RecordScreen>(u"frmJob"_s);
        if (jobScreen && jobScreen->currentKey() == dates->jobNo)
            jobScreen->goToRecord(dates->jobNo);
    }
    return true;
}

// Other screens

void frmSchedule::cmdViewer_Click() {
    Forms::show(u"frmScheduleView"_s);
}

void frmSchedule::cmdQryRpt_Click() {
    Forms::show(u"frmScheduleQuery"_s);
}

void frmSchedule::cmdQuery_Click() {
    if (fraSelect->customer() == 0 || !fraSelect->isChosen())
        return;
    QString formula = u"{Job.JobNo} = "_s + QString::number(fraSelect->jobNo());
    if (fraSelect->byOrder()) {
        // A formula takes text in either quote.
        const QChar quote = fraSelect->order().contains(u'\'') ? u'"' : u'\'';
        formula = u"{Job.PONo} = "_s + quote + fraSelect->order() + quote +
                  u" AND {Job.CustID} = "_s + QString::number(fraSelect->customer());
    }
    core::launchDefaultReport(u"Schedule"_s, formula, u"Job Schedule Report"_s, this);
}

} // namespace scheduling
