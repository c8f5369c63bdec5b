#include "desk/ModuleList.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "desk/ListReport.h"
#include "desk/OpenRecord.h"
#include "desk/Rights.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/RowTable.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/system/Remembered.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QFile>
#include <QHeaderView>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>

namespace desk {

using rows::Kind;
using screen::Buttons;
using screen::Icon;

namespace {

constexpr int latestRows = 300; ///< shown until all are there

bool isRight(Kind kind) {
    return kind == Kind::Number || kind == Kind::Hours || kind == Kind::Money;
}

QString counted(int number) {
    return values::format(static_cast<double>(number), u"#,##0");
}

QString arrangementOf(const ListView& view) {
    QJsonObject filters;
    for (const auto& [title, typed] : view.filters)
        filters.insert(title, typed);
    return QString::fromUtf8(
        QJsonDocument(QJsonObject{{u"sort"_s, view.sort}, {u"filters"_s, filters}})
            .toJson(QJsonDocument::Compact));
}

} // namespace

ModuleList::ModuleList(const ListKind& kind)
    : Form(kind.form, u"List of "_s + kind.caption), m_kind(kind), m_body(new QVBoxLayout),
      m_columnMenu(new QMenu(this)) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    outside->addLayout(head);
    screen::Fields fields(this, head);
    cboView = fields.listCombo(u"cboView"_s, u"&View:"_s);
    cboView->setMinimumWidth(260);
    auto* beside = new QVBoxLayout;
    head->addLayout(beside);
    screen::ButtonBar views(this, beside);
    QPushButton* cmdSaveView = views.button(u"cmdSaveView"_s, u"&Save View..."_s);
    cmdDeleteView = views.button(u"cmdDeleteView"_s, u"&Delete View"_s);
    QPushButton* cmdClear = views.button(u"cmdClear"_s, u"Show &All"_s);
    cmdColumns = views.button(u"cmdColumns"_s, u"Col&umns"_s);
    cmdColumns->setMenu(m_columnMenu);
    head->addStretch(1);
    outside->addLayout(m_body, 1);
    lblTotals = screen::named(new QLabel(this), u"lblTotals"_s, u"Number of rows, and sums"_s);
    lblTotals->setWordWrap(true);
    lblTotals->setTextFormat(Qt::PlainText);
    outside->addWidget(lblTotals);
    screen::ButtonBar bar(this, outside);
    cmdOpen = bar.button(u"cmdOpen"_s, u"&Open"_s);
    cmdPrint = bar.button(u"cmdPrint"_s, u"&Print"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdOpen, &ModuleList::cmdOpen_Click);
    on(cmdPrint, &ModuleList::cmdPrint_Click);
    on(cmdSaveView, &ModuleList::cmdSaveView_Click);
    on(cmdDeleteView, &ModuleList::cmdDeleteView_Click);
    on(cmdClear, [this] { m_table->clearFilters(); });
    on(cmdClose, [this] { unload(); });
    on(cboView, &QComboBox::activated, [this] { arrangeAs(cboView->currentText()); });
    on(m_columnMenu, &QMenu::aboutToShow, [this] { makeColumnMenu(); });
    resize(1000, 560);
}

ModuleList::~ModuleList() = default;

QString ModuleList::place(const QString& of) const {
    return u"desk/lists/"_s + m_kind.form.toLower() + u'/' + of;
}

void ModuleList::Form_Load() {
    const Rights rights = Rights::read(core::MainDatabase());
    if (!rights.mayUse(m_kind.menu)) {
        screen::MsgBox(u"You don't have the right to see this list."_s, Buttons::Ok,
                       Icon::Exclamation, windowTitle());
        refuse();
        return;
    }
    m_reader = std::make_shared<const ListReader>(m_kind, rights.showsMoney());
    makeTable();
    m_ownViews = platform::remembered(place(u"views"_s)).toStringList();
    fillViews(platform::remembered(place(u"view"_s)).toString());
    arrangeAs(cboView->currentText());
    m_table->arrange(platform::remembered(place(u"columns"_s)).toString());
    m_fresh = true;
    m_allRead = false;
    m_background = std::make_unique<core::Background>(core::MainDatabase().name(), this);
    readRows();
}

