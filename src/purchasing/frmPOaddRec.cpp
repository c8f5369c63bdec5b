#include "purchasing/frmPOaddRec.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/values/Clock.h"

#include <QVBoxLayout>

namespace purchasing {

using Kind = controls::GridColumn::Kind;
using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

using Column = controls::LineColumn<ReceiveLine>;

QString takeQuantity(ReceiveLine& line, const QString& typed) {
    const QString text = typed.trimmed();
    bool whole = text.isEmpty();
    const int number = whole ? 0 : text.toInt(&whole);
    if (!whole)
        return u"\""_s + text + u"\" is not a quantity."_s;
    line.quantity = number;
    return {};
}

} // namespace

std::vector<Column> frmPOaddRec::columns() {
    using Lines = inventory::TickedLines<ReceiveLine>;
    return {Lines::tick(u"Select"_s, 7, &ReceiveLine::selected),
            Lines::tick(u"Stock Inv."_s, 10, &ReceiveLine::stock),
            {.look = {u"Part Number"_s, 16},
             .text = [](const ReceiveLine& line) { return line.partNumber; }},
            {.look = {.title = u"Description"_s, .characters = 26, .stretches = true},
             .text = [](const ReceiveLine& line) { return line.description; }},
            {.look = {u"Receive"_s, 9, Kind::Number, true, values::keys::digits(), {}, 9},
             .text = [](const ReceiveLine& line) { return QString::number(line.quantity); },
             .take = takeQuantity},
            Lines::number(u"Total Received"_s, 13, &ReceiveLine::received),
            Lines::number(u"Ordered"_s, 9, &ReceiveLine::ordered),
            {.look = {.title = u"ID"_s, .hidden = true},
             .text = [](const ReceiveLine& line) { return QString::number(line.itemId); }}};
}

frmPOaddRec::frmPOaddRec()
    : Form(QString::fromLatin1(formName), u"Received History - Add Record(s)"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    dbcEmp = fields.dataCombo(u"dbcEmp"_s, u"&Employee:"_s, {.characters = 28});
    txtName = fields.text(u"txtName"_s, u"Employee Number:"_s, {.characters = 8});
    txtName->setLocked(true);
    fields.nextColumn();
    txtDate = fields.date(u"txtDate"_s, u"&Date Received:"_s);
    fields.grid()->setColumnStretch(4, 1);
    auto* foot = m_lines.make(*this, outside, columns(), u"Open lines of the order"_s);
    on(addOkCancel(foot, u"Receive &Selected"_s), &frmPOaddRec::cmdOK_Click);
    on(dbcEmp->chosen, [this] { txtName->setText(dbcEmp->boundText()); });
    on(dbcEmp->left, [this] { txtName->setText(dbcEmp->boundText()); });
    resize(860, 460);
}

void frmPOaddRec::fillEmployees() {
    dbcEmp->setRows(core::MainDatabase().openRecordset(
                        u"SELECT (LastName + ' , ' + FirstName) AS [Name], EmpID FROM Employee "
                        "ORDER BY LastName, FirstName"_s,
                        jet::RecordsetType::Snapshot),
                    u"Name"_s, u"EmpID"_s);
}

bool frmPOaddRec::receiveInto(qint64 poNumber) {
    m_po = poNumber;
    fillEmployees();
    if (dbcEmp->count() == 0) {
        MsgBox(u"You cannot add item to the Received History if you have no employees in the "
               "database!"_s,
               Buttons::Ok, Icon::Exclamation, u"Error"_s);
        return false;
    }
    m_lines.model->setRows(openLines(core::MainDatabase(), poNumber));
    txtDate->setDate(values::today());
    dbcEmp->setFocus();
    showModal();
    return m_received;
}

void frmPOaddRec::cmdOK_Click() {
    if (!m_lines.areReady())
        return;
    txtName->setText(dbcEmp->boundText());
    if (txtName->text().isEmpty()) {
        complain(u"Employee field cannot be blank."_s, dbcEmp, Icon::Critical, u"System Message"_s);
        return;
    }
    if (!txtDate->date()) {
        complain(u"Date must be specified."_s, txtDate, Icon::Critical, u"System Message"_s);
        return;
    }
    const Receipt receipt{m_po, *txtDate->date(), txtName->text().toLongLong()};
    std::vector<Unstocked> left;
    try {
        left = receive(core::MainDatabase(), receipt, m_lines.model->rows());
    } catch (const LineGone& gone) {
        MsgBox(u"Part number "_s + gone.partNumber +
                   u" is not on this purchase order any more: its lines have been changed at "
                   "another station. Nothing has been received."_s,
               Buttons::Ok, Icon::Exclamation);
        return;
    }
    m_received = true;
    stockLeft(receipt, left);
    hideModal();
}

void frmPOaddRec::stockLeft(const Receipt& receipt, const std::vector<Unstocked>& left) {
    jet::Database& database = core::MainDatabase();
    for (const Unstocked& one : left) {
        const ReceiveLine& line = one.line;
        if (!one.items.empty()) {
            const auto item =
                screen::Forms::dialog<inventory::ItemPicker>(u"frmItemReStockPOMulti"_s)
                    ->pickItem(line.partNumber, line.description);
            if (item)
                stockReceipt(database, receipt, one.receiptId, *item, line.quantity);
            continue;
        }
        if (MsgBox(u"Part number "_s + line.partNumber +
                       u" is not an inventory item and cannot be stocked unless it is created. "
                       "Create?"_s,
                   Buttons::OkCancel, Icon::Question, u"System Message"_s) != Answer::Ok)
            continue;
        const inventory::Restock movement{0,
                                          line.quantity,
                                          receipt.employee,
                                          receipt.date,
                                          u"PO"_s,
                                          receipt.poNumber,
                                          inventory::vendorOfOrder(database, receipt.poNumber)};
        inventory::Item goods = inventory::itemOfLine(database, line.itemId);
        goods.quantity = line.quantity;
        screen::Forms::dialog<inventory::StockNewItem>(u"frmPOItemRestock"_s)
            ->create(goods, movement, [&database, &one] { markStocked(database, one.receiptId); });
    }
}

} // namespace purchasing
