#include "estimating/routing/RoutingPanel.h"

#include "core/MirsaMain.h"
#include "estimating/NoteStaging.h"
#include "estimating/routing/Dialogs.h"
#include "estimating/routing/Pictures.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace estimating {

using controls::GridColumn;
using values::Currency;

namespace {

enum MiscColumn { MiscDescription, MiscUnit, MiscPrice, MiscQuantity, MiscTotal };

QString figure(const std::optional<double>& value) {
    return value ? values::format(*value, u"#####0.00##") : QString();
}

QString money(Currency value) {
    return values::format(value, u"#####0.00##");
}

/// A number of every row.
template <class Row>
std::vector<qint64> numbers(const std::vector<Row>& rows, qint64 Row::*number) {
    std::vector<qint64> result(rows.size());
    std::transform(rows.begin(), rows.end(), result.begin(),
                   [number](const Row& row) { return row.*number; });
    return result;
}

} // namespace

RoutingPanel::RoutingPanel(screen::Form& form, const RoutingKind& kind, Qt::Orientation orientation)
    : QWidget(&form), m_form(form), m_kind(kind) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(orientation, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(operPane());
    splitter->addWidget(miscPane());
    // A job's routing has more columns.
    splitter->setStretchFactor(0, m_kind.hasProgress ? 3 : 1);
    splitter->setStretchFactor(1, m_kind.hasProgress ? 2 : 1);
    splitter->setSizes(m_kind.hasProgress ? QList<int>{760, 460} : QList<int>{620, 580});
    layout->addWidget(splitter);
    setMode(RoutingMode::Browse);
}

QPushButton* RoutingPanel::button(const QString& name, const QString& caption,
                                  const QString& meaning, std::function<void()> click) {
    auto* result = screen::named(new QPushButton(caption, this), name, meaning);
    result->setToolTip(meaning);
    result->setAutoDefault(false);
    connect(result, &QPushButton::clicked, this,
            [this, click = std::move(click)] { m_form.guarded(click); });
    return result;
}

QWidget* RoutingPanel::operPane() {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    m_oper = screen::named(new controls::Grid(pane), u"sprOper"_s, u"Operations"_s);

    using Kind = GridColumn::Kind;
    const values::KeyFilter decimal = values::keys::decimal();
    const bool job = m_kind.hasProgress;
    std::vector<GridColumn> columns;
    const auto add = [&](Column column, GridColumn as) {
        m_columns.push_back(column);
        columns.push_back(std::move(as));
    };
    add(Column::Seq, {u"Seq"_s, 4, Kind::Number});
    add(Column::Note, {u"Note"_s, 6, Kind::Picture});
    add(Column::Description, {u"Description"_s, 26});
    if (job)
        add(Column::Status, {u" Sts"_s, 5, Kind::Picture});
    add(Column::Time,
        {job ? u"Time \\ Amount"_s : u"Time/Amount"_s, 14, Kind::Number, true, decimal, {}, 12});
    add(Column::Unit, {u"Unit"_s, 5});
    if (job) {
        add(Column::Estimated, {u"Estimate Time/Amt"_s, 15, Kind::Number, true, decimal, {}, 12});
    }
    add(Column::Rate, {job ? u"Rate for Inhouse $"_s : u"Rate"_s,
                       job ? 15 : 10,
                       Kind::Number,
                       true,
                       decimal,
                       {},
                       12});
    m_oper->setColumns(std::move(columns));
    m_oper->installEventFilter(this);
    m_oper->cellChanged.connect(
        [this](int row, int column) { m_form.guarded([&] { sprOper_Change(row, column); }); });
    m_oper->cellClicked.connect(
        [this](int row, int column) { m_form.guarded([&] { sprOper_Click(row, column); }); });

    auto* buttons = new QHBoxLayout;
    m_operButtons[0] = button(u"cmdOper(0)"_s, u"Insert..."_s, u"Insert an operation"_s,
                              [this] { insertOperation(); });
    m_operButtons[1] = button(u"cmdOper(1)"_s, u"Remove"_s, u"Remove the operation"_s,
                              [this] { removeOperation(); });
    m_rateButtons[0] =
        button(u"cmdOperRate(0)"_s, u"One Rate"_s, QString(), [this] { switchRateMode(true); });
    m_rateButtons[1] = button(u"cmdOperRate(1)"_s, u"Rate/Operation"_s, QString(),
                              [this] { switchRateMode(false); });
    buttons->addWidget(m_operButtons[0]);
    buttons->addWidget(m_operButtons[1]);
    buttons->addStretch();
    buttons->addWidget(new QLabel(u"For Inhouse Operations, Use:"_s, pane));
    buttons->addWidget(m_rateButtons[0]);
    buttons->addWidget(m_rateButtons[1]);
    layout->addWidget(m_oper);
    layout->addLayout(buttons);
    return pane;
}

