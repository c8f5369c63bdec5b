#include "inventory/frmSpareParts.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/records/FindDialogs.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/Pictures.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace inventory {

using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using Kind = controls::GridColumn::Kind;

namespace {

constexpr int statusColumn = 1;
const QString nothingSelected = u"Nothing Selected."_s;

const QString customersSelect = u"Select CustID, Company from Customer order by Company"_s;

} // namespace

frmSpareParts::frmSpareParts() : Form(QString::fromLatin1(formName), u"Spare Parts"_s) {
    auto* outside = new QVBoxLayout(this);
    outside->addWidget(choice());
    fraMain = screen::frame(this, outside, u"fraMain"_s, {});
    outside->setStretchFactor(fraMain, 1);
    auto* inside = new QVBoxLayout(fraMain);
    sprMain = screen::named(new controls::Grid(fraMain), u"sprMain"_s, u"Spare parts"_s);
    const bool money = core::HasAccess(u"ShowDollar"_s);
    const auto price = [&](const QString& title) {
        return controls::GridColumn{
            .title = title, .characters = 10, .kind = Kind::Number, .hidden = !money};
    };
    sprMain->setColumns({{u"Rec #"_s, 7, Kind::Number},
                         {u"Status"_s, 7, Kind::Picture},
                         {u"Part #"_s, 18},
                         {u"Job #"_s, 8, Kind::Number},
                         {u"Date"_s, 11},
                         {u"S Qty"_s, 7, Kind::Number},
                         {u"J Qty"_s, 7, Kind::Number},
                         {u"Location"_s, 18},
                         price(u"Price"_s),
                         price(u"Total Price"_s),
                         {u"Emp #"_s, 7, Kind::Number},
                         {u"Notes"_s, 24}});
    sprMain->setRowsToSelect(true);
    sprMain->setSortable(true);
    inside->addWidget(sprMain);
    makeButtons(outside);
    on(sprMain->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
}

QWidget* frmSpareParts::choice() {
    auto* head = new QWidget(this);
    screen::Fields fields(head);
    fields.tight();
    dbcCompID = fields.dataCombo(u"dbcCompID"_s, u"Compan&y:"_s, {.characters = 34});
    optCompany = fields.option(u"optCompany"_s, u"Display for Company &Only"_s);
    optBoth = fields.option(u"optBoth"_s, u"Display for Company and Location"_s);
    fields.nextColumn();
    dbcLocation = fields.dataCombo(u"dbcLocation"_s, u"Loca&tion:"_s, {.characters = 24});
    cboMonths = fields.listCombo(u"cboMonths"_s, u"S&how Red if older than (Months):"_s);
    for (const int months : {1, 2, 3, 4, 5, 6, 9, 12, 18, 24, 36, 48, 60})
        cboMonths->addRow(QString::number(months), months);
    cboMonths->chooseNumber(6);
    optCompany->setChecked(true);
    const auto customerChosen = [this] {
        if (customer() == m_customer)
            return;
        fillLocations();
        showList();
    };
    on(dbcCompID->chosen, customerChosen);
    on(dbcCompID->left, customerChosen);
    on(optCompany, [this] { showList(); });
    on(optBoth, [this] { showList(); });
    const auto locationChosen = [this] {
        if (optBoth->isChecked())
            showList();
    };
    on(dbcLocation->chosen, locationChosen);
    on(dbcLocation->left, locationChosen);
    on(cboMonths->chosen, [this] {
        for (int row = 0; row < sprMain->rowCount(); ++row)
            showStatus(row);
    });
    return head;
}

void frmSpareParts::makeButtons(QVBoxLayout* outside) {
    screen::ButtonBar first(this, outside);
    screen::ButtonBar second(this, outside);
    std::vector<QAbstractButton*> commands;
    const auto button = [&](screen::ButtonBar& bar, const QString& name, const QString& caption,
                            const std::function<void()>& action) {
        QPushButton* made = bar.button(name, caption);
        on(made, action);
        commands.push_back(made);
    };
    button(first, u"cmdNew"_s, u"&New"_s, [this] {
        Forms::dialog<NewSpareDialog>(u"frmSpareNew"_s)
            ->add(std::max<qint64>(customer(), 0), dbcLocation->text().trimmed());
    });
    button(first, u"cmdEdit"_s, u"E&dit"_s, [this] { cmdEdit_Click(); });
    button(first, u"cmdMove"_s, u"&Move"_s, [this] { cmdMove_Click(); });
    button(first, u"cmdDelete"_s, u"De&lete"_s, [this] { cmdDelete_Click(); });
    button(first, u"cmdFind"_s, u"&Goto"_s, [this] { cmdFind_Click(); });
    button(first, u"cmdQuery"_s, u"&Query/Report"_s, [] { Forms::show(u"frmSpareQuery"_s); });
    first.stretch();
    button(second, u"cmdPrintAll"_s, u"Quick Report &All"_s, [this] {
        core::launchDefaultReport(u"Spare Parts"_s, {}, u"Full Spare Parts Report"_s, this);
    });
    button(second, u"cmdPrintScr"_s, u"Quick &Report Shown"_s, [this] { cmdPrintScr_Click(); });
    button(second, u"cmdReportSelected"_s, u"Report S&elected"_s,
           [this] { cmdReportSelected_Click(); });
    second.stretch();
    QPushButton* cmdClose = second.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdClose, [this] { unload(); });
    controls::offerInMenu(sprMain, commands);
}

