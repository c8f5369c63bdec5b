#include "estimating/frmMiscItems.h"

#include "core/MirsaMain.h"
#include "estimating/EstimateDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"

namespace estimating {

using controls::GridColumn;

frmMiscItems::frmMiscItems()
    : ListForm(QString::fromLatin1(formName), QStringLiteral("Fixed Cost Items"),
               QStringLiteral("lvwMI"), QStringLiteral("Fixed cost items"),
               {{QStringLiteral("Description"), 34},
                {QStringLiteral("Unit"), 10},
                {QStringLiteral("Unit Price"), 14, GridColumn::Kind::Number},
                {QStringLiteral("No."), 7, GridColumn::Kind::Number}}) {}

void frmMiscItems::fill(controls::ListView& list) {
    const QString mask = core::moneyMask(QStringLiteral("#,0.0000"));
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM miscitems ORDER BY description"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString itemNo = set.text(u"ItemNo");
        list.addRow(QStringLiteral("M") + itemNo,
                    {set.text(u"Description"), set.text(u"UnitOfMeasure").trimmed(),
                     values::format(set[u"UnitPrice"].toCurrency(), mask), itemNo});
    }
}

void frmMiscItems::cmdNew_Click() {
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(QStringLiteral("frmMIAddEdit"));
    if (dialog->ShowForm(0))
        reload();
}

void frmMiscItems::cmdEdit_Click() {
    const qint64 itemNo = selectedNumber();
    if (itemNo == 0)
        return;
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(QStringLiteral("frmMIAddEdit"));
    if (dialog->ShowForm(itemNo))
        reload();
}

void frmMiscItems::cmdDelete_Click() {
    const qint64 itemNo = selectedNumber();
    if (itemNo == 0)
        return;
    const QString ofItem = QStringLiteral(" WHERE itemno=") + QString::number(itemNo);
    jet::Database& database = core::MainDatabase();
    if (database.hasRows(QStringLiteral("SELECT * FROM jobmisccost") + ofItem) ||
        database.hasRows(QStringLiteral("SELECT * FROM estmisccost") + ofItem)) {
        screen::MsgBox(QStringLiteral("This fixed cost item has been included in either an "
                                      "estimate or a job. It cannot be deleted!"),
                       screen::Buttons::Ok, screen::Icon::Exclamation, QStringLiteral("Delete"));
        return;
    }
    if (!askDelete())
        return;
    database.execute(QStringLiteral("DELETE FROM miscitems") + ofItem);
    reload();
}

} // namespace estimating
