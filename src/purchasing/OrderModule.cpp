#include "purchasing/OrderModule.h"

#include "core/MirsaMain.h"
#include "masters/AddressLists.h"
#include "platform/screen/Forms.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"
#include "purchasing/Dialogs.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace purchasing {

using controls::GridColumn;
using Kind = GridColumn::Kind;
using screen::Buttons;
using screen::Fields;
using screen::Icon;
using screen::MsgBox;

namespace {

using Column = controls::LineColumn<OrderLine>;

const QString headerWord = u"h:"_s; // in front of their columns' names, in the entry's history
const QString vendorWord = u"v:"_s;
const QString numbersKey = u"itemNumbers"_s; // which lines get as they come and go

Column textColumn(const QString& title, int characters, QString OrderLine::*member,
                  bool stretches = false) {
    return {.look = {.title = title, .characters = characters, .stretches = stretches},
            .text = [member](const OrderLine& line) { return line.*member; }};
}

Column numberColumn(const QString& title, int characters, qint64 OrderLine::*member,
                    bool emptyIfZero) {
    return {.look = {title, characters, Kind::Number},
            .text = [member, emptyIfZero](const OrderLine& line) {
                const qint64 number = line.*member;
                return number == 0 && emptyIfZero ? QString() : QString::number(number);
            }};
}

Column moneyColumn(const QString& title, int characters, values::Currency OrderLine::*member,
                   const QString& mask) {
    return {.look = {title, characters, Kind::Number},
            .text = [member, mask](const OrderLine& line) {
                return values::format(line.*member, core::moneyMask(mask));
            }};
}

screen::Line line(int characters, const values::KeyFilter& filter = {}) {
    screen::Line result;
    result.characters = characters;
    result.filter = filter;
    return result;
}

values::KeyFilter withoutQuoteAndPipe() {
    return {u"*"_s, true, u"'|"_s};
}

} // namespace

OrderModule::OrderModule(core::ModuleDescriptor module, const OrderKind& kind, Words words)
    : DocumentOf(std::move(module)), m_kind(kind), m_vendor(vendorColumns(kind)),
      m_words(std::move(words)) {
    m_lines->changing = [](int, const OrderLine& stands, OrderLine& put) {
        put.itemNumber = stands.itemNumber;
    };
    followLines(*m_lines, u"item"_s);
    m_lines->touched.connect([this] {
        guarded([this] {
            if (!isNumbered())
                ReNumber();
            MakeTotal();
        });
    });
}

void OrderModule::makeHead(QBoxLayout* down, QLayout* beside) {
    auto* top = new QHBoxLayout;
    down->addLayout(top);
    Fields head(this, top);
    m_number = head.text(m_kind.word == u"RFQ" ? u"txtGroupNumber"_s : u"txtPONumber"_s,
                         m_words.numberLabel, line(10));
    head.text(u"txtTitle"_s, m_words.titleLabel, line(44));
    head.nextColumn();
    m_dates[0] = head.date(u"txtPODate"_s, u"Date Issued:"_s);
    m_dates[1] = head.date(u"txtReqDate"_s, m_words.dateLabel);
    bindKey(m_number);
    if (beside)
        top->addLayout(beside);
    top->addStretch();
    top->addWidget(modeLabel());
}

void OrderModule::makeTabs(QBoxLayout* down, const std::function<void(screen::Fields&)>& vendor) {
    m_tabs = screen::named(new QTabWidget(this), u"SSTab1"_s, u"Parts of the document"_s);
    down->addWidget(m_tabs, 1);
    makeItemPages();
    makeAddressPages(vendor);
    for (std::size_t i = 0; i < m_states.size(); ++i) {
        screen::AddressBlock address;
        address.state = m_states[i];
        address.country = m_countries[i];
        masters::offerUnknown(*this, address, [this] { return !isBrowse(); });
    }
}

