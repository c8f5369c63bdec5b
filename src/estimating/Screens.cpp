#include "estimating/Screens.h"

#include "estimating/Catalogue.h"
#include "estimating/frmDefNew.h"
#include "estimating/frmDefSet.h"
#include "estimating/frmEstFind.h"
#include "estimating/frmEstFound.h"
#include "estimating/frmEstNew.h"
#include "estimating/frmEstimate.h"
#include "estimating/frmMIAddEdit.h"
#include "estimating/frmMiscItems.h"
#include "estimating/routing/Register.h"
#include "platform/screen/Forms.h"

namespace estimating {

void registerScreens() {
    using screen::Forms;
    registerRoutingDialogs();
    registerCatalogue();
    Forms::add<frmEstimate>();
    Forms::add<frmEstNew>();
    Forms::add<frmEstFind>();
    Forms::add<frmEstFound>();
    Forms::add<frmDefSet>();
    Forms::add<frmDefNew>();
    Forms::add<frmMiscItems>();
    Forms::add<frmMIAddEdit>();
}

} // namespace estimating
