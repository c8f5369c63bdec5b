#include "estimating/frmEstimate.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/TablePopup.h"
#include "estimating/AssemblyTree.h"
#include "estimating/CreateJob.h"
#include "estimating/routing/FindForms.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QLabel>
#include <QPushButton>

namespace estimating {

using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using values::Currency;

namespace {

void tell(const jet::Error& error) {
    MsgBox(error.text(), Buttons::Ok, Icon::Critical);
}

QStringList column(const QString& select, const QString& name) {
    jet::Recordset set = core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    QStringList texts;
    for (; !set.eof(); set.moveNext()) {
        const QString text = set.text(name);
        if (!text.isEmpty())
            texts << text;
    }
    return texts;
}

/// Reads the set again after a statement on it was rolled back, without showing another row.
void readAgain(jet::Recordset& rows) {
    const jet::Value mark = rows.isEmpty() ? jet::Value() : rows.bookmark();
    rows.cancelUpdate();
    rows.requery();
    if (mark.isNull() || rows.isEmpty())
        return;
    try {
        rows.setBookmark(mark);
    } catch (const jet::Error&) {
        rows.moveLast();
    }
}

} // namespace

// Opening and showing

void frmEstimate::ShowModuleMode(const QString& mode) {
    RoutedModule::ShowModuleMode(mode);
    cmdCreateJob->setEnabled(isBrowse() && core::HasAccess(u"mnuFileJob"_s));
    cmdAssembly->setEnabled(isBrowse() && Forms::isKnown(u"frmAssemblyInfo"_s));
    if (isAdding())
        calcBoth();
}

void frmEstimate::lockFields(bool locked) {
    RoutedModule::lockFields(locked);
    txtNotes[2]->setLocked(locked);
    txtQtyBreak[0]->setLocked(true);
    txtQtyDiscount[0]->setLocked(true);
    cmdPartno->setEnabled(!locked);
    cmdRfqno->setEnabled(!locked);
}

void frmEstimate::clearFields() {
    RoutedModule::clearFields();
    txtNotes[2]->setText(QString());
    lblAssembly->clear();
    m_assemblyEstNo = 0;
    dbcJobsCreated->setItems({});
    dbcJobsCreated->setText(QString());
    m_routing->showRows(0, {}, {}, m_routing->oneShopRate());
    calcBoth();
}

void frmEstimate::newDefaults() {
    txtEstDate->setDate(values::today());
    const Currency rate =
        core::MainDatabase().lookup(u"SELECT estonerate FROM SystemSettings"_s).toCurrency();
    txtEstShopRate->setText(values::format(rate, u"###,##0.00"));
    txtQuantity->setText(u"0"_s);
    showBreaks({});
}

void frmEstimate::showBreaks(const EstimateHeader& header) {
    for (std::size_t i = 0; i < breakCount; ++i) {
        const PriceBreak& one = header.breaks[i];
        txtQtyBreak[i]->setText(values::format(one.quantity, u"#####0"));
        txtQtyDiscount[i]->setText(values::format(one.discount, u"##0.00"));
        fpQtyQP[i]->setAmount(one.quoted);
    }
}

void frmEstimate::showRecord() {
    const qint64 estNo = currentKey();
    const jet::Recordset& row = records();
    m_assemblyEstNo = row[u"AssemblyEstno"].toLong();
    showAssembly();
    txtNotes[2]->setText(
        rfqNotes(core::MainDatabase(), row[u"CustID"].toLong(), row.text(u"RFQNo")));
    m_routing->showRows(
        estNo,
        loadOperRows(core::MainDatabase(), estimateRouting(), estNo, core::shared().CurrencySymbol),
        loadMiscRows(core::MainDatabase(), estimateRouting(), estNo), row[u"OneShopRate"].toBool());
    calcBoth();
    showJobsCreated();
}

void frmEstimate::showAssembly() {
    const bool isParent = core::MainDatabase().hasRows(
        u"SELECT * FROM estimate WHERE assemblyestno="_s + QString::number(currentKey()));
    if (isParent)
        lblAssembly->setText(u"ASSY"_s);
    else
        lblAssembly->setText(m_assemblyEstNo == 0 ? QString() : QString::number(m_assemblyEstNo));
}

void frmEstimate::showJobsCreated() {
    const QStringList jobs = column(u"Select JobNo from Job Where EstNo = "_s +
                                        QString::number(currentKey()) + u" ORDER BY JobNo DESC"_s,
                                    u"JobNo"_s);
    dbcJobsCreated->setItems(jobs);
    dbcJobsCreated->setText(jobs.value(0));
}

// Costing

double frmEstimate::number(const controls::TextField* field) const {
    return values::val(field->text().remove(QLatin1Char(',')));
}

Currency frmEstimate::shopRate() const {
    return Currency::fromText(txtEstShopRate->text().remove(QLatin1Char(',')));
}

void frmEstimate::calcEstimate() {
    txtQtyBreak[0]->setText(txtQuantity->text());
    txtQtyDiscount[0]->setText(u"0"_s);
    std::array<double, breakCount> discounts{};
    for (std::size_t i = 0; i < breakCount; ++i)
        discounts[i] = number(txtQtyDiscount[i]);
    try {
        const EstimateCost cost =
            CalcEstimate(m_routing->operations(), m_routing->fixedCosts(), m_routing->oneShopRate(),
                         shopRate(), number(txtQtyBreak[0]), discounts);
        fpOutContr->setAmount(Currency::fromDouble(static_cast<double>(cost.outContr)));
        fpFixed->setAmount(Currency::fromDouble(static_cast<double>(cost.fixed)));
        for (std::size_t i = 0; i < breakCount; ++i)
            fpQtyPrice[i]->setAmount(Currency::fromDouble(cost.priceEach[i]));
    } catch (const values::Overflow&) {
        MsgBox(u"The cost is too large to be computed. Please check the times, "
               "amounts and rates."_s,
               Buttons::Ok, Icon::Exclamation);
    }
}

void frmEstimate::calcQuoteTotals() {
    std::array<double, breakCount> quoted{};
    std::array<double, breakCount> quantities{};
    for (std::size_t i = 0; i < breakCount; ++i) {
        quoted[i] = fpQtyQP[i]->amount().toDouble();
        quantities[i] = number(txtQtyBreak[i]);
    }
    try {
        const auto totals = CalcQuoteTotals(quoted, quantities);
        for (std::size_t i = 0; i < breakCount; ++i)
            fpQtyTotal[i]->setAmount(Currency::fromDouble(totals[i]));
    } catch (const values::Overflow&) {
        MsgBox(u"The quoted total is too large."_s, Buttons::Ok, Icon::Exclamation);
    }
}

void frmEstimate::calcBoth() {
    calcEstimate();
    calcQuoteTotals();
}

// Saving, cancelling, deleting

EstimateDraft frmEstimate::draft() const {
    EstimateDraft result;
    EstimateHeader& header = result.header;
    header.custId = lblCustID->text().toLongLong();
    header.rfqNo = txtRfqno->text().trimmed();
    header.description = txtDescription->text();
    header.partNo = txtPartno->text().trimmed();
    header.material = txtMaterial->text();
    header.quantity = values::cLng(number(txtQuantity));
    header.estDate = txtEstDate->date();
    header.shopRate = shopRate();
    header.oneShopRate = m_routing->oneShopRate();
    for (std::size_t i = 0; i < breakCount; ++i) {
        header.breaks[i] = {number(txtQtyBreak[i]), number(txtQtyDiscount[i]),
                            fpQtyPrice[i]->amount(), fpQtyQP[i]->amount(), fpQtyTotal[i]->amount()};
    }
    header.estNotes = txtNotes[0]->text();
    header.travelerNotes = txtNotes[1]->text();
    header.jobNotes = txtNotes[3]->text();
    header.assemblyEstNo = m_assemblyEstNo;
    result.rfqNotes = txtNotes[2]->text();
    result.operations = m_routing->operations();
    result.fixedCosts = m_routing->fixedCosts();
    return result;
}

bool frmEstimate::validate() {
    const auto complaint = checkDraft(draft());
    if (!complaint)
        return true;
    complain(complaint->text, control(complaint->field));
    return false;
}

void frmEstimate::cmdEdit_Click() {
    // Before the screen reads the estimate, so that no change slips in between.
    if (hasRecord())
        m_before.basis = costingBasis(core::MainDatabase(), currentKey());
    RoutedModule::cmdEdit_Click();
    m_before.header = draft().header;
}

bool frmEstimate::writeRecord(bool adding, qint64& key) {
    EstimateDraft current = draft();
    m_oldRfqNo = adding ? QString() : records().text(u"RFQNo");
    try {
        key = saveEstimate(core::MainDatabase(), records(), adding ? 0 : currentKey(), current,
                           adding ? nullptr : &m_before);
        return true;
    } catch (const jet::Error& error) {
        readAgain(records());
        tell(error);
    } catch (const ChangedElsewhere&) {
        readAgain(records());
        complain(u"What the prices of this estimate are made of has been changed at "
                 "another station since you opened it.\r\nPlease note what you "
                 "have entered, cancel, and edit the estimate again."_s,
                 control(u"sprOper"_s));
    }
    return false;
}

void frmEstimate::afterSave(qint64 key, bool adding) {
    const EstimateDraft saved = draft();
    try {
        saveRfqNotes(core::MainDatabase(), saved.header, m_oldRfqNo, saved.rfqNotes);
    } catch (const jet::Error& error) {
        tell(error);
    }
    try {
        NoteStaging(core::MainDatabase(), estimateRouting(), adding ? 0 : key)
            .adopt(key, static_cast<int>(saved.operations.size()));
    } catch (const jet::Error& error) {
        tell(error);
    }
    RoutedModule::afterSave(key, adding);
}

void frmEstimate::cancelStaged() {
    NoteStaging(core::MainDatabase(), estimateRouting(), m_routing->documentNo()).cancel();
}

void frmEstimate::tellNeighbours() {
    core::refreshNeighbours({u"frmhistory"_s}, u"Estimate"_s);
}

void frmEstimate::cmdDelete_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    if (!askDelete())
        return;
    const qint64 custId = records()[u"CustID"].toLong();
    const QString rfqNo = records().text(u"RFQNo");
    {
        const screen::BusyPointer busy;
        try {
            deleteEstimate(core::MainDatabase(), records(), currentKey());
        } catch (const jet::Error& error) {
            refreshLookup(u"Estimate"_s);
            tell(error);
            return;
        }
        try {
            dropUnusedRfqNotes(core::MainDatabase(), custId, rfqNo);
        } catch (const jet::Error& error) {
            tell(error);
        }
        afterDelete();
    }
    tellNeighbours();
    if (!hasRecord())
        ShowModuleMode(u"Add"_s);
}

