#include "inventory/frmItemReStock.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Text.h"

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
    Option2 = fields.option(u"Option2"_s, u"Stock from &PO"_s);
    const auto digits = values::keys::digits();
    dbcPONo = fields.dataCombo(u"dbcPONo"_s, u"PO N&umber:"_s,
                               {.limit = 9, .filter = digits, .characters = 12});
    Option3 = fields.option(u"Option3"_s, u"Stock from &Job"_s);
    dbcJobNo = fields.dataCombo(u"dbcJobNo"_s, u"Job &Number:"_s,
                                {.limit = 9, .filter = digits, .characters = 12});
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    outside->addStretch();
    on(addOkCancel(outside), &frmItemReStock::cmdOK_Click);
    for (QRadioButton* option : {Option1, Option2, Option3})
        on(option, &frmItemReStock::option_Click);
}

bool frmItemReStock::fillLists() {
    auto sets = core::MainDatabase().together(
        {u"SELECT DISTINCT TOP 500 PONumber FROM POReceived ORDER BY PONumber DESC"_s,
         u"SELECT DISTINCT TOP 500 JobNo, Description, PartNo, InvoiceEach, Quantity FROM Job "
         "WHERE Shipped = True ORDER BY JobNo DESC"_s,
         u"SELECT LastName + ', ' + FirstName as [Name], EmpId FROM Employee WHERE EmpStatus = "
         "'Active' ORDER BY LastName, FirstName"_s,
         u"SELECT TOP 1 Employee FROM ItemRestock ORDER BY ID DESC"_s});
    dbcPONo->setRows(sets[0], u"PONumber"_s, u"PONumber"_s);
    dbcJobNo->setRows(sets[1], u"JobNo"_s, u"JobNo"_s);
    dbcEmployee->setRows(sets[2], u"Name"_s, u"EmpId"_s);
    if (!sets[3].isEmpty())
        dbcEmployee->setBoundText(sets[3].text(u"Employee"));
    return !sets[2].isEmpty();
}

void frmItemReStock::stock(qint64 itemId) {
    m_itemId = itemId;
    const bool hasEmployees = fillLists();
    Option1->setEnabled(itemId != 0);
    Option2->setEnabled(dbcPONo->count() > 0);
    Option3->setEnabled(dbcJobNo->count() > 0);
    QRadioButton* first = nullptr;
    for (QRadioButton* option : {Option3, Option2, Option1}) {
        if (option->isEnabled())
            first = option;
    }
    if (!first) {
        tell(u"To stock an item you must select an item, have a PO with received items, or have "
             "a shipped job."_s);
        return;
    }
    if (!hasEmployees) {
        tell(u"You must create an employee before stocking an item."_s);
        return;
    }
    first->setChecked(true);
    first->setFocus();
    option_Click();
    txtDate->setValue(jet::Value(values::today()));
    showModal();
}

void frmItemReStock::option_Click() {
    dbcPONo->setEnabled(Option2->isChecked());
    dbcJobNo->setEnabled(Option3->isChecked());
}

void frmItemReStock::cmdOK_Click() {
    const auto refuse = [this](bool missing, const QString& text, QWidget* field) {
        if (missing)
            complain(text, field, screen::Icon::Exclamation, system);
        return missing;
    };
    const auto date = txtDate->value().toDate();
    const qint64 employee = dbcEmployee->boundText().toLongLong();
    if (refuse(dbcEmployee->boundText().isEmpty(), u"Please specify the stocking employee."_s,
               dbcEmployee) ||
        refuse(!date, u"Please specify the stocking date."_s, txtDate) ||
        refuse(Option2->isChecked() && dbcPONo->text().isEmpty(), u"Please select a PO Number."_s,
               dbcPONo) ||
        refuse(Option3->isChecked() && dbcJobNo->text().isEmpty(), u"Please select a Job Number."_s,
               dbcJobNo))
        return;
    using screen::Forms;
    const bool done =
        Option3->isChecked()   ? stockJob(dbcJobNo->text().toLongLong(), employee, *date)
        : Option2->isChecked() ? Forms::dialog<RestockFrom>(u"frmItemReStockPO"_s)
                                     ->stock(dbcPONo->text().toLongLong(), employee, *date)
                               : Forms::dialog<RestockFrom>(u"frmItemReStockSelected"_s)
                                     ->stock(m_itemId, employee, *date);
    if (done)
        hideModal();
}

bool frmItemReStock::stockJob(qint64 jobNo, qint64 employee, const QDate& date) {
    const auto goods = goodsOfJob(core::MainDatabase(), jobNo);
    if (!goods) {
        complain(u"Job Number %1 not found!"_s.arg(jobNo), dbcJobNo, screen::Icon::Exclamation,
                 system);
        return false;
    }
    if (!goods->matching.empty())
        return screen::Forms::dialog<RestockFrom>(u"frmItemRestockJob"_s)
            ->stock(jobNo, employee, date);
    if (screen::MsgBox(u"An Inventory item with a description or part number matching the job was "
                       "not found. Create new item?"_s,
                       screen::Buttons::OkCancel, screen::Icon::Question,
                       system) != screen::Answer::Ok)
        return false;
    return screen::Forms::dialog<StockNewItem>(u"frmItemRestockJobCreate"_s)
        ->create(goods->item, {0, goods->item.quantity, employee, date, u"Job"_s, jobNo, 0});
}

} // namespace inventory
