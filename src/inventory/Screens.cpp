#include "inventory/Screens.h"

#include "inventory/frmItemReStockPOMulti.h"
#include "inventory/frmItemTreeSelect.h"
#include "platform/screen/Forms.h"

namespace inventory {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmItemReStockPOMulti>();
    Forms::add<frmItemTreeSelect>();
}

} // namespace inventory
