#include "jobs/frmJob.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "estimating/AssemblyTree.h"
#include "estimating/NoteStaging.h"
#include "estimating/routing/FindForms.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <cmath>
#include <utility>

namespace jobs {

using estimating::jobRouting;
using estimating::NoteStaging;
using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using values::Currency;

namespace {

void tell(const jet::Error& error) {
    MsgBox(error.text(), Buttons::Ok, Icon::Critical);
}

void tellTooLarge() {
    MsgBox(u"The cost is too large to be computed. Please check the times, amounts "
           "and rates."_s,
           Buttons::Ok, Icon::Exclamation);
}

double number(const QString& text) {
    return values::val(QString(text).remove(QLatin1Char(',')));
}

} // namespace

// Opening and showing

QString frmJob::mainSelect() const {
    // With inactive jobs alone there would be nothing to show.
    if (!core::MainDatabase().hasRows(u"SELECT JobNo FROM Job WHERE Shipped = "
                                      "False"_s))
        optShow[1]->setChecked(true);
    return jobRows(activeOnly());
}

void frmJob::ShowModuleMode(const QString& mode) {
    RoutedModule::ShowModuleMode(mode);
    fraShow->setEnabled(isBrowse());
    // An estimated figure that came with an estimate is not typed over.
    m_routing->setEstimatedLocked(lblEstNo->text().toLongLong() != 0);
}

void frmJob::clearFields() {
    RoutedModule::clearFields();
    lblAssembly->clear();
    m_assemblyJobNo = 0;
    m_wasShipped = false;
    m_routing->showRows(0, {}, {}, m_routing->oneShopRate());
    calcJob();
}

void frmJob::newDefaults() {
    txtJobDateIn->setDate(values::today());
    const Currency rate =
        core::MainDatabase().lookup(u"SELECT jobonerate FROM SystemSettings"_s).toCurrency();
    txtJobShopRate->setText(values::format(rate, u"#####0.00"));
    txtQuantity->setText(u"0"_s);
    txtInvoiceEach->setText(values::format(Currency(), u"######0.0000"));
    lblQtyQuotedPrice->setText(values::format(Currency(), u"#####0.0000"));
}

void frmJob::showRecord() {
    const qint64 jobNo = currentKey();
    const jet::Recordset& row = records();
    m_wasShipped = row[u"Shipped"].toBool();
    m_assemblyJobNo = row[u"AssemblyJobNo"].toLong();
    showAssembly();
    m_routing->showRows(jobNo,
                        estimating::loadOperRows(core::MainDatabase(), jobRouting(), jobNo,
                                                 core::shared().CurrencySymbol),
                        estimating::loadMiscRows(core::MainDatabase(), jobRouting(), jobNo),
                        row[u"OneShopRate"].toBool());
    // The other figures are shown as they are stored.
    showRouted(figures());
    m_tooLarge = false;
}

void frmJob::showAssembly() {
    const bool isParent = core::MainDatabase().hasRows(u"SELECT * FROM job WHERE assemblyjobno="_s +
                                                       QString::number(currentKey()));
    if (isParent)
        lblAssembly->setText(u"ASSY"_s);
    else
        lblAssembly->setText(m_assemblyJobNo == 0 ? QString() : QString::number(m_assemblyJobNo));
}

bool frmJob::activeOnly() const {
    return optShow[0]->isChecked();
}

void frmJob::optShow_Click() {
    if (!isBrowse())
        return;
    reopen(jobRows(activeOnly()), currentKey());
    if (hasRecord() || !activeOnly() || !core::MainDatabase().hasRows(u"SELECT JobNo FROM Job"_s))
        return;
    MsgBox(u"There are no active jobs."_s, Buttons::Ok, Icon::Information);
    optShow[1]->setChecked(true);
    reopen(jobRows(false));
}

void frmJob::showReadAgain() {
    RoutedModule::showReadAgain();
    leaveEmptyView();
}

void frmJob::leaveEmptyView() {
    if (hasRecord() || !activeOnly())
        return;
    optShow[1]->setChecked(true);
    reopen(jobRows(false));
}

// Costing

Currency frmJob::amount(const QString& text) const {
    return Currency::fromText(QString(text).remove(QLatin1Char(',')));
}

std::optional<JobFigures> frmJob::figures() const {
    try {
        return CalcJob(m_routing->operations(), m_routing->fixedCosts(), m_routing->oneShopRate(),
                       amount(txtJobShopRate->text()), number(txtQuantity->text()),
                       amount(txtInvoiceEach->text()));
    } catch (const values::Overflow&) {
        return std::nullopt;
    }
}

void frmJob::showRouted(const std::optional<JobFigures>& now) {
    const auto show = [&](QLabel* label, float JobFigures::*figure) {
        label->setText(now ? values::format(static_cast<double>((*now).*figure), u"######0.00")
                           : QString());
    };
    show(lblCalc_OutContr, &JobFigures::outContr);
    show(lblCalc_Fixed, &JobFigures::fixed);
}

void frmJob::calcJob() {
    const auto now = figures();
    showRouted(now);
    lblJobShopCost->setText(now ? values::format(now->costEach, u"######0.0000") : QString());
    lblTotalHours->setText(now ? values::format(static_cast<double>(now->hours), u"######0.00")
                               : QString());
    lblInvoiceTotal->setText(now ? values::format(now->invoiceTotal, u"######0.00") : QString());
    const bool wasTooLarge = std::exchange(m_tooLarge, !now);
    if (!now && !wasTooLarge)
        tellTooLarge();
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

// Saving, cancelling, deleting

JobDraft frmJob::draft() const {
    JobDraft result;
    JobHeader& header = result.header;
    header.custId = lblCustID->text().toLongLong();
    header.poNo = txtPONo->text().trimmed();
    header.description = txtDescription->text();
    header.partNo = txtPartno->text().trimmed();
    header.material = txtMaterial->text();
    header.travelerNotes = txtTravelerNotes->text();
    header.jobNotes = txtJobNotes->text();
    header.quantity = std::llrint(number(txtQuantity->text()));
    header.shopRate = amount(txtJobShopRate->text());
    header.oneShopRate = m_routing->oneShopRate();
    header.inOrder = chkSequential->isChecked();
    header.quotedPrice = amount(lblQtyQuotedPrice->text());
    header.dateIn = txtJobDateIn->date();
    header.dueDate = txtJobDueDate->date();
    header.totalHours = number(lblTotalHours->text());
    header.shopCost = amount(lblJobShopCost->text());
    header.invoiceEach = amount(txtInvoiceEach->text());
    header.invoiceTotal = amount(lblInvoiceTotal->text());
    header.shipped = chkShipped->isChecked();
    header.shipDate = txtShipDate->date();
    header.estNo = lblEstNo->text().toLongLong();
    header.assemblyJobNo = m_assemblyJobNo;
    result.operations = m_routing->operations();
    result.fixedCosts = m_routing->fixedCosts();
    return result;
}

bool frmJob::validate() {
    const auto complaint = checkJob(core::MainDatabase(), currentKey(), m_wasShipped, draft());
    if (complaint) {
        complain(complaint->text, control(complaint->field));
        return false;
    }
    // What is saved has to be costed afterwards.
    if (!figures()) {
        tellTooLarge();
        return false;
    }
    return true;
}

bool frmJob::writeRecord(bool adding, qint64& key) {
    JobDraft current = draft();
    try {
        if (adding) {
            key = addJob(core::MainDatabase(), current);
            return true;
        }
        key = currentKey();
        const auto refusal = changeJob(core::MainDatabase(), key, m_before, current);
        if (refusal)
            complain(refusal->text, control(refusal->field));
        return !refusal;
    } catch (const jet::Error& error) {
        tell(error);
    } catch (const values::Overflow&) {
        tellTooLarge();
    }
    return false;
}

void frmJob::afterSave(qint64 key, bool adding) {
    const int rows = static_cast<int>(m_routing->operations().size());
    try {
        NoteStaging(core::MainDatabase(), jobRouting(), m_routing->documentNo()).adopt(key, rows);
        UpdateJobCost(core::MainDatabase(), key);
    } catch (const jet::Error& error) {
        // The job is saved; the next save does these steps again.
        tell(error);
    } catch (const values::Overflow&) {
        tellTooLarge();
    }
    ShowModuleMode(u"Browse"_s);
    if (adding) {
        reopen(jobRows(activeOnly()), key);
        leaveEmptyView();
    } else {
        showReadAgain();
    }
    if (QPushButton* close = button(core::Role::Close))
        close->setFocus();
}

bool frmJob::mayDelete() {
    if (!hasTimeRecords(core::MainDatabase(), currentKey()))
        return true;
    MsgBox(u"Time Management records exist for this job. You must delete all Time "
           "Management\r\nrecords for this job before it can be deleted!"_s,
           Buttons::Ok, Icon::Exclamation, u"Delete"_s);
    return false;
}

void frmJob::cmdDelete_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    // Time may have been booked on it while the question stood.
    if (!mayDelete() || !askDelete() || !mayDelete())
        return;
    {
        const screen::BusyPointer busy;
        try {
            deleteJob(core::MainDatabase(), currentKey());
        } catch (const jet::Error& error) {
            tell(error);
            return;
        }
        afterDelete();
    }
    tellNeighbours();
    if (!hasRecord())
        ShowModuleMode(u"Add"_s);
}

void frmJob::cancelStaged() {
    NoteStaging(core::MainDatabase(), jobRouting(), m_routing->documentNo()).cancel();
}

void frmJob::tellNeighbours() {
    core::refreshNeighbours({u"frmhistory"_s}, u"Job"_s);
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
    m_before = draft();
}

// Going to a record

void frmJob::cmdFind_Click() {
    const qint64 jobNo = Forms::dialog<estimating::FindDialog>(u"frmJobFind"_s)->askNumber();
    if (jobNo == 0)
        return;
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
        reopen(jobRows(activeOnly()), jobNo);
}

void frmJob::cmdGotoPart_Click() {
    const QString part = Forms::dialog<estimating::FindDialog>(u"frmJobFind"_s)->askPart();
    if (part.isEmpty())
        return;
    const qint64 jobNo = Forms::dialog<estimating::FoundDialog>(u"frmJobFound"_s)
                             ->pick(part, activeOnly() ? u" AND Shipped = False"_s : QString());
    if (jobNo != 0 && !goToRecord(jobNo))
        reopen(jobRows(activeOnly()), jobNo);
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

void frmJob::cmdAssembly_Click() {
    if (!hasRecord())
        return;
    const JobHeader header = draft().header;
    Forms::dialog<estimating::AssemblyTree>(u"frmAssemblyInfo"_s)
        ->showTree(header.custId, header.poNo, currentKey(), u"Job"_s);
}

} // namespace jobs