QWidget* RoutingPanel::miscPane() {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    m_misc = screen::named(new controls::Grid(pane), u"sprMisc"_s, u"Fixed costs"_s);
    using Kind = GridColumn::Kind;
    const values::KeyFilter decimal = values::keys::decimal();
    m_misc->setColumns({
        {u"Description"_s, 22},
        {u"Unit"_s, 7, Kind::Text, true, values::keys::description(), {}, 10},
        {u"Unit Price"_s, 10, Kind::Number, true, decimal, {}, 12},
        {u"Qty"_s, 8, Kind::Number, true, decimal, {}, 12},
        {u"Total"_s, 11, Kind::Number},
    });
    m_misc->installEventFilter(this);
    m_misc->cellChanged.connect(
        [this](int row, int column) { m_form.guarded([&] { sprMisc_Change(row, column); }); });
    auto* buttons = new QHBoxLayout;
    m_miscButtons[0] =
        button(u"cmdMisc(0)"_s, u"Insert..."_s, u"Insert fixed costs"_s, [this] { insertItems(); });
    m_miscButtons[1] =
        button(u"cmdMisc(1)"_s, u"Remove"_s, u"Remove the fixed cost"_s, [this] { removeItem(); });
    buttons->addWidget(m_miscButtons[0]);
    buttons->addWidget(m_miscButtons[1]);
    buttons->addStretch();
    layout->addWidget(m_misc);
    layout->addLayout(buttons);
    return pane;
}

int RoutingPanel::columnOf(Column column) const {
    const auto at = std::find(m_columns.begin(), m_columns.end(), column);
    return at == m_columns.end() ? -1 : static_cast<int>(at - m_columns.begin());
}

void RoutingPanel::setShowDollar(bool showDollar) {
    m_showDollar = showDollar;
    redraw();
}

void RoutingPanel::showRows(qint64 documentNo, std::vector<OperRow> operations,
                            std::vector<MiscRow> fixedCosts, bool oneShopRate) {
    m_documentNo = documentNo;
    m_operations = std::move(operations);
    m_fixedCosts = std::move(fixedCosts);
    m_oneShopRate = oneShopRate;
    redraw();
}

void RoutingPanel::setMode(RoutingMode mode) {
    m_mode = mode;
    if (mode == RoutingMode::Add)
        m_documentNo = 0;
    const bool locked = mode == RoutingMode::Browse;
    m_oper->setLocked(locked);
    m_misc->setLocked(locked);
    for (QPushButton* one : {m_operButtons[0], m_operButtons[1], m_miscButtons[0], m_miscButtons[1],
                             m_rateButtons[0], m_rateButtons[1]})
        one->setEnabled(!locked);
    showRateMode();
}

void RoutingPanel::setEstimatedLocked(bool locked) {
    m_estimatedLocked = locked;
    redraw();
}

void RoutingPanel::setOneShopRate(bool oneShopRate) {
    m_oneShopRate = oneShopRate;
    redraw();
}

void RoutingPanel::redraw() {
    m_oper->setRowCount(static_cast<int>(m_operations.size()));
    for (int row = 0; row < m_oper->rowCount(); ++row)
        showOperRow(row);
    m_misc->setRowCount(static_cast<int>(m_fixedCosts.size()));
    for (int row = 0; row < m_misc->rowCount(); ++row)
        showMiscRow(row);
    showRateMode();
}

void RoutingPanel::showRateMode() {
    for (int i = 0; i < 2; ++i) {
        QFont font = m_rateButtons[i]->font();
        const bool inForce = (i == 0) == m_oneShopRate;
        font.setBold(inForce);
        m_rateButtons[i]->setFont(font);
        m_rateButtons[i]->setAccessibleDescription(inForce ? u"in force"_s : QString());
    }
}

