#include "estimating/frmMiscItems.h"

#include "core/MirsaMain.h"
#include "estimating/EstimateDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

using controls::GridColumn;

frmMiscItems::frmMiscItems()
    : Form(QString::fromLatin1(formName), QStringLiteral("Fixed Cost Items")) {
    auto* outside = new QVBoxLayout(this);
    lvwMI = screen::named(new controls::ListView(this), QStringLiteral("lvwMI"),
                          QStringLiteral("Fixed cost items"));
    lvwMI->setColumns({{QStringLiteral("Description"), 34},
                       {QStringLiteral("Unit"), 10},
                       {QStringLiteral("Unit Price"), 14, GridColumn::Kind::Number},
                       {QStringLiteral("No."), 7, GridColumn::Kind::Number}});
    outside->addWidget(lvwMI, 1);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdNew = bar.button(QStringLiteral("cmdNew"), QStringLiteral("&New"));
    QPushButton* cmdEdit = bar.button(QStringLiteral("cmdEdit"), QStringLiteral("&Edit"));
    QPushButton* cmdDelete = bar.button(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"));
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    setCancelButton(cmdClose);
    on(cmdNew, &frmMiscItems::cmdNew_Click);
    on(cmdEdit, &frmMiscItems::cmdEdit_Click);
    on(cmdDelete, &frmMiscItems::cmdDelete_Click);
    on(cmdClose, [this] { unload(); });
    on(lvwMI->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    resize(640, 460);
}

void frmMiscItems::Form_Load() {
    showItems();
}

void frmMiscItems::showItems() {
    const int selected = std::max(0, lvwMI->selectedRow());
    lvwMI->clearRows();
    const QString mask = core::moneyMask(QStringLiteral("#,0.0000"));
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM miscitems ORDER BY description"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString itemNo = set.text(u"ItemNo");
        lvwMI->addRow(QStringLiteral("M") + itemNo,
                      {set.text(u"Description"), set.text(u"UnitOfMeasure").trimmed(),
                       values::format(set[u"UnitPrice"].toCurrency(), mask), itemNo});
    }
    lvwMI->selectPlace(selected);
}

void frmMiscItems::cmdNew_Click() {
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(QStringLiteral("frmMIAddEdit"));
    if (dialog->ShowForm(0))
        showItems();
}

void frmMiscItems::cmdEdit_Click() {
    const int row = lvwMI->selectedRow();
    if (row < 0)
        return;
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(QStringLiteral("frmMIAddEdit"));
    if (dialog->ShowForm(lvwMI->keyNumber(row)))
        showItems();
}

void frmMiscItems::cmdDelete_Click() {
    const int row = lvwMI->selectedRow();
    if (row < 0)
        return;
    const QString ofItem =
        QStringLiteral(" WHERE itemno=") + QString::number(lvwMI->keyNumber(row));
    jet::Database& database = core::MainDatabase();
    if (database.hasRows(QStringLiteral("SELECT * FROM jobmisccost") + ofItem) ||
        database.hasRows(QStringLiteral("SELECT * FROM estmisccost") + ofItem)) {
        screen::MsgBox(QStringLiteral("This fixed cost item has been included in either an "
                                      "estimate or a job. It cannot be deleted!"),
                       screen::Buttons::Ok, screen::Icon::Exclamation, QStringLiteral("Delete"));
        return;
    }
    if (screen::MsgBox(QStringLiteral("Delete this item?"), screen::Buttons::YesNo,
                       screen::Icon::Question, QStringLiteral("Delete")) != screen::Answer::Yes)
        return;
    database.execute(QStringLiteral("DELETE FROM miscitems") + ofItem);
    showItems();
}

} // namespace estimating
