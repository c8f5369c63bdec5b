#include "estimating/frmEstimate.h"
#include "platform/values/Literals.h"

#include "core/MirsaMain.h"
#include "estimating/routing/Dialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"

#include <QLabel>
#include <QLineEdit>

namespace estimating {

using screen::Answer;
using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using Way = NewEstimate::Way;

void frmEstimate::cmdNew_Click() {
    const CarriedCustomer customer{lblCustID->text(), dbcCustomer->text(), txtRfqno->text()};
    const auto how = Forms::dialog<NewEstimateDialog>(u"frmEstNew"_s)->choose(hasRecord());
    if (!how)
        return;
    switch (how->way) {
    case Way::DefaultSet: {
        const qint64 setNo = Forms::dialog<DefaultSetDialog>(u"frmDefSet"_s)->pickSet();
        if (setNo != 0) {
            startFrom(operationsOfSet(core::MainDatabase(), setNo, how->useDefaultNotes), *how,
                      customer);
        }
        break;
    }
    case Way::SelectOperations: {
        const auto chosen = Forms::dialog<SelectOperationsDialog>(u"frmSelOper"_s)->choose();
        if (chosen)
            startFrom(*chosen, *how, customer);
        break;
    }
    case Way::CopyCurrent:
        if (MsgBox(u"You are about to copy the current Estimate into a new Estimate. "
                   "Are you sure?"_s,
                   Buttons::YesNo, Icon::Question) == Answer::Yes)
            copyCurrent(*how);
        break;
    case Way::CopyJob:
        copyJob(*how, customer);
        break;
    }
}

void frmEstimate::showCarried(const CarriedCustomer& customer, bool carry) {
    lblCustID->setText(carry ? customer.custId : QString());
    if (carry)
        dbcCustomer->setBoundText(customer.custId);
    else
        dbcCustomer->setText(QString());
    dbcCustomer->lineEdit()->selectAll(); // it has the focus: typing replaces it
    txtRfqno->setText(carry ? customer.rfqNo : QString());
    txtRfqno_LostFocus();
}

void frmEstimate::startFrom(const std::vector<ChosenOperation>& operations, const NewEstimate& how,
                            const CarriedCustomer& customer) {
    ShowModuleMode(u"Add"_s);
    showCarried(customer, how.carryCustomer);
    std::vector<OperRow> rows = rowsFor(core::MainDatabase(), operations);
    stageDefaultNotes(core::MainDatabase(), estimateRouting(), operations, rows);
    m_routing->showRows(0, std::move(rows), {}, m_routing->oneShopRate());
    calcBoth();
}

void frmEstimate::copyCurrent(const NewEstimate& how) {
    const qint64 oldEstNo = currentKey();
    ShowModuleMode(u"CopyEst"_s);
    m_assemblyEstNo = 0;
    lblAssembly->clear();
    dbcJobsCreated->setItems({});
    dbcJobsCreated->setText(QString());
    txtEstDate->setDate(values::today());
    if (!how.carryCustomer) {
        showCarried({}, false);
        txtNotes[2]->setText(QString());
    }
    stageCopiedNotes(core::MainDatabase(), estimateRouting(), m_routing->operations(),
                     estimateRouting(), oldEstNo, how.useDefaultNotes, how.carryNotes);
    m_routing->redraw();
    calcBoth();
}

void frmEstimate::copyJob(const NewEstimate& how, const CarriedCustomer& customer) {
    const qint64 jobNo = how.jobNo.toLongLong();
    auto copied = draftFromJob(core::MainDatabase(), jobNo, core::shared().CurrencySymbol);
    if (!copied) {
        MsgBox(u"Job No. "_s + how.jobNo + u" does not exist!"_s, Buttons::Ok, Icon::Information);
        return;
    }
    if (MsgBox(u"You are about to copy Job No. "_s + how.jobNo +
                   u" into a new Estimate. Are you sure?"_s,
               Buttons::YesNo, Icon::Question) != Answer::Yes)
        return;
    ShowModuleMode(u"Add"_s);
    const EstimateHeader& header = copied->header;
    // The customer is the job's, the RFQ number the one that was on the screen.
    showCarried({QString::number(header.custId), {}, customer.rfqNo}, how.carryCustomer);
    txtPartno->setText(header.partNo);
    txtDescription->setText(header.description);
    txtQuantity->setText(values::format(static_cast<double>(header.quantity), u"#####0"));
    txtEstShopRate->setText(values::format(header.shopRate, u"#####0.00"));
    txtNotes[1]->setText(header.travelerNotes);
    txtNotes[3]->setText(header.jobNotes);
    txtMaterial->setText(header.material);
    showBreaks(header);
    txtQtyDiscount[0]->setText(QString());
    stageCopiedNotes(core::MainDatabase(), estimateRouting(), copied->operations, jobRouting(),
                     jobNo, how.useDefaultNotes, how.carryNotes);
    m_routing->showRows(0, std::move(copied->operations), std::move(copied->fixedCosts),
                        header.oneShopRate);
    calcBoth();
}

} // namespace estimating
