#include "masters/frmEmployee.h"

#include "core/MirsaMain.h"
#include "masters/EmployeePay.h"
#include "masters/SalaryDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace masters {

using screen::Buttons;
using screen::Fields;
using screen::Icon;
using screen::MsgBox;

namespace {

const QStringList& statuses() {
    static const QStringList list{u"Active"_s, u"Suspended"_s, u"Terminated"_s};
    return list;
}

/// What an asked-for status adds to the select of rows or names.
QString displayed(const QString& select, const QString& status, const QString& order) {
    const QString where = statuses().contains(status)
                              ? u" where empstatus = '"_s + status + QLatin1Char('\'')
                              : QString();
    return select + where + u" order by "_s + order;
}

QString employeeSelect(const QString& status, bool byName) {
    return displayed(u"Select * from Employee"_s, status,
                     byName ? u"lastname, firstname"_s : u"EmpID"_s);
}

QString nameSelect(const QString& status, bool byName) {
    return displayed(u"Select (LastName + ' , ' + FirstName) as [Name], EmpId from Employee"_s,
                     status, byName ? u"lastname, firstname"_s : u"Name"_s);
}

core::ModuleDescriptor employeeModule() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmEmployee::formName);
    module.caption = u"Employee"_s;
    module.moduleWord = u"Employee"_s;
    module.table = u"Employee"_s;
    module.keyColumn = u"EmpID"_s;
    module.select = employeeSelect(u"All"_s, false);
    module.dataControlName = u"datEmployee"_s;
    module.modeLabelName = u"lblEmployeeMode"_s;
    module.numberWord = u"Employee"_s;
    module.findScreen = u"frmEmpFind"_s;
    module.queryScreen = u"frmEmpQuery"_s;
    module.reportModule = u"Employee"_s;
    module.reportTitle = u"Employee Report"_s;
    module.reportAllTitle = u"Full Employee Report"_s;
    module.reportKey = u"Employee.Empid"_s;
    return module;
}

QString digitsOf(const QString& text) {
    QString digits;
    for (const QChar c : text) {
        if (c.isDigit())
            digits += c;
    }
    return digits;
}

jet::Recordset shiftsLater() {
    return core::MainDatabase().openLater(u"SELECT * FROM shifts ORDER BY id"_s);
}

} // namespace

frmEmployee::frmEmployee() : core::RecordModule(employeeModule()) {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    makeHead(top);

    m_tabs = screen::named(new QTabWidget(this), u"SSTab1"_s, u"Employee data"_s);
    layout->addWidget(m_tabs, 1);
    makePersonalTab(screen::tab(m_tabs, u"&Personal"_s));
    makeEmploymentTab(screen::tab(m_tabs, u"E&mployment"_s));
    bindColumns();

    std::vector<core::ModuleButton> buttons = standardButtons();
    for (core::ModuleButton& button : buttons) {
        if (button.role == core::Role::Delete)
            button = {core::Role::BrowseOnly, u"cmdHistory"_s, u"Salar&y"_s};
    }
    makeFoot(layout, buttons);
    on(control<QPushButton>(u"cmdHistory"_s), &frmEmployee::cmdHistory_Click);
}

void frmEmployee::makeHead(QBoxLayout* inside) {
    Fields head(this, inside);
    cboDisplay = head.dataCombo(u"cboDisplay"_s, u"D&isplay:"_s, screen::wide(12));
    cboDisplay->setItems(QStringList(u"All"_s) + statuses());
    cboDisplay->setText(m_display);
    head.nextColumn();
    dbcEmployee = head.dataCombo(u"dbcEmployee"_s, u"Goto employee &by name:"_s, screen::wide(32));
    head.nextColumn();
    txtEmpid = head.text(u"txtEmpid"_s, u"Employee number:"_s, screen::wide(8));
    inside->addStretch();
    inside->addWidget(modeLabel());
    bindKey(txtEmpid);
    bindNameList(dbcEmployee, nameSelect(m_display, false), u"Name"_s, u"EmpId"_s);

    on(cboDisplay->lineEdit(), &QLineEdit::textEdited, [this] { m_displayTyped = true; });
    on(cboDisplay->changed, [this] {
        if (m_displayTyped)
            cboDisplay_Change();
    });
    on(cboDisplay, &QComboBox::activated, [this] {
        // Leaving the combo after typing chooses the row of the text that is already shown.
        const bool typed = std::exchange(m_displayTyped, false);
        if (!typed || cboDisplay->text() != m_display)
            cboDisplay_Click();
    });
    on(cboDisplay->left, [this] {
        m_displayTyped = false;
        const bool empty = cboDisplay->text().trimmed().isEmpty();
        cboDisplay->setText(m_display);
        if (empty)
            tellNoRecords();
    });
}

