#include "estimating/frmMiscItems.h"

#include "core/MirsaMain.h"
#include "estimating/EstimateDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace estimating {

using controls::GridColumn;

frmMiscItems::frmMiscItems()
    : ListForm(QString::fromLatin1(formName), u"Fixed Cost Items"_s, u"lvwMI"_s,
               u"Fixed cost items"_s,
               {{u"Description"_s, 34},
                {u"Unit"_s, 10},
                {u"Unit Price"_s, 14, GridColumn::Kind::Number},
                {u"No."_s, 7, GridColumn::Kind::Number}}) {}

std::vector<controls::ListRow> frmMiscItems::rows() {
    const QString mask = core::moneyMask(u"#,0.0000"_s);
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT * FROM miscitems ORDER BY description"_s, jet::RecordsetType::Snapshot);
    std::vector<controls::ListRow> found;
    for (; !set.eof(); set.moveNext()) {
        const QString itemNo = set.text(u"ItemNo");
        found.push_back({u"M"_s + itemNo,
                         {set.text(u"Description"), set.text(u"UnitOfMeasure").trimmed(),
                          values::format(set[u"UnitPrice"].toCurrency(), mask), itemNo}});
    }
    return found;
}

void frmMiscItems::cmdNew_Click() {
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(u"frmMIAddEdit"_s);
    if (dialog->ShowForm(0))
        reload();
}

void frmMiscItems::cmdEdit_Click() {
    const qint64 itemNo = selectedNumber();
    if (itemNo == 0)
        return;
    auto dialog = screen::Forms::dialog<FixedCostItemDialog>(u"frmMIAddEdit"_s);
    if (dialog->ShowForm(itemNo))
        reload();
}

void frmMiscItems::cmdDelete_Click() {
    const qint64 itemNo = selectedNumber();
    if (itemNo == 0)
        return;
    const QString ofItem = u" WHERE itemno="_s + QString::number(itemNo);
    jet::Database& database = core::MainDatabase();
    if (database.hasRows(u"SELECT * FROM jobmisccost"_s + ofItem) ||
        database.hasRows(u"SELECT * FROM estmisccost"_s + ofItem)) {
        screen::MsgBox(u"This fixed cost item has been included in either an "
                       "estimate or a job. It cannot be deleted!"_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation, u"Delete"_s);
        return;
    }
    if (!askDelete())
        return;
    database.execute(u"DELETE FROM miscitems"_s + ofItem);
    reload();
}

} // namespace estimating
