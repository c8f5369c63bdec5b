#include "inventory/Screens.h"

#include "inventory/FolderForm.h"
#include "inventory/NewItemForm.h"
#include "inventory/WorkForm.h"
#include "inventory/frmInventory.h"
#include "inventory/frmItemActivity.h"
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
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

namespace inventory {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmInventory>();
    Forms::add<frmItemActivity>();
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
