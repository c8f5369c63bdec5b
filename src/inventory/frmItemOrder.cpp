#include "inventory/frmItemOrder.h"

#include "core/MirsaMain.h"
#include "core/history/HistoryTargets.h"
#include "platform/screen/Forms.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

bool is(const controls::ListCombo* combo, const QString& type) {
    return combo->text() == type;
}

std::vector<jet::WantedSet> lists() {
    return {u"SELECT VendID, Company FROM Vendor ORDER BY Company"_s,
            u"SELECT TOP 1000 PO.PONumber, POVendor.Company FROM PO LEFT JOIN POVendor ON "
            "PO.PONumber = POVendor.OrderNumber ORDER BY PO.PONumber DESC"_s};
}

} // namespace

frmItemOrder::frmItemOrder() : Form(QString::fromLatin1(formName), u"Order Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields head(this, outside);
    lblItem = head.shown(u"lblItem"_s, u"Item:"_s, 44);
    const auto option = [&](const QString& name, const QString& caption, Line& line,
                            const QString& frameName) {
        auto* made = screen::named(new QRadioButton(caption, this), name);
        outside->addWidget(made);
        line.frame = screen::frame(this, outside, frameName, {});
        on(made, &frmItemOrder::option_Click);
        return made;
    };
    Option1 = option(u"Option1"_s, u"Create a &New PO"_s, m_new, u"fraNew"_s);
    screen::Fields first(m_new.frame);
    dbcVendor = first.dataCombo(u"dbcVendor"_s, u"&Vendor:"_s, {.characters = 34});
    addLineFields(m_new, first, {});
    txtReqDate = first.date(u"txtReqDate"_s, u"Required &Date:"_s);
    Option2 = option(u"Option2"_s, u"Add to Existing &PO"_s, m_existing, u"fraExisting"_s);
    screen::Fields second(m_existing.frame);
    dbcPONo = second.dataCombo(u"dbcPONo"_s, u"PO Nu&mber:"_s,
                               {.limit = 9, .filter = values::keys::digits(), .characters = 12});
    lblVendor = second.shown(u"lblVendor"_s, u"Vendor:"_s, 34);
    addLineFields(m_existing, second, u"2"_s);
    outside->addStretch();
    on(addOkCancel(outside), &frmItemOrder::cmdOK_Click);
    on(dbcPONo->chosen, &frmItemOrder::dbcPONo_Change);
    on(dbcPONo->left, &frmItemOrder::dbcPONo_Change);
}

