#include "timemgmt/frmTM.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/controls/Pictures.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "timemgmt/TimeChanged.h"
#include "timemgmt/TimeDeletion.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

namespace timemgmt {

using controls::GridColumn;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

QString noCriteria() {
    return u"Display Criteria - None"_s;
}

/// A reference to nothing shows as nothing.
QString reference(const jet::Value& number) {
    return number.toLong() == 0 ? QString() : number.toText();
}

controls::ListRow withPicture(controls::ListRow row, bool running) {
    row.icon = running ? controls::pictures::running() : controls::pictures::page();
    row.iconText = running ? u"Active"_s : u"Record"_s;
    return row;
}

std::vector<qint64> selectedIds(const controls::ListView& list) {
    std::vector<qint64> ids;
    for (const int row : list.selectedRows())
        ids.push_back(list.keyNumber(row));
    return ids;
}

} // namespace

frmTM::frmTM() : Form(QString::fromLatin1(formName), u"Time Management"_s) {
    auto* outside = new QVBoxLayout(this);
    fraMain = screen::frame(this, outside, u"fraMain"_s, noCriteria());
    makeCriteria(fraMain);
    makePages();
    makeButtons();
    resize(1000, 620);
}

void frmTM::makeCriteria(QGroupBox* frame) {
    auto* across = new QHBoxLayout(frame);
    screen::Fields fields(frame, across);
    m_employee = std::make_unique<EmployeeChoice>(*this, fields, u"Empl&oyee #:"_s, u"Na&me:"_s);
    cboType = fields.listCombo(u"cboType"_s, u"T&ype:"_s);
    for (const QString& choice : statusChoices())
        cboType->addRow(choice);
    cboType->setCurrentIndex(0);
    fields.keepTogether();

    auto* days = new QGridLayout;
    across->addSpacing(16);
    across->addLayout(days);
    const QString captions[] = {u"&User Defined Date Range:"_s, u"Pre-Named Date Ran&ge:"_s};
    for (int i = 0; i < 2; ++i) {
        optDisplay[i] =
            screen::named(new QRadioButton(captions[i], frame), u"optDisplay(%1)"_s.arg(i));
        days->addWidget(optDisplay[i], i, 0);
    }
    optDisplay[0]->setChecked(true);
    const auto date = [&](const QString& name, const QString& spoken, int column) {
        auto* field = screen::named(new controls::DateField(frame), name, spoken);
        field->setMinimumWidth(field->fontMetrics().averageCharWidth() * 14 + 16);
        days->addWidget(field, 0, column);
        return field;
    };
    dbcDate1 = date(u"dbcDate1"_s, u"Date, or first date"_s, 1);
    chkTO = screen::named(new QCheckBox(u"&TO"_s, frame), u"chkTO"_s);
    days->addWidget(chkTO, 0, 2);
    dbcDate2 = date(u"dbcDate2"_s, u"Last date"_s, 3);
    dbcDate2->setEnabled(false);
    cboCanned = screen::named(new controls::ListCombo(frame), u"cboCanned"_s, u"Pre-named range"_s);
    for (const QString& range : cannedRanges())
        cboCanned->addRow(range);
    cboCanned->clear();
    days->addWidget(cboCanned, 1, 1, 1, 3);
    chkShow = screen::named(new QPushButton(u"Click &Here to Show Records"_s, frame), u"chkShow"_s);
    chkShow->setCheckable(true);
    chkShow->setAutoDefault(false);
    chkShow->setMinimumWidth(chkShow->fontMetrics().averageCharWidth() * 34);
    days->addWidget(chkShow, 2, 0, 1, 4, Qt::AlignLeft);
    across->addStretch(1);
    setDefaultButton(chkShow);

    const std::vector<QWidget*> order{optDisplay[0], dbcDate1,  chkTO,  dbcDate2,
                                      optDisplay[1], cboCanned, chkShow};
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);

    on(optDisplay[0], [this] {
        dbcDate1->setFocus();
        criteriaChanged();
    });
    on(optDisplay[1], [this] {
        cboCanned->setFocus();
        criteriaChanged();
    });
    on(m_employee->changed, &frmTM::criteriaChanged);
    on(cboType->chosen, &frmTM::criteriaChanged);
    on(chkTO, [this] {
        dbcDate2->setEnabled(chkTO->isChecked());
        if (!chkTO->isChecked())
            dbcDate2->clear();
        criteriaChanged();
    });
    for (controls::DateField* field : {dbcDate1, dbcDate2}) {
        on(field->changed, [this] {
            if (!m_setting)
                optDisplay[0]->setChecked(true);
            criteriaChanged();
        });
    }
    on(cboCanned->chosen, [this] {
        optDisplay[1]->setChecked(true);
        criteriaChanged();
    });
    on(chkShow, &frmTM::chkShow_Click);
}

