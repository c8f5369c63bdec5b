#include "inventory/frmSpareNew.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"

#include <QVBoxLayout>

namespace inventory {

frmSpareNew::frmSpareNew() : AddEditForm(QString::fromLatin1(formName), u"Add Spare Parts"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    const jet::Database& database = core::MainDatabase();
    const auto width = [&](const char16_t* column) {
        return database.width(u"SpareParts", column);
    };
    const auto digits = values::keys::digits();
    dbcCompID = fields.dataCombo(u"dbcCompID"_s, u"Compan&y:"_s, {.characters = 30});
    dbcLocation = fields.dataCombo(u"dbcLocation"_s, u"&Location:"_s,
                                   {.limit = width(u"SLocation"), .characters = 30});
    dbcJob =
        fields.dataCombo(u"dbcJob"_s, u"&Job:"_s, {.limit = 9, .filter = digits, .characters = 12});
    txtJQty = fields.text(u"txtJQty"_s, u"Jo&b Quantity:"_s,
                          {.limit = 9, .filter = digits, .characters = 10});
    txtSpareQty = fields.text(u"txtSpareQty"_s, u"Spare &Quantity:"_s,
                              {.limit = 9, .filter = digits, .characters = 10});
    txtPart = fields.text(u"txtPart"_s, u"&Part Number:"_s,
                          {.limit = width(u"SPartNo"), .characters = 24});
    fields.nextColumn();
    txtPO = fields.text(u"txtPO"_s, u"PO N&umber:"_s, {.limit = width(u"SPoNo"), .characters = 24});
    txtSparePrice =
        fields.secured(m_secured).currency(u"txtSparePrice"_s, u"P&rice:"_s, u"#####0.00"_s);
    txtSpareTotPrice = fields.secured(m_secured).currency(u"txtSpareTotPrice"_s, u"&Total Price:"_s,
                                                          u"#####0.00"_s);
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    fields.nextRow();
    txtNotes = fields.span(2).memo(u"txtNotes"_s, u"Note&s:"_s, 3);
    outside->addStretch();
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdClear = bar.button(u"cmdClear"_s, u"&Clear"_s);
    bar.stretch();
    makeButtons(outside);
    for (QWidget* field : m_secured)
        field->setVisible(core::HasAccess(u"ShowDollar"_s));
    on(cmdClear, [this] {
        dbcCompID->clear();
        dbcLocation->clear();
        customerChosen();
        dbcEmployee->clear();
        clearGoods();
        dbcCompID->setFocus();
    });
    for (auto* event : {&dbcCompID->chosen, &dbcCompID->left})
        on(*event, &frmSpareNew::customerChosen);
    for (auto* event : {&dbcJob->chosen, &dbcJob->left})
        on(*event, &frmSpareNew::jobChosen);
}

void frmSpareNew::add(qint64 custId, const QString& location) {
    auto sets = core::MainDatabase().together(
        {u"Select * from Customer order by Company"_s,
         u"Select (LastName + ' , ' + FirstName) as [Name], EmpId from Employee order by lastname, "
         "firstname"_s});
    dbcCompID->setRows(sets[0], u"Company"_s, u"CustID"_s);
    dbcEmployee->setRows(sets[1], u"Name"_s, u"EmpId"_s);
    if (custId != 0)
        dbcCompID->setBoundText(QString::number(custId));
    customerChosen();
    dbcLocation->setText(location);
    txtDate->setDate(values::today());
    setAdding(true);
    run();
}

void frmSpareNew::customerChosen() {
    const QString key = dbcCompID->boundText();
    if (key == m_customer)
        return;
    m_customer = key;
    const qint64 custId = key.isEmpty() ? -1 : key.toLongLong();
    auto sets = core::MainDatabase().together(
        {spareLocations(custId), u"Select JobNo from Job where CustID = "_s +
                                     QString::number(custId) + u" order by Jobno DESC"_s});
    dbcLocation->setRows(sets[0], u"slocation"_s, u"slocation"_s);
    dbcJob->setRows(sets[1], u"JobNo"_s, u"JobNo"_s);
    dbcJob->clear();
    jobChosen();
}

void frmSpareNew::jobChosen() {
    const QString key = dbcJob->boundText();
    if (key == m_job)
        return;
    m_job = key;
    if (key.isEmpty()) {
        txtJQty->clear();
        txtPart->clear();
        txtPO->clear();
        txtSpareTotPrice->clear();
        return;
    }
    const jet::Recordset job = core::MainDatabase().openRecordset(
        u"SELECT Quantity, PartNo, PONo, InvoiceTotal FROM Job WHERE JobNo = "_s + key,
        jet::RecordsetType::Snapshot);
    if (job.isEmpty())
        return;
    txtJQty->setText(job.text(u"Quantity"));
    txtPart->setText(job.text(u"PartNo"));
    txtPO->setText(job.text(u"PONo"));
    txtSpareTotPrice->setAmount(job[u"InvoiceTotal"].toCurrency());
}

void frmSpareNew::clearGoods() {
    dbcJob->clear();
    jobChosen();
    for (controls::Field* field : std::initializer_list<controls::Field*>{
             txtJQty, txtSpareQty, txtPart, txtPO, txtSparePrice, txtSpareTotPrice, txtNotes})
        field->clear();
}

SparePart frmSpareNew::typed() const {
    SparePart part;
    part.custId = dbcCompID->boundText().toLongLong();
    part.location = dbcLocation->text().trimmed();
    part.partNo = txtPart->text().trimmed();
    part.jobNo = dbcJob->text().trimmed().toLongLong();
    part.poNo = txtPO->text().trimmed();
    part.spareQty = txtSpareQty->text().toLongLong();
    part.jobQty = txtJQty->text().toLongLong();
    part.price = txtSparePrice->amount();
    part.totalPrice = txtSpareTotPrice->amount();
    part.employee = dbcEmployee->boundText().toLongLong();
    part.date = txtDate->date();
    part.notes = txtNotes->text();
    return part;
}

bool frmSpareNew::save() {
    const SparePart part = typed();
    if (const auto wrong = checkNewSpare(part)) {
        complain(*wrong);
        return false;
    }
    if (!txtDate->isValid()) {
        complain(u"Please enter a date, or leave it empty."_s, txtDate);
        return false;
    }
    addSpare(core::MainDatabase(), part);
    if (auto* list = screen::Forms::find<SpareList>(u"frmSpareParts"_s))
        list->showSpares(part.custId, part.location);
    return true;
}

// The customer and the location stay, and who it is.
void frmSpareNew::startNext() {
    clearGoods();
    dbcJob->setFocus();
}

} // namespace inventory
