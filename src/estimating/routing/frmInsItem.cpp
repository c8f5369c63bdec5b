#include "estimating/routing/frmInsItem.h"

#include "core/MirsaMain.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace estimating {

frmInsItem::frmInsItem() : Form(QString::fromLatin1(formName), u"Insert Fixed Cost"_s) {
    auto* outside = new QVBoxLayout(this);
    lstItems = screen::named(new controls::ListView(this), u"lstItems"_s, u"Fixed cost items"_s);
    lstItems->setColumns({{u"Description"_s, 44}});
    lstItems->setMultipleSelection(true);
    outside->addWidget(lstItems, 1);

    auto* shown = new QWidget(this);
    outside->addWidget(shown);
    screen::Fields fields(shown);
    txtUnits = fields.text(u"txtUnits"_s, u"Unit:"_s, {.characters = 10});
    fields.nextColumn();
    txtUnitPrice = fields.text(u"txtUnitPrice"_s, u"Unit Price:"_s, {.characters = 14});
    txtUnits->setLocked(true);
    txtUnitPrice->setLocked(true);

    screen::ButtonBar bar(this, outside);
    optPosition[0] =
        screen::named(new QRadioButton(u"Insert &Before"_s, this), u"optPosition(0)"_s);
    optPosition[1] = screen::named(new QRadioButton(u"Insert &After"_s, this), u"optPosition(1)"_s);
    optPosition[1]->setChecked(true);
    bar.layout()->addWidget(optPosition[0]);
    bar.layout()->addWidget(optPosition[1]);
    bar.stretch();
    QPushButton* cmdOK = bar.button(u"cmdOK"_s, u"&OK"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);

    on(lstItems->selectionChangedByUser, &frmInsItem::lstItems_Click);
    on(lstItems->rowDoubleClicked, [this](int) { cmdOK_Click(); });
    on(cmdOK, &frmInsItem::cmdOK_Click);
    on(cmdCancel, [this] { hideModal(); });
    resize(520, 460);
}

std::optional<InsertedItems> frmInsItem::insert(const std::vector<qint64>& taken) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT * FROM MiscItems ORDER BY Description"_s, jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const qint64 itemNo = set[u"ItemNo"].toLong();
        if (std::find(taken.begin(), taken.end(), itemNo) != taken.end())
            continue;
        m_items.push_back({itemNo,
                           set.text(u"Description"),
                           set.text(u"UnitOfMeasure"),
                           set[u"UnitPrice"].toCurrency(),
                           {},
                           {}});
        lstItems->addRow(u"M"_s + QString::number(itemNo), {m_items.back().description});
    }
    if (m_items.empty()) {
        screen::MsgBox(u"No items to select from!"_s);
        return std::nullopt;
    }
    lstItems->setFocus();
    showModal();
    if (!m_ok)
        return std::nullopt;
    InsertedItems chosen;
    chosen.before = optPosition[0]->isChecked();
    for (const int row : lstItems->selectedRows()) {
        if (const MiscRow* item = itemOf(row))
            chosen.rows.push_back(*item);
    }
    return chosen;
}

const MiscRow* frmInsItem::itemOf(int row) const {
    // By number: the list may have been sorted.
    const qint64 itemNo = lstItems->keyNumber(row);
    const auto found = std::find_if(m_items.begin(), m_items.end(), [itemNo](const MiscRow& item) {
        return item.itemNo == itemNo;
    });
    return found == m_items.end() ? nullptr : &*found;
}

void frmInsItem::lstItems_Click() {
    const MiscRow* item = itemOf(lstItems->selectedRow());
    if (!item)
        return;
    txtUnits->setText(item->unit.trimmed());
    const bool showDollar = core::HasAccess(u"ShowDollar"_s);
    txtUnitPrice->setText(showDollar ? values::format(item->price, u"#0.0000") : QString());
}

void frmInsItem::cmdOK_Click() {
    m_ok = true;
    hideModal();
}

} // namespace estimating
