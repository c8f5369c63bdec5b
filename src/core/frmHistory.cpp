#include "core/frmHistory.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/history/HistoryTargets.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using controls::GridColumn;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

/// A column of a list: where it comes from and how it is shown.
struct ShownColumn {
    const char16_t* title;
    const char16_t* field;
    int characters;
    const char16_t* mask = nullptr; ///< numbers; a date where it is "Short Date"
    bool money = false;
};

const std::array<std::vector<ShownColumn>, 4>& shownColumns() {
    static const std::vector<ShownColumn> items = {
        {u"Item #", u"ItemNumber", 7, u"#####0"},
        {u"Part #", u"PartNumber", 16},
        {u"Quantity", u"Quantity", 9, u"#####0"},
        {u"Units", u"UnitOfMeasure", 7},
        {u"Cost Each", u"UnitPrice", 11, u"########.0000", true},
        {u"Type", u"Type", 10},
        {u"Est #", u"Estimate", 7, u"######"},
        {u"Job #", u"Job", 7, u"######"},
    };
    static const auto withNumber = [](const ShownColumn& number) {
        std::vector<ShownColumn> all = items;
        all.insert(all.begin(), number);
        return all;
    };
    static const auto estimate = [] {
        static const char16_t* const quantities[] = {u"Qty A", u"Qty B", u"Qty C", u"Qty D",
                                                     u"Qty E"};
        static const char16_t* const costs[] = {u"Cost Each A", u"Cost Each B", u"Cost Each C",
                                                u"Cost Each D", u"Cost Each E"};
        static const char16_t* const breaks[] = {u"QtyBreakA", u"QtyBreakB", u"QtyBreakC",
                                                 u"QtyBreakD", u"QtyBreakE"};
        static const char16_t* const prices[] = {u"QtyPriceA", u"QtyPriceB", u"QtyPriceC",
                                                 u"QtyPriceD", u"QtyPriceE"};
        std::vector<ShownColumn> all = {{u"Est. #", u"EstNo", 8, u"#####0"},
                                        {u"Cust. #", u"CustID", 8, u"#####0"},
                                        {u"Part #", u"PartNo", 16},
                                        {u"Date", u"EstDate", 11, u"Short Date"}};
        for (int i = 0; i < 5; ++i) {
            all.push_back({quantities[i], breaks[i], 8, u"#####0"});
            all.push_back({costs[i], prices[i], 13, u"#####0.0000", true});
        }
        return all;
    };
    static const std::array<std::vector<ShownColumn>, 4> columns = {
        std::vector<ShownColumn>{
            {u"Job #", u"JobNo", 8, u"#####0"},
            {u"Cust. #", u"CustID", 8, u"#####0"},
            {u"Part #", u"PartNo", 16},
            {u"Date", u"JobDateIn", 11, u"Short Date"},
            {u"Quantity", u"Quantity", 9, u"#####0"},
            {u"Shop Cost Each", u"JobShopCost", 15, u"######0.0000", true},
            {u"Invoice Cost Each", u"InvoiceEach", 16, u"######0.0000", true},
        },
        estimate(),
        withNumber({u"RFQ #", u"VOrderKey", 10}),
        withNumber({u"PO #", u"PONumber", 8, u"#####0"}),
    };
    return columns;
}

QString shownText(const jet::Value& value, const ShownColumn& column) {
    if (value.isNull())
        return {};
    if (!column.mask)
        return value.toText();
    const QString mask = QString::fromUtf16(column.mask);
    if (mask == u"Short Date") {
        const auto date = value.toDate();
        return date ? values::format(*date, mask) : QString();
    }
    return values::format(value.toDouble(), column.money ? moneyMask(mask) : mask);
}

const char* const gridNames[] = {"sprJob", "sprEstimate", "sprRFQ", "sprPO"};

void tell(const QString& text, const QString& title) {
    MsgBox(text, Buttons::Ok, Icon::Exclamation, title);
}

} // namespace