// Going to a record

void frmEstimate::cmdFind_Click() {
    const qint64 estNo = Forms::dialog<FindDialog>(u"frmEstFind"_s)->askNumber();
    if (estNo == 0 || goToRecord(estNo))
        return;
    MsgBox(u"Estimate No. "_s + QString::number(estNo) + u" does not exist!"_s, Buttons::Ok,
           Icon::Information);
}

void frmEstimate::cmdGotoPart_Click() {
    const QString part = Forms::dialog<FindDialog>(u"frmEstFind"_s)->askPart();
    if (part.isEmpty())
        return;
    const qint64 estNo = Forms::dialog<FoundDialog>(u"frmEstFound"_s)->pick(part);
    if (estNo == 0 || goToRecord(estNo))
        return;
    // Another station added it after this set was read.
    reopen(estimateRows(), estNo);
}

void frmEstimate::cmdPartno_Click() {
    const QStringList parts =
        column(u"SELECT DISTINCT PartNo FROM Estimate ORDER BY PartNo"_s, u"PartNo"_s);
    const QString part =
        Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
            ->pick(u"Select Part No."_s, parts, u"There is no Part No. list to select from!"_s);
    if (!part.isEmpty())
        txtPartno->setText(part);
}

void frmEstimate::cmdRfqno_Click() {
    const QStringList numbers =
        column(u"SELECT DISTINCT RFQNo FROM Estimate WHERE CustID="_s +
                   QString::number(lblCustID->text().toLongLong()) + u"  ORDER BY RFQNo"_s,
               u"RFQNo"_s);
    const QString rfqNo =
        Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
            ->pick(u"Select RFQ No."_s, numbers, u"No RFQs for the selected Customer!"_s);
    if (rfqNo.isEmpty())
        return;
    txtRfqno->setText(rfqNo);
    txtRfqno_LostFocus();
}

