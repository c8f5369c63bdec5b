#include "inventory/Screens.h"

#include "inventory/FolderForm.h"
#include "inventory/frmInventory.h"
#include "inventory/frmItemActivity.h"
#include "inventory/frmItemFind.h"
#include "inventory/frmItemFlagged.h"
#include "inventory/frmItemIssueInv.h"
#include "inventory/frmItemNewEdit.h"
#include "inventory/frmItemReStock.h"
#include "inventory/frmItemReStockPOMulti.h"
#include "inventory/frmItemReStockSelected.h"
#include "inventory/frmItemTreeSelect.h"
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
    Forms::add<frmItemReStock>();
    Forms::add<frmItemReStockPOMulti>();
    Forms::add<frmItemReStockSelected>();
    Forms::add<frmItemTreeSelect>();
    const auto folders = [](const QString& name, const View& view) {
        Forms::add(name, [name, &view] { return std::make_unique<FolderForm>(name, view); });
    };
    folders(u"frmItemTypeNewEdit"_s, typeView());
    folders(u"frmItemLocNewEdit"_s, locationView());
}

} // namespace inventory
