#include "jobs/frmJob.h"

#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QLabel>

namespace jobs {

using Way = NewJob::Way;

void frmJob::cmdNew_Click() {
    const Carried customer = carried();
    const auto how = screen::Forms::dialog<NewJobDialog>(u"frmJobNew"_s)->choose(hasRecord());
    if (!how)
        return;
    if (how->way == Way::CopyCurrent) {
        if (screen::MsgBox(u"You are about to copy the current Job into a new Job. "
                           "Are you sure?"_s,
                           screen::Buttons::YesNo, screen::Icon::Question) == screen::Answer::Yes)
            copyCurrent(*how);
        return;
    }
    const auto operations =
        how->way == Way::DefaultSet ? pickSet(how->useDefaultNotes) : pickOperations();
    if (operations)
        startFrom(*operations, how->carryCustomer ? customer : Carried{});
}

void frmJob::copyCurrent(const NewJob& how) {
    if (!copyShown(
            how.useDefaultNotes, how.carryNotes,
            [&](std::vector<estimating::OperRow>& rows) { makeCopy(rows, how.copyEstimated); }))
        return;
    JobHeader next = jobColumns().copy(m_header.now());
    next.dateIn = values::today();
    m_header.show(next);
    if (!how.carryCustomer)
        showCarried({});
    m_wasShipped = false;
    m_routing->setEstimatedLocked(false);
    for (QLabel* label : {lblTotalHours, lblJobShopCost, lblInvoiceTotal, lblCalc_OutContr})
        label->setText(u"0.0000"_s);
}

} // namespace jobs
