#include "inventory/frmItemNewEdit.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

void tell(const QString& text) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Exclamation, system);
}

} // namespace

frmItemNewEdit::frmItemNewEdit() : AddEditForm(QString::fromLatin1(formName), u"New Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
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
        auto* pick = new QPushButton(caption, this);
        fields.add(pick, button);
        on(pick, [this, &view] { pickFolder(view); });
        return path;
    };
    txtType = folderField(typeView(), u"Type:"_s, u"cmdTreeType"_s, u"Select &Type..."_s);
    txtLocation =
        folderField(locationView(), u"Location:"_s, u"cmdTreeLoc"_s, u"Select &Location..."_s);
    chkFlag = fields.check(u"chkFlag"_s, u"Set Fla&g"_s);
    txtFlagQuantity = fields.text(u"txtFlagQuantity"_s, u"Min&imum Quantity:"_s,
                                  {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    chkFixedCost = fields.check(u"chkFixedCost"_s, u"&Add to Fixed Cost Items"_s);
    outside->addStretch();
    makeButtons(outside);
    txtFlagQuantity->setEnabled(false);
    connect(chkFlag, &QCheckBox::toggled, txtFlagQuantity, &QWidget::setEnabled);
}

void frmItemNewEdit::fillLists() {
    jet::Database& database = core::MainDatabase();
    cboMan->setRows(database.openRecordset(u"SELECT Company FROM Manufacturer ORDER BY Company"_s,
                                           jet::RecordsetType::Snapshot),
                    u"Company"_s, u"Company"_s);
    dbcUnits->setRows(database.openRecordset(u"SELECT * FROM UnitOfMeasure ORDER BY Code"_s,
                                             jet::RecordsetType::Snapshot),
                      u"Code"_s, u"Code"_s);
}

void frmItemNewEdit::add(const View& view, qint64 folder) {
    setAdding(true);
    fillLists();
    showFolder(view, folder);
    run();
}

bool frmItemNewEdit::edit(qint64 itemId) {
    const auto stored = loadItem(core::MainDatabase(), itemId);
    if (!stored) {
        tell(u"This item has been deleted by another user."_s);
        return false;
    }
    setWindowTitle(u"Edit Item"_s);
    setAdding(false);
    control(u"cmdOKNew"_s)->hide();
    chkFixedCost->hide();
    fillLists();
    show(*stored);
    return run();
}

void frmItemNewEdit::show(const Item& item) {
    m_before = item;
    txtDescription->setText(item.description);
    txtPartNumber->setText(item.partNumber);
    cboMan->setText(item.manufacturer);
    dbcUnits->setText(item.units);
    fpQuantity->setText(QString::number(item.quantity));
    fpCost->setValue(jet::Value(item.price));
    chkFlag->setChecked(item.flagQuantity != 0);
    txtFlagQuantity->setText(QString::number(item.flagQuantity));
    showFolder(typeView(), item.type);
    showFolder(locationView(), item.location);
}

void frmItemNewEdit::showFolder(const View& view, qint64 folder) {
    const bool type = &view == &typeView();
    (type ? m_type : m_location) = folder;
    (type ? txtType : txtLocation)->setText(pathText(pathTo(core::MainDatabase(), view, folder)));
}

void frmItemNewEdit::pickFolder(const View& view) {
    const auto [folder, path] =
        screen::Forms::dialog<FolderPicker>(u"frmItemTreeSelect"_s)->pickFolder(view.word);
    if (folder != 0)
        showFolder(view, folder);
}

Item frmItemNewEdit::typed() const {
    Item item = m_before;
    item.description = txtDescription->text();
    item.partNumber = txtPartNumber->text();
    item.manufacturer = cboMan->text();
    item.units = dbcUnits->text();
    item.quantity = fpQuantity->text().toLongLong();
    item.price = fpCost->value().toCurrency();
    item.flagQuantity = chkFlag->isChecked() ? txtFlagQuantity->text().toLongLong() : 0;
    item.type = m_type;
    item.location = m_location;
    return item;
}

bool frmItemNewEdit::save() {
    const Item item = typed();
    if (const auto check = checkItem(item)) {
        complain(check->text, control(check->field), screen::Icon::Exclamation, system);
        return false;
    }
    if (!write(item))
        return false;
    if (m_before.id == 0 && chkFixedCost->isChecked())
        addFixedCost(item);
    return true;
}

bool frmItemNewEdit::write(const Item& item) {
    jet::Database& database = core::MainDatabase();
    if (item.id == 0) {
        const qint64 id = addItem(database, item);
        if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
            explorer->itemChanged(id);
        return true;
    }
    switch (saveItem(database, item, m_before)) {
    case Saved::Done:
        return true;
    case Saved::Gone:
        tell(u"This item has been deleted by another user and can't be saved. "
             "What you typed is still on the screen."_s);
        return false;
    case Saved::StockChanged:
        break;
    }
    const auto stored = loadItem(database, item.id);
    complain(u"The stock of this item has changed from %1 to %2 since you opened it. Please look "
             "at the quantity again."_s.arg(m_before.quantity)
                 .arg(stored ? stored->quantity : 0),
             fpQuantity, screen::Icon::Exclamation, system);
    if (stored)
        m_before.quantity = stored->quantity;
    return false;
}

void frmItemNewEdit::addFixedCost(const Item& item) {
    jet::Database& database = core::MainDatabase();
    if (fixedCostItem(database, item.description) == 0) {
        addFixedCostItem(database, item.description, item.units, item.price);
    } else if (screen::MsgBox(u"Item already exists in Fixed Cost Item table.  Overwrite?"_s,
                              screen::Buttons::YesNo, screen::Icon::Question,
                              system) == screen::Answer::Yes) {
        changeFixedCostItem(database, item.description, item.units, item.price);
    }
}

void frmItemNewEdit::startNext() {
    fpQuantity->clear();
    fpCost->clear();
    txtDescription->clear();
    txtPartNumber->clear();
    dbcUnits->clear();
    txtFlagQuantity->setText(u"0"_s);
    fillLists();
    txtDescription->setFocus();
}

} // namespace inventory