void OrderModule::makeAddressPages(const std::function<void(screen::Fields&)>& vendor) {
    const values::KeyFilter plain = withoutQuoteAndPipe();
    QWidget* page = screen::tab(m_tabs, u"Vendor"_s);
    Fields address(page);
    vendor(address);
    for (const QChar n : u"123"_s)
        address.text(u"txtVMailAddress"_s + n, u"Address "_s + n + u":"_s, line(36));
    address.text(u"txtVMailCity"_s, u"City:"_s, line(24));
    m_states.push_back(address.dataCombo(u"dbcState"_s, u"State / Province:"_s, line(12)));
    address.text(u"txtZip"_s, u"Postal Code:"_s, line(12, plain));
    m_countries.push_back(address.dataCombo(u"dbcMailCountry"_s, u"Country:"_s, line(24)));
    address.nextColumn();
    address.text(u"txtVContact"_s, u"Contact:"_s, line(30));
    address.text(u"txtvPhone"_s, u"Phone:"_s, line(20, plain));
    address.text(u"txtvFax"_s, u"Fax:"_s, line(20, plain));
    address.text(u"txtEmail"_s, u"Email:"_s, line(30, m_words.emailFilter));
    m_terms = address.dataCombo(u"dbcTerms"_s, u"Terms:"_s, line(24));
    address.text(u"txtVShipping"_s, u"Shipping:"_s, line(30));
    address.text(u"txtVFOB"_s, u"FOB:"_s, line(30));
    address.memo(u"txtVNotes"_s, u"Notes:"_s, 3);
    address.grid()->setRowStretch(address.grid()->rowCount(), 1);

    page = screen::tab(m_tabs, u"Ship To"_s);
    Fields shipTo(page);
    shipTo.text(u"txtShip2Name"_s, u"Name:"_s, line(36));
    for (const QChar n : u"123"_s)
        shipTo.text(u"txtShip2Address"_s + n, u"Address "_s + n + u":"_s, line(36));
    shipTo.text(u"txtShip2City"_s, u"City:"_s, line(24));
    m_states.push_back(shipTo.dataCombo(u"dbcShip2State"_s, u"State / Province:"_s, line(12)));
    shipTo.text(u"txtShip2Zip"_s, u"Postal Code:"_s, line(12, plain));
    m_countries.push_back(shipTo.dataCombo(u"dbcShip2Country"_s, u"Country:"_s, line(24)));
    shipTo.text(u"txtShip2Email"_s, u"Email:"_s, line(36, m_words.emailFilter));
    shipTo.grid()->setRowStretch(shipTo.grid()->rowCount(), 1);
    shipTo.grid()->setColumnStretch(2, 1);

    m_header.bind(*this, fields());
    m_vendor.bind(*this, m_vendorFields);
}

