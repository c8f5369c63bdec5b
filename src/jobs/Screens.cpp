#include "jobs/Screens.h"

#include "core/records/FindDialogs.h"
#include "jobs/frmAssemblyInfo.h"
#include "jobs/frmCreatJob.h"
#include "jobs/frmJob.h"
#include "jobs/frmJobNew.h"
#include "jobs/frmJobShip.h"
#include "jobs/frmJobshipAddEdit.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

namespace jobs {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmJob>();
    Forms::add<frmJobNew>();
    // An apostrophe may be part of a part's number.
    const values::KeyFilter partKeys{u"*"_s, true, u"|\""_s};
    core::addFind({u"frmJobFind"_s, u"Find Job"_s, u"Enter a Job No. to Find..."_s,
                   u"Enter a Part No. to Find..."_s, partKeys},
                  {u"frmJobFound"_s,
                   u"Jobs Found"_s,
                   u"sprFound"_s,
                   {{u"Job #"_s, u"JobNo"_s},
                    {u"Cust. #"_s, u"CustID"_s},
                    {u"PO #"_s, u"PONo"_s},
                    {u"Part #"_s, u"PartNo"_s, 20},
                    {u"Due Date"_s, u"JobDueDate"_s}}});
    Forms::add<frmCreatJob>();
    Forms::add<frmJobShip>();
    Forms::add<frmJobshipAddEdit>();
    Forms::add<frmAssemblyInfo>();
}

} // namespace jobs
