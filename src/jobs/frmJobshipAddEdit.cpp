#include "jobs/frmJobshipAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace jobs {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

QString employeeGone(qint64 empId) {
    return u"The Employee ID ("_s + QString::number(empId) +
           u") for this record does not exist in the employee table!"_s;
}

} // namespace

frmJobshipAddEdit::frmJobshipAddEdit()
    : AddEditForm(QString::fromLatin1(formName), u"New Shipping"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    etShippedDate = fields.date(u"etShippedDate"_s, u"&Shipped Date:"_s);
    fields.nextRow();
    // Nine digits are the most that a whole number column takes for certain.
    txtQuantity = fields.text(u"txtQuantity"_s, u"&Quantity:"_s,
                              {.limit = 9, .filter = values::keys::decimal(), .characters = 12});
    fields.nextRow();
    cboEmp = fields.listCombo(u"cboEmp"_s, u"&Employee:"_s);
    cboEmp->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboEmp->setMinimumContentsLength(30);
    outside->addStretch();

    makeButtons(outside);
    on(txtQuantity->left, &frmJobshipAddEdit::txtQuantity_LostFocus);
}

bool frmJobshipAddEdit::ShowForm(const QString& mode, qint64 jobNo, qint64 jobShipId) {
    const bool editing = mode == u"Edit"_s;
    m_jobNo = jobNo;
    m_jobShipId = editing ? jobShipId : 0;
    setWindowTitle(mode + u" Shipping"_s);
    setAdding(!editing);
    if (!fillEmployees()) {
        MsgBox(u"You may not add an item without any employee defined!. Please add "
               "the employees first."_s,
               Buttons::Ok, Icon::Exclamation);
        return false;
    }
    clearFields();
    if (editing && !showShipment())
        return false;
    etShippedDate->setFocus();
    return run();
}

bool frmJobshipAddEdit::fillEmployees() {
    cboEmp->clearRows();
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT * FROM employee ORDER BY lastname"_s, jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        cboEmp->addRow(set.text(u"lastname") + u", "_s + set.text(u"firstname"),
                       set[u"EmpID"].toLong());
    }
    return cboEmp->count() > 0;
}

void frmJobshipAddEdit::clearFields() {
    etShippedDate->setText(values::format(values::today(), u"yyyymmdd"));
    txtQuantity->clear();
    cboEmp->clear();
}

bool frmJobshipAddEdit::showShipment() {
    const jet::Recordset row = core::MainDatabase().openRecordset(
        u"SELECT * FROM jobship WHERE jobshipid="_s + QString::number(m_jobShipId),
        jet::RecordsetType::Snapshot);
    if (row.isEmpty()) {
        tellMissing();
        return false;
    }
    etShippedDate->setDate(row[u"ShippedDate"].toDate());
    txtQuantity->setText(row.text(u"Quantity"));
    txtQuantity_LostFocus();
    const qint64 empId = row[u"ShippedByEmpID"].toLong();
    if (!cboEmp->chooseNumber(empId))
        MsgBox(employeeGone(empId), Buttons::Ok, Icon::Exclamation);
    return true;
}

void frmJobshipAddEdit::tellMissing() {
    MsgBox(QString::number(m_jobShipId) +
               u" shipping no. not found! Jobship table may need to be fixed!"_s,
           Buttons::Ok, Icon::Critical);
}

void frmJobshipAddEdit::txtQuantity_LostFocus() {
    // A blank stays blank, so that the check sees it.
    if (!txtQuantity->text().trimmed().isEmpty())
        txtQuantity->setText(values::numberField(txtQuantity->text(), u"#####0"));
}

bool frmJobshipAddEdit::write(const QDate& date, const QString& quantity, qint64 empId) {
    const QString job = QString::number(m_jobNo);
    const QString employee = QString::number(empId);
    const QString shipped = values::format(date, u"Short Date");
    jet::Database& database = core::MainDatabase();
    jet::Transaction transaction(database);
    // What another station deleted meanwhile would leave a consignment that nobody ever sees.
    if (!database.hasRows(u"SELECT JobNo FROM job WHERE jobno="_s + job)) {
        transaction.rollback();
        MsgBox(u"Job No. "_s + job + u" does not exist!"_s, Buttons::Ok, Icon::Exclamation);
        return false;
    }
    if (!database.hasRows(u"SELECT EmpID FROM employee WHERE empid="_s + employee)) {
        transaction.rollback();
        fillEmployees();
        cboEmp->clear();
        complain(employeeGone(empId), cboEmp);
        return false;
    }
    if (m_jobShipId == 0) {
        database.execute(u"INSERT INTO jobship (jobno, shippeddate, quantity, "
                         "shippedbyempid) VALUES("_s +
                         job + u", #"_s + shipped + u"#, "_s + quantity + u", "_s + employee +
                         u")"_s);
    } else if (database.execute(u"UPDATE jobship SET jobno="_s + job + u",shippeddate=#"_s +
                                shipped + u"#, quantity="_s + quantity + u", shippedbyempid="_s +
                                employee + u" WHERE jobshipid="_s + QString::number(m_jobShipId)) ==
               0) {
        transaction.rollback();
        tellMissing();
        return false;
    }
    transaction.commit();
    return true;
}

bool frmJobshipAddEdit::save() {
    txtQuantity_LostFocus(); // Enter saves without leaving the field
    const auto date = etShippedDate->date();
    const QString quantity = txtQuantity->text().trimmed();
    if (!date) {
        complain(u"Please enter a valid Shipped Date!"_s, etShippedDate);
        return false;
    }
    if (quantity.isEmpty()) {
        complain(u"Quantity may not be blank"_s, txtQuantity);
        return false;
    }
    if (cboEmp->currentIndex() < 0) {
        complain(u"Employee may not be blank!"_s, cboEmp);
        return false;
    }
    try {
        if (!write(*date, quantity, cboEmp->itemNumber()))
            return false;
    } catch (const jet::Error& error) {
        MsgBox(error.text(), Buttons::Ok, Icon::Critical);
        return false;
    }
    return true;
}

void frmJobshipAddEdit::startNext() {
    clearFields();
    etShippedDate->setFocus();
}

} // namespace jobs
