#include "core/Screens.h"

#include "core/frmAbout.h"
#include "core/frmLogin.h"
#include "core/frmPass.h"
#include "core/frmSplash.h"
#include "core/frmTblPopup.h"
#include "core/reference/ReferenceForms.h"
#include "platform/screen/Forms.h"

namespace core {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmSplash>();
    Forms::add<frmLogin>();
    Forms::add<frmPass>();
    Forms::add<frmAbout>();
    Forms::add<frmTblPopup>();
    registerReferenceScreens();
}

} // namespace core