void ModuleList::makeTable() {
    delete m_table;
    std::vector<controls::RowColumn> columns;
    for (const ListColumn& column : m_reader->columns())
        columns.push_back(
            {column.title, column.kind, column.characters, column.shown, column.summed});
    m_table = new controls::RowTable(std::move(columns), u"lvwRows"_s, m_kind.caption, this);
    m_table->setCurrencySymbol(core::shared().CurrencySymbol);
    m_body->addWidget(m_table);
    on(m_table->opened, [this] { cmdOpen_Click(); });
    on(m_table->rowsChanged, [this] { showTotals(); });
    on(m_table->selectionChanged, [this] { showTotals(); });
    m_table->menuAsked.connect([this](controls::DropMenu& menu) {
        menu.add(cmdOpen);
        menu.add(cmdPrint);
    });
    m_table->setFocus();
}

void ModuleList::Form_Activate() {
    if (!std::exchange(m_fresh, false))
        readRows();
}

bool ModuleList::Form_QueryUnload() {
    platform::remember(place(u"columns"_s), m_table->arrangement(false));
    platform::remember(place(u"view"_s), cboView->currentText());
    m_background.reset();
    return true;
}

void ModuleList::readRows() {
    struct Read {
        std::shared_ptr<const rows::Store> store;
    };
    auto read = std::make_shared<Read>();
    const auto show = [this](const std::shared_ptr<const rows::Store>& store) {
        guarded([&] { m_table->setStore(store); });
    };
    // In another order the latest rows aren't those that would stand on top.
    const bool asRead = m_table->model().order().sortColumn() < 0;
    const bool latestFirst = !m_allRead && asRead;
    m_background->run(
        [reader = m_reader, read, latestFirst, show](jet::Database& database,
                                                     const core::Background& thread) {
            if (latestFirst) {
                auto latest = reader->readLatest(database, latestRows);
                thread.tell([show, latest] { show(latest); });
            }
            read->store = reader->read(database, [&thread] { thread.checkStop(); });
        },
        [this, read, show](const QString& failure) {
            m_failure = failure;
            if (failure.isEmpty()) {
                m_allRead = true;
                show(read->store);
            } else {
                showTotals();
            }
        });
    showTotals();
}

// Views

void ModuleList::fillViews(const QString& chosen) {
    cboView->clearRows();
    for (const ListView& view : m_kind.views)
        cboView->addRow(view.name);
    for (qsizetype i = 0; i + 1 < m_ownViews.size(); i += 2)
        cboView->addRow(m_ownViews[i], 1);
    const int row = cboView->findText(chosen);
    cboView->setCurrentIndex(std::max(0, row));
    cmdDeleteView->setEnabled(cboView->itemNumber() == 1);
}

void ModuleList::arrangeAs(const QString& view) {
    cmdDeleteView->setEnabled(cboView->itemNumber() == 1);
    for (qsizetype i = 0; i + 1 < m_ownViews.size(); i += 2) {
        if (m_ownViews[i] == view) {
            m_table->arrange(m_ownViews[i + 1]);
            return;
        }
    }
    for (const ListView& delivered : m_kind.views) {
        if (delivered.name == view)
            m_table->arrange(arrangementOf(delivered));
    }
}

void ModuleList::showView(const QString& view) {
    const int row = cboView->findText(view);
    if (row < 0)
        return;
    cboView->setCurrentIndex(row);
    arrangeAs(view);
}

