#include "reporting/Screens.h"

#include "platform/screen/Forms.h"
#include "reporting/frmConfigReports.h"
#include "reporting/frmCreports.h"
#include "reporting/frmImportSelected.h"
#include "reporting/frmNewReport.h"

namespace reporting {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmConfigReports>();
    Forms::add<frmNewReport>();
    Forms::add<frmImportSelected>();
    Forms::add<frmCreports>();
}

} // namespace reporting
