#include "jobs/frmJob.h"
#include "platform/values/Literals.h"

#include "core/MirsaMain.h"
#include "estimating/NoteStaging.h"
#include "estimating/routing/Dialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace jobs {

using estimating::ChosenOperation;
using estimating::jobRouting;
using screen::Answer;
using screen::Forms;
using Way = NewJob::Way;

void frmJob::cmdNew_Click() {
    const CarriedCustomer customer{lblCustID->text(), txtPONo->text()};
    const auto how = Forms::dialog<NewJobDialog>(u"frmJobNew"_s)->choose(hasRecord());
    if (!how)
        return;
    switch (how->way) {
    case Way::DefaultSet: {
        const qint64 setNo = Forms::dialog<estimating::DefaultSetDialog>(u"frmDefSet"_s)->pickSet();
        if (setNo != 0) {
            startFrom(
                estimating::operationsOfSet(core::MainDatabase(), setNo, how->useDefaultNotes),
                *how, customer);
        }
        break;
    }
    case Way::SelectOperations: {
        const auto chosen =
            Forms::dialog<estimating::SelectOperationsDialog>(u"frmSelOper"_s)->choose();
        if (chosen)
            startFrom(*chosen, *how, customer);
        break;
    }
    case Way::CopyCurrent:
        if (screen::MsgBox(u"You are about to copy the current Job into a new Job. "
                           "Are you sure?"_s,
                           screen::Buttons::YesNo, screen::Icon::Question) == Answer::Yes)
            copyCurrent(*how);
        break;
    }
}

void frmJob::showCarried(const CarriedCustomer& customer) {
    lblCustID->setText(customer.custId);
    dbcCustomer->setBoundText(customer.custId);
    dbcCustomer->lineEdit()->selectAll(); // it has the focus: typing replaces it
    txtPONo->setText(customer.poNo);
}

void frmJob::startFrom(const std::vector<ChosenOperation>& operations, const NewJob& how,
                       const CarriedCustomer& customer) {
    ShowModuleMode(u"Add"_s);
    showCarried(how.carryCustomer ? customer : CarriedCustomer{});
    std::vector<estimating::OperRow> rows = estimating::rowsFor(core::MainDatabase(), operations);
    for (estimating::OperRow& row : rows)
        row.time = 0;
    estimating::stageDefaultNotes(core::MainDatabase(), jobRouting(), operations, rows);
    m_routing->showRows(0, std::move(rows), {}, m_routing->oneShopRate());
    calcJob();
}

void frmJob::copyCurrent(const NewJob& how) {
    const qint64 oldJobNo = currentKey();
    lblEstNo->clear();
    lblAssembly->clear();
    ShowModuleMode(u"CopyJob"_s);
    m_assemblyJobNo = 0;
    m_wasShipped = false;
    chkShipped->setChecked(false);
    txtShipDate->setDate(std::nullopt);
    txtShipDate->setLocked(true);
    txtJobDateIn->setDate(values::today());
    if (!how.carryCustomer)
        showCarried({});
    makeCopy(m_routing->operations(), how.copyEstimated);
    estimating::stageCopiedNotes(core::MainDatabase(), jobRouting(), m_routing->operations(),
                                 jobRouting(), oldJobNo, how.useDefaultNotes, how.carryNotes);
    m_routing->redraw();
    for (QLabel* label : {lblTotalHours, lblJobShopCost, lblInvoiceTotal, lblCalc_OutContr})
        label->setText(u"0.0000"_s);
}

} // namespace jobs