QSize frmSpareParts::sizeHint() const {
    return {1040, 580};
}

void frmSpareParts::Form_Load() {
    core::MainDatabase().expect({customersSelect, spareLocations(customer())});
    fillCustomers();
    fillLocations();
    showList();
}

void frmSpareParts::fillCustomers() {
    dbcCompID->setRows(
        core::MainDatabase().openRecordset(customersSelect, jet::RecordsetType::Snapshot),
        u"Company"_s, u"CustID"_s);
}

void frmSpareParts::fillLocations() {
    dbcLocation->setRows(core::MainDatabase().openRecordset(spareLocations(customer()),
                                                            jet::RecordsetType::Snapshot),
                         u"slocation"_s, u"slocation"_s);
}

qint64 frmSpareParts::customer() const {
    const QString key = dbcCompID->boundText();
    return key.isEmpty() ? -1 : key.toLongLong();
}

std::optional<QString> frmSpareParts::shownLocation() const {
    return optBoth->isChecked() ? std::optional(dbcLocation->text().trimmed()) : std::nullopt;
}

void frmSpareParts::showList() {
    const screen::BusyPointer busy;
    m_customer = customer();
    const auto location = shownLocation();
    m_parts = location && location->isEmpty()
                  ? std::vector<SparePart>()
                  : sparesOf(core::MainDatabase(), m_customer, location);
    std::vector<QStringList> rows;
    for (const SparePart& part : m_parts)
        rows.push_back({QString::number(part.index),
                        {},
                        part.partNo,
                        part.jobNo == 0 ? QString() : QString::number(part.jobNo),
                        part.date ? values::format(*part.date, u"Short Date") : QString(),
                        QString::number(part.spareQty),
                        QString::number(part.jobQty),
                        part.location,
                        values::format(part.price, u"#,##0.00"),
                        values::format(part.totalPrice, u"#,##0.00"),
                        QString::number(part.employee),
                        QString(part.notes).replace(u'\n', u' ')});
    sprMain->setRows(std::move(rows));
    // Sorting moves the rows, their numbers stay with them.
    for (int row = 0; row < sprMain->rowCount(); ++row) {
        sprMain->setRowKey(row, row + 1);
        showStatus(row);
    }
    fraMain->setTitle(u"Record Selection - %1 records currently displayed."_s.arg(m_parts.size()));
}

void frmSpareParts::showStatus(int row) {
    const SparePart& part = m_parts[static_cast<std::size_t>(sprMain->rowKey(row) - 1)];
    const qint64 months = cboMonths->itemNumber();
    if (!part.date || months == 0)
        return;
    const bool red = isOld(*part.date, values::today(), static_cast<int>(months));
    sprMain->setPicture(
        row, statusColumn, red ? controls::pictures::redLight() : controls::pictures::greenLight(),
        (red ? u"Older than %1 months"_s : u"Not older than %1 months"_s).arg(months));
}

