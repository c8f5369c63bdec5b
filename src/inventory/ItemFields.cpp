#include "inventory/ItemFields.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"

#include <QCheckBox>
#include <QPushButton>

namespace inventory {

ItemFields::ItemFields(screen::Form& form, screen::Fields fields) {
    jet::Database& database = core::MainDatabase();
    const auto width = [&](const char16_t* column) { return database.width(u"Items", column); };
    const auto names = values::keys::treeName();
    txtDescription =
        fields.text(u"txtDescription"_s, u"&Description:"_s,
                    {.limit = width(u"Description"), .filter = names, .characters = 40});
    txtPartNumber = fields.text(u"txtPartNumber"_s, u"&Part Number:"_s,
                                {.limit = width(u"PartNumber"), .filter = names});
    cboMan =
        fields.dataCombo(u"cboMan"_s, u"&Manufacturer:"_s, {.filter = names, .characters = 30});
    dbcUnits =
        fields.dataCombo(u"dbcUnits"_s, u"&Units:"_s, {.limit = width(u"Units"), .characters = 12});
    fpQuantity = fields.text(u"fpQuantity"_s, u"&Quantity:"_s,
                             {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    fpCost = fields.currency(u"fpCost"_s, u"Unit P&rice:"_s, u"#####0.00##"_s);
    const auto folderField = [&](const View& view, const QString& label, const QString& button,
                                 const QString& caption) {
        auto* path = fields.text(u"txt"_s + view.word, label, {.characters = 40});
        path->setLocked(true);
        auto* pick = new QPushButton(caption, &form);
        fields.add(pick, button);
        form.on(pick, [this, &view] { pickFolder(view); });
        return path;
    };
    txtType = folderField(typeView(), u"Type:"_s, u"cmdTreeType"_s, u"Select &Type..."_s);
    txtLocation =
        folderField(locationView(), u"Location:"_s, u"cmdTreeLoc"_s, u"Select &Location..."_s);
    chkFlag = fields.check(u"chkFlag"_s, u"Set Fla&g"_s);
    txtFlagQuantity = fields.text(u"txtFlagQuantity"_s, u"Min&imum Quantity:"_s,
                                  {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    chkFixedCost = fields.check(u"chkFixedCost"_s, u"&Add to Fixed Cost Items"_s);
    txtFlagQuantity->setEnabled(false);
    QObject::connect(chkFlag, &QCheckBox::toggled, txtFlagQuantity, &QWidget::setEnabled);
}

namespace {

std::vector<jet::WantedSet> lists() {
    return {u"SELECT Company FROM Manufacturer ORDER BY Company"_s,
            u"SELECT * FROM UnitOfMeasure ORDER BY Code"_s};
}

} // namespace

std::vector<jet::WantedSet> ItemFields::selects(qint64 itemId) {
    auto wanted = lists();
    for (const View* view : {&typeView(), &locationView()})
        wanted.emplace_back(pathOfItemSelect(*view, itemId));
    return wanted;
}

void ItemFields::fillLists() {
    auto sets = core::MainDatabase().together(lists());
    cboMan->setRows(sets[0], u"Company"_s, u"Company"_s);
    dbcUnits->setRows(sets[1], u"Code"_s, u"Code"_s);
}

void ItemFields::show(const Item& item) {
    m_shown = item;
    txtDescription->setText(item.description);
    txtPartNumber->setText(item.partNumber);
    cboMan->setText(item.manufacturer);
    dbcUnits->setText(item.units);
    fpQuantity->setText(QString::number(item.quantity));
    fpCost->setValue(jet::Value(item.price));
    chkFlag->setChecked(item.flagQuantity != 0);
    txtFlagQuantity->setText(QString::number(item.flagQuantity));
    for (const auto& [view, folder] :
         {std::pair(&typeView(), item.type), std::pair(&locationView(), item.location)}) {
        if (item.id != 0)
            showPath(*view, folder, pathOfItem(core::MainDatabase(), *view, item.id));
        else if (folder != 0)
            showFolder(*view, folder);
    }
}

void ItemFields::showFolder(const View& view, qint64 folder) {
    showPath(view, folder, pathTo(core::MainDatabase(), view, folder));
}

void ItemFields::showPath(const View& view, qint64 folder, const std::vector<Folder>& path) {
    const bool type = &view == &typeView();
    (type ? m_shown.type : m_shown.location) = folder;
    (type ? txtType : txtLocation)->setText(pathText(path));
}

void ItemFields::pickFolder(const View& view) {
    const auto picked =
        screen::Forms::dialog<FolderPicker>(u"frmItemTreeSelect"_s)->pickFolder(view.word);
    if (picked)
        showFolder(view, picked->folder);
}

Item ItemFields::typed() const {
    Item item = m_shown;
    item.description = txtDescription->text();
    item.partNumber = txtPartNumber->text();
    item.manufacturer = cboMan->text();
    item.units = dbcUnits->text();
    item.quantity = fpQuantity->text().toLongLong();
    item.price = fpCost->value().toCurrency();
    item.flagQuantity = chkFlag->isChecked() ? txtFlagQuantity->text().toLongLong() : 0;
    return item;
}

void ItemFields::clearForNext() {
    fpQuantity->clear();
    fpCost->clear();
    txtDescription->clear();
    txtPartNumber->clear();
    dbcUnits->clear();
    txtFlagQuantity->setText(u"0"_s);
    fillLists();
    txtDescription->setFocus();
}

void ItemFields::offerFixedCost(bool offered) {
    chkFixedCost->setVisible(offered);
}

void ItemFields::addFixedCost(const Item& item) const {
    if (chkFixedCost->isHidden() || !chkFixedCost->isChecked())
        return;
    jet::Database& database = core::MainDatabase();
    if (fixedCostItem(database, item.description) == 0) {
        addFixedCostItem(database, item.description, item.units, item.price);
    } else if (screen::MsgBox(u"Item already exists in Fixed Cost Item table.  Overwrite?"_s,
                              screen::Buttons::YesNo, screen::Icon::Question,
                              u"System Message"_s) == screen::Answer::Yes) {
        changeFixedCostItem(database, item.description, item.units, item.price);
    }
}

} // namespace inventory
