#include "timemgmt/Screens.h"

#include "platform/screen/Forms.h"
#include "timemgmt/frmShifts.h"
#include "timemgmt/frmShiftsAddEdit.h"
#include "timemgmt/frmShiftsTimer.h"

namespace timemgmt {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmShifts>();
    Forms::add<frmShiftsAddEdit>();
    Forms::add<frmShiftsTimer>();
}

} // namespace timemgmt