frmHistory::frmHistory() : Form(QString::fromLatin1(formName), u"History"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    outside->addLayout(top);
    auto* criteria = new QWidget(this);
    top->addWidget(criteria, 1);
    screen::Fields fields(criteria);
    dbcCustomer = fields.dataCombo(u"dbcCustomer"_s, u"C&ustomer:"_s, {.characters = 34});
    fields.nextColumn();
    dbcPart = fields.dataCombo(u"dbcPart"_s, u"P&art Number:"_s, {.characters = 24});
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    screen::ButtonBar choose(this, top);
    QPushButton* cmdShow = choose.button(u"cmdShow"_s, u"&Show"_s);
    QPushButton* cmdClear = choose.button(u"cmdClear"_s, u"C&lear"_s);

    auto* four = new QGridLayout;
    outside->addLayout(four, 1);
    for (int list = 0; list < 4; ++list) {
        auto* half = new QWidget(this);
        makeGrid(list, half);
        four->addWidget(half, list / 2, list % 2);
        four->setColumnStretch(list % 2, 1);
    }

    auto* reports = new QWidget(this);
    screen::Fields report(reports);
    dbcReport =
        report.dataCombo(u"dbcReport"_s, u"Re&port on the ticked rows:"_s, {.characters = 34});
    dbcReport->setTypingAllowed(false);
    report.grid()->setContentsMargins(0, 0, 0, 0);
    outside->addWidget(reports, 0, Qt::AlignLeft);
    screen::ButtonBar bar(this, outside);
    cmdPrint = bar.button(u"cmdPrint"_s, u"&Report Selected"_s);
    QPushButton* cmdHistoryPrint = bar.button(u"cmdHistoryPrint"_s, u"R&eport Shown"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);

    setDefaultButton(cmdShow);
    setCancelButton(cmdClose);
    on(dbcCustomer->chosen, &frmHistory::dbcCustomer_Click);
    on(cmdShow, &frmHistory::cmdShow_Click);
    on(cmdClear, &frmHistory::cmdClear_Click);
    on(cmdPrint, &frmHistory::cmdPrint_Click);
    on(cmdHistoryPrint, &frmHistory::cmdHistoryPrint_Click);
    on(cmdClose, [this] { unload(); });
    resize(1180, 640);
}

void frmHistory::makeGrid(int list, QWidget* parent) {
    auto* layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    const HistoryList& kind = historyLists()[static_cast<std::size_t>(list)];
    Shown& shown = m_lists[static_cast<std::size_t>(list)];
    shown.frame = screen::frame(parent, layout, u"fra"_s + kind.name, caption(list));
    auto* inside = new QVBoxLayout(shown.frame);
    shown.grid = screen::named(new controls::Grid(shown.frame),
                               QString::fromLatin1(gridNames[list]), caption(list));
    std::vector<GridColumn> columns = {{u"Print"_s, 6, GridColumn::Kind::Check, true}};
    for (const ShownColumn& column : shownColumns()[static_cast<std::size_t>(list)])
        columns.push_back({QString::fromUtf16(column.title), column.characters,
                           column.mask && QStringView(column.mask) != u"Short Date"
                               ? GridColumn::Kind::Number
                               : GridColumn::Kind::Text});
    shown.grid->setColumns(std::move(columns));
    shown.grid->setSortable(true);
    inside->addWidget(shown.grid);
    on(shown.grid->cellClicked, [this, list](int, int) { grid_Click(list); });
    on(shown.grid->activeRowChanged, [this, list](int) { grid_Click(list); });
    on(shown.grid->cellChanged, [this, list](int, int) { grid_Click(list); });
    on(shown.grid->rowDoubleClicked, [this, list](int row) { grid_DblClick(list, row); });
}

void frmHistory::Form_Load() {
    m_showDollar = HasAccess(u"ShowDollar"_s);
    dbcCustomer->setRows(
        MainDatabase().openRecordset(u"SELECT Custid, company FROM Customer ORDER BY company"_s,
                                     jet::RecordsetType::Snapshot),
        u"company"_s, u"Custid"_s);
    dbcCustomer_Click();
}

