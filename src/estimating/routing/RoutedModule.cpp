#include "estimating/routing/RoutedModule.h"

#include "core/MirsaMain.h"
#include "core/records/FindDialogs.h"
#include "estimating/AssemblyTree.h"
#include "estimating/NoteStaging.h"
#include "estimating/Routing.h"
#include "estimating/routing/Dialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace estimating {

using core::ModuleButton;
using core::Role;

namespace {

const QString oneRateKey = u"oneRate"_s; // in the entry's history

const QString& anyCustomer() {
    static const QString select = u"SELECT TOP 1 CustID FROM Customer"_s;
    return select;
}

const QString& customerNames() {
    static const QString select = u"SELECT Company, CustID FROM Customer ORDER BY Company"_s;
    return select;
}

/// The documents of which one is the assembly's parent.
QString anyPartOf(const RoutingKind& kind, qint64 documentNo) {
    return u"SELECT TOP 1 "_s + kind.documentKey + u" FROM "_s + kind.documentTable + u" WHERE "_s +
           kind.parentColumn + u"="_s + QString::number(documentNo);
}

} // namespace

RoutedModule::RoutedModule(core::ModuleDescriptor descriptor, const RoutingKind& kind)
    : DocumentModule(std::move(descriptor)), m_kind(kind) {
    // What stands beside the arrows keeps its place while they are hidden.
    QSizePolicy policy = datMain()->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    datMain()->setSizePolicy(policy);
}

void RoutedModule::Form_Load() {
    if (!std::exchange(m_followsLines, true)) {
        followLines(m_routing->operationLines(), u"operation"_s);
        followLines(m_routing->fixedCostLines(), u"fixed cost"_s);
    }
    DocumentModule::Form_Load();
    // As after a save: from the first field in the title line a stray key would leave the record.
    if (QPushButton* close = button(Role::Close); close && isBrowse())
        close->setFocus();
}

bool RoutedModule::mayOpen() {
    if (!core::MainDatabase().hasRows(anyCustomer())) {
        screen::MsgBox(u"You cannot use the "_s + descriptor().moduleWord +
                           u" module if you do not have any Customers in the "
                           "database!"_s,
                       screen::Buttons::Ok, screen::Icon::Critical, u"Error"_s);
        return false;
    }
    m_showDollar = core::HasAccess(u"ShowDollar"_s);
    header().setMoneyShown(m_showDollar);
    for (QWidget* widget : m_secured)
        widget->setVisible(m_showDollar);
    m_routing->setShowDollar(m_showDollar);
    return true;
}

QStringList RoutedModule::lookups() const {
    return {anyCustomer(), customerNames()};
}

void RoutedModule::openLookups() {
    dbcCustomer->setRows(
        core::MainDatabase().openRecordset(customerNames(), jet::RecordsetType::Snapshot),
        u"Company"_s, u"CustID"_s);
}

QStringList RoutedModule::partsOf(qint64 key) const {
    return lineSelects(m_kind, key) << anyPartOf(m_kind, key);
}

void RoutedModule::cmdSave_Click() {
    if (isBrowse())
        return;
    if (QPushButton* save = button(Role::Save))
        save->setFocus(); // what is being typed into a cell counts
    if (const QString why = m_routing->complaint(); !why.isEmpty())
        screen::MsgBox(why, screen::Buttons::Ok, screen::Icon::Exclamation);
    else
        DocumentModule::cmdSave_Click();
}

QString RoutedModule::recordName() const {
    return dbcCustomer->text();
}

void RoutedModule::refreshLookup(const QString& table) {
    if (table.compare(u"Customer"_s, Qt::CaseInsensitive) == 0) {
        openLookups();
        dbcCustomer->setBoundText(lblCustID->text());
    }
    DocumentModule::refreshLookup(table);
}

