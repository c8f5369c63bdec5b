#include "timemgmt/frmNewTime.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"
#include "timemgmt/TimeChanged.h"

#include <QCheckBox>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace timemgmt {

namespace {

/// The latest jobs are listed; older ones are typed.
QString jobList() {
    return u"Select TOP 1000 JobNo from Job order by JobNo desc"_s;
}

QString signInsOf(qint64 employee) {
    return u"Select sign_in.Sign_in, Sign_in.Id from Sign_in where empid = "_s +
           QString::number(employee) + u" order by sign_in DESC"_s;
}

QString typeName(const QString& type) {
    if (type.isEmpty())
        return {};
    return type == u"I"   ? u"In-House Operation"_s
           : type == u"O" ? u"Overhead Operation"_s
                          : u"Outside Contractor Operation"_s;
}

} // namespace

frmNewTime::frmNewTime() : AddEditForm(QString::fromLatin1(formName), u"New TimeLog Record"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    m_employee = std::make_unique<EmployeeChoice>(*this, fields, u"&Employee #:"_s, u"Na&me:"_s);
    chkOver = fields.check(u"chkOver"_s, u"O&verhead"_s);
    dbcJobNo = fields.dataCombo(u"dbcJobNo"_s, u"&Job #:"_s,
                                {.limit = 9, .filter = values::keys::digits(), .characters = 8});
    dbcOp = fields.dataCombo(u"dbcOp"_s, u"Ope&ration #:"_s,
                             {.limit = 9, .filter = values::keys::digits(), .characters = 8});
    dbcOpName = fields.dataCombo(u"dbcOpName"_s, u"O&peration:"_s, {.characters = 30});
    lblType = fields.shown(u"lblType"_s, u"Type:"_s, 26);
    dbcDate = fields.dataCombo(u"dbcDate"_s, u"&Date:"_s, {.characters = 24});
    txtAccum = fields.text(u"txtAccum"_s, u"Ac&um. Hours:"_s, screen::number(u"##0.00"_s, 6, 8));
    txtAccum->setText(u"0.01"_s);
    for (const auto* line : {u"The dates are those of the employee's sign-in records.",
                             u"A date that is not listed needs a sign-in record first."})
        fields.note(QString::fromUtf16(line))->setWordWrap(false);
    outside->addStretch();
    makeButtons(outside);

    on(m_employee->settled, &frmNewTime::employeeSettled);
    on(chkOver, &frmNewTime::chkOver_Click);
    on(dbcJobNo->chosen, &frmNewTime::jobSettled);
    on(dbcJobNo->left, &frmNewTime::jobSettled);
    on(dbcOp->changed, [this] { operationChosen(*dbcOp, *dbcOpName); });
    on(dbcOpName->changed, [this] { operationChosen(*dbcOpName, *dbcOp); });
}

void frmNewTime::Form_Load() {
    refreshLists();
}

bool frmNewTime::ShowForm(qint64 empId) {
    core::MainDatabase().expect({signInsOf(empId)});
    if (!load())
        return false;
    m_employee->choose(empId);
    if (m_employee->isListed())
        employeeSettled();
    else
        m_employee->choose(0);
    (m_employee->isListed() ? dbcJobNo : m_employee->number())->setFocus();
    return run();
}

// Lists

void frmNewTime::refreshLists() {
    auto wanted = EmployeeChoice::lists(true);
    wanted.emplace_back(jobList());
    const auto lists = core::MainDatabase().together(wanted);
    m_employee->fill(lists[0], lists[1]);
    dbcJobNo->setRows(lists[2], u"JobNo"_s, u"JobNo"_s);
}

void frmNewTime::employeeSettled() {
    const qint64 employee = m_employee->isListed() ? m_employee->empId() : 0;
    if (employee == m_datesOf)
        return;
    m_datesOf = employee;
    dbcDate->clear();
    dbcDate->setRows(
        core::MainDatabase().openRecordset(signInsOf(employee), jet::RecordsetType::Snapshot),
        u"Sign_in"_s, u"Id"_s);
}

void frmNewTime::fillOperations(jet::Recordset byNumber, const jet::Recordset& byName) {
    m_types.clear();
    for (; byNumber.isOpen() && !byNumber.eof(); byNumber.moveNext())
        m_types.insert(byNumber.text(u"OperNo"), byNumber.text(u"OperType").toUpper());
    dbcOp->setRows(byNumber, u"OperNo"_s, u"OperNo"_s);
    dbcOpName->setRows(byName, u"Description"_s, u"OperNo"_s);
}

