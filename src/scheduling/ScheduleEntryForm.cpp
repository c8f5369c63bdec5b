#include "scheduling/ScheduleEntryForm.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "scheduling/ChartLooks.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace scheduling {

namespace {

const QString systemMessage = u"System Message"_s;
constexpr gantt::Rgb typedColour = 0x3070d0;

QTime timeOf(gantt::Minute moment) {
    return QTime::fromMSecsSinceStartOfDay(gantt::minuteOfDay(moment) * 60000);
}

gantt::Minute minuteOf(const QDate& date, const QTime& time) {
    return gantt::minuteOf(date, time.msecsSinceStartOfDay() / 60000);
}

} // namespace

frmScheduleAdd::frmScheduleAdd()
    : ScheduleEntryForm(formName, u"Add Schedule Entry"_s, u"View Options for Department "_s) {}

frmScheduleEdit::frmScheduleEdit()
    : ScheduleEntryForm(formName, u"Edit Schedule Entry"_s, u"Options for Department "_s) {}

// Layout

ScheduleEntryForm::ScheduleEntryForm(const char* name, const QString& caption,
                                     const QString& frameText)
    : ChartForm(QString::fromLatin1(name), caption, u"Load of the department's operations"_s),
      m_frameText(frameText) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    outside->addLayout(head);
    head->addWidget(entryPane());
    head->addWidget(notesPane(), 1);
    head->addWidget(infoPane());
    for (auto* pane : findChildren<QGroupBox*>())
        pane->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    fraView = new QGroupBox(frameText, this);
    fraView->setObjectName(u"fraView"_s);
    outside->addWidget(fraView);
    screen::Fields looks(fraView);
    cmbSizes = looks.listCombo(u"cmbSizes"_s, u"&Zoom:"_s);
    looks.nextColumn();
    cmbRuler = looks.listCombo(u"cmbRuler"_s, u"&Ruler:"_s);
    looks.nextColumn();
    cmbRulerDiv = looks.listCombo(u"cmbRulerDiv"_s, u"Displa&y:"_s);
    looks.nextColumn();
    chkViewUnScheduled =
        looks.check(u"chkViewUnScheduled"_s, u"&View Operations with no schedule entrys"_s);
    joinLooks(*ctSchedule, *cmbSizes, *cmbRulerDiv, ZoomOrder::FarthestFirst, cmbRuler);
    addChart(outside);
    on(addOkCancel(outside), &ScheduleEntryForm::cmdOK_Click);

    on(chkViewUnScheduled, &ScheduleEntryForm::rebuild);
    on(ctSchedule->barSelected, &ScheduleEntryForm::barClicked);
    for (controls::Field* field :
         std::initializer_list<controls::Field*>{txtStartDate, txtEndDate, ctStartTime, ctEndTime})
        on(field->changed, &ScheduleEntryForm::showTyped);
}

QWidget* ScheduleEntryForm::entryPane() {
    auto* pane = new QGroupBox(u"Entry"_s, this);
    pane->setObjectName(u"fraEntry"_s);
    screen::Fields fields(pane);
    const auto time = [&](const QString& name, const QString& label) {
        auto* field = new controls::TimeField(pane);
        field->setMinimumWidth(field->fontMetrics().averageCharWidth() * 11 + 16);
        fields.add(field, name, label);
        return field;
    };
    txtStartDate = fields.date(u"txtStartDate"_s, u"&Start Date:"_s);
    txtEndDate = fields.date(u"txtEndDate"_s, u"&End Date:"_s);
    fields.nextColumn();
    ctStartTime = time(u"ctStartTime"_s, u"Start &Time:"_s);
    ctEndTime = time(u"ctEndTime"_s, u"End Ti&me:"_s);
    // As a person fills them in: the start, then the end.
    setTabOrder(txtStartDate, ctStartTime);
    setTabOrder(ctStartTime, txtEndDate);
    setTabOrder(txtEndDate, ctEndTime);
    return pane;
}

QWidget* ScheduleEntryForm::notesPane() {
    auto* pane = new QGroupBox(u"Notes"_s, this);
    pane->setObjectName(u"fraNotes"_s);
    auto* layout = new QVBoxLayout(pane);
    screen::Fields notes(pane, layout);
    txtNotes = notes.memo(u"txtNotes"_s, u"&Notes:"_s, 2, 255);
    txtNotes->setMaximumHeight(txtNotes->minimumHeight());
    screen::Fields fields(pane, layout);
    constexpr std::pair<const char16_t*, const char16_t*> options[] = {
        {u"optLeft", u"&Left Align"},
        {u"optRight", u"Right Al&ign"},
        {u"optCenter", u"&Center"},
        {u"optRightBar", u"Right of &Bar"}};
    for (size_t i = 0; i < m_alignment.size(); ++i) {
        m_alignment[i] = fields.option(QString::fromUtf16(options[i].first),
                                       QString::fromUtf16(options[i].second));
        fields.nextColumn();
    }
    return pane;
}