void frmHistory::dbcCustomer_Click() {
    dbcPart->setRows(
        MainDatabase().openRecordset(historyPartsSelect(dbcCustomer->boundText().toLongLong()),
                                     jet::RecordsetType::Snapshot),
        u"PartNo"_s, u"PartNo"_s);
}

void frmHistory::cmdShow_Click() {
    HistoryCriteria criteria;
    criteria.custId = dbcCustomer->boundText().toLongLong();
    criteria.partNo = dbcPart->text().trimmed();
    if (criteria.custId == 0 && !dbcCustomer->text().trimmed().isEmpty()) {
        complain(u"There is no customer of that name. Choose one from the list."_s, dbcCustomer,
                 Icon::Exclamation, u"System Message"_s);
        return;
    }
    if (criteria.isEmpty()) {
        complain(u"You must select some criteria before displaying records!"_s, dbcCustomer,
                 Icon::Exclamation, u"System Message"_s);
        return;
    }
    m_criteria = criteria;
    m_customer = criteria.custId != 0 ? dbcCustomer->text() : QString();
    showLists();
}

void frmHistory::showLists() {
    const screen::BusyPointer hourglass;
    fillHistory(MainDatabase(), m_criteria);
    for (int list = 0; list < 4; ++list)
        fillGrid(list);
}

void frmHistory::fillGrid(int list) {
    const auto place = static_cast<std::size_t>(list);
    const HistoryList& kind = historyLists()[place];
    Shown& shown = m_lists[place];
    const std::vector<ShownColumn>& columns = shownColumns()[place];
    jet::Recordset set =
        MainDatabase().openRecordset(historySelect(kind, m_criteria), jet::RecordsetType::Snapshot);
    std::vector<QStringList> rows;
    shown.keys.clear();
    for (; !set.eof(); set.moveNext()) {
        QStringList texts{u"0"_s};
        for (const ShownColumn& column : columns)
            texts += shownText(set[QStringView(column.field)], column);
        rows.push_back(std::move(texts));
        // Items go to their order: an RFQ by its vendor's key, a PO by its number.
        shown.keys.push_back(kind.textKey ? set.text(u"VOrderKey") : set.text(kind.goesBy));
    }
    const auto count = static_cast<int>(rows.size());
    shown.grid->setRows(std::move(rows));
    for (int row = 0; row < count; ++row) {
        shown.grid->setRowKey(row, row);
        for (std::size_t i = 0; !m_showDollar && i < columns.size(); ++i)
            if (columns[i].money)
                shown.grid->setTextHidden(row, static_cast<int>(i) + 1, true);
    }
    shown.frame->setTitle(caption(list));
    shown.grid->setAccessibleName(caption(list));
}

QString frmHistory::textOfCriteria() const {
    if (m_criteria.custId == 0)
        return u"Part Number "_s + m_criteria.partNo;
    return u"Customer "_s + m_customer +
           (m_criteria.partNo.isEmpty() ? QString() : u", Part Number "_s + m_criteria.partNo);
}

QString frmHistory::caption(int list) const {
    const QString& name = historyLists()[static_cast<std::size_t>(list)].name;
    const QString rows = name + (list < 2 ? u" Records"_s : u" Items"_s);
    return m_criteria.isEmpty() ? rows : rows + u" Displayed for "_s + textOfCriteria();
}

void frmHistory::refreshLookup(const QString& table) {
    if (table.compare(u"Customer"_s, Qt::CaseInsensitive) == 0)
        dbcCustomer->setRows(
            MainDatabase().openRecordset(u"SELECT Custid, company FROM Customer ORDER BY company"_s,
                                         jet::RecordsetType::Snapshot),
            u"company"_s, u"Custid"_s);
    if (!m_criteria.isEmpty())
        showLists();
}

