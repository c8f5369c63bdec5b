#include "estimating/frmEstimate.h"

#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

namespace estimating {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;
using Way = NewEstimate::Way;

void frmEstimate::cmdNew_Click() {
    const Carried customer = carried();
    const auto how = screen::Forms::dialog<NewEstimateDialog>(u"frmEstNew"_s)->choose(hasRecord());
    if (!how)
        return;
    if (how->way == Way::CopyCurrent) {
        if (MsgBox(u"You are about to copy the current Estimate into a new Estimate. "
                   "Are you sure?"_s,
                   Buttons::YesNo, Icon::Question) == Answer::Yes)
            copyCurrent(*how);
        return;
    }
    if (how->way == Way::CopyJob) {
        copyJob(*how, customer);
        return;
    }
    const auto operations =
        how->way == Way::DefaultSet ? pickSet(how->useDefaultNotes) : pickOperations();
    if (operations)
        startFrom(*operations, how->carryCustomer ? customer : Carried{});
}

void frmEstimate::copyCurrent(const NewEstimate& how) {
    if (!copyShown(how.useDefaultNotes, how.carryNotes))
        return;
    EstimateHeader next = estimateColumns().copy(m_header.now());
    next.estDate = values::today();
    m_header.show(next);
    dbcJobsCreated->setItems({});
    dbcJobsCreated->setText(QString());
    if (!how.carryCustomer) {
        txtNotes[2]->setText(m_rfqNotes.show({}, {}));
        showCarried({});
    }
    calculate();
}

void frmEstimate::copyJob(const NewEstimate& how, const Carried& customer) {
    const qint64 jobNo = how.jobNo.toLongLong();
    if (!draftFromJob(core::MainDatabase(), jobNo)) {
        MsgBox(u"Job No. "_s + how.jobNo + u" does not exist!"_s, Buttons::Ok, Icon::Information);
        return;
    }
    if (MsgBox(u"You are about to copy Job No. "_s + how.jobNo +
                   u" into a new Estimate. Are you sure?"_s,
               Buttons::YesNo, Icon::Question) != Answer::Yes)
        return;
    // As it is now: the question may have stood for long.
    auto copied = draftFromJob(core::MainDatabase(), jobNo);
    if (!copied)
        return;
    ShowModuleMode(Mode::Add);
    EstimateHeader header = copied->header;
    header.estDate = values::today();
    // The customer is the job's, the RFQ number the one that was on the screen.
    const Carried owner{header.custId, customer.reference};
    m_header.show(header);
    showCarried(how.carryCustomer ? owner : Carried{});
    stageCopiedNotes(core::MainDatabase(), estimateRouting(), copied->operations, jobRouting(),
                     jobNo, how.useDefaultNotes, how.carryNotes);
    m_routing->showRows(0, std::move(copied->operations), std::move(copied->fixedCosts),
                        header.oneShopRate);
    calculate();
}

} // namespace estimating
