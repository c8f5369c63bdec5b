#include "masters/frmEmployee.h"

#include "core/MirsaMain.h"
#include "masters/EmployeePay.h"
#include "masters/SalaryDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/values/Clock.h"
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
    static const QStringList list{QStringLiteral("Active"), QStringLiteral("Suspended"),
                                  QStringLiteral("Terminated")};
    return list;
}

/// What an asked-for status adds to the select of rows or names.
QString displayed(const QString& select, const QString& status, const QString& order) {
    const QString where = statuses().contains(status)
                              ? QStringLiteral(" where empstatus = '") + status + QLatin1Char('\'')
                              : QString();
    return select + where + QStringLiteral(" order by ") + order;
}

QString employeeSelect(const QString& status, bool byName) {
    return displayed(QStringLiteral("Select * from Employee"), status,
                     byName ? QStringLiteral("lastname, firstname") : QStringLiteral("EmpID"));
}

QString nameSelect(const QString& status, bool byName) {
    return displayed(
        QStringLiteral("Select (LastName + ' , ' + FirstName) as [Name], EmpId from Employee"),
        status, byName ? QStringLiteral("lastname, firstname") : QStringLiteral("Name"));
}

ModuleDescriptor employeeModule() {
    ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmEmployee::formName);
    module.caption = QStringLiteral("Employee");
    module.moduleWord = QStringLiteral("Employee");
    module.table = QStringLiteral("Employee");
    module.keyColumn = QStringLiteral("EmpID");
    module.select = employeeSelect(QStringLiteral("All"), false);
    module.dataControlName = QStringLiteral("datEmployee");
    module.modeLabelName = QStringLiteral("lblEmployeeMode");
    module.numberWord = QStringLiteral("Employee");
    module.findScreen = QStringLiteral("frmEmpFind");
    module.queryScreen = QStringLiteral("frmEmpQuery");
    module.reportModule = QStringLiteral("Employee");
    module.reportTitle = QStringLiteral("Employee Report");
    module.reportAllTitle = QStringLiteral("Full Employee Report");
    module.reportKey = QStringLiteral("Employee.Empid");
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

} // namespace

frmEmployee::frmEmployee() : RecordModule(employeeModule()) {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    makeHead(top);

    m_tabs = screen::named(new QTabWidget(this), QStringLiteral("SSTab1"),
                           QStringLiteral("Employee data"));
    layout->addWidget(m_tabs, 1);
    makePersonalTab(screen::tab(m_tabs, QStringLiteral("&Personal")));
    makeEmploymentTab(screen::tab(m_tabs, QStringLiteral("E&mployment")));
    bindColumns();

    std::vector<ModuleButton> buttons = standardButtons();
    for (ModuleButton& button : buttons) {
        if (button.role == Role::Delete)
            button = {Role::BrowseOnly, QStringLiteral("cmdHistory"), QStringLiteral("Salar&y")};
    }
    makeFoot(layout, buttons);
    on(control<QPushButton>(QStringLiteral("cmdHistory")), &frmEmployee::cmdHistory_Click);
}

