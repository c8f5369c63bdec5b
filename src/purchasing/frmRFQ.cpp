#include "purchasing/frmRFQ.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Pointer.h"
#include "purchasing/Dialogs.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScopedValueRollback>
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
    module.formName = QString::fromLatin1(frmRFQ::formName);
    module.caption = u"Request For Quotation"_s;
    module.moduleWord = u"RFQ"_s;
    module.table = u"RFQ"_s;
    module.keyColumn = u"PONumber"_s;
    module.select = u"SELECT * FROM RFQ ORDER BY PONumber"_s;
    module.dataControlName = u"datRFQ"_s;
    module.modeLabelName = u"lblRFQMode"_s;
    module.findScreen = u"frmRFQGoto"_s;
    module.queryScreen = u"frmRfqQuery"_s;
    module.reportModule = u"RFQ"_s;
    module.reportTitle = u"RFQ Report"_s;
    module.emptyTableCloses = true;
    return module;
}

QString vendorsOf(qint64 group) {
    return u"SELECT * FROM RFQVendor WHERE OrderNumber = "_s + QString::number(group) +
           u" ORDER BY Company, VOrderKey"_s;
}

} // namespace

frmRFQ::frmRFQ()
    : OrderModule(describe(), rfqKind(),
                  {.grid = u"sprRFQItem"_s,
                   .noteGrid = u"sprNotes"_s,
                   .addDialog = u"frmRFQaddItem"_s,
                   .editDialog = u"frmRFQEditItem"_s,
                   .vendorTable = u"RFQVendor"_s,
                   .numberLabel = u"RFQ Group Number:"_s,
                   .titleLabel = u"RFQ Group Description:"_s,
                   .dateLabel = u"Response Required by:"_s,
                   .emailFilter = values::keys::description()}) {
    auto* down = new QVBoxLayout(this);
    makeHead(down);
    auto* across = new QHBoxLayout;
    down->addLayout(across, 1);
    sprVendor = screen::named(new controls::Grid(this), u"sprVendor"_s, u"Vendors of the group"_s);
    sprVendor->setColumns({{u"Company"_s, 24}, {.title = u"VendorID"_s, .hidden = true}});
    sprVendor->setColumnHidden(1, true);
    sprVendor->setMaximumWidth(sprVendor->fontMetrics().averageCharWidth() * 30);
    across->addWidget(sprVendor);
    auto* tabs = new QVBoxLayout;
    across->addLayout(tabs, 1);
    makeTabs(tabs, [this](screen::Fields& fields) {
        txtRFQNum = fields.text(u"txtRFQNum"_s, u"RFQ Number:"_s, {.characters = 14});
        txtVID = fields.text(u"txtVID"_s, u"Vendor Number:"_s, {.characters = 10});
    });
    makeFoot(down, {{Role::New, u"cmdAdd"_s, u"&New"_s},
                    {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
                    {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
                    {Role::Find, u"cmdGoto"_s, u"&Goto"_s},
                    {Role::List, u"cmdQuery"_s, u"&Query/Report"_s},
                    {Role::PrintShown, u"cmdPrint"_s, u"Quick &Report Shown"_s},
                    {Role::BrowseOnly, u"cmdSendAll"_s, u"Send &to All"_s},
                    {Role::BrowseOnly, u"cmdMatrix"_s, u"Compare &Vendors"_s},
                    {Role::BrowseOnly, u"cmdCreatePO"_s, u"Create a &PO"_s},
                    {Role::Save, u"cmdSave"_s, u"&Save"_s},
                    {Role::Cancel, u"cmdCancel"_s, u"&Cancel"_s},
                    {Role::Close, u"cmdClose"_s, u"Do&ne"_s}});
    on(control<QPushButton>(u"cmdCreatePO"_s), &frmRFQ::cmdCreatePO_Click);
    on(control<QPushButton>(u"cmdMatrix"_s), &frmRFQ::cmdMatrix_Click);
    on(control<QPushButton>(u"cmdSendAll"_s), &frmRFQ::cmdSendAll_Click);
    on(sprVendor->activeRowChanged, &frmRFQ::sprVendor_Click);
}

void frmRFQ::ShowModuleMode(Mode mode) {
    OrderModule::ShowModuleMode(mode);
    sprVendor->setEnabled(isBrowse());
}

// Showing

/// Whether the request that was shown last is one of that group: it stays the one that is shown.
bool frmRFQ::isOfGroup(qint64 group) const {
    return m_key.startsWith(QString::number(group) + u'-');
}

QStringList frmRFQ::partsOf(qint64 key) const {
    return {vendorsOf(key), isOfGroup(key) ? rfqLinesSelect(m_key) : firstRfqLinesSelect(key)};
}

void frmRFQ::showParts() {
    jet::Database& database = core::MainDatabase();
    jet::Recordset vendors =
        database.openRecordset(vendorsOf(currentKey()), jet::RecordsetType::Snapshot);
    std::vector<QStringList> rows;
    int active = -1;
    for (; !vendors.eof(); vendors.moveNext()) {
        if (vendors.text(u"VOrderKey") == m_key)
            active = static_cast<int>(rows.size());
        rows.push_back({vendors.text(u"Company"), vendors.text(u"VendorID")});
    }
    // Where another station has taken the request out, the group's first one is shown.
    const QString lines = active >= 0 ? rfqLinesSelect(m_key) : firstRfqLinesSelect(currentKey());
    active = std::max(active, 0);
    const bool some = !rows.empty();
    {
        const QScopedValueRollback filling(m_filling, true);
        sprVendor->setRows(std::move(rows));
        sprVendor->setActiveRow(active);
    }
    if (some)
        vendors.moveTo(active);
    showRequest(vendors, lines);
}

void frmRFQ::showRequest(const jet::Recordset& row, const QString& lines) {
    if (row.bof() || row.eof()) {
        m_key.clear();
        m_vendor.show(OrderVendor());
        showLines({});
        return;
    }
    m_key = row.text(u"VOrderKey");
    m_vendor.show(vendorColumns(m_kind).load(row));
    showLines(loadRfqLines(core::MainDatabase(), lines));
}

std::vector<OrderLine> frmRFQ::storedLines() {
    return loadRfqLines(core::MainDatabase(), rfqLinesSelect(m_key));
}

bool frmRFQ::goToPart(const QString& key) {
    for (int row = 0; row < sprVendor->rowCount(); ++row) {
        if (vendorKey(currentKey(), sprVendor->text(row, 1).toLongLong()) == key) {
            sprVendor->setActiveRow(row);
            return true;
        }
    }
    return false;
}

void frmRFQ::sprVendor_Click(int row) {
    if (m_filling || !isBrowse() || row < 0)
        return;
    const QString key = vendorKey(currentKey(), sprVendor->text(row, 1).toLongLong());
    const QString lines = rfqLinesSelect(key);
    core::MainDatabase().expect({requestSelect(key), lines});
    showRequest(
        core::MainDatabase().openRecordset(requestSelect(key), jet::RecordsetType::Snapshot),
        lines);
}

void frmRFQ::clearFields() {
    OrderModule::clearFields();
    const QScopedValueRollback filling(m_filling, true);
    sprVendor->clearRows();
    m_key.clear();
}

qint64 frmRFQ::vendorNo() const {
    return txtVID->text().toLongLong();
}

// Beginning

void frmRFQ::startAdding() {
    if (!core::MainDatabase().hasRows(u"SELECT * FROM Vendor ORDER BY VendID"_s)) {
        MsgBox(u"You must have at least one Vendor before you can use the RFQ module!"_s,
               Buttons::Ok, Icon::Exclamation, u"Warning"_s);
    } else {
        cmdNew_Click();
    }
    if (hasRecord())
        return;
    refuse();
    if (isVisible())
        unload();
}

void frmRFQ::cmdNew_Click() {
    const auto way = Forms::dialog<NewOrderDialog>(u"frmRFQNew"_s)->choose(currentKey() != 0);
    if (way == u"allnew"_s)
        newGroup();
    else if (way == u"newgroupcopy"_s)
        newGroupCopy();
    else if (way)
        newVendor(way == u"newvendorcopy"_s);
}

void frmRFQ::newGroup() {
    const auto vendor = Forms::dialog<VendorSelector>(u"frmRfqVendorSelect"_s)->pick(0);
    if (!vendor)
        return;
    const screen::BusyPointer busy;
    const qint64 group = createGroup(core::MainDatabase(), *vendor);
    reopen(mainSelect(), group);
    cmdEdit_Click();
    m_begun = Begun::Group;
    presetShipTo();
}

void frmRFQ::newVendor(bool carryLines) {
    const qint64 group = currentKey();
    const auto vendor = Forms::dialog<VendorSelector>(u"frmRfqVendorSelect"_s)->pick(group);
    if (!vendor)
        return;
    const screen::BusyPointer busy;
    std::vector<OrderLine> carried = carryLines ? lines() : std::vector<OrderLine>();
    for (OrderLine& line : carried)
        line.id = 0;
    cmdEdit_Click();
    if (isBrowse())
        return; // another station has deleted the group
    addVendor(core::MainDatabase(), group, *vendor);
    m_key = vendorKey(group, *vendor);
    showParts();
    keepBefore();
    showLines(std::move(carried));
    if (!carryLines)
        control<controls::TextField>(u"txtTotal"_s)->setText({});
    m_begun = Begun::Vendor;
}

void frmRFQ::newGroupCopy() {
    const auto chosen =
        Forms::dialog<CopyTreeDialog>(u"frmRFQCopyTree"_s)->choose(currentKey(), m_key);
    if (!chosen)
        return;
    const screen::BusyPointer busy;
    const qint64 group = copyGroup(core::MainDatabase(), currentKey(), chosen->vendors);
    reopen(mainSelect(), group);
    cmdEdit_Click();
    m_begun = Begun::Template;
}

void frmRFQ::cmdEdit_Click() {
    m_begun = Begun::No;
    OrderModule::cmdEdit_Click();
}

// Saving, cancelling, deleting

bool frmRFQ::validate() {
    if (m_key.isEmpty()) {
        complain(u"This group has no vendor yet. Please add one with New."_s, button(Role::Cancel));
        return false;
    }
    return OrderModule::validate();
}

std::optional<OrderDocument> frmRFQ::load(qint64 key) {
    return loadRequest(core::MainDatabase(), key, m_key);
}

core::SaveOutcome frmRFQ::store(qint64 key, OrderDocument& document, const OrderDocument* before,
                                const QStringList& settled) {
    return storeRequest(core::MainDatabase(), key, document, *before, settled);
}

void frmRFQ::deleteDocument(qint64 key) {
    deleteGroup(core::MainDatabase(), key);
}

void frmRFQ::afterSave(qint64 key, bool adding) {
    m_begun = Begun::No;
    OrderModule::afterSave(key, adding);
}

void frmRFQ::cancelStaged() {
    undoByCancel(core::MainDatabase(), std::exchange(m_begun, Begun::No), currentKey(), m_key);
}

void frmRFQ::closeStaged() {
    undoByClose(core::MainDatabase(), std::exchange(m_begun, Begun::No), currentKey());
}

void frmRFQ::tellNeighbours() {
    core::refreshNeighbours({u"frmhistory"_s}, u"RFQ"_s);
}

// The draft: which vendor's request it is of, and how it began

QJsonObject frmRFQ::packedEntry() {
    QJsonObject entry = OrderModule::packedEntry();
    entry[u"request"_s] = m_key;
    entry[u"begun"_s] = static_cast<int>(m_begun);
    return entry;
}

void frmRFQ::takeEntry(const QJsonObject& entry) {
    OrderModule::takeEntry(entry);
    m_begun = static_cast<Begun>(entry[u"begun"_s].toInt());
}

bool frmRFQ::holdsEntry(const QJsonObject& entry, const jet::Recordset& row) {
    m_key = entry[u"request"_s].toString();
    return OrderModule::holdsEntry(entry, row);
}

bool frmRFQ::goToEntry(const QJsonObject& entry) {
    return goToPart(entry[u"request"_s].toString());
}

void frmRFQ::cmdDelete_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    using What = DeleteRequestDialog::What;
    const auto what =
        Forms::dialog<DeleteRequestDialog>(u"frmRFQDelete"_s)->choose(sprVendor->rowCount());
    if (!what)
        return;
    if (MsgBox(what == What::Group ? u"Delete Current Group?"_s : u"Delete Current RFQ (Vendor)?"_s,
               Buttons::YesNo, Icon::Question, u"Delete"_s) != Answer::Yes)
        return;
    const screen::BusyPointer busy;
    qint64 previous = 0;
    if (what == What::Group) {
        previous = core::MainDatabase()
                       .lookup(u"SELECT TOP 1 PONumber FROM RFQ WHERE PONumber < "_s +
                               QString::number(currentKey()) + u" ORDER BY PONumber DESC"_s)
                       .toLong();
        deleteDocument(currentKey());
    } else {
        deleteRequest(core::MainDatabase(), m_key);
    }
    if (previous != 0)
        reopen(mainSelect(), previous);
    else
        afterDelete();
    tellNeighbours();
}

bool frmRFQ::askDeleteLine(const OrderLine& line) {
    return MsgBox(u"Are you sure you want to delete Item "_s + line.partNumber + u"?"_s,
                  Buttons::YesNo, Icon::Question, u"Delete Item"_s) == Answer::Yes;
}

// Handing over

QString frmRFQ::formulaOf(const QString& key) const {
    return u"({rfq.ponumber} = "_s + QString::number(currentKey()) +
           u") and ({RFQVendor.vorderkey} = '"_s + key + u"')"_s;
}

QString frmRFQ::shownFormula() const {
    return formulaOf(m_key);
}

// One message for each vendor, each with his own pages.
void frmRFQ::cmdSendAll_Click() {
    const int vendors = sprVendor->rowCount();
    if (!hasRecord() || vendors == 0 ||
        MsgBox(u"Prepare a message to each of the "_s + QString::number(vendors) +
                   u" vendors of this group?"_s,
               Buttons::YesNo, Icon::Question) != Answer::Yes)
        return;
    for (int row = 0; row < vendors; ++row) {
        const QString key = vendorKey(currentKey(), sprVendor->text(row, 1).toLongLong());
        if (!core::sendDefaultReport(descriptor().reportModule, formulaOf(key), this))
            return;
    }
}

void frmRFQ::cmdMatrix_Click() {
    if (!hasRecord())
        return;
    const auto key = Forms::dialog<MatrixDialog>(u"frmRFQMatrix"_s)->choose(currentKey());
    if (!key)
        return;
    m_key = *key;
    showParts();
    cmdCreatePO_Click();
}

void frmRFQ::cmdCreatePO_Click() {
    if (!hasRecord() || m_key.isEmpty())
        return;
    const auto chosen =
        Forms::dialog<CopyTreeDialog>(u"frmRFQ2POtree"_s)->choose(currentKey(), m_key);
    if (!chosen || chosen->vendors.empty())
        return;
    const qint64 order = orderFromRequest(core::MainDatabase(), currentKey(),
                                          chosen->vendors.front(), chosen->required);
    core::refreshNeighbours({u"frmPO"_s}, u"PO"_s);
    if (auto* orders = Forms::find<core::RecordScreen>(u"frmPO"_s))
        orders->goToRecord(order);
}

} // namespace purchasing