void frmEstimate::txtRfqno_LostFocus() {
    if (isBrowse())
        return;
    const qint64 custId = lblCustID->text().toLongLong();
    const QString rfqNo = txtRfqno->text().trimmed();
    if (hasRfqNotes(core::MainDatabase(), custId, rfqNo))
        txtNotes[2]->setText(rfqNotes(core::MainDatabase(), custId, rfqNo));
}

// Handing over

void frmEstimate::cmdCreateJob_Click() {
    if (!isBrowse() || !hasRecord())
        return;
    const EstimateDraft current = draft();
    const EstimateForJob estimate{currentKey(), current.header, current.operations,
                                  current.fixedCosts};
    auto dialog = Forms::dialog<CreateJobDialog>(u"frmCreatJob"_s);
    if (dialog->createJob(estimate) != 0)
        showJobsCreated();
}

void frmEstimate::cmdAssembly_Click() {
    if (!hasRecord())
        return;
    const EstimateHeader header = draft().header;
    Forms::dialog<AssemblyTree>(u"frmAssemblyInfo"_s)
        ->showTree(header.custId, header.rfqNo, currentKey(), u"Estimate"_s);
}

void frmEstimate::cmdPrintBOM_Click() {
    if (!hasRecord())
        return;
    core::launchReportFile(u"estimate_bom.rpt"_s,
                           u"{estimate.estNo} = "_s + QString::number(currentKey()),
                           u"Estimate BOM Report"_s, this);
}

} // namespace estimating