void RoutingPanel::showOperRow(int row) {
    const OperRow& oper = m_operations[static_cast<std::size_t>(row)];
    for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
        switch (m_columns[static_cast<std::size_t>(i)]) {
        case Column::Seq:
            m_oper->setText(row, i, QString::number(row + 1));
            break;
        case Column::Note:
            if (oper.hasNote)
                m_oper->setPicture(row, i, noteIcon(), u"Note"_s);
            else
                m_oper->clearPicture(row, i);
            break;
        case Column::Description:
            m_oper->setText(row, i, oper.description);
            break;
        case Column::Status:
            if (statusPicture) {
                const auto [icon, words] = statusPicture(oper);
                m_oper->setPicture(row, i, icon, words);
            }
            break;
        case Column::Time:
            m_oper->setText(row, i, figure(oper.time));
            m_oper->setTextHidden(row, i, !m_showDollar && !oper.inhouse);
            break;
        case Column::Unit:
            m_oper->setText(row, i, oper.inhouse ? u"hrs"_s : core::shared().CurrencySymbol);
            m_oper->setTextHidden(row, i, !m_showDollar && !oper.inhouse);
            break;
        case Column::Estimated:
            m_oper->setText(row, i, figure(oper.estimated));
            m_oper->setTextHidden(row, i, !m_showDollar && !oper.inhouse);
            break;
        case Column::Rate:
            m_oper->setText(row, i, oper.inhouse ? money(oper.rate) : QString());
            m_oper->setTextHidden(row, i, !m_showDollar);
            break;
        }
    }
    m_oper->setRowKey(row, oper.operNo);
    lockOperCells(row);
}

void RoutingPanel::lockOperCells(int row) {
    const OperRow& oper = m_operations[static_cast<std::size_t>(row)];
    // A figure that isn't shown isn't opened for typing either: the editor would show it.
    const bool seen = m_showDollar || oper.inhouse;
    m_oper->setCellLocked(row, columnOf(Column::Time),
                          !seen || (oper.inhouse && m_kind.inhouseTimeIsBooked));
    m_oper->setCellLocked(row, columnOf(Column::Rate),
                          !oper.inhouse || m_oneShopRate || !m_showDollar);
    if (m_kind.hasProgress)
        m_oper->setCellLocked(row, columnOf(Column::Estimated), !seen || m_estimatedLocked);
}

void RoutingPanel::showMiscRow(int row) {
    const MiscRow& misc = m_fixedCosts[static_cast<std::size_t>(row)];
    m_misc->setText(row, MiscDescription, misc.description);
    m_misc->setText(row, MiscUnit, misc.unit.trimmed());
    m_misc->setText(row, MiscPrice, money(misc.price));
    m_misc->setText(row, MiscQuantity, misc.quantity.toText());
    m_misc->setText(row, MiscTotal, money(misc.total));
    m_misc->setTextHidden(row, MiscPrice, !m_showDollar);
    m_misc->setTextHidden(row, MiscTotal, !m_showDollar);
    m_misc->setCellLocked(row, MiscPrice, !m_showDollar);
    m_misc->setRowKey(row, misc.itemNo);
}

void RoutingPanel::insertOperation() {
    if (m_mode == RoutingMode::Browse)
        return;
    auto dialog = screen::Forms::dialog<InsertOperationDialog>(u"frmInsOper"_s);
    const auto chosen = dialog->insert(numbers(m_operations, &OperRow::operNo));
    if (!chosen)
        return;
    const int rows = static_cast<int>(m_operations.size());
    const int place = insertPlace(rows, m_oper->activeRow(), chosen->before);
    jet::Database& database = core::MainDatabase();
    const QString note =
        chosen->useNote ? defaultNote(database, chosen->operation.operNo) : QString();
    NoteStaging(database, m_kind, m_documentNo).rowInserted(place + 1, rows, note);

    OperRow row = newRow(chosen->operation);
    row.hasNote = !note.isEmpty();
    if (m_kind.hasProgress)
        row.time = 0;
    m_operations.insert(m_operations.begin() + place, std::move(row));
    redraw();
    m_oper->setActiveRow(place);
    m_oper->setFocus();
}

void RoutingPanel::removeOperation() {
    const int row = m_oper->activeRow();
    if (m_mode == RoutingMode::Browse || row < 0)
        return;
    const OperRow& oper = m_operations[static_cast<std::size_t>(row)];
    if (mayRemove && !mayRemove(oper))
        return;
    if (screen::MsgBox(u"Delete operation "_s + oper.description + u"?"_s, screen::Buttons::YesNo,
                       screen::Icon::Question) != screen::Answer::Yes)
        return;
    const int rows = static_cast<int>(m_operations.size());
    NoteStaging(core::MainDatabase(), m_kind, m_documentNo).rowRemoved(row + 1, rows);
    m_operations.erase(m_operations.begin() + row);
    redraw();
    if (!m_operations.empty())
        m_oper->setActiveRow(std::min(row, rows - 2));
}

