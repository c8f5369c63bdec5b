#include "inventory/frmSpareEdit.h"

#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "platform/screen/Layout.h"

#include <QGroupBox>
#include <QVBoxLayout>

namespace inventory {

namespace {

void tellGone() {
    screen::MsgBox(u"This record has been deleted by another user."_s, screen::Buttons::Ok,
                   screen::Icon::Exclamation);
}

} // namespace

frmSpareEdit::frmSpareEdit() : Form(QString::fromLatin1(formName), u"Edit Spare Parts Record"_s) {
    auto* outside = new QVBoxLayout(this);
    fraEntry = screen::frame(this, outside, u"fraEntry"_s, {});
    screen::Fields fields(fraEntry);
    dbcLocation = fields.dataCombo(
        u"dbcLocation"_s, u"&Location:"_s,
        {.limit = core::MainDatabase().width(u"SpareParts", u"SLocation"), .characters = 30});
    mskQty = fields.text(u"mskQty"_s, u"&Quantity:"_s,
                         {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    txtSparePrice =
        fields.secured(m_secured).currency(u"txtSparePrice"_s, u"P&rice:"_s, u"#####0.00"_s);
    txtSpareTotPrice = fields.secured(m_secured).currency(u"txtSpareTotPrice"_s, u"&Total Price:"_s,
                                                          u"#####0.00"_s);
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    txtNotes = fields.memo(u"txtNotes"_s, u"&Notes:"_s, 4);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdSpell = bar.button(u"cmdSpell"_s, u"&Spelling..."_s);
    bar.stretch();
    on(cmdSpell, [this] { core::checkSpelling(txtNotes); });
    on(addOkCancel(outside), &frmSpareEdit::cmdOK_Click);
    for (QWidget* field : m_secured)
        field->setVisible(core::HasAccess(u"ShowDollar"_s));
}

bool frmSpareEdit::edit(qint64 index) {
    jet::Database& database = core::MainDatabase();
    const auto part = sparePart(database, index);
    if (!part) {
        tellGone();
        return true;
    }
    m_before = *part;
    auto sets = database.together(
        {spareLocations(part->custId),
         u"Select (LastName + ' , ' + FirstName) as [Name], EmpId from Employee order by lastname, "
         "firstname"_s});
    dbcLocation->setRows(sets[0], u"slocation"_s, u"slocation"_s);
    dbcEmployee->setRows(sets[1], u"Name"_s, u"EmpId"_s);
    fraEntry->setTitle(u"Spare Parts Entry for Part Number "_s + part->partNo);
    dbcLocation->setText(part->location);
    mskQty->setText(QString::number(part->spareQty));
    txtSparePrice->setAmount(part->price);
    txtSpareTotPrice->setAmount(part->totalPrice);
    dbcEmployee->setBoundText(QString::number(part->employee));
    txtNotes->setText(part->notes);
    showModal();
    return m_saved;
}

void frmSpareEdit::cmdOK_Click() {
    SparePart part = m_before;
    part.location = dbcLocation->text().trimmed();
    part.spareQty = mskQty->text().toLongLong();
    part.price = txtSparePrice->amount();
    part.totalPrice = txtSpareTotPrice->amount();
    part.employee = dbcEmployee->boundText().toLongLong();
    part.notes = txtNotes->text();
    if (const auto wrong = checkEditedSpare(part)) {
        complain(*wrong);
        return;
    }
    m_saved = true;
    if (!saveSpare(core::MainDatabase(), part, m_before))
        tellGone();
    hideModal();
}

} // namespace inventory