QWidget* ScheduleEntryForm::infoPane() {
    auto* pane = new QGroupBox(u"Information"_s, this);
    pane->setObjectName(u"fraInfo"_s);
    screen::Fields fields(pane);
    lblCurrentJobNo = fields.shown(u"lblCurrentJobNo"_s, u"This Job No.:"_s);
    lblEstHours = fields.shown(u"lblEstHours"_s, u"Estimated Hours:"_s);
    lblJobNo = fields.shown(u"lblJobNo"_s, u"Selected Job No.:"_s);
    fields.nextColumn();
    lblStartDate = fields.shown(u"lblStartDate"_s, u"Start:"_s, 10);
    lblEndDate = fields.shown(u"lblEndDate"_s, u"End:"_s, 10);
    fields.nextColumn();
    lblStartTime = fields.shown(u"lblStartTime"_s, u"at"_s, 8);
    lblEndTime = fields.shown(u"lblEndTime"_s, u"at"_s, 8);
    return pane;
}

// Opening

std::optional<Entry> ScheduleEntryForm::ask(const Request& request) {
    m_request = request;
    m_result.reset();
    const QDate first = request.limits.dateIn.value_or(gantt::dateOf(request.entry.span.start));
    ctSchedule->model().setViewRange(first, request.limits.dueDate.value_or(first.addDays(30)));
    const QStringList selects = QStringList(statusSelect()) << departmentSelects(departmentWanted())
                                                            << capacitySelects(values::today());
    jet::Database& database = core::MainDatabase();
    database.expect({selects.cbegin(), selects.cend()});
    if (!mayContinue())
        return std::nullopt;
    lblCurrentJobNo->setText(QString::number(request.jobNo));
    lblEstHours->setText(values::format(request.operation.estimated.value_or(0), u"0.00"));
    m_capacity = loadCapacity(database, values::today());
    readDepartment();
    fillScheduleView(database, ctSchedule->model().firstDay(), ctSchedule->model().lastDay(),
                     request.order);
    showFields(request.entry);
    rebuild();
    ctSchedule->showMoment(gantt::minuteOf(gantt::dateOf(request.entry.span.start)));
    showModal();
    return m_result;
}

QString ScheduleEntryForm::statusSelect() const {
    return u"SELECT Status FROM JobOper WHERE JobNo = "_s + QString::number(m_request.jobNo) +
           u" AND SeqNo = "_s + QString::number(m_request.seqNo) + u" ORDER BY Status"_s;
}

DepartmentOf ScheduleEntryForm::departmentWanted() const {
    const gantt::Model& model = ctSchedule->model();
    return {m_request.operation.operNo, model.firstDay(), model.lastDay(), m_request.order};
}

/// Asks before working on an operation that is finished.
bool ScheduleEntryForm::mayContinue() const {
    return core::MainDatabase().lookup(statusSelect()).toText().trimmed() != u"F" ||
           screen::MsgBox(u"Operation has been marked as finished. Continue?"_s,
                          screen::Buttons::OkCancel, screen::Icon::Question,
                          systemMessage) == screen::Answer::Ok;
}

void ScheduleEntryForm::readDepartment() {
    LoadPage page = scheduling::readDepartment(core::MainDatabase(), departmentWanted());
    if (page.groups.empty()) {
        // Not one of the shop's own: its operation alone.
        m_department = 0;
        fraView->setTitle(m_frameText + u"(none)"_s);
        m_operations = {{m_request.operation.operNo, m_request.operation.description}};
    } else {
        m_department = page.groups.front().key;
        fraView->setTitle(m_frameText + page.groups.front().title);
        m_operations = std::move(page.groups.front().rows);
    }
    gatherLoad(std::move(page.entries));
}

/// The saved entries of the other jobs of the period, and those of the schedule's own chart as they
/// are there by now.
void ScheduleEntryForm::gatherLoad(std::vector<LoadEntry> saved) {
    m_entries = std::move(saved);
    const auto isOnChart = [this](qint64 jobNo) {
        return jobNo == m_request.jobNo ||
               std::any_of(m_request.shown.begin(), m_request.shown.end(),
                           [jobNo](const Entry& shown) { return shown.jobNo == jobNo; });
    };
    std::erase_if(m_entries, [&](const LoadEntry& load) { return isOnChart(load.entry.jobNo); });
    for (const Entry& shown : m_request.shown) {
        const bool isThis = m_request.entry.id != 0 ? shown.id == m_request.entry.id
                                                    : shown.saysTheSame(m_request.entry);
        if (!isThis)
            m_entries.push_back({shown, QString(), false});
    }
    const gantt::Model& model = ctSchedule->model();
    m_base =
        LoadTable(m_capacity, m_department == 0 ? std::vector<qint64>{} : std::vector{m_department},
                  model.firstDay(), model.lastDay());
    QHash<qint64, QString> names;
    for (const LoadRow& row : m_operations)
        names.insert(row.operNo, row.description);
    for (const LoadEntry& load : m_entries) {
        if (names.contains(load.entry.operNo))
            m_base.add(
                {m_department, load.entry.jobNo, names.value(load.entry.operNo), load.entry.span});
    }
}

