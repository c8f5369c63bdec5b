#include "estimating/Catalogue.h"

#include "estimating/frmOperAddEdit.h"
#include "estimating/frmOperDeptAddEdit.h"
#include "estimating/frmOperation.h"
#include "platform/screen/Forms.h"

namespace estimating {

void registerCatalogue() {
    screen::Forms::add<frmOperation>();
    screen::Forms::add<frmOperAddEdit>();
    screen::Forms::add<frmOperDeptAddEdit>();
}

} // namespace estimating