void frmEmployee::makePersonalTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    Fields name(screen::frame(page, across, u"fraName"_s, u"Name and Address"_s));
    txtFirstName = name.text(u"txtFirstName"_s, u"&First name:"_s, screen::wide(36));
    txtLastName = name.text(u"txtLastName"_s, u"&Last name:"_s, screen::wide(36));
    m_address = screen::AddressBlock::main(name);

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    Fields person(screen::frame(page, right, u"fraPerson"_s, u"Person"_s));
    etxtPhone = person.text(u"etxtPhone"_s, u"P&hone:"_s, screen::wide(20));
    cboMarried = person.dataCombo(u"cboMarried"_s, u"Marital status:"_s, screen::wide(14));
    cboMarried->setItems({u"Single"_s, u"Married"_s, u"Divorced"_s, u"Widowed"_s});
    mskSSN = person.text(u"mskSSN"_s, u"S.S.N.:"_s, screen::wide(14));
    mskSSN->setInputMask(u"000-00-0000;_"_s);
    txtCSSN = person.text(u"txtCSSN"_s, u"Identification Number:"_s, screen::wide(20));
    etxtBday = person.date(u"etxtBday"_s, u"Birth &date:"_s);
    Fields notes(page, right);
    txtNotes = notes.memo(u"txtNotes"_s, u"Notes:"_s, 6);
}

void frmEmployee::makeEmploymentTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    Fields job(screen::frame(page, across, u"fraJob"_s, u"Employment"_s));
    txtPosition = job.dataCombo(u"txtPosition"_s, u"P&osition:"_s, screen::wide(14));
    txtPosition->setItems({u"Supervisor"_s, u"Employee"_s});
    txtTitle = job.text(u"txtTitle"_s, u"&Title:"_s, screen::wide(36));
    cboStatus = job.listCombo(u"cboStatus"_s, u"Stat&us:"_s);
    for (const QString& status : statuses())
        cboStatus->addRow(status);
    dbcShift = job.dataCombo(u"dbcShift"_s, u"Wor&k shift:"_s, screen::wide(24));
    dbcShift->setTypingAllowed(false);
    chkMJob = job.check(u"chkMJob"_s, u"Allowed Multiple Jobs ?"_s);
    chkLocate = job.check(u"chkLocate"_s, u"Allowed Locate?"_s);
    etxtHDate = job.date(u"etxtHDate"_s, u"&Hire date:"_s);
    etxtEDate = job.date(u"etxtEDate"_s, u"Entry &date:"_s);
    etxtTDate = job.date(u"etxtTDate"_s, u"Termination date:"_s);
    job.keepTogether();
    on(txtPosition->changed, &frmEmployee::txtPosition_Change);
    on(cboStatus->changed, &frmEmployee::cboStatus_Change);

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    const QString money = core::moneyMask(u"###,##0.00"_s);
    Fields pay(screen::frame(page, right, u"fraPay"_s, u"Salary"_s));
    txtStartPay = pay.currency(u"txtStartPay"_s, u"Starting pay:"_s, money);
    txtCurrPay = pay.currency(u"txtCurrPay"_s, u"Current pay:"_s, money);
    txtNewSalary = pay.text(u"txtNewSalary"_s, u"Pay of a new employee:"_s,
                            {.limit = 12, .filter = values::keys::decimal(), .characters = 12});
    pay.nextColumn();
    txtStartFreq = pay.text(u"txtStartFreq"_s, u"Starting frequency:"_s, screen::wide(12));
    txtCurrFreq = pay.text(u"txtCurrFreq"_s, u"Current frequency:"_s, screen::wide(12));
    cboNewFreq = pay.listCombo(u"cboNewFreq"_s, u"Frequency:"_s);
    for (const QString& frequency : salaryFrequencies())
        cboNewFreq->addRow(frequency);
    Fields tax(screen::frame(page, right, u"fraExemptions"_s, u"Tax Exemptions"_s));
    txtEState = tax.text(u"txtEState"_s, u"State:"_s, screen::wide(6));
    txtEFederal = tax.text(u"txtEFederal"_s, u"&Federal:"_s, screen::wide(6));
    txtEOther = tax.text(u"txtEOther"_s, u"Other:"_s, screen::wide(6));
    right->addStretch();
}

