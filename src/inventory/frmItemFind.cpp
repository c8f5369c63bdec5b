#include "inventory/frmItemFind.h"

#include "core/MirsaMain.h"
#include "inventory/InventoryDialogs.h"
#include "inventory/ItemRows.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

frmItemFind::frmItemFind() : Form(QString::fromLatin1(formName), u"Item Find"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* criteria = new QGridLayout;
    outside->addLayout(criteria);
    const auto criterion = [&](const QString& word, const QString& caption, QCheckBox*& use,
                               controls::TextField*& text) {
        use = screen::named(new QCheckBox(caption, this), u"chk"_s + word);
        text = screen::named(new controls::TextField(this), u"txt"_s + word, word);
        const int row = criteria->rowCount();
        criteria->addWidget(use, row, 0);
        criteria->addWidget(text, row, 1);
        text->setEnabled(false);
        QObject::connect(use, &QCheckBox::toggled, text, [text](bool on) {
            text->setEnabled(on);
            if (on)
                text->setFocus();
        });
    };
    criterion(u"Description"_s, u"&Description"_s, chkDescription, txtDescription);
    criterion(u"PartNumber"_s, u"&Part Number"_s, chkPartNumber, txtPartNumber);
    sprFound = screen::named(new controls::ListView(this), u"sprFound"_s, u"Items found"_s);
    sprFound->setColumns({{u"Description"_s, 28},
                          {u"Part Number"_s, 16},
                          {u"Manufacturer"_s, 14},
                          {u"Location"_s, 14},
                          {u"Type"_s, 14},
                          {u"Quantity"_s, 12}});
    outside->addWidget(sprFound, 1);
    txtCount = screen::named(new QLabel(this), u"txtCount"_s);
    outside->addWidget(txtCount);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdFind = bar.button(u"cmdFind"_s, u"&Find"_s);
    cmdGoto = bar.button(u"cmdGoto"_s, u"&Goto"_s);
    cmdQuery = bar.button(u"cmdQuery"_s, u"&Query/Report"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdFind);
    setCancelButton(cmdClose);
    cmdGoto->setEnabled(false);
    cmdQuery->setEnabled(false);
    on(cmdFind, &frmItemFind::cmdFind_Click);
    on(cmdGoto, &frmItemFind::cmdGoto_Click);
    on(cmdQuery, &frmItemFind::cmdQuery_Click);
    on(cmdClose, [this] { hideModal(); });
    on(sprFound->rowDoubleClicked, [this](int) { cmdGoto_Click(); });
    controls::offerInMenu(sprFound, {cmdGoto, cmdQuery});
    resize(820, 460);
}

void frmItemFind::Form_Load() {
    chkDescription->setChecked(true);
}

void frmItemFind::cmdFind_Click() {
    std::vector<controls::ListRow> rows;
    {
        const screen::BusyPointer busy;
        m_found = findItems(core::MainDatabase(),
                            chkDescription->isChecked() ? txtDescription->text() : QString(),
                            chkPartNumber->isChecked() ? txtPartNumber->text() : QString());
        for (const ItemRow& item : m_found)
            rows.push_back(listRow(item));
    }
    const auto count = rows.size();
    sprFound->setRows(std::move(rows));
    cmdGoto->setEnabled(count > 0);
    cmdQuery->setEnabled(count > 0);
    txtCount->setText(count == 0   ? QString()
                      : count == 1 ? u"1 Item Record Found."_s
                                   : QString::number(count) + u" Item Records Found."_s);
    if (count == 0)
        screen::MsgBox(u"No Records satisfy your Criteria!"_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, u"No Records Found"_s);
    else
        sprFound->setFocus();
}

/// What was found, to be printed by a report.
void frmItemFind::cmdQuery_Click() {
    hideModal(); // first, or the explorer would come to lie over the results
    if (auto* results =
            dynamic_cast<StockResults*>(screen::Forms::show(u"frmReportAllItemsQresults"_s)))
        results->showItems(m_found);
}

void frmItemFind::cmdGoto_Click() {
    const qint64 item = sprFound->keyNumber(sprFound->selectedRow());
    auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s);
    if (item == 0 || !explorer)
        return;
    explorer->goToItem(item);
    hideModal();
}

} // namespace inventory
