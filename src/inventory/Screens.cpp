#include "inventory/Screens.h"

#include "core/records/FindDialogs.h"
#include "inventory/FolderForm.h"
#include "inventory/NewItemForm.h"
#include "inventory/WorkForm.h"
#include "inventory/frmInventory.h"
#include "inventory/frmItemActivity.h"
#include "inventory/frmItemCount.h"
#include "inventory/frmItemFind.h"
#include "inventory/frmItemFlagged.h"
#include "inventory/frmItemIssueInv.h"
#include "inventory/frmItemNewEdit.h"
#include "inventory/frmItemOrder.h"
#include "inventory/frmItemReStock.h"
#include "inventory/frmItemReStockPO.h"
#include "inventory/frmItemReStockPOMulti.h"
#include "inventory/frmItemReStockSelected.h"
#include "inventory/frmItemRestockJob.h"
#include "inventory/frmItemTreeSelect.h"
#include "inventory/frmQueryTypeLoc.h"
#include "inventory/frmReportAllItemsQresults.h"
#include "inventory/frmSpareEdit.h"
#include "inventory/frmSpareFind.h"
#include "inventory/frmSpareMove.h"
#include "inventory/frmSpareNew.h"
#include "inventory/frmSpareParts.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

namespace inventory {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmInventory>();
    Forms::add<frmItemActivity>();
    Forms::add<frmItemCount>();
    Forms::add<frmItemFind>();
    Forms::add<frmItemFlagged>();
    Forms::add<frmItemIssueInv>();
    Forms::add<frmItemNewEdit>();
    Forms::add<frmItemOrder>();
    Forms::add<frmItemReStock>();
    Forms::add<frmItemReStockPO>();
    Forms::add<frmItemRestockJob>();
    Forms::add<frmItemReStockPOMulti>();
    Forms::add<frmItemReStockSelected>();
    Forms::add<frmItemTreeSelect>();
    Forms::add(u"frmItemQueryTree"_s,
               [] { return std::make_unique<frmItemTreeSelect>(u"frmItemQueryTree"_s); });
    Forms::add<frmQueryTypeLoc>();
    Forms::add<frmReportAllItemsQresults>();
    Forms::add<frmSpareParts>();
    Forms::add<frmSpareNew>();
    Forms::add<frmSpareEdit>();
    Forms::add<frmSpareMove>();
    Forms::add<frmSpareFind>();
    Forms::add(u"frmSpareFound"_s, [] {
        return std::make_unique<core::FoundForm>(
            core::FoundForm::Descriptor{u"frmSpareFound"_s,
                                        u"Goto Spare Part"_s,
                                        u"sprPartFound"_s,
                                        {{u"Rec #"_s, u"Index"_s, 8},
                                         {u"Part #"_s, u"SPartNo"_s, 18},
                                         {u"Location"_s, u"SLocation"_s, 18},
                                         {u"Date"_s, u"SDate"_s, 11},
                                         {u"S Qty"_s, u"SSpareQty"_s, 7},
                                         {u"Emp #"_s, u"SEmpID"_s, 7}}});
    });
    for (const NewItemKind& kind : newItemKinds())
        Forms::add(kind.formName, [&kind] { return std::make_unique<NewItemForm>(kind); });
    for (const WorkKind& kind : workKinds())
        Forms::add(kind.formName, [&kind] { return std::make_unique<WorkForm>(kind); });
    const auto folders = [](const QString& name, const View& view) {
        Forms::add(name, [name, &view] { return std::make_unique<FolderForm>(name, view); });
    };
    folders(u"frmItemTypeNewEdit"_s, typeView());
    folders(u"frmItemLocNewEdit"_s, locationView());
}

} // namespace inventory
