#include "estimating/routing/frmInsItem.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace estimating {

frmInsItem::frmInsItem()
    : Form(QString::fromLatin1(formName), QStringLiteral("Insert Fixed Cost")) {
    auto* outside = new QVBoxLayout(this);
    lstItems = screen::named(new controls::ListView(this), QStringLiteral("lstItems"),
                             QStringLiteral("Fixed cost items"));
    lstItems->setColumns({{QStringLiteral("Description"), 44}});
    lstItems->setMultipleSelection(true);
    outside->addWidget(lstItems, 1);

    auto* shown = new QWidget(this);
    outside->addWidget(shown);
    screen::Fields fields(shown);
    txtUnits = fields.text(QStringLiteral("txtUnits"), QStringLiteral("Unit:"), {.characters = 10});
    fields.nextColumn();
    txtUnitPrice = fields.text(QStringLiteral("txtUnitPrice"), QStringLiteral("Unit Price:"),
                               {.characters = 14});
    txtUnits->setLocked(true);
    txtUnitPrice->setLocked(true);

    screen::ButtonBar bar(this, outside);
    optPosition[0] = screen::named(new QRadioButton(QStringLiteral("Insert &Before"), this),
                                   QStringLiteral("optPosition(0)"));
    optPosition[1] = screen::named(new QRadioButton(QStringLiteral("Insert &After"), this),
                                   QStringLiteral("optPosition(1)"));
    optPosition[1]->setChecked(true);
    bar.layout()->addWidget(optPosition[0]);
    bar.layout()->addWidget(optPosition[1]);
    bar.stretch();
    QPushButton* cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);

    on(lstItems->selectionChangedByUser, &frmInsItem::lstItems_Click);
    on(lstItems->rowDoubleClicked, [this](int) { cmdOK_Click(); });
    on(cmdOK, &frmInsItem::cmdOK_Click);
    on(cmdCancel, [this] { hideModal(); });
    resize(520, 460);
}

std::optional<InsertedItems> frmInsItem::insert(const std::vector<qint64>& taken) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM MiscItems ORDER BY Description"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const qint64 itemNo = set[u"ItemNo"].toLong();
        if (std::find(taken.begin(), taken.end(), itemNo) != taken.end())
            continue;
        m_items.push_back({itemNo,
                           set.text(u"Description"),
                           set.text(u"UnitOfMeasure"),
                           set[u"UnitPrice"].toCurrency(),
                           {},
                           {}});
        lstItems->addRow(QStringLiteral("M") + QString::number(itemNo),
                         {m_items.back().description});
    }
    if (m_items.empty()) {
        screen::MsgBox(QStringLiteral("No items to select from!"));
        return std::nullopt;
    }
    lstItems->setFocus();
    showModal();
    if (!m_ok)
        return std::nullopt;
    InsertedItems chosen;
    chosen.before = optPosition[0]->isChecked();
    for (const int row : lstItems->selectedRows()) {
        if (const MiscRow* item = itemOf(row))
            chosen.rows.push_back(*item);
    }
    return chosen;
}

const MiscRow* frmInsItem::itemOf(int row) const {
    // By number: the list may have been sorted.
    const qint64 itemNo = lstItems->keyNumber(row);
    const auto found = std::find_if(m_items.begin(), m_items.end(), [itemNo](const MiscRow& item) {
        return item.itemNo == itemNo;
    });
    return found == m_items.end() ? nullptr : &*found;
}

void frmInsItem::lstItems_Click() {
    const MiscRow* item = itemOf(lstItems->selectedRow());
    if (!item)
        return;
    txtUnits->setText(item->unit.trimmed());
    const bool showDollar = core::HasAccess(QStringLiteral("ShowDollar"));
    txtUnitPrice->setText(showDollar ? values::format(item->price, u"#0.0000") : QString());
}

void frmInsItem::cmdOK_Click() {
    m_ok = true;
    hideModal();
}

} // namespace estimating