void frmTM::makePages() {
    constexpr auto number = GridColumn::Kind::Number;
    tab1 = screen::named(new QTabWidget(this), u"tab1"_s, u"Time records"_s);
    layout()->addWidget(tab1);
    static_cast<QVBoxLayout*>(layout())->setStretchFactor(tab1, 1);
    const auto makeList = [this](const QString& caption, const QString& name, const QString& spoken,
                                 std::vector<GridColumn> columns) {
        auto* inside = new QVBoxLayout(screen::tab(tab1, caption));
        auto* made = screen::named(new controls::ListView(this), name, spoken);
        made->setColumns(std::move(columns));
        made->setMultipleSelection(true);
        inside->addWidget(made);
        return made;
    };
    sprMain = makeList(u"Time &Log"_s, u"sprMain"_s, u"Work"_s,
                       {{u"Job"_s, 9},
                        {u"Status"_s, 7},
                        {u"Oper. #"_s, 8, number},
                        {u"Vendor"_s, 8, number},
                        {u"Oper. Time"_s, 11, number},
                        {u"Start Time"_s, 24},
                        {u"Suspend Time"_s, 24},
                        {.title = u"Finish Time"_s, .characters = 24, .stretches = true},
                        {u"Parts Done"_s, 10, number},
                        {u"Parts Scrap"_s, 11, number}});
    sprMain2 = makeList(u"&Sign-In/Out"_s, u"sprMain2"_s, u"Attendance"_s,
                        {{u"Sign-In Time"_s, 30}, {u"Sign-Out Time"_s, 30}});
    on(tab1, &QTabWidget::currentChanged, [this] {
        enableButtons();
        if (isShown())
            list()->setFocus();
    });
    on(sprMain->rowDoubleClicked, [this](int) { cmdEditParts_Click(); });
    on(sprMain2->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
}

void frmTM::makeButtons() {
    screen::ButtonBar bar(this, static_cast<QVBoxLayout*>(layout()));
    cmdNew = bar.button(u"cmdNew"_s, u"&New"_s);
    cmdEdit = bar.button(u"cmdEdit"_s, u"&Edit"_s);
    cmdEditParts = bar.button(u"cmdEditParts"_s, u"Edit &Parts"_s);
    cmdDelete = bar.button(u"cmdDelete"_s, u"&Delete"_s);
    bar.stretch();
    QPushButton* cmdPrintAll = bar.button(u"cmdPrintAll"_s, u"Quick Report &All"_s);
    cmdPrintScr = bar.button(u"cmdPrintScr"_s, u"Quick &Report Shown"_s);
    QPushButton* cmdList = bar.button(u"cmdList"_s, u"&Query/Report"_s);
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdNew, &frmTM::cmdNew_Click);
    on(cmdEdit, &frmTM::cmdEdit_Click);
    on(cmdEditParts, &frmTM::cmdEditParts_Click);
    on(cmdDelete, &frmTM::cmdDelete_Click);
    on(cmdPrintAll, &frmTM::cmdPrintAll_Click);
    on(cmdPrintScr, &frmTM::cmdPrintScr_Click);
    on(cmdList, [] { screen::Forms::show(u"frmTimeQuery"_s); });
    on(cmdClose, [this] { unload(); });
    setCancelButton(cmdClose);
    controls::offerInMenu(sprMain, {cmdNew, cmdEditParts, cmdDelete});
    controls::offerInMenu(sprMain2, {cmdNew, cmdEdit, cmdDelete});
    enableButtons();
}

// Opening and choosing

void frmTM::Form_Load() {
    fillEmployees();
}

void frmTM::Form_Activate() {
    reload();
}

void frmTM::fillEmployees() {
    const auto lists = core::MainDatabase().together(EmployeeChoice::lists(false));
    m_employee->fill(lists[0], lists[1]);
}

void frmTM::refreshLookup(const QString& table) {
    if (table == u"Employee")
        fillEmployees();
    else if (table == u"Timelog")
        reload();
}

