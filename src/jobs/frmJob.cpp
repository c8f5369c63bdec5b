#include "jobs/frmJob.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "core/records/FindDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace jobs {

using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using values::Currency;

// Opening and showing

void frmJob::ShowModuleMode(Mode mode) {
    RoutedModule::ShowModuleMode(mode);
    // An estimated figure that came with an estimate is not typed over.
    m_routing->setEstimatedLocked(m_header.now().estNo != 0);
}

void frmJob::newDefaults() {
    JobHeader fresh;
    fresh.dateIn = values::today();
    fresh.shopRate =
        core::MainDatabase().lookup(u"SELECT jobonerate FROM SystemSettings"_s).toCurrency();
    m_header.show(fresh);
}

void frmJob::takeRecord(const jet::Recordset* row) {
    RoutedModule::takeRecord(row);
    m_wasShipped = m_header.now().shipped;
    if (!row) {
        calculate();
        return;
    }
    // The other figures are shown as they are stored.
    try {
        showRouted(figures());
    } catch (const values::Overflow&) {
        lblCalc_OutContr->clear();
        lblCalc_Fixed->clear();
    }
}

// Costing

JobFigures frmJob::figures() {
    const JobHeader& header = m_header.now();
    return CalcJob(m_routing->operations(), m_routing->fixedCosts(), m_routing->oneShopRate(),
                   header.shopRate, static_cast<double>(header.quantity), header.invoiceEach);
}

void frmJob::showRouted(const JobFigures& now) {
    lblCalc_OutContr->setText(values::format(static_cast<double>(now.outContr), u"######0.00"));
    lblCalc_Fixed->setText(values::format(static_cast<double>(now.fixed), u"######0.00"));
}

void frmJob::reckon() {
    const JobFigures now = figures();
    showRouted(now);
    setHeaderValue(u"JobShopCost"_s, jet::Value(now.costEach));
    setHeaderValue(u"TotalHours"_s, jet::Value(static_cast<double>(now.hours)));
    setHeaderValue(u"InvoiceTotal"_s, jet::Value(now.invoiceTotal));
}

void frmJob::showNoFigures() {
    for (QLabel* label :
         {lblTotalHours, lblJobShopCost, lblInvoiceTotal, lblCalc_OutContr, lblCalc_Fixed})
        label->clear();
}

void frmJob::chkShipped_Click() {
    if (isBrowse())
        return;
    const bool shipped = chkShipped->isChecked();
    txtShipDate->setLocked(!shipped);
    if (shipped)
        txtShipDate->setDate(values::today());
    else
        txtShipDate->setDate(std::nullopt);
}

// Saving and deleting

bool frmJob::validate() {
    const auto complaint = checkJob(core::MainDatabase(), currentKey(), m_wasShipped, document());
    if (complaint) {
        complain(complaint->text, control(complaint->field));
        return false;
    }
    // What is saved has to be costed afterwards.
    try {
        figures();
    } catch (const values::Overflow&) {
        tellTooLarge();
        return false;
    }
    return true;
}

std::optional<JobDraft> frmJob::load(qint64 jobNo) {
    return loadJob(core::MainDatabase(), jobNo);
}

estimating::SaveOutcome frmJob::store(qint64 jobNo, JobDraft& draft, const JobDraft* before,
                                      const QStringList& settled) {
    return saveJob(core::MainDatabase(), jobNo, draft, before, settled);
}

void frmJob::deleteDocument(qint64 jobNo) {
    deleteJob(core::MainDatabase(), jobNo);
}

bool frmJob::mayDelete() {
    if (!hasTimeRecords(core::MainDatabase(), currentKey()))
        return true;
    MsgBox(u"Time Management records exist for this job. You must delete all Time "
           "Management\r\nrecords for this job before it can be deleted!"_s,
           Buttons::Ok, Icon::Exclamation, u"Delete"_s);
    return false;
}

bool frmJob::mayRemove(const estimating::OperRow& row) {
    const qint64 jobNo = m_routing->documentNo();
    if (jobNo == 0 || !hasTimeRecords(core::MainDatabase(), jobNo, row.operNo))
        return true;
    MsgBox(u"Time Management record(s) exists for this job operation. You must "
           "delete all Time Management\r\nrecords for this job operation before it "
           "can be deleted!"_s,
           Buttons::Ok, Icon::Exclamation, u"Delete"_s);
    return false;
}

void frmJob::cmdEdit_Click() {
    if (Forms::isLoaded(u"frmSchedule"_s)) {
        MsgBox(u"Cannot edit jobs while Job Scheduler is open."_s, Buttons::Ok, Icon::Exclamation,
               u"System Message"_s);
        return;
    }
    RoutedModule::cmdEdit_Click();
}

// Going to a record

void frmJob::cmdFind_Click() {
    const auto asked = Forms::dialog<core::DocumentFindDialog>(u"frmJobFind"_s)->askNumber();
    if (!asked)
        return;
    const qint64 jobNo = *asked;
    // Not by the rows that are shown: another station may have added, shipped or deleted it.
    const QString subject = u"Job No. "_s + QString::number(jobNo);
    const jet::Recordset found = core::MainDatabase().openRecordset(
        u"SELECT * FROM Job WHERE JobNo = "_s + QString::number(jobNo),
        jet::RecordsetType::Snapshot);
    if (found.isEmpty())
        MsgBox(subject + u" does not exist!"_s, Buttons::Ok, Icon::Information);
    else if (activeOnly() && found[u"Shipped"].toBool())
        MsgBox(subject + u" is an Inactive Job!"_s, Buttons::Ok, Icon::Information);
    else if (!goToRecord(jobNo))
        reopen(mainSelect(), jobNo);
}

void frmJob::cmdGotoPart_Click() {
    if (const auto jobNo = askByPart(u"frmJobFind"_s, u"frmJobFound"_s,
                                     activeOnly() ? u" AND Shipped = False"_s : QString()))
        goToRecord(*jobNo);
}

// Handing over

void frmJob::cmdSchedule_Click() {
    if (!hasRecord())
        return;
    if (chkShipped->isChecked()) {
        MsgBox(u"Job has been completed and shipped. Schedule not available."_s, Buttons::Ok,
               Icon::Information, u"System Message"_s);
        return;
    }
    Forms::show(u"frmSchedule"_s);
}

void frmJob::cmdInvoice_Click() {
    if (hasRecord())
        Forms::show(u"frmInvoice"_s);
}

void frmJob::cmdTraveler_Click() {
    if (!hasRecord() || !core::shell())
        return;
    const QWidget* cmdTraveler = control(u"cmdTraveler"_s);
    core::shell()->popUp(u"mnuTravelPopup"_s,
                         cmdTraveler->mapToGlobal(QPoint(0, cmdTraveler->height())));
}

void frmJob::cmdShippingHistory_Click() {
    if (hasRecord())
        Forms::showModal(u"frmJobShip"_s);
}

} // namespace jobs
