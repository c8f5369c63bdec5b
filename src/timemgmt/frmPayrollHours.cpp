#include "timemgmt/frmPayrollHours.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "timemgmt/PayrollReport.h"

#include <QLabel>
#include <QVBoxLayout>

namespace timemgmt {

using controls::GridColumn;
using Kind = controls::GridColumn::Kind;

namespace {

QString dateText(const QDate& date) {
    return values::format(date, u"Short Date");
}

QStringList textsOf(const PayrollLine& line, PayrollBy by) {
    const QString week = by == PayrollBy::Employee ? QString() : dateText(mondayOf(line.day));
    return {line.employee,
            QString::number(line.empId),
            week,
            by == PayrollBy::Day ? dateText(line.day) : QString(),
            hoursText(line.present()),
            hoursText(line.outside),
            hoursText(line.breaks),
            hoursText(line.paid),
            line.open > 0 ? QString::number(line.open) : QString()};
}

} // namespace

frmPayrollHours::frmPayrollHours() : Form(QString::fromLatin1(formName), u"Payroll Hours"_s) {
    auto* outside = new QVBoxLayout(this);
    makeCriteria(outside);
    auto* rules = screen::named(new QLabel(payrollRules().join(u'\n'), this), u"lblRules"_s);
    rules->setWordWrap(true);
    outside->addWidget(rules);
    lvwHours =
        screen::named(new controls::ListView(this), u"lvwHours"_s, u"Hours of the employees"_s);
    lvwHours->setColumns({{u"Employee"_s, 26},
                          {u"No."_s, 6, Kind::Number},
                          {u"Week of"_s, 11},
                          {u"Day"_s, 11},
                          {u"Signed in"_s, 10, Kind::Number},
                          {u"Outside shift"_s, 13, Kind::Number},
                          {u"Breaks"_s, 9, Kind::Number},
                          {u"Paid hours"_s, 11, Kind::Number},
                          {u"Open"_s, 6}});
    outside->addWidget(lvwHours, 1);
    makeTotals(outside);
    screen::ButtonBar bar(this, outside);
    cmdPrint = bar.button(u"cmdPrint"_s, u"&Report"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdShow);
    setCancelButton(cmdClose);
    on(cmdShow, &frmPayrollHours::cmdShow_Click);
    on(cmdPrint, &frmPayrollHours::cmdPrint_Click);
    on(cmdClose, [this] { unload(); });
    on(cboBy, &QComboBox::currentIndexChanged, [this] { showLines(); });
}

void frmPayrollHours::makeCriteria(QBoxLayout* inside) {
    auto* head = new QWidget(this);
    auto* across = new QHBoxLayout(head);
    across->setContentsMargins(0, 0, 0, 0);
    screen::Fields fields(head, across);
    datFrom = fields.date(u"datFrom"_s, u"&From:"_s);
    datTo = fields.at(0, 1).date(u"datTo"_s, u"&To:"_s);
    dbcEmployee = fields.at(0, 2).dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, screen::wide(28));
    cboBy = fields.at(0, 3).listCombo(u"cboBy"_s, u"&By:"_s);
    for (const auto& [text, by] :
         {std::pair{u"Day"_s, PayrollBy::Day}, std::pair{u"Week"_s, PayrollBy::Week},
          std::pair{u"Employee"_s, PayrollBy::Employee}})
        cboBy->addRow(text, static_cast<qint64>(by));
    screen::ButtonBar bar(this, across);
    cmdShow = bar.button(u"cmdShow"_s, u"&Show"_s);
    inside->addWidget(head);
}

void frmPayrollHours::makeTotals(QBoxLayout* inside) {
    auto* foot = new QWidget(this);
    screen::Fields fields(foot);
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    lblPresent = fields.figure(u"lblPresent"_s, u"All signed in:"_s);
    lblOutside = fields.at(0, 1).figure(u"lblOutside"_s, u"Outside shift:"_s);
    lblBreaks = fields.at(0, 2).figure(u"lblBreaks"_s, u"Breaks:"_s);
    lblPaid = fields.at(0, 3).figure(u"lblPaid"_s, u"Paid hours:"_s);
    lblOpen = fields.at(0, 4).figure(u"lblOpen"_s, u"Open:"_s, 6);
    inside->addWidget(foot);
}

void frmPayrollHours::Form_Load() {
    if (!core::HasAccess(u"mnuFileTimeManagement"_s)) {
        screen::MsgBox(u"You don't have the right to see time records."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, windowTitle());
        refuse();
        return;
    }
    dbcEmployee->setRows(
        core::MainDatabase().openRecordset(
            u"SELECT EmpID, (lastname + ', ' + firstname) AS [Name] FROM Employee ORDER BY "
            "lastname, firstname"_s,
            jet::RecordsetType::Snapshot),
        u"Name"_s, u"EmpID"_s);
    dbcEmployee->setTypingAllowed(true);
    const QDate monday = mondayOf(values::today());
    datFrom->setDate(monday.addDays(-7));
    datTo->setDate(monday.addDays(-1));
    cmdShow_Click();
}

bool frmPayrollHours::read() {
    const auto from = datFrom->date(), to = datTo->date();
    if (!from || !to) {
        complain(u"Please enter the first and the last day."_s, from ? datTo : datFrom);
        return false;
    }
    if (*from > *to) {
        complain(u"The first day may not be later than the last."_s, datFrom);
        return false;
    }
    const QString employee = dbcEmployee->boundText();
    if (employee.isEmpty() && !dbcEmployee->text().trimmed().isEmpty()) {
        complain(u"There is no such employee."_s, dbcEmployee);
        return false;
    }
    const screen::BusyPointer busy;
    m_days = readPayroll(core::MainDatabase(), *from, *to, employee.toLongLong());
    return true;
}

void frmPayrollHours::showLines() {
    const auto by = static_cast<PayrollBy>(cboBy->itemNumber());
    const std::vector<PayrollLine> lines = addUp(m_days, by);
    std::vector<controls::ListRow> rows;
    rows.reserve(lines.size());
    int number = 0;
    for (const PayrollLine& line : lines)
        rows.push_back({u"P"_s + QString::number(++number), textsOf(line, by)});
    lvwHours->setRows(std::move(rows));
    const PayrollLine total = totalOf(lines);
    lblPresent->setText(hoursText(total.present()));
    lblOutside->setText(hoursText(total.outside));
    lblBreaks->setText(hoursText(total.breaks));
    lblPaid->setText(hoursText(total.paid));
    lblOpen->setText(QString::number(total.open));
    cmdPrint->setEnabled(!m_days.empty());
}

void frmPayrollHours::cmdShow_Click() {
    if (read())
        showLines();
}

void frmPayrollHours::cmdPrint_Click() {
    // What the criteria say now, should they have been changed since the list was shown.
    if (!read())
        return;
    showLines();
    PayrollRows rows(core::MainDatabase(), m_days, *datFrom->date(), *datTo->date());
    core::launchReportFile(u"Payroll_Hours.rpt"_s, {}, windowTitle(), this, &rows);
}

} // namespace timemgmt
