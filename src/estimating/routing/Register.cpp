#include "estimating/routing/Register.h"

#include "estimating/routing/frmEstOperNote.h"
#include "estimating/routing/frmInsItem.h"
#include "estimating/routing/frmInsOper.h"
#include "estimating/routing/frmJobOperNote.h"
#include "estimating/routing/frmSelOper.h"
#include "platform/screen/Forms.h"

namespace estimating {

void registerRoutingDialogs() {
    using screen::Forms;
    Forms::add<frmSelOper>();
    Forms::add<frmInsOper>();
    Forms::add<frmInsItem>();
    Forms::add<frmEstOperNote>();
    Forms::add<frmJobOperNote>();
}

} // namespace estimating