void RoutedModule::ShowModuleMode(Mode mode) {
    DocumentModule::ShowModuleMode(mode);
    fraBrowse->setVisible(isBrowse());
    fraEdit->setVisible(!isBrowse());
    datMain()->setVisible(isBrowse());
    m_routing->setMode(isBrowse()   ? RoutingMode::Browse
                       : isAdding() ? RoutingMode::Add
                                    : RoutingMode::Edit);
}

QWidget* RoutedModule::makeButtonPane(const std::vector<std::vector<ModuleButton>>& browseColumns) {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    fraBrowse = screen::named(new QWidget(pane), u"fraBrowse"_s);
    fraEdit = screen::named(new QWidget(pane), u"fraEdit"_s);
    layout->addWidget(fraBrowse);
    layout->addWidget(fraEdit);
    layout->addStretch();

    auto* columns = new QHBoxLayout(fraBrowse);
    columns->setContentsMargins(0, 0, 0, 0);
    for (const std::vector<ModuleButton>& buttons : browseColumns) {
        auto* column = new QVBoxLayout;
        column->setSpacing(3);
        columns->addLayout(column);
        makeButtons(column, buttons);
        column->addStretch();
    }
    auto* entry = new QHBoxLayout(fraEdit);
    entry->setContentsMargins(0, 0, 0, 0);
    entry->addStretch();
    makeButtons(entry, {{Role::Save, u"cmdSave"_s, u"&Save"_s},
                        {Role::Cancel, u"cmdCancel"_s, u"&Cancel"_s}});
    // The lists above keep their height when the frames change places.
    pane->setMinimumHeight(fraBrowse->sizeHint().height());
    return pane;
}

QLabel* RoutedModule::makeMark(QBoxLayout* title, const QString& name, const QString& word) {
    auto* value = screen::named(new QLabel(this), name, word);
    title->addWidget(new QLabel(word + u":"_s, this));
    title->addWidget(value);
    title->addSpacing(16);
    return value;
}

void RoutedModule::makeNumber(QBoxLayout* title, const QString& name, const QString& word) {
    QLabel* number = makeMark(title, name, word);
    QFont large = number->font();
    large.setBold(true);
    number->setFont(large);
    bindKey(number);
    title->addWidget(modeLabel());
    title->addStretch();
}

void RoutedModule::makeCustomer(screen::Fields& head) {
    dbcCustomer = new controls::DataCombo(this);
    lblCustID = screen::named(new QLabel(this), u"lblCustID"_s, u"Customer No."_s);
    lblCustID->setFrameShape(QFrame::StyledPanel);
    lblCustID->setMinimumWidth(52);
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(dbcCustomer, 1);
    row->addWidget(lblCustID);
    head.add(dbcCustomer, u"dbcCustomer"_s, u"C&ustomer"_s, row);
    header().use(u"dbcCustomer"_s,
                 {[this](const jet::Value& value) {
                      showCustomer(value.toLong() == 0 ? QString() : value.toText());
                  },
                  [this] { return jet::Value(lblCustID->text()); },
                  [this] {
                      lblCustID->clear();
                      dbcCustomer->setText(QString());
                  },
                  [this](bool locked) { dbcCustomer->setLocked(locked); }, dbcCustomer});
}

void RoutedModule::showCustomer(const QString& custId) {
    lblCustID->setText(custId);
    if (custId.isEmpty())
        dbcCustomer->setText(QString());
    else
        dbcCustomer->setBoundText(custId);
    if (dbcCustomer->boundText() == custId ||
        !core::MainDatabase().hasRows(u"SELECT CustID FROM Customer WHERE CustID = "_s + custId))
        return;
    openLookups();
    dbcCustomer->setBoundText(custId);
}

std::optional<qint64> RoutedModule::askByPart(const QString& findScreen, const QString& foundScreen,
                                              const QString& further) {
    const auto part = screen::Forms::dialog<core::DocumentFindDialog>(findScreen)->askPart();
    if (!part)
        return std::nullopt;
    const auto found = screen::Forms::dialog<core::FoundDialog>(foundScreen);
    if (found->list(u"SELECT * FROM "_s + descriptor().table + u" WHERE PartNo LIKE '"_s +
                    values::quoted(partPattern(*part)) + u"'"_s + further + u" ORDER BY "_s +
                    descriptor().keyColumn))
        return found->pick();
    screen::MsgBox(u"Part(s) not found!"_s, screen::Buttons::Ok, screen::Icon::Information,
                   u"System Message"_s);
    return std::nullopt;
}

