#include "inventory/frmItemActivity.h"

#include "core/MirsaMain.h"
#include "platform/controls/DropMenu.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace inventory {

frmItemActivity::frmItemActivity() : Form(QString::fromLatin1(formName), u"Item Activity"_s) {
    auto* outside = new QVBoxLayout(this);
    makeSide(m_issues, u"sprIssue"_s, u"Issue"_s, u"IssueTo"_s);
    makeSide(m_stock, u"sprStock"_s, u"Stock"_s, u"Number"_s);
    screen::ButtonBar options(this, outside);
    chkQuantity = screen::named(new QCheckBox(u"Update Item &Quantity"_s, this), u"chkQuantity"_s);
    chkFixed = screen::named(new QCheckBox(u"Update &Job"_s, this), u"chkFixed"_s);
    options.layout()->addWidget(chkQuantity);
    options.layout()->addWidget(chkFixed);
    options.stretch();
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdDelete = bar.button(u"cmdDelete"_s, u"&Delete Selected"_s);
    QPushButton* cmdSave = bar.button(u"cmdSave"_s, u"&Save"_s);
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdDelete, &frmItemActivity::cmdDelete_Click);
    on(cmdSave, &frmItemActivity::cmdSave_Click);
    on(cmdClose, [this] { hideModal(); });
    controls::offerInMenu(m_issues.grid, {cmdDelete});
    controls::offerInMenu(m_stock.grid, {cmdDelete});
    resize(860, 560);
}

void frmItemActivity::makeSide(Side& side, const QString& gridName, const QString& word,
                               const QString& number) {
    using Kind = controls::GridColumn::Kind;
    auto* outside = static_cast<QVBoxLayout*>(layout());
    side.word = word;
    side.count = screen::named(new QLabel(this), u"lbl"_s + word);
    side.grid = screen::named(new controls::Grid(this), gridName, word + u" records"_s);
    side.grid->setColumns({{u"Date"_s, 12},
                           {u"Type"_s, 10},
                           {number, 10, Kind::Number},
                           {u"Company"_s, 28},
                           {u"Quantity"_s, 10, Kind::Number},
                           {u"Name"_s, 24}});
    side.grid->setRowsToSelect(true);
    side.grid->setSortable(true);
    outside->addWidget(side.count);
    outside->addWidget(side.grid, 1);
}

void frmItemActivity::showFor(qint64 itemId) {
    m_itemId = itemId;
    {
        const screen::BusyPointer busy;
        jet::Database& database = core::MainDatabase();
        database.expect({itemRowSelect(itemId)});
        ItemHistory history = historyOf(database, itemId);
        m_issues.rows = std::move(history.issues);
        m_stock.rows = std::move(history.restocks);
        if (const auto item = itemRow(database, itemId))
            setWindowTitle(u"Item Activity - "_s + item->item.description);
        showSide(m_issues);
        showSide(m_stock);
    }
    showModal();
}

void frmItemActivity::showSide(Side& side) {
    std::vector<QStringList> texts;
    for (const Movement& row : side.rows)
        texts.push_back({row.date.isValid() ? values::format(row.date, u"Short Date") : QString(),
                         row.type, QString::number(row.number), row.company,
                         QString::number(row.quantity), row.employee});
    side.grid->setRows(std::move(texts));
    for (std::size_t i = 0; i < side.rows.size(); ++i)
        side.grid->setRowKey(static_cast<int>(i), side.rows[i].id);
    side.count->setText(QString::number(side.rows.size()) + u' ' + side.word + u" Record"_s +
                        (side.rows.size() > 1 ? u"s"_s : QString()) + u" Found"_s);
}

std::size_t frmItemActivity::removeSelected(Side& side) {
    std::size_t removed = 0;
    for (const int row : side.grid->selectedRows()) {
        side.removed.push_back(side.grid->rowKey(row));
        ++removed;
    }
    if (removed == 0)
        return 0;
    std::erase_if(side.rows, [&](const Movement& row) {
        return std::find(side.removed.begin(), side.removed.end(), row.id) != side.removed.end();
    });
    showSide(side);
    return removed;
}

void frmItemActivity::cmdDelete_Click() {
    const std::size_t issues = removeSelected(m_issues);
    if (issues + removeSelected(m_stock) == 0)
        screen::MsgBox(u"No Records Selected!"_s, screen::Buttons::Ok, screen::Icon::Exclamation,
                       u"System Message"_s);
}

void frmItemActivity::cmdSave_Click() {
    const screen::BusyPointer busy;
    reverse(core::MainDatabase(), {m_itemId, m_issues.removed, m_stock.removed,
                                   chkQuantity->isChecked(), chkFixed->isChecked()});
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(m_itemId);
    hideModal();
}

} // namespace inventory
