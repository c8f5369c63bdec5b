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
    cmdCreateJob->setEnabled(isBrowse() && core::HasAccess(QStringLiteral("mnuFileJob")));
    cmdAssembly->setEnabled(isBrowse() && Forms::isKnown(QStringLiteral("frmAssemblyInfo")));
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
    const Currency rate = core::MainDatabase()
                              .lookup(QStringLiteral("SELECT estonerate FROM SystemSettings"))
                              .toCurrency();
    txtEstShopRate->setText(values::format(rate, u"###,##0.00"));
    txtQuantity->setText(QStringLiteral("0"));
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
    const bool isParent =
        core::MainDatabase().hasRows(QStringLiteral("SELECT * FROM estimate WHERE assemblyestno=") +
                                     QString::number(currentKey()));
    if (isParent)
        lblAssembly->setText(QStringLiteral("ASSY"));
    else
        lblAssembly->setText(m_assemblyEstNo == 0 ? QString() : QString::number(m_assemblyEstNo));
}

void frmEstimate::showJobsCreated() {
    const QStringList jobs =
        column(QStringLiteral("Select JobNo from Job Where EstNo = ") +
                   QString::number(currentKey()) + QStringLiteral(" ORDER BY JobNo DESC"),
               QStringLiteral("JobNo"));
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
    txtQtyDiscount[0]->setText(QStringLiteral("0"));
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
        MsgBox(QStringLiteral("The cost is too large to be computed. Please check the times, "
                              "amounts and rates."),
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
        MsgBox(QStringLiteral("The quoted total is too large."), Buttons::Ok, Icon::Exclamation);
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
        complain(QStringLiteral("What the prices of this estimate are made of has been changed at "
                                "another station since you opened it.\r\nPlease note what you "
                                "have entered, cancel, and edit the estimate again."),
                 control(QStringLiteral("sprOper")));
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
    core::refreshNeighbours({QStringLiteral("frmhistory")}, QStringLiteral("Estimate"));
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
            refreshLookup(QStringLiteral("Estimate"));
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
        ShowModuleMode(QStringLiteral("Add"));
}

// Going to a record

void frmEstimate::cmdFind_Click() {
    const qint64 estNo = Forms::dialog<FindDialog>(QStringLiteral("frmEstFind"))->askNumber();
    if (estNo == 0 || goToRecord(estNo))
        return;
    MsgBox(QStringLiteral("Estimate No. ") + QString::number(estNo) +
               QStringLiteral(" does not exist!"),
           Buttons::Ok, Icon::Information);
}

void frmEstimate::cmdGotoPart_Click() {
    const QString part = Forms::dialog<FindDialog>(QStringLiteral("frmEstFind"))->askPart();
    if (part.isEmpty())
        return;
    const qint64 estNo = Forms::dialog<FoundDialog>(QStringLiteral("frmEstFound"))->pick(part);
    if (estNo == 0 || goToRecord(estNo))
        return;
    // Another station added it after this set was read.
    reopen(estimateRows(), estNo);
}

void frmEstimate::cmdPartno_Click() {
    const QStringList parts =
        column(QStringLiteral("SELECT DISTINCT PartNo FROM Estimate ORDER BY PartNo"),
               QStringLiteral("PartNo"));
    const QString part = Forms::dialog<core::TablePopup>(QStringLiteral("frmTblPopup"))
                             ->pick(QStringLiteral("Select Part No."), parts,
                                    QStringLiteral("There is no Part No. list to select from!"));
    if (!part.isEmpty())
        txtPartno->setText(part);
}

void frmEstimate::cmdRfqno_Click() {
    const QStringList numbers = column(
        QStringLiteral("SELECT DISTINCT RFQNo FROM Estimate WHERE CustID=") +
            QString::number(lblCustID->text().toLongLong()) + QStringLiteral("  ORDER BY RFQNo"),
        QStringLiteral("RFQNo"));
    const QString rfqNo = Forms::dialog<core::TablePopup>(QStringLiteral("frmTblPopup"))
                              ->pick(QStringLiteral("Select RFQ No."), numbers,
                                     QStringLiteral("No RFQs for the selected Customer!"));
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
    auto dialog = Forms::dialog<CreateJobDialog>(QStringLiteral("frmCreatJob"));
    if (dialog->createJob(estimate) != 0)
        showJobsCreated();
}

void frmEstimate::cmdAssembly_Click() {
    if (!hasRecord())
        return;
    const EstimateHeader header = draft().header;
    Forms::dialog<AssemblyTree>(QStringLiteral("frmAssemblyInfo"))
        ->showTree(header.custId, header.rfqNo, currentKey(), QStringLiteral("Estimate"));
}

void frmEstimate::cmdPrintBOM_Click() {
    if (!hasRecord())
        return;
    core::launchReportFile(QStringLiteral("estimate_bom.rpt"),
                           QStringLiteral("{estimate.estNo} = ") + QString::number(currentKey()),
                           QStringLiteral("Estimate BOM Report"), this);
}

} // namespace estimating