void frmEmployee::bindColumns() {
    screen::BoundFields& bound = fields();
    const auto bindExemptions = [&bound](const QString& column, controls::TextField* field) {
        bound.bindAs(
            column, field, [field](const jet::Value& value) { field->setValue(value); },
            [field] { return jet::Value(exemptions(field->text())); });
    };
    bound.bindAll({{u"firstname", txtFirstName}, {u"lastname", txtLastName}});
    m_address.bind(bound);
    offerUnknown(*this, m_address, [this] { return !isBrowse(); });
    bound.bindAll({{u"Phone", etxtPhone}, {u"MaritalStatus", cboMarried}, {u"Notes", txtNotes}});
    bound.bindAs(
        u"SSN"_s, mskSSN,
        [this](const jet::Value& value) { mskSSN->setText(digitsOf(value.toText())); },
        [this] { return jet::Value(digitsOf(mskSSN->text())); });
    bound.bindAll({{u"cssn", txtCSSN},
                   {u"birthdate", etxtBday},
                   {u"Position", txtPosition},
                   {u"Title", txtTitle},
                   {u"EmpStatus", cboStatus}});
    bound.bind(u"multijobs"_s, chkMJob);
    bound.bind(u"locateflag"_s, chkLocate);
    bound.bindAs(
        u"shiftsid"_s, dbcShift,
        [this](const jet::Value& value) { dbcShift->setBoundText(value.toText()); },
        [this] { return jet::Value(dbcShift->boundText().toLongLong()); });
    bound.bindAll({{u"HireDate", etxtHDate}, {u"EntryDate", etxtEDate}, {u"Terminate", etxtTDate}});
    bound.bindShown(u"StartPay"_s, txtStartPay);
    bound.bindShown(u"StartFrq"_s, txtStartFreq);
    bound.bindShown(u"CurrPay"_s, txtCurrPay);
    bound.bindShown(u"CurrFrq"_s, txtCurrFreq);
    bindExemptions(u"ExempState"_s, txtEState);
    bindExemptions(u"ExempFed"_s, txtEFederal);
    bindExemptions(u"ExempOther"_s, txtEOther);
}

void frmEmployee::openLookups() {
    const jet::Recordset shifts = shiftsLater();
    fillAddressLists({m_address});
    fillShifts(shifts);
}

void frmEmployee::fillShifts(const jet::Recordset& shifts) {
    const QString chosen = dbcShift->boundText();
    dbcShift->setRows(shifts, u"Description"_s, u"ID"_s);
    // The chosen one may have another name now.
    if (!chosen.isEmpty())
        dbcShift->setBoundText(chosen);
}

void frmEmployee::refreshLookup(const QString& table) {
    if (isAddressTable(table))
        fillAddressLists({m_address});
    if (table.compare(u"Shifts", Qt::CaseInsensitive) == 0)
        fillShifts(shiftsLater());
    core::RecordModule::refreshLookup(table);
}

// The status shown

bool frmEmployee::isAll() const {
    return !statuses().contains(m_display);
}

void frmEmployee::tellNoRecords() {
    MsgBox(u"No Records Available"_s, Buttons::Ok, Icon::Information, u"No Records"_s);
}

void frmEmployee::offerFirstRecord() {
    if (isAll())
        core::RecordModule::offerFirstRecord();
    else
        tellNoRecords();
}

void frmEmployee::showStatus(bool byName) {
    const QString asked = cboDisplay->text();
    const QString select = employeeSelect(asked, byName);
    if (statuses().contains(asked) && !core::MainDatabase().hasRows(select)) {
        m_displayTyped = false;
        cboDisplay->setText(m_display);
        tellNoRecords();
        return;
    }
    m_display = asked;
    setNamesSelect(nameSelect(asked, byName));
    reopen(select, currentKey());
}

