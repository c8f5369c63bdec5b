#include "inventory/frmItemReStockPO.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"

#include <QVBoxLayout>

namespace inventory {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

const QString system = u"System Message"_s;

QString takeStock(ReceivedLine& line, const QString& typed) {
    line.stock = typed.trimmed().toLongLong();
    return {};
}

std::vector<controls::LineColumn<ReceivedLine>> columns() {
    using Lines = TickedLines<ReceivedLine>;
    auto stock = Lines::number(u"Stock"_s, 9, &ReceivedLine::stock);
    stock.look.filter = values::keys::digits();
    stock.look.limit = 9;
    stock.take = takeStock;
    return {Lines::tick(u"Select"_s, 7, &ReceivedLine::selected),
            {.look = {u"Part Number"_s, 16},
             .text = [](const ReceivedLine& line) { return line.partNumber; }},
            {.look = {.title = u"Description"_s, .characters = 28, .stretches = true},
             .text = [](const ReceivedLine& line) { return line.description; }},
            stock,
            Lines::number(u"Total Received"_s, 13, &ReceivedLine::received),
            Lines::number(u"Ordered"_s, 9, &ReceivedLine::ordered),
            {.look = {.title = u"ID"_s, .hidden = true},
             .text = [](const ReceivedLine& line) { return QString::number(line.lineId); }}};
}

void tellExplorer(qint64 item) {
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(item);
}

} // namespace

frmItemReStockPO::frmItemReStockPO() : Form(QString::fromLatin1(formName), u"Stock Items"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* foot = m_lines.make(*this, outside, columns(), u"Received lines of the order"_s);
    on(addOkCancel(foot, u"Stock &Selected"_s), &frmItemReStockPO::cmdOK_Click);
    resize(820, 420);
}

bool frmItemReStockPO::stock(qint64 poNumber, qint64 employee, const QDate& date) {
    m_how = {0, 0, employee, date, u"PO"_s, poNumber, 0};
    setWindowTitle(u"Stock Items - PO "_s + QString::number(poNumber));
    m_lines.model->setRows(receivedLines(core::MainDatabase(), poNumber));
    showModal();
    return m_done;
}

void frmItemReStockPO::cmdOK_Click() {
    if (!m_lines.areReady())
        return;
    const auto& lines = m_lines.model->rows();
    for (const ReceivedLine& line : lines) {
        if (line.selected && line.stock <= 0) {
            complain(u"Please enter how many of part number "_s + line.partNumber +
                         u" are to be stocked."_s,
                     m_lines.grid, Icon::Exclamation, system);
            return;
        }
    }
    jet::Database& database = core::MainDatabase();
    const auto left = stockLines(database, m_how, lines);
    m_done = true;
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->showAgain();
    if (!left.empty())
        m_how.vendor = vendorOfOrder(database, m_how.number);
    for (const LeftLine& line : left)
        restockItem(line);
    hideModal();
}

void frmItemReStockPO::restockItem(const LeftLine& left) {
    jet::Database& database = core::MainDatabase();
    const ReceivedLine& line = left.line;
    if (!left.items.empty()) {
        const auto item = screen::Forms::dialog<ItemPicker>(u"frmItemReStockPOMulti"_s)
                              ->pickItem(line.partNumber, line.description);
        if (!item)
            return;
        Restock movement = m_how;
        movement.itemId = *item;
        movement.quantity = line.stock;
        if (!restock(database, movement))
            MsgBox(u"This item has been deleted by another user."_s, Buttons::Ok, Icon::Critical,
                   system);
        tellExplorer(movement.itemId);
        return;
    }
    if (MsgBox(u"Part number "_s + line.partNumber +
                   u" is not an existing inventory item. Create?"_s,
               Buttons::OkCancel, Icon::Question, system) == screen::Answer::Ok)
        screen::Forms::dialog<StockNewItem>(u"frmItemReStockCreate"_s)
            ->create(itemOfLine(database, line.lineId), m_how);
}

} // namespace inventory
