#include "inventory/frmItemReStockPOMulti.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace inventory {

frmItemReStockPOMulti::frmItemReStockPOMulti()
    : Form(QString::fromLatin1(formName), u"Select Correct Item"_s) {
    auto* outside = new QVBoxLayout(this);
    sprItems = screen::named(new controls::Grid(this), u"sprItems"_s, u"Matching items"_s);
    sprItems->setColumns({{.title = u"Description"_s, .characters = 28, .stretches = true},
                          {u"Part Number"_s, 16},
                          {u"Manufacturer"_s, 16},
                          {u"Location"_s, 14},
                          {u"Type"_s, 14},
                          {u"Quantity"_s, 10}});
    outside->addWidget(sprItems, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&Use Selected"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(cmdSelect, &frmItemReStockPOMulti::cmdSelect_Click);
    on(sprItems->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    on(cmdCancel, [this] { hideModal(); });
    resize(820, 360);
}

qint64 frmItemReStockPOMulti::pickItem(const QString& partNumber, const QString& description) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT Items.ID, Items.Description AS Description, Items.Manufacturer, "
        "Items.PartNumber, Items.Quantity, Items.Units, ItemLocations.Description AS "
        "LocationDesc, ItemTypes.Description as TypeDesc FROM (Items LEFT JOIN ItemTypes ON "
        "Items.Type = ItemTypes.ID) LEFT JOIN ItemLocations ON Items.Location = "
        "ItemLocations.ID WHERE Items.PartNumber = '"_s +
            values::quoted(partNumber) + u"' AND Items.Description = '"_s +
            values::quoted(description) + u"' ORDER BY Items.ID DESC"_s,
        jet::RecordsetType::Snapshot);
    std::vector<QStringList> rows;
    std::vector<qint64> keys;
    for (; !set.eof(); set.moveNext()) {
        keys.push_back(set[u"ID"].toLong());
        rows.push_back({set.text(u"Description"), set.text(u"PartNumber"),
                        set.text(u"Manufacturer"), set.text(u"LocationDesc"), set.text(u"TypeDesc"),
                        set.text(u"Quantity") + u" "_s + set.text(u"Units")});
    }
    sprItems->setRows(std::move(rows));
    for (int row = 0; row < sprItems->rowCount(); ++row)
        sprItems->setRowKey(row, keys[static_cast<std::size_t>(row)]);
    sprItems->setActiveRow(0);
    sprItems->setFocus();
    showModal();
    return m_item;
}

void frmItemReStockPOMulti::cmdSelect_Click() {
    m_item = sprItems->rowKey(sprItems->activeRow());
    if (m_item != 0)
        hideModal();
}

} // namespace inventory