void OrderModule::makeItemPages() {
    QWidget* page = screen::tab(m_tabs, u"Items"_s);
    auto* down = new QVBoxLayout(page);
    std::vector<Column> columns{
        {.look = {u"Item #"_s, 6, Kind::Number},
         .text = [](const OrderLine& line) { return QString::number(line.itemNumber); }},
        textColumn(u"Part #"_s, 16, &OrderLine::partNumber),
        textColumn(u"Description"_s, 26, &OrderLine::description, true),
        textColumn(u"Manufacturer"_s, 16, &OrderLine::manufacturer),
        textColumn(u"Type"_s, 9, &OrderLine::type),
        numberColumn(u"Estimate"_s, 8, &OrderLine::estimate, true),
        numberColumn(u"Job"_s, 7, &OrderLine::job, true),
        textColumn(u"Units"_s, 6, &OrderLine::units),
        moneyColumn(u"Unit Price"_s, 11, &OrderLine::unitPrice, u"########.0000"_s),
        numberColumn(u"Qty"_s, 7, &OrderLine::quantity, false)};
    if (m_kind.word == u"PO")
        columns.push_back(numberColumn(u"Received"_s, 8, &OrderLine::received, false));
    columns.push_back(moneyColumn(u"Total"_s, 12, &OrderLine::total, u"###########.00"_s));
    if (m_kind.word == u"PO") {
        columns.push_back({.look = {.title = u"ID"_s, .hidden = true},
                           .text = [](const OrderLine& line) { return QString::number(line.id); }});
    }
    m_grid = screen::named(new controls::LineGrid<OrderLine>(m_lines, std::move(columns), page),
                           m_words.grid, u"Items"_s);
    down->addWidget(m_grid, 1);
    auto* foot = new QHBoxLayout;
    down->addLayout(foot);
    makeButtons(foot, {{core::Role::Free, u"cmdAddItem"_s, u"&Add Item"_s},
                       {core::Role::Free, u"cmdEditItem"_s, u"Edit &Item"_s},
                       {core::Role::Free, u"cmdDelItem"_s, u"Delete Ite&m"_s}});
    foot->addStretch();
    m_total = screen::named(new controls::TextField(page), u"txtTotal"_s, u"Total Cost"_s);
    m_total->setLocked(true);
    m_total->setMinimumWidth(m_total->fontMetrics().averageCharWidth() * 32);
    foot->addWidget(m_total);

    page = screen::tab(m_tabs, u"Item Notes"_s);
    down = new QVBoxLayout(page);
    m_notes = screen::named(new controls::LineGrid<OrderLine>(
                                m_lines,
                                {textColumn(u"Part Number"_s, 16, &OrderLine::partNumber),
                                 textColumn(u"Description"_s, 26, &OrderLine::description),
                                 textColumn(u"Delivery Notes"_s, 30, &OrderLine::delivery),
                                 textColumn(u"Item Notes"_s, 30, &OrderLine::notes, true)},
                                page),
                            m_words.noteGrid, u"Item notes"_s);
    down->addWidget(m_notes);

    on(control<QPushButton>(u"cmdAddItem"_s), &OrderModule::cmdAddItem_Click);
    on(control<QPushButton>(u"cmdEditItem"_s), &OrderModule::cmdEditItem_Click);
    on(control<QPushButton>(u"cmdDelItem"_s), &OrderModule::cmdDelItem_Click);
    for (auto* grid : {m_grid, m_notes}) {
        on(grid->rowDoubleClicked, [this](int) {
            if (!isBrowse())
                cmdEditItem_Click();
        });
        on(grid->insertAsked, &OrderModule::cmdAddItem_Click);
        on(grid->removeAsked, &OrderModule::cmdDelItem_Click);
    }
    // Both grids stand on the same line.
    on(m_grid->activeRowChanged, [this](int row) {
        if (m_notes->activeRow() != row)
            m_notes->setActiveRow(row);
    });
    on(m_notes->activeRowChanged, [this](int row) {
        if (m_grid->activeRow() != row)
            m_grid->setActiveRow(row);
    });
}

QStringList OrderModule::lookups() const {
    return {u"Select * from States order by code"_s, u"Select * from Country order by Country"_s,
            u"Select * from Terms"_s};
}

void OrderModule::openLookups() {
    jet::Database& database = core::MainDatabase();
    std::vector<jet::Recordset> lists;
    for (const QString& select : OrderModule::lookups())
        lists.push_back(database.openRecordset(select, jet::RecordsetType::Snapshot));
    for (auto* combo : m_states)
        combo->setRows(lists[0], u"code"_s, u"code"_s);
    for (auto* combo : m_countries)
        combo->setRows(lists[1], u"country"_s, u"country"_s);
    m_terms->setRows(lists[2], u"description"_s, u"description"_s);
    m_vendorFields.limitTo(database, m_words.vendorTable);
}

void OrderModule::refreshLookup(const QString& table) {
    for (const char* mine : {"States", "Country", "Terms", "Vendor"}) {
        if (table.compare(QLatin1String(mine), Qt::CaseInsensitive) == 0) {
            const QStringList again = lookups();
            core::MainDatabase().expect({again.cbegin(), again.cend()});
            openLookups();
        }
    }
    DocumentOf::refreshLookup(table);
}

