#include "inventory/WorkForm.h"

#include "core/MirsaMain.h"
#include "core/history/HistoryTargets.h"
#include "inventory/CopyWork.h"
#include "inventory/NewWork.h"
#include "inventory/Sql.h"
#include "platform/controls/DropMenu.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"

#include <QLabel>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;
/// How many are listed where none has the item's part number or description.
constexpr int newest = 1000;

void tell(const QString& text) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Exclamation, system);
}

} // namespace

const std::vector<WorkKind>& workKinds() {
    using Look = controls::GridColumn;
    const Look::Kind number = Look::Kind::Number;
    static const std::vector<WorkKind> kinds{
        {u"frmItemCreateJob"_s,
         u"Create Job"_s,
         u"Job"_s,
         u"sprJob"_s,
         u"Job"_s,
         u"JobNo"_s,
         u"Job.PONo, Job.PartNo, Job.Description, Job.JobDateIn, Job.JobDueDate, Job.Quantity, "
         "Job.InvoiceTotal"_s,
         {{u"Job"_s, 8, number},
          {u"Customer"_s, 20},
          {u"PO Number"_s, 12},
          {u"Part Number"_s, 14},
          {.title = u"Description"_s, .characters = 22, .stretches = true},
          {u"Date In"_s, 10},
          {u"Due Date"_s, 10},
          {u"Quantity"_s, 8, number},
          {u"Invoice"_s, 10, number}},
         u"frmJob"_s,
         u"Job"_s,
         copyJob},
        {u"frmItemCreateEst"_s,
         u"Create Estimate"_s,
         u"Estimate"_s,
         u"sprEst"_s,
         u"Estimate"_s,
         u"EstNo"_s,
         u"Estimate.PONo, Estimate.RFQNo, Estimate.PartNo, Estimate.Description, "
         "Estimate.Quantity, Estimate.EstDate, Estimate.QtyTotalA"_s,
         {{u"#"_s, 8, number},
          {u"Customer"_s, 20},
          {u"PO Number"_s, 12},
          {u"RFQ Number"_s, 12},
          {u"Part Number"_s, 14},
          {.title = u"Description"_s, .characters = 22, .stretches = true},
          {u"Quantity"_s, 8, number},
          {u"Date"_s, 10},
          {u"Invoice"_s, 10, number}},
         u"frmEstimate"_s,
         u"Estimate"_s,
         copyEstimate}};
    return kinds;
}

WorkForm::WorkForm(const WorkKind& kind) : Form(kind.formName, kind.caption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    lblFound = screen::named(new QLabel(this), u"lblFound"_s);
    lblFound->setTextFormat(Qt::PlainText);
    outside->addWidget(lblFound);
    m_grid = screen::named(new controls::Grid(this), kind.gridName, kind.word + u"s"_s);
    m_grid->setColumns(kind.looks);
    m_grid->setSortable(true);
    outside->addWidget(m_grid, 1);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdCreateNew = bar.button(u"cmdCreateNew"_s, u"Create &New"_s);
    cmdCreateSelect = bar.button(u"cmdCreateSelect"_s, u"&Use Selected"_s);
    bar.stretch();
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    setCancelButton(cmdCancel);
    on(cmdCreateNew, [this] {
        m_new = true;
        hideModal();
    });
    on(cmdCreateSelect, &WorkForm::cmdCreateSelect_Click);
    on(cmdCancel, [this] { hideModal(); });
    on(m_grid->rowDoubleClicked, [this](int) { cmdCreateSelect_Click(); });
    controls::offerInMenu(m_grid, {cmdCreateSelect, cmdCreateNew});
    resize(940, 420);
}

void WorkForm::fill() {
    const screen::BusyPointer busy;
    const QString t = m_kind.table, key = t + u'.' + m_kind.key;
    const auto select = [&](int top, const QString& where) {
        return u"SELECT "_s + (top > 0 ? u"TOP "_s + num(top) + u' ' : QString()) + key +
               u", Customer.Company, "_s + m_kind.columns + u" FROM "_s + t +
               u" LEFT JOIN Customer ON "_s + t + u".CustID = Customer.CustID"_s + where +
               u" ORDER BY "_s + key + u" DESC"_s;
    };
    QStringList same;
    if (!m_item.partNumber.isEmpty())
        same << t + u".PartNo = "_s + sqlText(m_item.partNumber);
    if (!m_item.description.isEmpty())
        same << t + u".Description = "_s + sqlText(m_item.description);
    jet::Database& database = core::MainDatabase();
    const auto open = [&](const QString& text) {
        return database.openRecordset(text, jet::RecordsetType::Snapshot);
    };
    jet::Recordset set;
    if (!same.isEmpty())
        set = open(select(0, u" WHERE "_s + same.join(u" OR "_s)));
    const bool none = !set.isOpen() || set.isEmpty();
    if (none)
        set = open(select(newest, {}));
    const bool money = core::HasAccess(u"ShowDollar"_s);
    const int columns = static_cast<int>(m_kind.looks.size());
    std::vector<QStringList> rows;
    std::vector<qint64> keys;
    for (; !set.eof(); set.moveNext()) {
        QStringList texts;
        for (int i = 0; i < columns - 1; ++i)
            texts << set.field(i).toText();
        texts << (money ? values::format(set.field(columns - 1).toCurrency(), u"#,##0.00")
                        : QString());
        rows.push_back(texts);
        keys.push_back(set.field(0).toLong());
    }
    const auto count = rows.size();
    m_grid->setRows(std::move(rows));
    for (std::size_t i = 0; i < keys.size(); ++i)
        m_grid->setRowKey(static_cast<int>(i), keys[i]);
    const QString words = m_kind.word.toLower() + (count == 1 ? u""_s : u"s"_s);
    lblFound->setText(
        none ? u"No %1 has this part number or description. The newest are listed."_s.arg(
                   m_kind.word.toLower())
             : u"%1 %2 with the part number or description of %3"_s.arg(count).arg(
                   words, m_item.description));
    cmdCreateSelect->setEnabled(count > 0);
    m_grid->setActiveRow(0);
}

void WorkForm::showFor(qint64 itemId) {
    const auto item = loadItem(core::MainDatabase(), itemId);
    if (!item) {
        tell(u"This item has been deleted by another user."_s);
        return;
    }
    m_item = *item;
    fill();
    m_grid->setFocus();
    showModal();
    if (m_new)
        goToNew();
    else if (m_made != 0)
        goToCopy();
}

void WorkForm::cmdCreateSelect_Click() {
    const qint64 source = m_grid->rowKey(m_grid->activeRow());
    if (source == 0)
        return;
    m_made = m_kind.copy(core::MainDatabase(), source);
    if (m_made == 0) {
        tell(m_kind.word + u" Number "_s + QString::number(source) + u" not found!"_s);
        fill();
        return;
    }
    core::RefreshHistoryIfOpen(m_kind.lookup);
    hideModal();
}

void WorkForm::goToNew() {
    auto* module = dynamic_cast<NewWork*>(screen::Forms::show(m_kind.module));
    if (module && !module->startNew(m_item.description, m_item.partNumber))
        tell(u"Another %1 is being entered. Please save or cancel it first."_s.arg(
            m_kind.word.toLower()));
}

void WorkForm::goToCopy() {
    screen::Form* form = screen::Forms::show(m_kind.module);
    auto* module = dynamic_cast<core::RecordScreen*>(form);
    if (module && !module->goToRecord(m_made))
        tell(u"%1 %2 has been created. Another one is being entered; go to it when that is saved."_s
                 .arg(m_kind.word)
                 .arg(m_made));
}

} // namespace inventory
