#include "purchasing/frmPOItemRestock.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace purchasing {

frmPOItemRestock::frmPOItemRestock() : Form(QString::fromLatin1(formName), u"New Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    const values::KeyFilter tree = values::keys::treeName();
    txtPartNumber = fields.text(u"txtPartNumber"_s, u"&Part Number:"_s,
                                {.limit = 60, .filter = tree, .characters = 30});
    txtDescription = fields.text(u"txtDescription"_s, u"&Description:"_s,
                                 {.limit = 255, .filter = tree, .characters = 44});
    cboMan = fields.dataCombo(u"cboMan"_s, u"&Manufacturer:"_s,
                              {.limit = 255, .filter = tree, .characters = 30});
    dbcUnits = fields.dataCombo(u"dbcUnits"_s, u"&Units:"_s, {.limit = 20, .characters = 12});
    const auto folder = [&](const QString& name, const QString& label, const QString& buttonName,
                            const QString& view, qint64& chosen) {
        auto* row = new QWidget(this);
        auto* across = new QHBoxLayout(row);
        across->setContentsMargins(0, 0, 0, 0);
        auto* path = screen::named(new controls::TextField(row), name, view);
        path->setLocked(true);
        across->addWidget(path, 1);
        across->addWidget(pickButton(buttonName, u"Select a "_s + view, view, path, chosen));
        fields.add(row, u"fra"_s + view, label);
        return path;
    };
    txtType = folder(u"txtType"_s, u"Tool Type:"_s, u"cmdTreeType"_s, u"Type"_s, m_type);
    txtLocation =
        folder(u"txtLocation"_s, u"Location:"_s, u"cmdTreeLoc"_s, u"Location"_s, m_location);
    fpQuantity = fields.text(u"fpQuantity"_s, u"&Quantity:"_s,
                             {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    fpCost = fields.currency(u"fpCost"_s, u"Unit P&rice:"_s);
    chkFlag = fields.check(u"chkFlag"_s, u"Set &Flag"_s);
    txtFlagQuantity = fields.text(u"txtFlagQuantity"_s, u"Minimum Quantity:"_s,
                                  {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    txtFlagQuantity->setLocked(true);
    connect(chkFlag, &QCheckBox::toggled, this,
            [this](bool on) { txtFlagQuantity->setLocked(!on); });
    outside->addStretch();
    on(addOkCancel(outside), &frmPOItemRestock::cmdOK_Click);
}

QPushButton* frmPOItemRestock::pickButton(const QString& name, const QString& spoken,
                                          const QString& view, controls::TextField* path,
                                          qint64& folder) {
    auto* button = screen::named(new QPushButton(u"..."_s, this), name, spoken);
    button->setAutoDefault(false);
    button->setMaximumWidth(32);
    button->setToolTip(spoken);
    on(button, [view, path, &folder] {
        const auto [id, text] =
            screen::Forms::dialog<inventory::FolderPicker>(u"frmItemTreeSelect"_s)
                ->pickFolder(view);
        if (id == 0)
            return;
        folder = id;
        path->setText(text);
    });
    return button;
}

void frmPOItemRestock::fillLists() {
    const auto read = [](const QString& select) {
        return core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    };
    cboMan->setRows(read(u"SELECT Company FROM Manufacturer ORDER BY Company"_s), u"Company"_s,
                    u"Company"_s);
    dbcUnits->setRows(read(u"SELECT * FROM UnitOfMeasure ORDER BY Code"_s), u"code"_s, u"code"_s);
}

bool frmPOItemRestock::create(qint64 itemId, const inventory::Restock& movement,
                              const std::function<void()>& alsoWrite) {
    m_movement = movement;
    m_alsoWrite = alsoWrite;
    fillLists();
    const jet::Recordset line = core::MainDatabase().openRecordset(
        u"SELECT Manufacturer, partNumber, description, unitPrice, unitofmeasure FROM POItem "
        "WHERE ID = "_s +
            QString::number(itemId),
        jet::RecordsetType::Snapshot);
    if (!line.isEmpty()) {
        cboMan->setText(line.text(u"Manufacturer"));
        txtPartNumber->setText(line.text(u"partNumber"));
        txtDescription->setText(line.text(u"description"));
        fpCost->setAmount(line[u"unitPrice"].toCurrency());
        dbcUnits->setText(line.text(u"unitofmeasure"));
    }
    fpQuantity->setText(QString::number(movement.quantity));
    txtFlagQuantity->setText(u"0"_s);
    showModal();
    return m_saved;
}

void frmPOItemRestock::cmdOK_Click() {
    const inventory::NewItem item{
        .partNumber = txtPartNumber->text().trimmed(),
        .description = txtDescription->text().trimmed(),
        .manufacturer = cboMan->text().trimmed(),
        .units = dbcUnits->text().trimmed(),
        .priceEach = fpCost->amount(),
        .quantity = fpQuantity->text().toLongLong(),
        .flagQuantity = chkFlag->isChecked() ? txtFlagQuantity->text().toLongLong() : 0,
        .type = m_type,
        .location = m_location};
    if (const auto complaint = inventory::checkItem(item)) {
        complain(complaint->text, control(complaint->field), screen::Icon::Exclamation,
                 u"System Message"_s);
        return;
    }
    jet::Transaction transaction(core::MainDatabase());
    inventory::createStocked(core::MainDatabase(), item, m_movement);
    m_alsoWrite();
    transaction.commit();
    m_saved = true;
    hideModal();
}

} // namespace purchasing