void OrderModule::Form_Load() {
    DocumentOf::Form_Load();
    // From the first field in the title line a stray key would leave the record.
    if (QPushButton* close = button(core::Role::Close); close && isBrowse())
        close->setFocus();
}

bool OrderModule::goToRecord(qint64 key) {
    if (DocumentOf::goToRecord(key))
        return true;
    const core::ModuleDescriptor& module = descriptor();
    if (!isBrowse() || !core::MainDatabase().hasRows(
                           u"SELECT "_s + module.keyColumn + u" FROM "_s + module.table +
                           u" WHERE "_s + module.keyColumn + u" = "_s + QString::number(key) +
                           (activeOnly() ? u" AND Active = True"_s : QString())))
        return false;
    reopen(mainSelect(), key);
    return true;
}

// Modes

void OrderModule::ShowModuleMode(Mode mode) {
    DocumentOf::ShowModuleMode(mode);
    m_grid->setLocked(isBrowse());
    m_notes->setLocked(isBrowse());
    arrangeItemButtons();
}

void OrderModule::arrangeItemButtons() {
    const bool some = !isBrowse() && m_lines->visibleCount() > 0;
    control<QPushButton>(u"cmdAddItem"_s)->setEnabled(!isBrowse());
    control<QPushButton>(u"cmdEditItem"_s)->setEnabled(some);
    control<QPushButton>(u"cmdDelItem"_s)->setEnabled(some);
}

void OrderModule::lockFields(bool locked) {
    DocumentOf::lockFields(locked);
    m_vendorFields.lock(locked);
}

// The document

void OrderModule::takeRecord(const jet::Recordset* row) {
    if (row) {
        m_header.show(orderColumns().load(*row));
        showParts();
        return;
    }
    m_header.clear();
    m_vendorFields.clear();
    m_vendor.clear();
    showLines({});
    m_total->setText({});
}

OrderDocument OrderModule::document() {
    return {currentKey(), m_header.now(), m_vendor.now(), lines()};
}

std::vector<core::EntryPart> OrderModule::entryParts() {
    std::vector<core::EntryPart> parts = DocumentOf::entryParts();
    m_header.addParts(parts, headerWord);
    m_vendor.addParts(parts, vendorWord);
    QStringList numbers;
    for (const OrderLine& line : m_lines->rows())
        numbers << QString::number(line.itemNumber);
    parts.push_back({numbersKey, jet::Value(numbers.join(u' ')), nullptr, true});
    return parts;
}

void OrderModule::restorePart(const QString& key, const jet::Value& value) {
    if (key == numbersKey) {
        const QStringList numbers = value.toText().split(u' ');
        for (int place = 0; place < std::min<int>(m_lines->count(), int(numbers.size())); ++place)
            m_lines->patch(place,
                           [&](OrderLine& line) { line.itemNumber = numbers[place].toInt(); });
    } else if (!m_header.restorePart(key, headerWord, value) &&
               !m_vendor.restorePart(key, vendorWord, value)) {
        DocumentOf::restorePart(key, value);
    }
}

bool OrderModule::isSame(const OrderDocument& a, const OrderDocument& b) const {
    return sameOrder(m_kind, a, b);
}

QJsonObject OrderModule::pack(const OrderDocument& document, const OrderDocument* before) const {
    const core::DocumentLines<OrderLine>& how = orderLines();
    return {{u"header"_s, core::packDocument(orderColumns(), document.header,
                                             before ? &before->header : nullptr)},
            {u"vendor"_s, core::packDocument(m_vendor.columns(), document.vendor,
                                             before ? &before->vendor : nullptr)},
            {u"lines"_s, core::packLines(how.columns, how.id, document.lines,
                                         before ? before->lines : std::vector<OrderLine>())}};
}

