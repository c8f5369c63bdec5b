#include "jobs/Screens.h"

#include "jobs/frmAssemblyInfo.h"
#include "jobs/frmCreatJob.h"
#include "jobs/frmJob.h"
#include "jobs/frmJobFind.h"
#include "jobs/frmJobFound.h"
#include "jobs/frmJobNew.h"
#include "jobs/frmJobShip.h"
#include "jobs/frmJobshipAddEdit.h"
#include "platform/screen/Forms.h"

namespace jobs {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmJob>();
    Forms::add<frmJobNew>();
    Forms::add<frmJobFind>();
    Forms::add<frmJobFound>();
    Forms::add<frmCreatJob>();
    Forms::add<frmJobShip>();
    Forms::add<frmJobshipAddEdit>();
    Forms::add<frmAssemblyInfo>();
}

} // namespace jobs