void RoutedModule::wireCustomer() {
    const auto taken = [this] {
        lblCustID->setText(dbcCustomer->boundText());
        customerTaken();
    };
    on(dbcCustomer->chosen, taken);
    // The number of a customer who has been deleted stays until another one is chosen.
    connect(dbcCustomer->lineEdit(), &QLineEdit::textEdited, this,
            [this] { m_customerTyped = true; });
    on(dbcCustomer->left, [this, taken] {
        if (std::exchange(m_customerTyped, false) && !isBrowse())
            taken();
    });
}

// The record shown

void RoutedModule::takeRecord(const jet::Recordset* row) {
    takeHeader(row);
    m_tooLarge = false;
    if (row) {
        showAssembly();
        showLines();
    } else {
        lblAssembly->clear();
        m_routing->showRows(0, {}, {}, m_routing->oneShopRate());
    }
}

RoutedLines RoutedModule::lines() const {
    return {0, m_routing->operations(), m_routing->fixedCosts()};
}

void RoutedModule::showLines() {
    RoutedLines lines = loadLines(core::MainDatabase(), m_kind, currentKey());
    m_routing->showRows(currentKey(), std::move(lines.operations), std::move(lines.fixedCosts),
                        headerValue(u"OneShopRate"_s).toBool());
}

void RoutedModule::showAssembly() {
    const qint64 parent = headerValue(m_kind.parentColumn).toLong();
    lblAssembly->setText(core::MainDatabase().hasRows(anyPartOf(m_kind, currentKey())) ? u"ASSY"_s
                         : parent == 0                                                 ? QString()
                                       : QString::number(parent));
}

void RoutedModule::cmdAssembly_Click() {
    if (!hasRecord())
        return;
    screen::Forms::dialog<AssemblyTree>(u"frmAssemblyInfo"_s)
        ->showTree(headerValue(u"CustID"_s).toLong(), headerValue(m_kind.referenceColumn).toText(),
                   currentKey(), m_kind.documentTable);
}

// Costing

void RoutedModule::tellTooLarge() {
    screen::MsgBox(u"The cost is too large to be computed. Please check the times, amounts "
                   "and rates."_s,
                   screen::Buttons::Ok, screen::Icon::Exclamation);
}

void RoutedModule::calculate() {
    try {
        reckon();
        m_tooLarge = false;
    } catch (const values::Overflow&) {
        showNoFigures();
        if (!std::exchange(m_tooLarge, true))
            tellTooLarge();
    }
}

// A new document

RoutedModule::Carried RoutedModule::carried() {
    return {headerValue(u"CustID"_s).toLong(), headerValue(m_kind.referenceColumn).toText()};
}

void RoutedModule::showCarried(const Carried& customer) {
    setHeaderValue(u"CustID"_s, jet::Value(customer.custId));
    dbcCustomer->lineEdit()->selectAll(); // it has the focus: typing replaces it
    setHeaderValue(m_kind.referenceColumn, jet::Value(customer.reference));
    customerTaken();
}

std::optional<std::vector<ChosenOperation>> RoutedModule::pickSet(bool useDefaultNotes) {
    const auto setNo = screen::Forms::dialog<DefaultSetDialog>(u"frmDefSet"_s)->pickSet();
    if (!setNo)
        return std::nullopt;
    return operationsOfSet(core::MainDatabase(), *setNo, useDefaultNotes);
}

std::optional<std::vector<ChosenOperation>> RoutedModule::pickOperations() {
    return screen::Forms::dialog<SelectOperationsDialog>(u"frmSelOper"_s)->choose();
}