void RoutingPanel::insertItems() {
    if (m_mode == RoutingMode::Browse)
        return;
    auto dialog = screen::Forms::dialog<InsertItemsDialog>(u"frmInsItem"_s);
    const auto chosen = dialog->insert(numbers(m_fixedCosts, &MiscRow::itemNo));
    if (!chosen || chosen->rows.empty())
        return;
    const int place =
        insertPlace(static_cast<int>(m_fixedCosts.size()), m_misc->activeRow(), chosen->before);
    m_fixedCosts.insert(m_fixedCosts.begin() + place, chosen->rows.begin(), chosen->rows.end());
    redraw();
    m_misc->setActiveRow(place);
    m_misc->setFocus();
    fixedCostsChanged();
}

void RoutingPanel::removeItem() {
    const int row = m_misc->activeRow();
    if (m_mode == RoutingMode::Browse || row < 0)
        return;
    const QString& description = m_fixedCosts[static_cast<std::size_t>(row)].description;
    if (screen::MsgBox(u"Delete item "_s + description + u"?"_s, screen::Buttons::YesNo,
                       screen::Icon::Question) != screen::Answer::Yes)
        return;
    m_fixedCosts.erase(m_fixedCosts.begin() + row);
    redraw();
    if (!m_fixedCosts.empty())
        m_misc->setActiveRow(std::min(row, static_cast<int>(m_fixedCosts.size()) - 1));
    fixedCostsChanged();
}

void RoutingPanel::switchRateMode(bool oneShopRate) {
    if (m_mode == RoutingMode::Browse || oneShopRate == m_oneShopRate)
        return;
    if (screen::MsgBox(u"You are about to recalculate the Pricing for Inhouse "
                       "Operations. Are you sure?"_s,
                       screen::Buttons::YesNo, screen::Icon::Question) != screen::Answer::Yes)
        return;
    setOneShopRate(oneShopRate);
    costChanged();
}

void RoutingPanel::sprOper_Change(int row, int column) {
    OperRow& oper = m_operations[static_cast<std::size_t>(row)];
    const Currency typed = Currency::fromText(m_oper->text(row, column));
    switch (m_columns[static_cast<std::size_t>(column)]) {
    case Column::Time:
        oper.time = typed.toDouble();
        break;
    case Column::Estimated:
        oper.estimated = typed.toDouble();
        break;
    case Column::Rate:
        oper.rate = typed;
        break;
    default:
        return;
    }
    showOperRow(row);
    costChanged();
}

void RoutingPanel::sprOper_Click(int row, int column) {
    if (m_columns[static_cast<std::size_t>(column)] == Column::Note)
        openNote(row);
}

void RoutingPanel::sprMisc_Change(int row, int column) {
    MiscRow& misc = m_fixedCosts[static_cast<std::size_t>(row)];
    const QString typed = m_misc->text(row, column);
    if (column == MiscUnit) {
        misc.unit = typed;
        return;
    }
    MiscRow changed = misc;
    (column == MiscPrice ? changed.price : changed.quantity) = Currency::fromText(typed);
    try {
        changed.retotal();
        misc = changed;
    } catch (const values::Overflow&) {
        screen::MsgBox(u"The total is too large."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation);
    }
    showMiscRow(row);
    costChanged();
}

void RoutingPanel::openNote(int row) {
    if (row < 0)
        return;
    m_oper->setActiveRow(row);
    OperRow& oper = m_operations[static_cast<std::size_t>(row)];
    auto dialog = screen::Forms::dialog<OperationNoteDialog>(m_kind.noteDialog);
    const auto hasNote =
        dialog->edit({m_documentNo, row + 1, oper.description, m_mode == RoutingMode::Browse});
    if (!hasNote)
        return;
    oper.hasNote = *hasNote;
    showOperRow(row);
}

bool RoutingPanel::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress && m_mode != RoutingMode::Browse) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = key->modifiers() == Qt::NoModifier;
        if (plain && (key->key() == Qt::Key_Insert || key->key() == Qt::Key_Delete)) {
            const bool insert = key->key() == Qt::Key_Insert;
            const bool oper = object == m_oper;
            m_form.guarded([&] {
                if (oper)
                    insert ? insertOperation() : removeOperation();
                else
                    insert ? insertItems() : removeItem();
            });
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

} // namespace estimating
