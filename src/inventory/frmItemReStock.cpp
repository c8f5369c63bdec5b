#include "inventory/frmItemReStock.h"

#include "core/MirsaMain.h"
#include "inventory/StockEmployees.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

void tell(const QString& text) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Exclamation, system);
}

} // namespace

frmItemReStock::frmItemReStock() : Form(QString::fromLatin1(formName), u"Stock Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    Option1 = fields.option(u"Option1"_s, u"Stock &Selected Item"_s);
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    outside->addStretch();
    on(addOkCancel(outside), &frmItemReStock::cmdOK_Click);
}

void frmItemReStock::stock(qint64 itemId) {
    m_itemId = itemId;
    if (itemId == 0) {
        tell(u"To stock an item you must select an item, have a PO with received items, or have "
             "a shipped job."_s);
        return;
    }
    if (!fillActiveEmployees(dbcEmployee)) {
        tell(u"You must create an employee before stocking an item."_s);
        return;
    }
    dbcEmployee->setBoundText(
        core::MainDatabase()
            .lookup(u"SELECT TOP 1 Employee FROM ItemRestock ORDER BY ID DESC"_s)
            .toText());
    Option1->setChecked(true);
    txtDate->setValue(jet::Value(values::today()));
    showModal();
}

void frmItemReStock::cmdOK_Click() {
    if (dbcEmployee->boundText().isEmpty()) {
        complain(u"Please specify the stocking employee."_s, dbcEmployee, screen::Icon::Exclamation,
                 system);
        return;
    }
    const auto date = txtDate->value().toDate();
    if (!date) {
        complain(u"Please specify the stocking date."_s, txtDate, screen::Icon::Exclamation,
                 system);
        return;
    }
    if (screen::Forms::dialog<RestockSelected>(u"frmItemReStockSelected"_s)
            ->stock(m_itemId, dbcEmployee->boundText().toLongLong(), *date))
        hideModal();
}

} // namespace inventory