void ScheduleEntryForm::showFields(const Entry& entry) {
    txtStartDate->setDate(gantt::dateOf(entry.span.start));
    txtEndDate->setDate(gantt::dateOf(entry.span.end));
    ctStartTime->setTime(timeOf(entry.span.start));
    ctEndTime->setTime(timeOf(entry.span.end));
    txtNotes->setText(entry.description);
    m_alignment[static_cast<size_t>(std::clamp(entry.textAlign, 0, 3))]->setChecked(true);
}

// The chart

std::optional<Entry> ScheduleEntryForm::typed() const {
    const auto start = txtStartDate->date();
    const auto end = txtEndDate->date();
    if (!start || !end || !ctStartTime->time() || !ctEndTime->time())
        return std::nullopt;
    Entry entry = m_request.entry;
    entry.span = {minuteOf(*start, *ctStartTime->time()), minuteOf(*end, *ctEndTime->time())};
    entry.description = txtNotes->text();
    for (size_t i = 0; i < m_alignment.size(); ++i) {
        if (m_alignment[i]->isChecked())
            entry.textAlign = static_cast<int>(i);
    }
    return entry;
}

void ScheduleEntryForm::rebuild() {
    gantt::Model& model = ctSchedule->model();
    const gantt::Model::Change change(model);
    model.clear();
    m_byKey.clear();
    m_typedBar = 0;
    QHash<qint64, int> rowOf;
    for (const LoadRow& operation : m_operations) {
        const bool hasEntries =
            std::any_of(m_entries.begin(), m_entries.end(), [&](const LoadEntry& load) {
                return load.entry.operNo == operation.operNo;
            });
        if (!hasEntries && !chkViewUnScheduled->isChecked() &&
            operation.operNo != m_request.operation.operNo)
            continue;
        const int row = model.addRow(QString());
        model.setCellText(row, 1, operation.description);
        rowOf.insert(operation.operNo, row);
    }
    int unsaved = 0;
    for (const LoadEntry& load : m_entries) {
        const int row = rowOf.value(load.entry.operNo);
        if (row == 0)
            continue;
        gantt::Bar bar = loadBar(load);
        if (load.entry.id == 0)
            bar.key = u"new %1"_s.arg(++unsaved);
        m_byKey.insert(bar.key, load.entry);
        model.addBar(row, bar);
    }
    model.forgetHistory();
    showTyped();
}

/// The entry on the chart, where the fields say it is.
void ScheduleEntryForm::showTyped() {
    gantt::Model& model = ctSchedule->model();
    LoadTable load = m_base;
    if (const auto place = model.find(m_typedBar))
        model.removeBar(place->first, place->second);
    const auto entry = typed();
    if (entry && entry->span.start <= entry->span.end) {
        for (int row = 1; row <= model.rowCount(); ++row) {
            if (model.cellText(row, 1) != m_request.operation.description)
                continue;
            gantt::Bar bar;
            bar.span = entry->span;
            bar.text = u"This entry"_s;
            bar.colour = typedColour;
            m_typedBar = model.bar(row, model.addBar(row, bar)).id;
            break;
        }
        load.add({m_department, m_request.jobNo, m_request.operation.description, entry->span});
    }
    showLoad(std::move(load));
}

void ScheduleEntryForm::barClicked(int row, int bar) {
    const gantt::Bar& shown = ctSchedule->model().bar(row, bar);
    const auto entry = m_byKey.constFind(shown.key);
    lblJobNo->setText(QString::number(entry == m_byKey.cend() ? m_request.jobNo : entry->jobNo));
    lblStartDate->setText(values::format(gantt::dateOf(shown.span.start), u"Short Date"));
    lblStartTime->setText(storedTime(gantt::minuteOfDay(shown.span.start)));
    lblEndDate->setText(values::format(gantt::dateOf(shown.span.end), u"Short Date"));
    lblEndTime->setText(storedTime(gantt::minuteOfDay(shown.span.end)));
}

// Closing

void ScheduleEntryForm::cmdOK_Click() {
    const QString complaint = entryComplaint(txtStartDate->date(), ctStartTime->time(),
                                             txtEndDate->date(), ctEndTime->time());
    if (!complaint.isEmpty()) {
        QWidget* field = txtStartDate;
        if (txtStartDate->date() && !ctStartTime->time())
            field = ctStartTime;
        else if (txtStartDate->date() && !txtEndDate->date())
            field = txtEndDate;
        else if (txtStartDate->date() && !ctEndTime->time())
            field = ctEndTime;
        complain(complaint, field, screen::Icon::Exclamation, systemMessage);
        return;
    }
    const Entry entry = *typed();
    const OutOfRange what = outOfRange(entry.span, m_request.limits);
    if (what != OutOfRange::No) {
        complain(
            rangeText(m_request.number, m_request.row, m_request.jobNo, what, m_request.inOrder),
            what == OutOfRange::TooEarly ? txtStartDate : txtEndDate, screen::Icon::Exclamation,
            systemMessage);
        return;
    }
    m_result = entry;
    hideModal();
}

} // namespace scheduling
