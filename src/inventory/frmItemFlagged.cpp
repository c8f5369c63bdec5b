#include "inventory/frmItemFlagged.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "inventory/InventoryDialogs.h"
#include "inventory/ItemRows.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace inventory {

frmItemFlagged::frmItemFlagged() : Form(QString::fromLatin1(formName), u"Flagged Items"_s) {
    auto* outside = new QVBoxLayout(this);
    vaSpread1 = screen::named(new controls::ListView(this), u"vaSpread1"_s, u"Flagged items"_s);
    vaSpread1->setColumns({{u"Description"_s, 28},
                           {u"Part Number"_s, 16},
                           {u"Manufacturer"_s, 14},
                           {u"Location"_s, 14},
                           {u"Type"_s, 14},
                           {u"Quantity"_s, 12},
                           {u"Flag"_s, 8, controls::GridColumn::Kind::Number}});
    outside->addWidget(vaSpread1, 1);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdGoto = bar.button(u"cmdGoto"_s, u"&Goto"_s);
    QPushButton* cmdOrder = bar.button(u"cmdOrder"_s, u"&Order Selected"_s);
    QPushButton* cmdReport = bar.button(u"cmdReport"_s, u"&Report"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdGoto);
    setCancelButton(cmdClose);
    on(cmdGoto, &frmItemFlagged::cmdGoto_Click);
    on(cmdOrder, &frmItemFlagged::cmdOrder_Click);
    on(cmdReport, [this] {
        core::launchReportFile(u"InventoryItemFlagged.rpt"_s, {}, u"Query Results"_s, this);
    });
    on(cmdClose, [this] { hideModal(); });
    on(vaSpread1->rowDoubleClicked, [this](int) { cmdGoto_Click(); });
    controls::offerInMenu(vaSpread1, {cmdGoto, cmdOrder, cmdReport});
    resize(860, 420);
}

void frmItemFlagged::Form_Load() {
    std::vector<controls::ListRow> rows;
    for (const ItemRow& item : flaggedItems(core::MainDatabase())) {
        rows.push_back(listRow(item));
        rows.back().texts << QString::number(item.item.flagQuantity);
    }
    vaSpread1->setRows(std::move(rows));
}

void frmItemFlagged::cmdOrder_Click() {
    const qint64 item = vaSpread1->keyNumber(vaSpread1->selectedRow());
    const auto row = item == 0 ? std::nullopt : itemRow(core::MainDatabase(), item);
    if (!row) {
        screen::MsgBox(u"Please select an item to order."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, u"System Message"_s);
        return;
    }
    // As many as bring it back to its minimum.
    screen::Forms::dialog<OrderDialog>(u"frmItemOrder"_s)
        ->order(item, std::max<qint64>(0, row->item.flagQuantity - row->item.quantity));
}

void frmItemFlagged::cmdGoto_Click() {
    const qint64 item = vaSpread1->keyNumber(vaSpread1->selectedRow());
    auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s);
    if (item == 0 || !explorer)
        return;
    explorer->goToItem(item);
    hideModal();
}

} // namespace inventory