void frmEmployee::makeHead(QBoxLayout* inside) {
    Fields head(this, inside);
    cboDisplay =
        head.dataCombo(QStringLiteral("cboDisplay"), QStringLiteral("D&isplay:"), wide(12));
    cboDisplay->setItems(QStringList(QStringLiteral("All")) + statuses());
    cboDisplay->setText(m_display);
    head.nextColumn();
    dbcEmployee = head.dataCombo(QStringLiteral("dbcEmployee"),
                                 QStringLiteral("Goto employee &by name:"), wide(32));
    head.nextColumn();
    txtEmpid = head.text(QStringLiteral("txtEmpid"), QStringLiteral("Employee number:"), wide(8));
    inside->addStretch();
    inside->addWidget(modeLabel());
    bindKey(txtEmpid);
    bindNameList(dbcEmployee, nameSelect(m_display, false), QStringLiteral("Name"),
                 QStringLiteral("EmpId"));

    connect(cboDisplay->lineEdit(), &QLineEdit::textEdited, this,
            [this] { m_displayTyped = true; });
    on(cboDisplay->changed, [this] {
        if (m_displayTyped)
            cboDisplay_Change();
    });
    connect(cboDisplay, &QComboBox::activated, this, [this] {
        // Leaving the combo after typing chooses the row of the text that is already shown.
        const bool typed = std::exchange(m_displayTyped, false);
        if (!typed || cboDisplay->text() != m_display)
            guarded([this] { cboDisplay_Click(); });
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
    Fields name(
        screen::frame(page, across, QStringLiteral("fraName"), QStringLiteral("Name and Address")));
    txtFirstName =
        name.text(QStringLiteral("txtFirstName"), QStringLiteral("&First name:"), wide(36));
    txtLastName = name.text(QStringLiteral("txtLastName"), QStringLiteral("&Last name:"), wide(36));
    m_address = AddressFields::main(name);

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    Fields person(
        screen::frame(page, right, QStringLiteral("fraPerson"), QStringLiteral("Person")));
    etxtPhone = person.text(QStringLiteral("etxtPhone"), QStringLiteral("P&hone:"), wide(20));
    cboMarried =
        person.dataCombo(QStringLiteral("cboMarried"), QStringLiteral("Marital status:"), wide(14));
    cboMarried->setItems({QStringLiteral("Single"), QStringLiteral("Married"),
                          QStringLiteral("Divorced"), QStringLiteral("Widowed")});
    mskSSN = person.text(QStringLiteral("mskSSN"), QStringLiteral("S.S.N.:"), wide(14));
    mskSSN->setInputMask(QStringLiteral("000-00-0000;_"));
    txtCSSN =
        person.text(QStringLiteral("txtCSSN"), QStringLiteral("Identification Number:"), wide(20));
    etxtBday = person.date(QStringLiteral("etxtBday"), QStringLiteral("Birth &date:"));
    Fields notes(page, right);
    txtNotes = notes.memo(QStringLiteral("txtNotes"), QStringLiteral("Notes:"), 6);
}

void frmEmployee::makeEmploymentTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    Fields job(screen::frame(page, across, QStringLiteral("fraJob"), QStringLiteral("Employment")));
    txtPosition =
        job.dataCombo(QStringLiteral("txtPosition"), QStringLiteral("P&osition:"), wide(14));
    txtPosition->setItems({QStringLiteral("Supervisor"), QStringLiteral("Employee")});
    txtTitle = job.text(QStringLiteral("txtTitle"), QStringLiteral("&Title:"), wide(36));
    cboStatus = job.listCombo(QStringLiteral("cboStatus"), QStringLiteral("Stat&us:"));
    for (const QString& status : statuses())
        cboStatus->addRow(status);
    dbcShift = job.dataCombo(QStringLiteral("dbcShift"), QStringLiteral("Wor&k shift:"), wide(24));
    dbcShift->setTypingAllowed(false);
    chkMJob = job.check(QStringLiteral("chkMJob"), QStringLiteral("Allowed Multiple Jobs ?"));
    chkLocate = job.check(QStringLiteral("chkLocate"), QStringLiteral("Allowed Locate?"));
    etxtHDate = job.date(QStringLiteral("etxtHDate"), QStringLiteral("&Hire date:"));
    etxtEDate = job.date(QStringLiteral("etxtEDate"), QStringLiteral("Entry &date:"));
    etxtTDate = job.date(QStringLiteral("etxtTDate"), QStringLiteral("Termination date:"));
    keepTogether(job);
    on(txtPosition->changed, &frmEmployee::txtPosition_Change);
    on(cboStatus->changed, &frmEmployee::cboStatus_Change);

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    const QString money = core::moneyMask(QStringLiteral("###,##0.00"));
    Fields pay(screen::frame(page, right, QStringLiteral("fraPay"), QStringLiteral("Salary")));
    txtStartPay =
        pay.currency(QStringLiteral("txtStartPay"), QStringLiteral("Starting pay:"), money);
    txtCurrPay = pay.currency(QStringLiteral("txtCurrPay"), QStringLiteral("Current pay:"), money);
    txtNewSalary =
        pay.text(QStringLiteral("txtNewSalary"), QStringLiteral("Pay of a new employee:"),
                 {.limit = 12, .filter = values::keys::decimal(), .characters = 12});
    pay.nextColumn();
    txtStartFreq =
        pay.text(QStringLiteral("txtStartFreq"), QStringLiteral("Starting frequency:"), wide(12));
    txtCurrFreq =
        pay.text(QStringLiteral("txtCurrFreq"), QStringLiteral("Current frequency:"), wide(12));
    cboNewFreq = pay.listCombo(QStringLiteral("cboNewFreq"), QStringLiteral("Frequency:"));
    for (const QString& frequency : salaryFrequencies())
        cboNewFreq->addRow(frequency);
    Fields tax(screen::frame(page, right, QStringLiteral("fraExemptions"),
                             QStringLiteral("Tax Exemptions")));
    txtEState = tax.text(QStringLiteral("txtEState"), QStringLiteral("State:"), wide(6));
    txtEFederal = tax.text(QStringLiteral("txtEFederal"), QStringLiteral("&Federal:"), wide(6));
    txtEOther = tax.text(QStringLiteral("txtEOther"), QStringLiteral("Other:"), wide(6));
    right->addStretch();
}

void frmEmployee::bindColumns() {
    const auto bind = [this](const char* column, controls::Field* field) {
        fields().bind(QString::fromLatin1(column), field);
    };
    const auto bindShown = [this](const char* column, controls::Field* field) {
        fields().bindShown(QString::fromLatin1(column), field);
    };
    /// A column whose content is not what its field shows.
    const auto bindAs = [this](const char* column, controls::Field* field,
                               std::function<void(const jet::Value&)> show,
                               std::function<jet::Value()> read) {
        fields().bind({QString::fromLatin1(column), std::move(show), std::move(read),
                       [field] { field->clear(); },
                       [field](bool locked) { field->setLocked(locked); }, field->widget()});
    };
    const auto bindExemptions = [&bindAs](const char* column, controls::TextField* field) {
        bindAs(
            column, field, [field](const jet::Value& value) { field->setValue(value); },
            [field] { return jet::Value(exemptions(field->text())); });
    };
    bind("firstname", txtFirstName);
    bind("lastname", txtLastName);
    m_address.bind(fields());
    bind("Phone", etxtPhone);
    bind("MaritalStatus", cboMarried);
    bind("Notes", txtNotes);
    bindAs(
        "SSN", mskSSN,
        [this](const jet::Value& value) { mskSSN->setText(digitsOf(value.toText())); },
        [this] { return jet::Value(digitsOf(mskSSN->text())); });
    bind("cssn", txtCSSN);
    bind("birthdate", etxtBday);
    bind("Position", txtPosition);
    bind("Title", txtTitle);
    bind("EmpStatus", cboStatus);
    fields().bind(QStringLiteral("multijobs"), chkMJob);
    fields().bind(QStringLiteral("locateflag"), chkLocate);
    bindAs(
        "shiftsid", dbcShift,
        [this](const jet::Value& value) { dbcShift->setBoundText(value.toText()); },
        [this] { return jet::Value(dbcShift->boundText().toLongLong()); });
    bind("HireDate", etxtHDate);
    bind("EntryDate", etxtEDate);
    bind("Terminate", etxtTDate);
    bindShown("StartPay", txtStartPay);
    bindShown("StartFrq", txtStartFreq);
    bindShown("CurrPay", txtCurrPay);
    bindShown("CurrFrq", txtCurrFreq);
    bindExemptions("ExempState", txtEState);
    bindExemptions("ExempFed", txtEFederal);
    bindExemptions("ExempOther", txtEOther);
}

void frmEmployee::openLookups() {
    AddressFields::fillLists({m_address});
    fillShifts();
}

void frmEmployee::fillShifts() {
    const QString chosen = dbcShift->boundText();
    dbcShift->setRows(
        core::MainDatabase().openRecordset(QStringLiteral("SELECT * FROM shifts ORDER BY id"),
                                           jet::RecordsetType::Snapshot),
        QStringLiteral("Description"), QStringLiteral("ID"));
    // The chosen one may have another name now.
    if (!chosen.isEmpty())
        dbcShift->setBoundText(chosen);
}

void frmEmployee::refreshLookup(const QString& table) {
    if (AddressFields::listsFrom(table))
        AddressFields::fillLists({m_address});
    if (table.compare(u"Shifts", Qt::CaseInsensitive) == 0)
        fillShifts();
    RecordModule::refreshLookup(table);
}

// The status shown

bool frmEmployee::isAll() const {
    return !statuses().contains(m_display);
}

void frmEmployee::tellNoRecords() {
    MsgBox(QStringLiteral("No Records Available"), Buttons::Ok, Icon::Information,
           QStringLiteral("No Records"));
}

void frmEmployee::offerFirstRecord() {
    if (isAll())
        RecordModule::offerFirstRecord();
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

void frmEmployee::ShowModuleMode(const QString& mode) {
    RecordModule::ShowModuleMode(mode);
    txtPosition_Change();
}

void frmEmployee::lockFields(bool locked) {
    RecordModule::lockFields(locked);
    cboDisplay->setEnabled(locked);
    txtNewSalary->setLocked(!isAdding());
    cboNewFreq->setLocked(!isAdding());
}

void frmEmployee::clearFields() {
    RecordModule::clearFields();
    showRecord();
}

void frmEmployee::showRecord() {
    txtNewSalary->clear();
    cboNewFreq->clear();
}

void frmEmployee::newDefaults() {
    cboStatus->setText(QStringLiteral("Active"));
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

// Saving

QWidget* frmEmployee::widgetOf(EmployeeField field) const {
    switch (field) {
    case EmployeeField::FirstName:
        return txtFirstName;
    case EmployeeField::LastName:
        return txtLastName;
    case EmployeeField::TerminationDate:
        return etxtTDate;
    case EmployeeField::Shift:
        return dbcShift;
    case EmployeeField::Ssn:
        return mskSSN;
    case EmployeeField::ExemptState:
        return txtEState;
    case EmployeeField::ExemptFederal:
        return txtEFederal;
    case EmployeeField::ExemptOther:
        return txtEOther;
    }
    return nullptr;
}

void frmEmployee::complainAt(QWidget* field, const QString& text, const QString& title) {
    for (int page = 0; page < m_tabs->count(); ++page) {
        if (m_tabs->widget(page)->isAncestorOf(field))
            m_tabs->setCurrentIndex(page);
    }
    complain(text, field, Icon::Exclamation, title);
}

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
        complainAt(widgetOf(wrong->field), wrong->text, wrong->title);
        return false;
    }
    if (!txtNewSalary->text().isEmpty() && !values::isNumeric(txtNewSalary->text())) {
        complainAt(txtNewSalary,
                   QStringLiteral("You must enter a Decimal Dollar value for Amount!"), {});
        return false;
    }
    for (controls::DateField* date : {etxtBday, etxtHDate, etxtEDate, etxtTDate}) {
        if (!date->isValid()) {
            complainAt(date, QStringLiteral("Please enter a date as month/day/year!"), {});
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
    core::refreshNeighbours({QStringLiteral("frmTM")}, QStringLiteral("Employee"));
}

void frmEmployee::cmdHistory_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    const auto history = screen::Forms::dialog<SalaryHistoryDialog>(QStringLiteral("frmEmpSalary"));
    history->begin(currentKey());
    history.form().showModal();
    records().refreshRow();
    ShowCurrentRecord();
}

} // namespace masters