void RoutedModule::startFrom(const std::vector<ChosenOperation>& operations,
                             const Carried& customer) {
    ShowModuleMode(Mode::Add);
    showCarried(customer);
    std::vector<OperRow> rows = rowsFor(core::MainDatabase(), operations);
    for (OperRow& row : rows) {
        if (m_kind.hasProgress)
            row.time = 0;
    }
    stageDefaultNotes(core::MainDatabase(), m_kind, operations, rows);
    m_routing->showRows(0, std::move(rows), {}, m_routing->oneShopRate());
    calculate();
}

bool RoutedModule::startNew(const QString& description, const QString& partNumber) {
    if (!isBrowse())
        return false;
    startFrom({}, {});
    setHeaderValue(u"Description"_s, jet::Value(description));
    setHeaderValue(u"PartNo"_s, jet::Value(partNumber));
    return true;
}

bool RoutedModule::copyShown(bool useDefaultNotes, bool carryNotes,
                             const std::function<void(std::vector<OperRow>&)>& change) {
    if (!readForEntry())
        return false;
    const qint64 copiedNo = currentKey();
    ShowModuleMode(Mode::Copy);
    lblAssembly->clear();
    std::vector<OperRow>& rows = m_routing->operations();
    stageCopiedNotes(core::MainDatabase(), m_kind, rows, m_kind, copiedNo, useDefaultNotes,
                     carryNotes);
    if (change)
        change(rows);
    m_routing->redraw();
    return true;
}

// Saving, cancelling, deleting

void RoutedModule::cmdEdit_Click() {
    if (hasRecord())
        NoteStaging(core::MainDatabase(), m_kind, currentKey()).putBack();
    DocumentModule::cmdEdit_Click();
}

void RoutedModule::reloadLines() {
    NoteStaging(core::MainDatabase(), m_kind, currentKey()).restart();
    const bool oneShopRate = m_routing->oneShopRate();
    showLines();
    keepLinesBefore();
    m_routing->setOneShopRate(oneShopRate);
    calculate();
}

void RoutedModule::takeUpLines(RoutedLines lines, bool oneShopRate) {
    jet::Database& database = core::MainDatabase();
    const RoutedLines stored = this->lines();
    if (!m_showDollar)
        completeFromCatalogue(database, stored, lines);
    const qint64 documentNo = isAdding() ? 0 : currentKey();
    NoteStaging(database, m_kind, documentNo).takeUp(stored.operations, lines.operations);
    m_routing->showRows(documentNo, std::move(lines.operations), std::move(lines.fixedCosts),
                        oneShopRate);
}

bool RoutedModule::holdsNotes(const QJsonObject& entry, qint64 documentNo) const {
    jet::Database& database = core::MainDatabase();
    const RoutedLines stored = loadLines(database, m_kind, documentNo);
    const RoutedLines typed =
        unpackRouting(entry[u"now"_s].toObject()[u"lines"_s].toObject(), stored);
    const QStringList notes = notesOf(database, m_kind, documentNo, stored.operations);
    for (std::size_t i = 0; i < typed.operations.size(); ++i) {
        const QString& note = typed.operations[i].newNote;
        if (!note.isEmpty() && notes.value(static_cast<qsizetype>(i)) != note)
            return false;
    }
    return true;
}

void RoutedModule::cancelStaged() {
    NoteStaging(core::MainDatabase(), m_kind, m_routing->documentNo()).cancel();
}

std::vector<core::EntryPart> RoutedModule::entryParts() {
    std::vector<core::EntryPart> parts = DocumentModule::entryParts();
    parts.push_back(
        {oneRateKey, jet::Value(m_routing->oneShopRate()), control(u"cmdOperRate(0)"_s)});
    return parts;
}

void RoutedModule::restorePart(const QString& key, const jet::Value& value) {
    if (key == oneRateKey)
        m_routing->setOneShopRate(value.toBool());
    else
        DocumentModule::restorePart(key, value);
}

void RoutedModule::tellNeighbours() {
    core::refreshNeighbours({u"frmhistory"_s}, m_kind.documentTable);
}

} // namespace estimating