void frmNewTime::clearOperations() {
    dbcOp->clear();
    dbcOpName->clear();
    fillOperations({}, {});
}

void frmNewTime::jobSettled() {
    const QString job = dbcJobNo->text().trimmed();
    if (chkOver->isChecked() || job == m_operationsOf)
        return;
    m_operationsOf = job;
    clearOperations();
    m_jobFound = false;
    if (job.isEmpty())
        return;
    const QString ofJob =
        u"Select * from Operation where OperNo in (Select Operno from JobOper where Jobno = "_s +
        job + u") and opertype <> 'C' order by "_s;
    const auto read =
        core::MainDatabase().together({ofJob + u"Operno"_s, ofJob + u"Description"_s,
                                       u"Select JobNo from Job where JobNo = "_s + job});
    fillOperations(read[0], read[1]);
    m_jobFound = !read[2].isEmpty();
}

void frmNewTime::chkOver_Click() {
    dbcJobNo->clear();
    dbcJobNo->setEnabled(!chkOver->isChecked());
    m_operationsOf.clear();
    m_jobFound = false;
    clearOperations();
    if (!chkOver->isChecked())
        return;
    const QString overhead = u"Select * from Operation where opertype = 'O' order by "_s;
    const auto read =
        core::MainDatabase().together({overhead + u"Operno"_s, overhead + u"Description"_s});
    fillOperations(read[0], read[1]);
}

void frmNewTime::operationChosen(const controls::DataCombo& from, controls::DataCombo& to) {
    if (m_following)
        return;
    const QScopedValueRollback one(m_following, true);
    if (to.boundText() != from.boundText() || from.boundText().isEmpty())
        to.setBoundText(from.boundText());
    lblType->setText(typeName(m_types.value(from.boundText())));
}

// Saving

std::optional<screen::Complaint> frmNewTime::validate() const {
    const auto wrong = [](const QString& text, const QString& field) {
        return screen::Complaint{text, field, u"Error"_s, screen::Icon::Critical};
    };
    if (!m_employee->isListed())
        return wrong(u"You must enter an employee ID!"_s, u"dbcEmpNum"_s);
    if (!chkOver->isChecked() && !m_jobFound)
        return wrong(u"You must enter a Job Number!"_s, u"dbcJobNo"_s);
    if (dbcOp->boundText().isEmpty())
        return wrong(u"You must enter an Operation!"_s, u"dbcOp"_s);
    if (dbcDate->boundText().isEmpty())
        return wrong(u"You must enter a Date!"_s, u"dbcDate"_s);
    if (!values::isNumeric(txtAccum->text()) ||
        values::val(values::format(txtAccum->number(), u"##0.00")) <= 0)
        return wrong(u"You must enter a valid time amount!"_s, u"txtAccum"_s);
    return {};
}

bool frmNewTime::save() {
    employeeSettled(); // a field that Enter or a mnemonic was pressed in wasn't left
    jobSettled();
    if (const auto wrong = validate()) {
        complain(*wrong);
        return false;
    }
    ManualTime time{.empId = m_employee->empId(),
                    .operNo = dbcOp->boundText().toLongLong(),
                    .signId = dbcDate->boundText().toLongLong(),
                    .hours = values::val(values::format(txtAccum->number(), u"##0.00")),
                    .date = values::dateFromText(dbcDate->text().section(u' ', 0, 0))};
    if (!chkOver->isChecked())
        time.jobNo = dbcJobNo->text().toLongLong();
    else if (!goesOn())
        time.jobNo = 0;
    ManualAnswer answer = AddManualTime(core::MainDatabase(), time);
    if (answer.sequential) {
        if (screen::MsgBox(u"Adding time manually to a Sequential Operation Job will convert the "
                           "Job to Non-Sequential!   Are You sure you want to continue?"_s,
                           screen::Buttons::YesNo, screen::Icon::Exclamation,
                           u"Warning!"_s) != screen::Answer::Yes)
            return false;
        time.endsSequence = true;
        answer = AddManualTime(core::MainDatabase(), time);
    }
    if (answer.complaint) {
        complain(*answer.complaint);
        return false;
    }
    tellTimeChanged();
    return true;
}

void frmNewTime::startNext() {
    refreshLists();
    chkOver->setChecked(false);
    chkOver_Click();
    dbcDate->clear();
    txtAccum->setText(u"0.01"_s);
    dbcJobNo->setFocus();
}

} // namespace timemgmt
