#include "purchasing/frmPO.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Pointer.h"
#include "purchasing/Dialogs.h"
#include "purchasing/VendorPayables.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace purchasing {

using core::Role;
using screen::Answer;
using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;

namespace {

core::ModuleDescriptor describe() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmPO::formName);
    module.caption = u"Purchase Order"_s;
    module.moduleWord = u"Purchase Order"_s;
    module.table = u"PO"_s;
    module.keyColumn = u"PONumber"_s;
    module.select = u"SELECT * FROM PO ORDER BY PONumber"_s;
    module.newKeyText = u"New"_s;
    module.dataControlName = u"datPO"_s;
    module.modeLabelName = u"lblPOMode"_s;
    module.findScreen = u"frmPOGoto"_s;
    module.queryScreen = u"frmPoQuery"_s;
    module.reportModule = u"PO"_s;
    module.reportTitle = u"PO Report"_s;
    module.deleteTitle = u"Delete"_s;
    module.deleteText = u"Once deleted this record will be unrecoverable! Are you sure you want to "
                        "continue?"_s;
    module.emptyTableCloses = true;
    return module;
}

constexpr char apScreen[] = "frmAP";

const QString& anyVendor() {
    static const QString select = u"SELECT TOP 1 VendID FROM Vendor"_s;
    return select;
}

const QString& vendorNames() {
    static const QString select = u"SELECT VendID, Company FROM Vendor ORDER BY Company"_s;
    return select;
}

} // namespace

