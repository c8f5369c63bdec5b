#include "timemgmt/Screens.h"

#include "platform/screen/Forms.h"
#include "timemgmt/frmNewTime.h"
#include "timemgmt/frmPayrollHours.h"
#include "timemgmt/frmShifts.h"
#include "timemgmt/frmShiftsAddEdit.h"
#include "timemgmt/frmShiftsTimer.h"
#include "timemgmt/frmSignAddEdit.h"
#include "timemgmt/frmTM.h"
#include "timemgmt/frmTimeEdit.h"
#include "timemgmt/frmTimeExceptions.h"

namespace timemgmt {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmNewTime>();
    Forms::add<frmPayrollHours>();
    Forms::add<frmShifts>();
    Forms::add<frmShiftsAddEdit>();
    Forms::add<frmShiftsTimer>();
    Forms::add<frmSignAddEdit>();
    Forms::add<frmTM>();
    Forms::add<frmTimeEdit>();
    Forms::add<frmTimeExceptions>();
}

} // namespace timemgmt
