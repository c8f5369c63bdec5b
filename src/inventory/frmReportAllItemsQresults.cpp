#include "inventory/frmReportAllItemsQresults.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DropMenu.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Text.h"

#include <QGroupBox>
#include <QVBoxLayout>

#include <numeric>

namespace inventory {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {
const QString query = u"frmQueryTypeLoc"_s;
}

frmReportAllItemsQresults::frmReportAllItemsQresults()
    : Form(QString::fromLatin1(formName), u"Items Query Results"_s) {
    auto* outside = new QVBoxLayout(this);
    fraMain = screen::frame(this, outside, u"fraMain"_s, u"0 Records Found Matching Query."_s);
    outside->setStretchFactor(fraMain, 1);
    auto* inside = new QVBoxLayout(fraMain);
    sprItemFound =
        screen::named(new controls::Grid(fraMain), u"sprItemFound"_s, u"Items Query Results"_s);
    sprItemFound->setColumns({{.title = u"Description"_s, .characters = 28, .stretches = true},
                              {u"Location"_s, 16},
                              {u"Type"_s, 16},
                              {u"Part Number"_s, 16},
                              {u"Manufacturer"_s, 16},
                              {u"Quantity"_s, 10, controls::GridColumn::Kind::Number}});
    sprItemFound->setSortable(true);
    sprItemFound->setRowsToSelect(true);
    sprItemFound->setMinimumHeight(240);
    inside->addWidget(sprItemFound);
    screen::Fields report(this, outside);
    dbcReport = report.dataCombo(u"dbcReport"_s, u"Repor&t:"_s, screen::wide(30));
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdPrintSel = bar.button(u"cmdPrintSel"_s, u"Report S&elected"_s);
    QPushButton* cmdPrintScr = bar.button(u"cmdPrintScr"_s, u"Report &Shown"_s);
    bar.stretch();
    QPushButton* cmdRedo = bar.button(u"cmdRedo"_s, u"&Redo"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Do&ne"_s);
    setCancelButton(cmdCancel);
    on(cmdPrintSel, &frmReportAllItemsQresults::cmdPrintSel_Click);
    on(cmdPrintScr, &frmReportAllItemsQresults::cmdPrintScr_Click);
    on(cmdRedo, &frmReportAllItemsQresults::cmdRedo_Click);
    on(cmdCancel, &frmReportAllItemsQresults::cmdCancel_Click);
    on(sprItemFound->rowDoubleClicked, [this](int row) { goToRow(row); });
    controls::offerInMenu(sprItemFound, {cmdPrintSel, cmdPrintScr});
    resize(900, 520);
}

void frmReportAllItemsQresults::Form_Load() {
    openReports();
    const auto* source = screen::Forms::find<StockSource>(query);
    if (!source)
        return;
    showItems(source->found());
    m_question = source->question();
    m_allItems = m_question.isEmpty();
}

void frmReportAllItemsQresults::showItems(const std::vector<ItemRow>& items) {
    const screen::BusyPointer busy;
    m_question = {};
    m_allItems = false;
    std::vector<QStringList> rows;
    for (const ItemRow& row : items)
        rows.push_back({row.item.description, row.locationName, row.typeName, row.item.partNumber,
                        row.item.manufacturer, QString::number(row.item.quantity)});
    sprItemFound->setRows(std::move(rows));
    int place = 0;
    for (const ItemRow& row : items)
        sprItemFound->setRowKey(place++, row.item.id);
    fraMain->setTitle(QString::number(place) + u" Records Found Matching Query."_s);
}

void frmReportAllItemsQresults::openReports() {
    m_reports = core::MainDatabase().openRecordset(
        u"SELECT * FROM reports WHERE reports.Module LIKE 'Inventory*' ORDER BY name"_s,
        jet::RecordsetType::Snapshot);
    dbcReport->setRows(m_reports, u"Name"_s, u"Name"_s);
    if (!m_reports.isEmpty()) {
        m_reports.findFirst(u"Module = 'Inventory' AND Default = True"_s);
        if (!m_reports.noMatch()) {
            dbcReport->setText(m_reports.text(u"Name"));
            return;
        }
    }
    MsgBox(u"You do not have a Default Report specified for this Module or the Default Report is "
           "missing!"_s,
           Buttons::Ok, Icon::None, u"No Default Report"_s);
}

void frmReportAllItemsQresults::print(const std::vector<int>& rows, const QString& title,
                                      bool all) {
    if (!m_reports.isEmpty()) {
        m_reports.moveFirst();
        m_reports.findFirst(u"Name = '"_s + values::quoted(dbcReport->text().trimmed()) + u'\'');
    }
    if (m_reports.isEmpty() || m_reports.noMatch()) {
        complain(u"Please choose a report from the list."_s, dbcReport);
        return;
    }
    std::vector<qint64> items;
    items.reserve(rows.size());
    for (const int row : rows)
        items.push_back(sprItemFound->rowKey(row));
    core::launchReportFile(
        m_reports.text(u"FileName"),
        all && m_allItems ? QString() : stockFormula(m_question, m_reports.text(u"Module"), items),
        title, this);
}

void frmReportAllItemsQresults::cmdPrintScr_Click() {
    std::vector<int> rows(static_cast<std::size_t>(sprItemFound->rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
    if (!rows.empty())
        print(rows, u"Query Results"_s, true);
}

void frmReportAllItemsQresults::cmdPrintSel_Click() {
    const auto rows = sprItemFound->selectedRows();
    if (rows.empty())
        MsgBox(u"No Records Selected!"_s, Buttons::Ok, Icon::Exclamation, u"System Message"_s);
    else
        print(rows, u"Selected Records"_s, false);
}

void frmReportAllItemsQresults::cmdRedo_Click() {
    unload();
    screen::Forms::show(query);
}

void frmReportAllItemsQresults::cmdCancel_Click() {
    screen::Form* asked = screen::Forms::find(query);
    unload();
    if (asked)
        asked->unload();
}

void frmReportAllItemsQresults::goToRow(int row) {
    const qint64 item = sprItemFound->rowKey(row);
    screen::Form* form = screen::Forms::show(u"frmInventory"_s);
    if (auto* explorer = dynamic_cast<Explorer*>(form); explorer && item != 0)
        explorer->goToItem(item);
}

} // namespace inventory