void frmTM::showRecord(qint64 empId, const QDate& day, TimePage page, qint64 id) {
    {
        const QScopedValueRollback setting(m_setting, true);
        m_employee->choose(empId);
        optDisplay[0]->setChecked(true);
        chkTO->setChecked(false);
        dbcDate2->clear();
        dbcDate2->setEnabled(false);
        dbcDate1->setDate(day);
        cboType->setCurrentIndex(0);
    }
    tab1->setCurrentIndex(page == TimePage::Work ? 0 : 1);
    chkShow->setChecked(true);
    chkShow_Click();
    list()->clearSelection();
    list()->selectKey(u'T' + QString::number(id));
    list()->setFocus();
}

std::optional<TimeCriteria> frmTM::criteria() {
    const QString error = u"Error!"_s;
    TimeCriteria wanted{.empId = m_employee->empId(),
                        .pattern = statusPattern(cboType->currentIndex())};
    if (wanted.empId == 0) {
        complain(u"You have not selected an Employee!"_s, m_employee->number(), Icon::Exclamation,
                 error);
        return {};
    }
    if (optDisplay[1]->isChecked()) {
        if (cboCanned->currentIndex() < 0) {
            complain(u"You have not selected any Pre-Named Ranges!"_s, cboCanned, Icon::Exclamation,
                     error);
            return {};
        }
        std::tie(wanted.first, wanted.last) =
            cannedRange(cboCanned->currentIndex(), values::today());
        return wanted;
    }
    for (controls::DateField* field : {dbcDate1, dbcDate2}) {
        if (!field->isValid()) {
            complain(u"Please enter a date as month/day/year!"_s, field, Icon::Exclamation, error);
            return {};
        }
    }
    if (!dbcDate1->date()) {
        complain(u"You have not supplied any dates!"_s, dbcDate1, Icon::Exclamation, error);
        return {};
    }
    wanted.first = *dbcDate1->date();
    if (chkTO->isChecked())
        wanted.last = dbcDate2->date();
    return wanted;
}

/// What is shown always is what the criteria say.
void frmTM::criteriaChanged() {
    if (!m_setting && isShown())
        showNothing();
}

void frmTM::chkShow_Click() {
    const auto wanted = chkShow->isChecked() ? criteria() : std::nullopt;
    if (!wanted) {
        showNothing();
        return;
    }
    load(*wanted);
    list()->setFocus();
}

// Showing

bool frmTM::isShown() const {
    return m_shown.has_value();
}

TimePage frmTM::page() const {
    return tab1->currentIndex() == 0 ? TimePage::Work : TimePage::Attendance;
}

controls::ListView* frmTM::list() const {
    return page() == TimePage::Work ? sprMain : sprMain2;
}

void frmTM::enableButtons() {
    const bool work = page() == TimePage::Work;
    for (QPushButton* button : {cmdNew, cmdDelete, cmdPrintScr})
        button->setEnabled(isShown());
    cmdEdit->setEnabled(isShown() && !work);
    cmdEditParts->setEnabled(isShown() && work);
}

void frmTM::showNothing() {
    m_shown.reset();
    chkShow->setChecked(false);
    chkShow->setText(u"Click &Here to Show Records"_s);
    fraMain->setTitle(noCriteria());
    sprMain->clearRows();
    sprMain2->clearRows();
    enableButtons();
}

void frmTM::load(const TimeCriteria& wanted) {
    const screen::BusyPointer busy;
    fraMain->setTitle(u"Please Wait While Loading Records..."_s);
    fraMain->repaint();
    const TimeTexts texts = timeTexts(wanted);
    try {
        auto read = core::MainDatabase().together({texts.work, texts.attendance});
        m_shown = wanted;
        showRows(read[0], read[1]);
    } catch (...) {
        showNothing();
        throw;
    }
    chkShow->setText(u"Click &Here to Clear Records"_s);
    enableButtons();
}

void frmTM::showRows(jet::Recordset& work, jet::Recordset& attendance) {
    std::vector<controls::ListRow> rows;
    for (; !work.eof(); work.moveNext()) {
        const jet::Value hours = work[u"AccumTime"];
        const QString status = work.text(u"Status");
        rows.push_back(withPicture(
            {.key = u'T' + work.text(u"ID"),
             .texts = {work.text(u"JobNo"), status, work.text(u"OperNo"),
                       reference(work[u"CotrNo"]),
                       hours.isNull() ? QString() : values::format(hours.toDouble(), u"##0.00"),
                       work.text(u"StartDate"), work.text(u"SuspDate"), work.text(u"FinishDate"),
                       work.text(u"PartsQty"), work.text(u"PartsScrap")}},
            status.toUpper() == u"A"_s));
    }
    const auto worked = rows.size();
    sprMain->setRows(std::move(rows));
    rows.clear();
    for (; !attendance.eof(); attendance.moveNext()) {
        rows.push_back(
            withPicture({.key = u'T' + attendance.text(u"ID"),
                         .texts = {attendance.text(u"Sign_in"), attendance.text(u"Sign_out")}},
                        attendance[u"Sign_out"].isNull()));
    }
    fraMain->setTitle(QString::number(worked) + u" TimeLog Records and "_s +
                      QString::number(rows.size()) +
                      u" Sign-In Records found matching criteria."_s);
    sprMain2->setRows(std::move(rows));
}