OrderDocument OrderModule::unpack(const QJsonObject& packed, const OrderDocument& stored) const {
    const core::DocumentLines<OrderLine>& how = orderLines();
    OrderDocument document{
        stored.documentNo,
        core::unpackDocument(orderColumns(), packed[u"header"_s].toObject(), stored.header),
        core::unpackDocument(m_vendor.columns(), packed[u"vendor"_s].toObject(), stored.vendor),
        core::unpackLines(how.columns, how.id, packed[u"lines"_s].toObject(), stored.lines)};
    int number = 0;
    for (OrderLine& line : document.lines)
        line.itemNumber = ++number;
    return document;
}

void OrderModule::showEntry(const OrderDocument& document) {
    m_header.show(document.header);
    m_vendor.show(document.vendor);
    showLines(document.lines);
}

void OrderModule::reloadLines() {
    showLines(storedLines());
    m_before.lines = lines();
}

bool OrderModule::validate() {
    for (controls::DateField* date : m_dates) {
        if (!date->isValid()) {
            complain(u"This is not a date. Please enter it as month/day/year."_s, date);
            return false;
        }
    }
    if (m_lines->visibleCount() > 0)
        return true;
    MsgBox(u"You must have at least One (1) Line Item to save this record!"_s, Buttons::Ok,
           Icon::Exclamation, u"Error!"_s);
    m_tabs->setCurrentIndex(0);
    control<QPushButton>(u"cmdAddItem"_s)->setFocus();
    return false;
}

void OrderModule::presetShipTo() {
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        u"SELECT * FROM SystemSettings"_s, jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    OrderHeader& header = m_header.now();
    for (std::size_t i = 0; i < header.shipTo.size(); ++i)
        header.shipTo[i] = settings.text(u"POShipto"_s + shipToColumns()[i]);
    m_header.show(header);
}

// Lines

void OrderModule::showLines(std::vector<OrderLine> lines) {
    m_lines->setRows(std::move(lines));
    MakeTotal();
}

void OrderModule::MakeTotal() {
    try {
        m_total->setText(totalText(lines(), core::shared().CurrencySymbol));
    } catch (const values::Overflow&) {
        m_total->setText({});
    }
    arrangeItemButtons();
}

// A template may have left gaps, which the next save closes; lines that were moved, or that came
// back, get their numbers at once.
bool OrderModule::isNumbered() const {
    int before = 0;
    for (const OrderLine& line : lines()) {
        if (line.itemNumber <= before)
            return false;
        before = line.itemNumber;
    }
    return true;
}

void OrderModule::ReNumber() {
    int number = 0;
    for (int place = 0; place < m_lines->count(); ++place) {
        if (!m_lines->isHidden(place))
            m_lines->patch(place, [n = ++number](OrderLine& line) { line.itemNumber = n; });
    }
}

int OrderModule::activeLine() const {
    const int row = m_grid->activeRow();
    return row >= 0 && row < m_lines->count() && !m_lines->isHidden(row) ? row : -1;
}

void OrderModule::refreshHistory() const {
    core::refreshNeighbours({u"frmhistory"_s}, m_kind.word);
}

void OrderModule::cmdAddItem_Click() {
    if (isBrowse())
        return;
    OrderLine fresh;
    fresh.itemNumber = m_lines->visibleCount() + 1;
    const auto added =
        screen::Forms::dialog<ItemDialog>(m_words.addDialog)->edit(fresh, vendorNo());
    if (!added)
        return;
    m_lines->insert(m_lines->count(), *added);
    m_grid->setActiveRow(m_lines->count() - 1);
    refreshHistory();
}

void OrderModule::cmdEditItem_Click() {
    const int place = activeLine();
    if (isBrowse() || place < 0)
        return;
    const auto changed = screen::Forms::dialog<ItemDialog>(m_words.editDialog)
                             ->edit(m_lines->row(place), vendorNo());
    if (!changed)
        return;
    m_lines->change(place, *changed);
    refreshHistory();
}

void OrderModule::cmdDelItem_Click() {
    const int place = activeLine();
    if (isBrowse() || place < 0 || !askDeleteLine(m_lines->row(place)))
        return;
    m_lines->hide(place);
    ReNumber();
}

} // namespace purchasing
