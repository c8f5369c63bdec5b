#include "inventory/frmItemReStockPO.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace inventory {

using Kind = controls::GridColumn::Kind;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

const QString system = u"System Message"_s;

QString takeSelect(ReceivedLine& line, const QString& typed) {
    line.selected = typed == u"1";
    return {};
}

QString takeStock(ReceivedLine& line, const QString& typed) {
    line.stock = typed.trimmed().toLongLong();
    return {};
}

std::vector<controls::LineColumn<ReceivedLine>> columns() {
    const auto number = [](const QString& title, int characters, qint64 ReceivedLine::*member) {
        return controls::LineColumn<ReceivedLine>{
            .look = {title, characters, Kind::Number},
            .text = [member](const ReceivedLine& line) { return QString::number(line.*member); }};
    };
    auto stock = number(u"Stock"_s, 9, &ReceivedLine::stock);
    stock.look.filter = values::keys::digits();
    stock.look.limit = 9;
    stock.take = takeStock;
    return {{.look = {u"Select"_s, 7, Kind::Check},
             .text = [](const ReceivedLine& line) { return line.selected ? u"1"_s : u"0"_s; },
             .take = takeSelect},
            {.look = {u"Part Number"_s, 16},
             .text = [](const ReceivedLine& line) { return line.partNumber; }},
            {.look = {.title = u"Description"_s, .characters = 28, .stretches = true},
             .text = [](const ReceivedLine& line) { return line.description; }},
            stock,
            number(u"Total Received"_s, 13, &ReceivedLine::received),
            number(u"Ordered"_s, 9, &ReceivedLine::ordered),
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
    vaSpread1 = screen::named(new controls::LineGrid<ReceivedLine>(m_lines, columns(), this),
                              u"vaSpread1"_s, u"Received lines of the order"_s);
    vaSpread1->setMovable(false);
    outside->addWidget(vaSpread1, 1);
    auto* foot = new QHBoxLayout;
    outside->addLayout(foot);
    const auto button = [&](const QString& name, const QString& caption) {
        auto* made = screen::named(new QPushButton(caption, this), name);
        made->setAutoDefault(false);
        foot->addWidget(made);
        return made;
    };
    on(button(u"cmdSelAll"_s, u"Select &All"_s), [this] { selectAll(true); });
    on(button(u"cmdSelNone"_s, u"Select &None"_s), [this] { selectAll(false); });
    foot->addStretch();
    on(addOkCancel(foot, u"Stock &Selected"_s), &frmItemReStockPO::cmdOK_Click);
    resize(820, 420);
}

bool frmItemReStockPO::stock(qint64 poNumber, qint64 employee, const QDate& date) {
    m_how = {0, 0, employee, date, u"PO"_s, poNumber, 0};
    setWindowTitle(u"Stock Items - PO "_s + QString::number(poNumber));
    m_lines->setRows(receivedLines(core::MainDatabase(), poNumber));
    showModal();
    return m_done;
}

void frmItemReStockPO::selectAll(bool selected) {
    const controls::LineModel<ReceivedLine>::Group group(*m_lines);
    for (int place = 0; place < m_lines->count(); ++place) {
        ReceivedLine line = m_lines->row(place);
        line.selected = selected;
        m_lines->change(place, std::move(line));
    }
}

void frmItemReStockPO::cmdOK_Click() {
    vaSpread1->setFocus(); // what is being typed counts
    if (const QString why = vaSpread1->complaint(); !why.isEmpty()) {
        MsgBox(why, Buttons::Ok, Icon::Exclamation);
        return;
    }
    const auto& lines = m_lines->rows();
    const auto selected = [](const ReceivedLine& line) { return line.selected; };
    if (std::none_of(lines.begin(), lines.end(), selected)) {
        MsgBox(u"No Records Selected."_s, Buttons::Ok, Icon::Exclamation, u"Nothing Selected"_s);
        return;
    }
    for (const ReceivedLine& line : lines) {
        if (line.selected && line.stock <= 0) {
            complain(u"Please enter how many of part number "_s + line.partNumber +
                         u" are to be stocked."_s,
                     vaSpread1, Icon::Exclamation, system);
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
        Restock movement = m_how;
        movement.itemId = screen::Forms::dialog<ItemPicker>(u"frmItemReStockPOMulti"_s)
                              ->pickItem(line.partNumber, line.description);
        movement.quantity = line.stock;
        if (movement.itemId != 0 && !restock(database, movement))
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