void frmTM::reload() {
    if (m_shown)
        load(*m_shown);
}

// Correcting

void frmTM::cmdNew_Click() {
    const qint64 employee = m_employee->empId();
    const QString status =
        core::MainDatabase()
            .lookup(u"Select EmpStatus from Employee where EmpID = "_s + QString::number(employee))
            .toText();
    if (status.compare(u"Active", Qt::CaseInsensitive) != 0) {
        MsgBox(
            u"This Employee is Suspended or Terminated! You cannot add time for This Employee."_s,
            Buttons::Ok, Icon::Exclamation, u"Error"_s);
        return;
    }
    if (page() == TimePage::Attendance)
        screen::Forms::dialog<SignInDialog>(u"frmSignAddEdit"_s)->ShowForm(u"New"_s, employee, 0);
    else
        screen::Forms::dialog<NewTimeDialog>(u"frmNewTime"_s)->ShowForm(employee);
}

void frmTM::cmdEdit_Click() {
    if (!cmdEdit->isEnabled())
        return;
    const int row = sprMain2->selectedRow();
    if (row < 0) {
        MsgBox(u"A Sign-In record has to be selected to edit!"_s, Buttons::Ok, Icon::Exclamation,
               u"Nothing Selected."_s);
        return;
    }
    auto dialog = screen::Forms::dialog<SignInDialog>(u"frmSignAddEdit"_s);
    if (!dialog->ShowForm(u"Edit"_s, m_employee->empId(), sprMain2->keyNumber(row)))
        reload();
}

void frmTM::cmdEditParts_Click() {
    if (!cmdEditParts->isEnabled())
        return;
    const int row = sprMain->selectedRow();
    if (row < 0) {
        MsgBox(u"A Timelog record has to be selected to edit parts qty!"_s, Buttons::Ok,
               Icon::Exclamation, u"Nothing Selected."_s);
        return;
    }
    if (sprMain->rowText(row, 0) == u"0") // overhead has no parts
        return;
    auto dialog = screen::Forms::dialog<PartsDialog>(u"frmTimeEdit"_s);
    if (!dialog->ShowForm(sprMain->keyNumber(row)))
        reload();
}

void frmTM::cmdDelete_Click() {
    const std::vector<qint64> ids = selectedIds(*list());
    if (ids.empty()) {
        MsgBox(u"Nothing Selected To Delete!"_s, Buttons::Ok, Icon::Exclamation,
               u"Nothing Selected."_s);
        return;
    }
    if (!screen::confirmDeletion(u"Once Deleted, data will be unrecoverable.  Continue?"_s,
                                 u"Deleting Selected"_s, Icon::Question, Buttons::OkCancel))
        return;
    const bool work = page() == TimePage::Work;
    WorkDeleted deleted;
    {
        const screen::BusyPointer busy;
        if (work)
            deleted = DeleteWork(core::MainDatabase(), ids);
        else
            deleted.refusals = DeleteAttendance(core::MainDatabase(), ids);
        tellTimeChanged();
    }
    for (const QString& refusal : deleted.refusals)
        MsgBox(refusal, Buttons::Ok, Icon::Exclamation, work ? u"Warning!"_s : QString());
    for (const jobs::Notice& notice : deleted.notices)
        MsgBox(notice.text, Buttons::Ok, Icon::Information, notice.title);
}

// Printing

void frmTM::cmdPrintAll_Click() {
    core::launchDefaultReport(u"Time Management"_s, {}, u"Full TimeLog Report"_s, this);
}

void frmTM::cmdPrintScr_Click() {
    const TimeTexts texts = timeTexts(*m_shown);
    if (page() == TimePage::Work)
        core::launchDefaultReport(u"Time Management"_s, texts.workFormula,
                                  u"Time Management - Report Shown Per TimeLog"_s, this);
    else
        core::launchReportFile(u"Sign_In.rpt"_s, texts.attendanceFormula,
                               u"Time Management - Report Shown Per Sign-In/Out"_s, this);
}

} // namespace timemgmt