void ModuleList::cmdSaveView_Click() {
    const bool own = cboView->itemNumber() == 1;
    const QString name = screen::InputBox(u"Name of the view:"_s, u"Save View"_s,
                                          own ? cboView->currentText() : QString())
                             .trimmed();
    if (name.isEmpty())
        return;
    const bool delivered =
        std::any_of(m_kind.views.begin(), m_kind.views.end(), [&](const ListView& view) {
            return view.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    if (delivered) {
        screen::MsgBox(u"The list comes with a view of that name. Please choose another one."_s,
                       Buttons::Ok, Icon::Exclamation, u"Save View"_s);
        return;
    }
    for (qsizetype i = 0; i + 1 < m_ownViews.size(); i += 2) {
        if (m_ownViews[i].compare(name, Qt::CaseInsensitive) == 0) {
            m_ownViews.remove(i, 2);
            break;
        }
    }
    m_ownViews << name << m_table->arrangement(true);
    platform::remember(place(u"views"_s), m_ownViews);
    fillViews(name);
}

void ModuleList::cmdDeleteView_Click() {
    const QString name = cboView->currentText();
    const qsizetype at = m_ownViews.indexOf(name);
    if (at < 0 || !screen::confirmDeletion(u"Delete the view \"%1\"?"_s.arg(name), u"Delete"_s))
        return;
    m_ownViews.remove(at, 2);
    platform::remember(place(u"views"_s), m_ownViews);
    fillViews({});
    arrangeAs(cboView->currentText());
}

void ModuleList::makeColumnMenu() {
    m_columnMenu->clear();
    int column = 0;
    for (const controls::RowColumn& each : m_table->model().columns()) {
        QAction* action = m_columnMenu->addAction(QString(each.title).replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setChecked(m_table->isColumnShown(column));
        on(action, &QAction::triggered,
           [this, column](bool shown) { m_table->showColumn(column, shown); });
        ++column;
    }
}

// The foot

void ModuleList::showTotals() {
    const controls::RowModel& model = m_table->model();
    const rows::Order& order = model.order();
    cmdOpen->setEnabled(model.rowCount() > 0);
    cmdPrint->setEnabled(model.rowCount() > 0);
    if (!m_failure.isEmpty()) {
        lblTotals->setText(u"Could not be read: "_s + m_failure);
        return;
    }
    if (!order.store()) {
        lblTotals->setText(u"Reading..."_s);
        return;
    }
    auto ranges = m_table->selectedPlaces();
    int selected = 0;
    for (const auto& [first, last] : ranges)
        selected += last - first + 1;
    QString text;
    if (selected > 1) {
        text = u"%1 of %2 rows selected"_s.arg(counted(selected), counted(model.rowCount()));
    } else {
        ranges = {{0, model.rowCount() - 1}};
        text = order.isFiltered() ? u"%1 of %2 rows"_s.arg(counted(model.rowCount()),
                                                           counted(order.store()->count()))
                                  : u"%1 rows"_s.arg(counted(model.rowCount()));
    }
    if (!m_allRead) {
        lblTotals->setText(text + u", reading the others..."_s);
        return;
    }
    QStringList sums;
    for (std::size_t i = 0; i < model.columns().size(); ++i) {
        const controls::RowColumn& column = model.columns()[i];
        const int at = static_cast<int>(i);
        if (!column.summed || !m_table->isColumnShown(at))
            continue;
        double sum = 0;
        for (const auto& [first, last] : ranges)
            sum += order.sum(at, first, last);
        const QString mask = column.kind == Kind::Number  ? u"#,##0"_s
                             : column.kind == Kind::Money ? core::moneyMask(u"#,##0.00"_s)
                                                          : u"#,##0.00"_s;
        sums << column.title + u' ' + values::format(sum, mask);
    }
    lblTotals->setText(sums.isEmpty() ? text : text + u":   "_s + sums.join(u",   "_s));
}

void ModuleList::cmdOpen_Click() {
    if (const qint64 key = m_table->currentKey(); key != 0)
        openRecord(m_kind.module, key);
}

void ModuleList::cmdPrint_Click() {
    const controls::RowModel& model = m_table->model();
    auto ranges = m_table->selectedPlaces();
    int selected = 0;
    for (const auto& [first, last] : ranges)
        selected += last - first + 1;
    if (selected < 2)
        ranges = {{0, model.rowCount() - 1}};
    std::vector<int> places;
    for (const auto& [first, last] : ranges) {
        for (int place = first; place <= last; ++place)
            places.push_back(place);
    }
    const std::vector<int> shown = m_table->shownColumns();
    std::vector<PrintedColumn> columns;
    for (const int at : shown) {
        const controls::RowColumn& column = model.columns()[static_cast<std::size_t>(at)];
        PrintedColumn printed{column.title,
                              std::max(static_cast<int>(column.title.size()), column.characters),
                              isRight(column.kind),
                              {}};
        if (column.summed) {
            double sum = 0;
            for (const auto& [first, last] : ranges)
                sum += model.order().sum(at, first, last);
            printed.total =
                values::format(sum, column.kind == Kind::Number  ? u"#,##0"_s
                                    : column.kind == Kind::Money ? core::moneyMask(u"#,##0.00"_s)
                                                                 : u"#,##0.00"_s);
        }
        columns.push_back(std::move(printed));
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"List.rpt"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(listReport(m_kind.caption, u"%1 rows"_s.arg(counted(int(places.size()))),
                              columns)) < 0) {
        screen::MsgBox(u"Cannot write "_s + path + u":\n"_s + file.errorString(), Buttons::Ok,
                       Icon::Exclamation, u"System Message"_s);
        return;
    }
    file.close();
    ListRows source(core::MainDatabase(), static_cast<int>(places.size()),
                    static_cast<int>(shown.size()), [&](int row, int column) {
                        return model.textAt(places[static_cast<std::size_t>(row)],
                                            shown[static_cast<std::size_t>(column)]);
                    });
    core::launchReportAt(path, {}, u"List of "_s + m_kind.caption, this, &source);
}

} // namespace desk