void frmEmployee::cboDisplay_Change() {
    const QString typed = cboDisplay->text();
    if (typed != m_display && (typed == u"All" || statuses().contains(typed)))
        showStatus(false);
}

void frmEmployee::cboDisplay_Click() {
    showStatus(true);
}

// Modes

void frmEmployee::ShowModuleMode(Mode mode) {
    core::RecordModule::ShowModuleMode(mode);
    txtPosition_Change();
}

void frmEmployee::lockFields(bool locked) {
    core::RecordModule::lockFields(locked);
    cboDisplay->setEnabled(locked);
    txtNewSalary->setLocked(!isAdding());
    cboNewFreq->setLocked(!isAdding());
}

void frmEmployee::clearFields() {
    core::RecordModule::clearFields();
    showRecord();
}

void frmEmployee::showRecord() {
    txtNewSalary->clear();
    cboNewFreq->clear();
}

void frmEmployee::newDefaults() {
    cboStatus->setText(u"Active"_s);
}

void frmEmployee::txtPosition_Change() {
    if (isBrowse())
        return;
    const bool supervisor = txtPosition->text() == u"Supervisor";
    if (supervisor)
        chkMJob->setChecked(true);
    chkMJob->setEnabled(!supervisor);
}

void frmEmployee::cboStatus_Change() {
    if (!isBrowse() && cboStatus->text() != u"Terminated")
        etxtTDate->clear();
}

QString frmEmployee::recordName() const {
    return txtFirstName->text() + u' ' + txtLastName->text();
}

// Saving

bool frmEmployee::validate() {
    EmployeeEntry entry;
    entry.firstName = txtFirstName->text();
    entry.lastName = txtLastName->text();
    entry.status = cboStatus->text();
    entry.terminationDate = etxtTDate->date().has_value();
    entry.shift = !dbcShift->boundText().isEmpty();
    entry.ssn = digitsOf(mskSSN->text());
    entry.exemptState = txtEState->text();
    entry.exemptFederal = txtEFederal->text();
    entry.exemptOther = txtEOther->text();
    if (const auto wrong = checkEmployee(entry)) {
        complain(*wrong);
        return false;
    }
    if (!txtNewSalary->text().isEmpty() && !values::isNumeric(txtNewSalary->text())) {
        complain(u"You must enter a Decimal Dollar value for Amount!"_s, txtNewSalary);
        return false;
    }
    for (controls::DateField* date : {etxtBday, etxtHDate, etxtEDate, etxtTDate}) {
        if (!date->isValid()) {
            complain(u"Please enter a date as month/day/year!"_s, date);
            return false;
        }
    }
    return true;
}

void frmEmployee::newRowColumns(jet::Recordset& row) {
    if (!txtNewSalary->text().isEmpty() && !cboNewFreq->text().isEmpty()) {
        const auto amount = values::Currency::fromText(txtNewSalary->text());
        row.set(u"StartPay", amount);
        row.set(u"CurrPay", amount);
        row.set(u"StartFrq", cboNewFreq->text());
        row.set(u"CurrFrq", cboNewFreq->text());
    }
    row.set(u"QBSent", 0);
}

void frmEmployee::alsoWrite(qint64 key, bool adding) {
    if (!adding || txtNewSalary->text().isEmpty())
        return;
    // The pay begins with the employment, unless that is still to come.
    const QDate today = values::today();
    const QDate begins = std::min(etxtHDate->date().value_or(today), today);
    beginSalary(core::MainDatabase(), key,
                {0, begins, values::Currency::fromText(txtNewSalary->text()), cboNewFreq->text()});
}

void frmEmployee::tellNeighbours() {
    core::refreshNeighbours({u"frmTM"_s}, u"Employee"_s);
}

void frmEmployee::cmdHistory_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    const auto history = screen::Forms::dialog<SalaryHistoryDialog>(u"frmEmpSalary"_s);
    history->begin(currentKey());
    history.form().showModal();
    records().refreshRow();
    ShowCurrentRecord();
}

} // namespace masters