frmPO::frmPO()
    : OrderModule(describe(), poKind(),
                  {.grid = u"sprPOItem"_s,
                   .noteGrid = u"sprPONotes"_s,
                   .addDialog = u"frmPOaddItem"_s,
                   .editDialog = u"frmPOEditItem"_s,
                   .vendorTable = u"POVendor"_s,
                   .numberLabel = u"PO Number:"_s,
                   .titleLabel = u"PO Description:"_s,
                   .dateLabel = u"Required by:"_s,
                   .emailFilter = {u"*"_s, true, u"'|"_s}}) {
    auto* down = new QVBoxLayout(this);
    auto* beside = new QVBoxLayout;
    auto* vendor = new QHBoxLayout;
    auto* label = new QLabel(u"Vendor:"_s, this);
    dbcVend = screen::named(new controls::DataCombo(this), u"dbcVend"_s, u"Vendor"_s);
    dbcVend->setMinimumContentsLength(30);
    label->setBuddy(dbcVend);
    lblVnum = screen::named(new QLabel(this), u"lblVnum"_s, u"Vendor Number"_s);
    lblVnum->setFrameShape(QFrame::StyledPanel);
    lblVnum->setMinimumWidth(52);
    vendor->addWidget(label);
    vendor->addWidget(dbcVend, 1);
    vendor->addWidget(lblVnum);
    beside->addLayout(vendor);
    auto* state = new QHBoxLayout;
    chkActive = screen::named(new QCheckBox(u"Active?"_s, this), u"chkActive"_s);
    state->addWidget(chkActive);
    const QString captions[] = {u"Show Inactive and Active POs"_s, u"Show Active POs Only"_s};
    QRadioButton* optActivePOsOnly[2] = {};
    for (int i = 0; i < 2; ++i) {
        optActivePOsOnly[i] = screen::named(new QRadioButton(captions[i], this),
                                            u"optActivePOsOnly("_s + QString::number(i) + u")"_s);
        state->addWidget(optActivePOsOnly[i]);
    }
    optActivePOsOnly[0]->setChecked(true);
    bindView({.all = optActivePOsOnly[0],
              .active = optActivePOsOnly[1],
              .select = u"SELECT * FROM PO WHERE Active = True ORDER BY PONumber"_s,
              .none = u"There are no Active Records in the database! Add a new record or edit an "
                      "Inactive record to create an Active record."_s,
              .noneTitle = u"Error"_s,
              .noneIcon = Icon::Exclamation});
    beside->addLayout(state);
    makeHead(down, beside);
    makeTabs(down, [](screen::Fields&) {});
    fields().bind({u"Active"_s,
                   [this](const jet::Value& value) { chkActive->setChecked(value.toBool()); },
                   {},
                   [this] { chkActive->setChecked(false); },
                   [this](bool locked) { chkActive->setEnabled(!locked); },
                   chkActive});
    makeFoot(down, {{Role::New, u"cmdAdd"_s, u"&New"_s},
                    {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
                    {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
                    {Role::Find, u"cmdGoto"_s, u"&Goto"_s},
                    {Role::List, u"cmdQuery"_s, u"&Query/Report"_s},
                    {Role::PrintShown, u"cmdPrint"_s, u"Quick &Report Shown"_s},
                    {Role::BrowseOnly, u"cmdHistory"_s, u"Received &History"_s},
                    {Role::Free, u"cmdAP"_s, u"Accounts Payable"_s},
                    {Role::Save, u"cmdSave"_s, u"&Save"_s},
                    {Role::Cancel, u"cmdCancel"_s, u"&Cancel"_s},
                    {Role::Close, u"cmdClose"_s, u"Do&ne"_s}});
    on(control<QPushButton>(u"cmdHistory"_s), &frmPO::cmdHistory_Click);
    on(control<QPushButton>(u"cmdAP"_s), &frmPO::cmdAP_Click);
    on(dbcVend->chosen, &frmPO::dbcVend_Change);
    on(dbcVend->left, &frmPO::dbcVend_Change);
}

// Opening and showing

bool frmPO::mayOpen() {
    if (core::MainDatabase().hasRows(anyVendor()))
        return true;
    MsgBox(u"You must have at least one Vendor before you can use the Purchase Order module!"_s,
           Buttons::Ok, Icon::Exclamation, u"Warning"_s);
    return false;
}

QStringList frmPO::lookups() const {
    return OrderModule::lookups() << anyVendor() << vendorNames();
}

void frmPO::openLookups() {
    OrderModule::openLookups();
    dbcVend->setRows(
        core::MainDatabase().openRecordset(vendorNames(), jet::RecordsetType::Snapshot),
        u"Company"_s, u"VendID"_s);
}

QStringList frmPO::partsOf(qint64 key) const {
    return {orderVendorSelect(key), poLinesSelect(key), openLinesSelect(key)};
}

void frmPO::ShowModuleMode(Mode mode) {
    OrderModule::ShowModuleMode(mode);
    control<QPushButton>(u"cmdAP"_s)
        ->setEnabled(isBrowse() && Forms::isKnown(QString::fromLatin1(apScreen)));
}

void frmPO::lockFields(bool locked) {
    OrderModule::lockFields(locked);
    dbcVend->setLocked(locked);
}

void frmPO::newDefaults() {
    presetShipTo();
    chkActive->setChecked(true);
}

void frmPO::showParts() {
    const jet::Recordset vendor = core::MainDatabase().openRecordset(
        orderVendorSelect(currentKey()), jet::RecordsetType::Snapshot);
    m_vendor.show(vendor.isEmpty() ? OrderVendor() : vendorColumns(m_kind).load(vendor));
    showLines(storedLines());
}

std::vector<OrderLine> frmPO::storedLines() {
    return loadPoLines(core::MainDatabase(), currentKey());
}

qint64 frmPO::vendorNo() const {
    return lblVnum->text().toLongLong();
}

// His terms and address are copied; what was typed for another vendor gives way.
void frmPO::dbcVend_Change() {
    const QString number = dbcVend->boundText();
    if (isBrowse() || number.isEmpty() || number == lblVnum->text())
        return;
    const jet::Recordset vendor = core::MainDatabase().openRecordset(
        u"SELECT VendID AS VendorID, Company, Address1 AS MailAddress1, Address2 AS MailAddress2, "
        "Address3 AS MailAddress3, City AS MailCity, State AS MailState, Zip AS MailZip, "
        "Country AS MailCountry, Contact, Phone, Fax, Email, Terms, Shipping, FOB, "
        "OurNotes AS Notes FROM Vendor WHERE VendID = "_s +
            number,
        jet::RecordsetType::Snapshot);
    if (!vendor.isEmpty())
        m_vendor.show(vendorColumns(m_kind).load(vendor));
}

// Beginning

void frmPO::cmdNew_Click() {
    const auto way = Forms::dialog<NewOrderDialog>(u"frmPONew"_s)->choose(currentKey() != 0);
    if (way == u"allnew"_s)
        OrderModule::cmdNew_Click();
    else if (way == u"copy"_s)
        newFromTemplate();
}

void frmPO::newFromTemplate() {
    const auto chosen = Forms::dialog<CopyTreeDialog>(u"frmPOcopyTree"_s)->choose(currentKey(), {});
    if (!chosen)
        return;
    const screen::BusyPointer busy;
    QStringList items;
    for (const ChosenRequest& vendor : chosen->vendors)
        items += vendor.items;
    reopen(mainSelect(), copyOrder(core::MainDatabase(), currentKey(), items, chosen->required));
    tellNeighbours();
}

// Saving and deleting

bool frmPO::validate() {
    dbcVend_Change();
    if (vendorNo() == 0 || dbcVend->text().trimmed().isEmpty()) {
        complain(u"You must specify a Vendor to save this record!"_s, dbcVend, Icon::Exclamation,
                 u"Error!"_s);
        return false;
    }
    return OrderModule::validate();
}

std::optional<OrderDocument> frmPO::load(qint64 key) {
    return loadOrder(core::MainDatabase(), key);
}

core::SaveOutcome frmPO::store(qint64 key, OrderDocument& document, const OrderDocument* before,
                               const QStringList& settled) {
    return storeOrder(core::MainDatabase(), key, document, before, settled);
}

void frmPO::afterSave(qint64 key, bool adding) {
    const bool active = chkActive->isChecked();
    OrderModule::afterSave(key, adding);
    if (!adding) {
        chkActive->setChecked(active);
        ActiveDetect(key);
    }
}

void frmPO::ActiveDetect(qint64 key) {
    const ActiveChange change = detectActive(core::MainDatabase(), key, chkActive->isChecked());
    if (change == ActiveChange::None)
        return;
    MsgBox(activeNotice(change), Buttons::Ok, Icon::Information, u"Notice"_s);
    reopen(mainSelect(), key);
}

void frmPO::deleteDocument(qint64 key) {
    deleteOrder(core::MainDatabase(), key);
}

void frmPO::tellNeighbours() {
    core::refreshNeighbours({u"frmhistory"_s}, u"PO"_s);
}

bool frmPO::askDeleteLine(const OrderLine& line) {
    return MsgBox(u"Delete PO item "_s + QString::number(line.itemNumber) + u"?"_s,
                  Buttons::OkCancel, Icon::Question, u"System Message"_s) == Answer::Ok;
}

// Handing over

QString frmPO::shownFormula() const {
    return u"({po.ponumber} = "_s + QString::number(currentKey()) + u")"_s;
}

void frmPO::cmdHistory_Click() {
    if (!hasRecord())
        return;
    if (!core::MainDatabase().hasRows(u"SELECT EmpID FROM Employee ORDER BY EmpID"_s)) {
        MsgBox(u"PO items cannot be received without an employee database."_s, Buttons::Ok,
               Icon::Exclamation, u"System Message"_s);
        return;
    }
    const qint64 key = currentKey();
    Forms::dialog<ReceivedHistory>(u"frmRecHistory"_s)->showHistory(key, records().text(u"Title"));
    showReadAgain();
    goToRecord(key);
}

void frmPO::cmdAP_Click() {
    const QString name = QString::fromLatin1(apScreen);
    if (Forms::show(name)) {
        if (auto* payables = Forms::find<VendorPayables>(name))
            payables->showVendor(vendorNo());
    }
}

} // namespace purchasing