void frmSpareParts::showSpares(qint64 custId, const std::optional<QString>& location) {
    dbcCompID->setBoundText(QString::number(custId));
    fillLocations();
    dbcLocation->setText(location.value_or(QString()));
    (location ? optBoth : optCompany)->setChecked(true);
    showList();
}

void frmSpareParts::refreshLookup(const QString& table) {
    if (table.compare(u"Customer"_s, Qt::CaseInsensitive) == 0)
        fillCustomers();
}

qint64 frmSpareParts::currentKey() const {
    const int row = sprMain->activeRow();
    return row < 0 ? 0 : m_parts[static_cast<std::size_t>(sprMain->rowKey(row) - 1)].index;
}

bool frmSpareParts::goToRecord(qint64 key) {
    const auto part = sparePart(core::MainDatabase(), key);
    if (!part)
        return false;
    showSpares(part->custId, {});
    for (int row = 0; row < sprMain->rowCount(); ++row) {
        if (sprMain->text(row, 0).toLongLong() == key) {
            sprMain->setActiveRow(row);
            sprMain->selectRow(row);
            return true;
        }
    }
    return false;
}

// The buttons

std::vector<qint64> frmSpareParts::selected(const QString& complaint) {
    std::vector<qint64> indexes;
    for (const int row : sprMain->selectedRows())
        indexes.push_back(m_parts[static_cast<std::size_t>(sprMain->rowKey(row) - 1)].index);
    if (indexes.empty())
        MsgBox(complaint, Buttons::Ok, Icon::Exclamation, nothingSelected);
    return indexes;
}

void frmSpareParts::cmdEdit_Click() {
    const auto chosen = selected(u"Nothing Selected To Edit!"_s);
    if (chosen.empty())
        return;
    const qint64 index = chosen.front();
    if (!Forms::dialog<EditSpareDialog>(u"frmSpareEdit"_s)->edit(index))
        return;
    fillLocations();
    showList();
}

void frmSpareParts::cmdMove_Click() {
    const auto chosen = selected(u"Nothing Selected To Move!"_s);
    if (chosen.empty() ||
        !Forms::dialog<MoveSpareDialog>(u"frmSpareMove"_s)->move(m_customer, chosen))
        return;
    fillLocations();
    showList();
}

void frmSpareParts::cmdDelete_Click() {
    const auto chosen = selected(u"Nothing Selected To Delete!"_s);
    if (chosen.empty() ||
        !screen::confirmDeletion(u"Once Deleted, data will be unrecoverable.  Continue?"_s,
                                 u"Deleting Selected"_s))
        return;
    deleteSpares(core::MainDatabase(), chosen);
    fillLocations();
    showList();
}

void frmSpareParts::cmdFind_Click() {
    const auto text = Forms::dialog<FindSpareDialog>(u"frmSpareFind"_s)->ask();
    if (!text)
        return;
    const auto found = Forms::dialog<core::FoundDialog>(u"frmSpareFound"_s);
    if (!found->list(spareFindSelect(*text))) {
        MsgBox(u"No Part Numbers Match Your Query!"_s, Buttons::Ok, Icon::Exclamation,
               u"No Match!"_s);
        return;
    }
    if (const auto index = found->pick())
        goToRecord(*index);
}

void frmSpareParts::cmdPrintScr_Click() {
    if (m_parts.empty())
        MsgBox(u"There Are No Records Showing To Print!"_s, Buttons::Ok, Icon::Exclamation,
               u"Nothing to Print!"_s);
    else
        core::launchDefaultReport(u"Spare Parts"_s, spareFormula(m_customer, shownLocation()),
                                  u"Spare Parts Inventory for "_s + dbcCompID->text(), this);
}

void frmSpareParts::cmdReportSelected_Click() {
    const auto chosen = selected(u"Nothing Selected To Print!"_s);
    if (!chosen.empty())
        core::launchDefaultReport(u"Spare Parts"_s, spareFormula(chosen),
                                  u"Spare Parts Inventory - Selected"_s, this);
}

} // namespace inventory