void frmHistory::cmdClear_Click() {
    dbcCustomer->clear();
    dbcPart->clear();
    dbcCustomer_Click();
    dbcCustomer->setFocus();
}

void frmHistory::grid_Click(int list) {
    if (m_active == list)
        return;
    m_active = list;
    dbcReport->clear();
    dbcReport->setRows(MainDatabase().openRecordset(
                           u"SELECT Name, Module, FileName FROM Reports WHERE Module = '"_s +
                               historyLists()[static_cast<std::size_t>(list)].reportModule +
                               u"' ORDER BY Name"_s,
                           jet::RecordsetType::Snapshot),
                       u"Name"_s, u"FileName"_s);
}

void frmHistory::grid_DblClick(int list, int row) {
    goToRecord(list, row);
}

void frmHistory::goToRecord(int list, int row) {
    const HistoryList& kind = historyLists()[static_cast<std::size_t>(list)];
    const Shown& shown = m_lists[static_cast<std::size_t>(list)];
    const QString key = shown.keys[static_cast<std::size_t>(shown.grid->rowKey(row))];
    const QString screenName = u"frm"_s + kind.name;
    if (auto* open = screen::Forms::find<RecordScreen>(screenName);
        open && open->mode().compare(u"Browse"_s, Qt::CaseInsensitive) != 0) {
        tell(u"The %1 Module is currently in 'Edit' or 'Add' mode.  You cannot goto a record "
             "unless the %1 module is in 'Browse' mode"_s.arg(kind.name),
             list < 2 ? u"Estimate Module Locked!"_s : kind.name + u" Module Locked!"_s);
        return;
    }
    if (!screen::Forms::isKnown(screenName) || !screen::Forms::show(screenName))
        return;
    auto* module = screen::Forms::find<RecordScreen>(screenName);
    const qint64 number = kind.textKey ? key.section(u'-', 0, 0).toLongLong() : key.toLongLong();
    if (!module || !module->goToRecord(number)) {
        tell(kind.name + u' ' + key +
                 u" is no longer there, or not among the records that "
                 "the module shows."_s,
             u"System Message"_s);
        return;
    }
    if (auto* parts = screen::Forms::find<PartScreen>(screenName); parts && kind.textKey)
        parts->goToPart(key);
}

void frmHistory::cmdHistoryPrint_Click() {
    // Another station may have filled the one table with its own lists since.
    if (!m_criteria.isEmpty())
        fillHistory(MainDatabase(), m_criteria);
    if (!MainDatabase().hasRows(u"SELECT ID FROM History ORDER BY ID"_s)) {
        tell(u"There are no Records Displayed to Print!"_s, u"Error!"_s);
        return;
    }
    launchReportFile(u"History.rpt"_s, {}, u"History Records"_s, this);
}

void frmHistory::cmdPrint_Click() {
    QStringList parts;
    if (m_active >= 0) {
        const HistoryList& kind = historyLists()[static_cast<std::size_t>(m_active)];
        const Shown& shown = m_lists[static_cast<std::size_t>(m_active)];
        for (int row = 0; row < shown.grid->rowCount(); ++row) {
            if (shown.grid->text(row, 0) != u"1")
                continue;
            const QString& key = shown.keys[static_cast<std::size_t>(shown.grid->rowKey(row))];
            const QString part =
                kind.formula + u" = "_s + (kind.textKey ? u'\'' + key + u'\'' : key);
            if (!parts.contains(part))
                parts += part;
        }
    }
    if (parts.isEmpty()) {
        tell(u"No Records Selected!"_s, u"Error"_s);
        return;
    }
    if (dbcReport->boundText().isEmpty()) {
        complain(u"Choose a report for the selected records."_s, dbcReport, Icon::Exclamation,
                 u"Error"_s);
        return;
    }
    launchReportFile(dbcReport->boundText(), parts.join(u" OR "_s), u"Selected Records"_s, this);
}

} // namespace core