// The two frames are never enabled together, so their fields may share their letters.
void frmItemOrder::addLineFields(Line& line, screen::Fields& fields, const QString& behind) {
    const bool first = behind.isEmpty();
    line.txtQuantity =
        fields.text(u"txtQuantity"_s + behind, first ? u"&Quantity:"_s : u"Qu&antity:"_s,
                    {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    line.cboType = fields.listCombo(u"cboType"_s + behind, first ? u"&Type:"_s : u"T&ype:"_s);
    for (const auto* type : {u"Stock", u"Job", u"Estimate", u"Overhead"})
        line.cboType->addRow(QString::fromUtf16(type));
    line.cboType->clear();
    line.dbcNumber =
        fields.dataCombo(u"dbcNumber"_s + behind, u"Select Job"_s,
                         {.limit = 9, .filter = values::keys::digits(), .characters = 12});
    line.lblNumber = fields.label();
    on(line.cboType->chosen, [this, &line] { cboType_Click(line); });
}

void frmItemOrder::fillLists() {
    auto sets = core::MainDatabase().together(lists());
    dbcVendor->setRows(sets[0], u"Company"_s, u"VendID"_s);
    for (jet::Recordset orders = sets[1]; !orders.eof(); orders.moveNext())
        m_vendors.insert(orders.field(0).toText(), orders.field(1).toText());
    dbcPONo->setRows(sets[1], u"PONumber"_s, u"PONumber"_s);
}

void frmItemOrder::order(qint64 itemId, qint64 quantity) {
    core::MainDatabase().expect(lists());
    const auto item = loadItem(core::MainDatabase(), itemId);
    if (!item || item->description.isEmpty() || item->partNumber.isEmpty()) {
        screen::MsgBox(item ? u"An Item must have both a description and a part number to be "
                              "ordered."_s
                            : u"This item has been deleted by another user."_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation, system);
        return;
    }
    m_item = *item;
    lblItem->setText(m_item.partNumber + u"  "_s + m_item.description);
    fillLists();
    for (Line* line : {&m_new, &m_existing}) {
        if (quantity > 0)
            line->txtQuantity->setText(QString::number(quantity));
        cboType_Click(*line);
    }
    Option1->setChecked(true);
    option_Click();
    Option1->setFocus();
    showModal();
}

void frmItemOrder::option_Click() {
    m_new.frame->setEnabled(Option1->isChecked());
    m_existing.frame->setEnabled(Option2->isChecked());
}

void frmItemOrder::cboType_Click(Line& line) {
    const bool job = is(line.cboType, u"Job"_s);
    const bool asks = job || is(line.cboType, u"Estimate"_s);
    line.dbcNumber->setVisible(asks);
    line.lblNumber->setVisible(asks);
    line.dbcNumber->setText({});
    if (!asks)
        return;
    const QString caption = job ? u"Select Job"_s : u"Select Estimate"_s;
    line.lblNumber->setText(caption);
    line.dbcNumber->setAccessibleName(caption);
    const QString column = job ? u"JobNo"_s : u"EstNo"_s;
    line.dbcNumber->setRows(
        core::MainDatabase().openRecordset(worksSelect(job), jet::RecordsetType::Snapshot), column,
        column);
}

void frmItemOrder::dbcPONo_Change() {
    lblVendor->setText(m_vendors.value(dbcPONo->text().trimmed()));
}

bool frmItemOrder::refuse(bool missing, const QString& text, QWidget* field) {
    if (missing)
        complain(text, field, screen::Icon::Exclamation, system);
    return missing;
}

std::optional<StockOrder> frmItemOrder::ordered(const Line& line) {
    const bool asks = is(line.cboType, u"Job"_s) || is(line.cboType, u"Estimate"_s);
    const qint64 quantity = line.txtQuantity->text().toLongLong();
    const qint64 number = line.dbcNumber->text().trimmed().toLongLong();
    if (refuse(quantity <= 0, u"Please enter a quantity."_s, line.txtQuantity) ||
        refuse(line.cboType->text().isEmpty(), u"Please choose an item type."_s, line.cboType) ||
        refuse(asks && number == 0, line.cboType->text() + u" number cannot be blank."_s,
               line.dbcNumber) ||
        refuse(asks && !isWork(core::MainDatabase(), is(line.cboType, u"Job"_s), number),
               u"%1 No. %2 does not exist!"_s.arg(line.cboType->text()).arg(number),
               line.dbcNumber))
        return {};
    return StockOrder{m_item, quantity, line.cboType->text(), asks ? number : 0};
}

void frmItemOrder::cmdOK_Click() {
    const bool fresh = Option1->isChecked();
    if (refuse(fresh && dbcVendor->boundText().isEmpty(), u"Please select a vendor."_s,
               dbcVendor) ||
        refuse(!fresh && dbcPONo->text().trimmed().isEmpty(), u"Please select a PO."_s, dbcPONo))
        return;
    const Line& line = fresh ? m_new : m_existing;
    const auto order = ordered(line);
    if (!order)
        return;
    jet::Database& database = core::MainDatabase();
    qint64 poNumber = dbcPONo->text().toLongLong();
    try {
        if (fresh) {
            poNumber =
                orderNew(database, *order, dbcVendor->boundText().toLongLong(), txtReqDate->date());
            if (refuse(poNumber == 0, u"This vendor has been deleted by another user."_s,
                       dbcVendor))
                return;
        } else if (refuse(!orderOnto(database, *order, poNumber),
                          u"PO Number %1 not found!"_s.arg(poNumber), dbcPONo)) {
            return;
        }
    } catch (const values::Overflow&) {
        refuse(true, u"The total is too large."_s, line.txtQuantity);
        return;
    }
    showOrder(poNumber);
    hideModal();
}

void frmItemOrder::showOrder(qint64 poNumber) {
    core::refreshNeighbours({u"frmPO"_s}, u"PO"_s);
    if (auto* orders = screen::Forms::find<core::RecordScreen>(u"frmPO"_s))
        orders->goToRecord(poNumber);
    core::RefreshHistoryIfOpen(u"PO"_s);
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(m_item.id);
}

} // namespace inventory
