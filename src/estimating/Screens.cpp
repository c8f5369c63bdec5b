#include "estimating/Screens.h"

#include "core/records/FindDialogs.h"
#include "estimating/Catalogue.h"
#include "estimating/frmDefNew.h"
#include "estimating/frmDefSet.h"
#include "estimating/frmEstNew.h"
#include "estimating/frmEstimate.h"
#include "estimating/frmMIAddEdit.h"
#include "estimating/frmMemory.h"
#include "estimating/frmMiscItems.h"
#include "estimating/routing/Register.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

namespace estimating {

void registerScreens() {
    using screen::Forms;
    registerRoutingDialogs();
    registerCatalogue();
    Forms::add<frmEstimate>();
    Forms::add<frmEstNew>();
    Forms::add<frmMemory>();
    core::addFind({u"frmEstFind"_s, u"Find Estimate"_s, u"Enter an Estimate No. to Find"_s,
                   u"Enter a Part No. to Find"_s},
                  {u"frmEstFound"_s,
                   u"Estimates Found"_s,
                   u"sprFound"_s,
                   {{u"Est. #"_s, u"EstNo"_s},
                    {u"Cust. #"_s, u"CustID"_s},
                    {u"RFQ #"_s, u"RFQNo"_s},
                    {u"Part #"_s, u"PartNo"_s, 20},
                    {u"Est. Date"_s, u"EstDate"_s}}});
    Forms::add<frmDefSet>();
    Forms::add<frmDefNew>();
    Forms::add<frmMiscItems>();
    Forms::add<frmMIAddEdit>();
}

} // namespace estimating
