#include "inventory/frmItemReStockSelected.h"

#include "core/MirsaMain.h"
#include "inventory/Restock.h"
#include "inventory/StockEmployees.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

namespace {
const QString system = u"System Message"_s;
}

frmItemReStockSelected::frmItemReStockSelected()
    : Form(QString::fromLatin1(formName), u"Stock Selected Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    lblItem = fields.shown(u"lblItem"_s, u"Item:"_s, 36);
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    dbcVendor = fields.dataCombo(u"dbcVendor"_s, u"&Vendor:"_s, {.characters = 30});
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    txtQuantity = fields.text(u"txtQuantity"_s, u"&Quantity:"_s,
                              {.limit = 9, .filter = values::keys::decimal(), .characters = 10});
    outside->addStretch();
    on(addOkCancel(outside), &frmItemReStockSelected::cmdOK_Click);
}

bool frmItemReStockSelected::stock(qint64 itemId, qint64 employee, const QDate& date) {
    jet::Database& database = core::MainDatabase();
    m_itemId = itemId;
    const QString vendors = u"SELECT DISTINCT VendID, Company FROM Vendor ORDER BY Company"_s;
    database.expect({activeEmployeesSelect(), vendors});
    const auto row = itemRow(database, itemId);
    lblItem->setText(row ? row->item.description : QString());
    fillActiveEmployees(dbcEmployee);
    dbcEmployee->setBoundText(QString::number(employee));
    dbcVendor->setRows(database.openRecordset(vendors, jet::RecordsetType::Snapshot), u"Company"_s,
                       u"VendID"_s);
    txtDate->setValue(jet::Value(date));
    dbcVendor->setFocus();
    showModal();
    return m_done;
}

void frmItemReStockSelected::cmdOK_Click() {
    const auto refuse = [this](bool missing, const QString& text, QWidget* field) {
        if (missing)
            complain(text, field, screen::Icon::Critical, system);
        return missing;
    };
    const auto quantity = static_cast<qint64>(values::val(txtQuantity->text()));
    const auto date = txtDate->value().toDate();
    if (refuse(dbcEmployee->boundText().isEmpty(), u"Employee field cannot be blank."_s,
               dbcEmployee) ||
        refuse(dbcVendor->boundText().isEmpty(), u"Vendor must be specified."_s, dbcVendor) ||
        refuse(!date, u"Date must be specified."_s, txtDate) ||
        refuse(quantity <= 0, u"Quantity must be specified."_s, txtQuantity))
        return;
    Restock movement;
    movement.itemId = m_itemId;
    movement.quantity = quantity;
    movement.employee = dbcEmployee->boundText().toLongLong();
    movement.date = *date;
    movement.type = u"Manual"_s;
    movement.vendor = dbcVendor->boundText().toLongLong();
    m_done = restock(core::MainDatabase(), movement);
    if (!m_done)
        screen::MsgBox(u"This item has been deleted by another user."_s, screen::Buttons::Ok,
                       screen::Icon::Critical, system);
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(m_itemId);
    hideModal();
}

} // namespace inventory
