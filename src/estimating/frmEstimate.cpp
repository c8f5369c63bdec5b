#include "estimating/frmEstimate.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/TablePopup.h"
#include "core/records/FindDialogs.h"
#include "estimating/CreateJob.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>

namespace estimating {

using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;
using values::Currency;

namespace {

const QString rfqNotesKey = u"rfqNotes"_s; // in the entry's history

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

QString jobsOf(qint64 estNo) {
    return u"Select JobNo from Job Where EstNo = "_s + QString::number(estNo) +
           u" ORDER BY JobNo DESC"_s;
}

} // namespace

// Opening and showing

QStringList frmEstimate::partsOf(qint64 key) const {
    return RoutedModule::partsOf(key) << rfqNotesSelect(key) << jobsOf(key);
}

void frmEstimate::ShowModuleMode(Mode mode) {
    RoutedModule::ShowModuleMode(mode);
    cmdCreateJob->setEnabled(isBrowse() && core::HasAccess(u"mnuFileJob"_s));
    cmdAssembly->setEnabled(isBrowse() && Forms::isKnown(u"frmAssemblyInfo"_s));
    if (isAdding())
        calculate();
    m_memory.followLater();
}

void frmEstimate::Form_Activate() {
    RoutedDocument::Form_Activate();
    m_memory.openIfWanted();
}

void frmEstimate::showMemory() {
    m_memory.open();
}

MemoryShown frmEstimate::forMemory() {
    const EstimateHeader& header = m_header.now();
    MemoryShown shown;
    shown.question = {currentKey(), header.partNo.trimmed(), {}, m_showDollar};
    for (const OperRow& row : m_routing->operations())
        shown.question.operations.push_back({row.operNo, row.description, row.inhouse});
    shown.quantity = static_cast<double>(header.quantity);
    shown.activeOper = m_routing->activeOperation();
    shown.isEntry = !isBrowse();
    return shown;
}

void frmEstimate::lockFields(bool locked) {
    RoutedModule::lockFields(locked);
    txtNotes[2]->setLocked(locked);
    cmdPartno->setEnabled(!locked);
    cmdRfqno->setEnabled(!locked);
}

void frmEstimate::takeRecord(const jet::Recordset* row) {
    RoutedModule::takeRecord(row);
    const auto stored =
        row ? rfqNotes(core::MainDatabase(), rfqNotesSelect(currentKey())) : std::nullopt;
    txtNotes[2]->setText(m_rfqNotes.show(pair(), stored));
    calculate();
    showJobsCreated();
}

void frmEstimate::newDefaults() {
    EstimateHeader fresh;
    fresh.estDate = values::today();
    fresh.shopRate =
        core::MainDatabase().lookup(u"SELECT estonerate FROM SystemSettings"_s).toCurrency();
    m_header.show(fresh);
    txtEstShopRate->setText(values::format(fresh.shopRate, u"###,##0.00"));
}

void frmEstimate::showJobsCreated() {
    const QStringList jobs =
        currentKey() == 0 ? QStringList() : column(jobsOf(currentKey()), u"JobNo"_s);
    dbcJobsCreated->setItems(jobs);
    dbcJobsCreated->setText(jobs.value(0));
}

// Costing

void frmEstimate::reckon() {
    EstimateHeader& header = m_header.now();
    const EstimateDraft rows = document();
    header.oneShopRate = rows.header.oneShopRate;
    const EstimateCost cost = reckonPrices(header, rows);
    reckonTotals(header);
    fpOutContr->setAmount(Currency::fromDouble(static_cast<double>(cost.outContr)));
    fpFixed->setAmount(Currency::fromDouble(static_cast<double>(cost.fixed)));
    for (const char16_t* stem : {u"QtyPrice", u"QtyTotal"}) {
        for (int i = 0; i < breakCount; ++i)
            m_header.show(QString::fromUtf16(stem) + QChar(u'A' + static_cast<char16_t>(i)));
    }
    m_header.show(u"QtyBreakA");
    txtQtyDiscount[0]->setText(u"0"_s);
    m_memory.followLater();
}

// Saving and deleting

bool frmEstimate::validate() {
    const auto complaint = checkDraft(document());
    if (!complaint)
        return true;
    complain(complaint->text, control(complaint->field));
    return false;
}

std::optional<EstimateDraft> frmEstimate::load(qint64 estNo) {
    return loadEstimate(core::MainDatabase(), estNo);
}

SaveOutcome frmEstimate::store(qint64 estNo, EstimateDraft& draft, const EstimateDraft* before,
                               const QStringList& settled) {
    txtRfqno_LostFocus();
    return saveEstimate(core::MainDatabase(), estNo, draft, before,
                        m_rfqNotes.entry(txtNotes[2]->text()), settled);
}

void frmEstimate::deleteDocument(qint64 estNo) {
    deleteEstimate(core::MainDatabase(), estNo);
}

// The draft: notes of the RFQ number stand in a table of their own

QJsonObject frmEstimate::packedRfqNotes() {
    const RfqNotesEntry notes = m_rfqNotes.entry(txtNotes[2]->text());
    return {{u"CustID"_s, m_rfqNotes.pair().custId},
            {u"RFQNo"_s, m_rfqNotes.pair().rfqNo},
            {u"shown"_s, notes.shown},
            {u"now"_s, notes.now}};
}

void frmEstimate::takeRfqNotes(const QJsonObject& notes) {
    m_rfqNotes.show({notes[u"CustID"_s].toInteger(), notes[u"RFQNo"_s].toString()},
                    notes[u"shown"_s].toString());
    txtNotes[2]->setText(notes[u"now"_s].toString());
}

QJsonObject frmEstimate::packedEntry() {
    QJsonObject entry = RoutedDocument::packedEntry();
    const QJsonObject notes = packedRfqNotes();
    if (notes[u"now"_s] != notes[u"shown"_s])
        entry[u"rfqNotes"_s] = notes;
    return entry;
}

void frmEstimate::takeEntry(const QJsonObject& entry) {
    RoutedDocument::takeEntry(entry);
    const QJsonObject notes = entry[u"rfqNotes"_s].toObject();
    if (notes.isEmpty())
        txtRfqno_LostFocus();
    else
        takeRfqNotes(notes);
}

std::vector<core::EntryPart> frmEstimate::entryParts() {
    std::vector<core::EntryPart> parts = RoutedDocument::entryParts();
    parts.push_back({rfqNotesKey,
                     jet::Value(QString::fromUtf8(
                         QJsonDocument(packedRfqNotes()).toJson(QJsonDocument::Compact))),
                     txtNotes[2]});
    return parts;
}

void frmEstimate::restorePart(const QString& key, const jet::Value& value) {
    if (key == rfqNotesKey)
        takeRfqNotes(QJsonDocument::fromJson(value.toText().toUtf8()).object());
    else
        RoutedDocument::restorePart(key, value);
}

bool frmEstimate::holdsEntry(const QJsonObject& entry, const jet::Recordset& row) {
    if (!RoutedDocument::holdsEntry(entry, row))
        return false;
    const QJsonObject notes = entry[u"rfqNotes"_s].toObject();
    return notes.isEmpty() ||
           rfqNotes(core::MainDatabase(), RfqPair{row[u"CustID"].toLong(), row.text(u"RFQNo")})
                   .value_or(QString()) == notes[u"now"_s].toString();
}

// Going to a record

void frmEstimate::cmdFind_Click() {
    const auto estNo = Forms::dialog<core::DocumentFindDialog>(u"frmEstFind"_s)->askNumber();
    if (!estNo || goToRecord(*estNo))
        return;
    MsgBox(u"Estimate No. "_s + QString::number(*estNo) + u" does not exist!"_s, Buttons::Ok,
           Icon::Information);
}

void frmEstimate::cmdGotoPart_Click() {
    if (const auto estNo = askByPart(u"frmEstFind"_s, u"frmEstFound"_s))
        goToRecord(*estNo);
}

void frmEstimate::cmdPartno_Click() {
    const QStringList parts =
        column(u"SELECT DISTINCT PartNo FROM Estimate ORDER BY PartNo"_s, u"PartNo"_s);
    const auto part =
        Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
            ->pick(u"Select Part No."_s, parts, u"There is no Part No. list to select from!"_s);
    if (part)
        txtPartno->setText(*part);
    m_memory.followLater();
}

void frmEstimate::cmdRfqno_Click() {
    const QStringList numbers =
        column(u"SELECT DISTINCT RFQNo FROM Estimate WHERE CustID="_s +
                   QString::number(m_header.now().custId) + u"  ORDER BY RFQNo"_s,
               u"RFQNo"_s);
    const auto rfqNo =
        Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
            ->pick(u"Select RFQ No."_s, numbers, u"No RFQs for the selected Customer!"_s);
    if (!rfqNo)
        return;
    txtRfqno->setText(*rfqNo);
    txtRfqno_LostFocus();
}

RfqPair frmEstimate::pair() {
    const EstimateHeader header = document().header;
    return {header.custId, header.rfqNo};
}

void frmEstimate::txtRfqno_LostFocus() {
    if (isBrowse() || !m_rfqNotes.isOther(pair()))
        return;
    const auto text =
        m_rfqNotes.enter(pair(), rfqNotes(core::MainDatabase(), pair()), txtNotes[2]->text());
    if (text)
        txtNotes[2]->setText(*text);
}

// Handing over

void frmEstimate::cmdCreateJob_Click() {
    if (!isBrowse() || !hasRecord())
        return;
    auto dialog = Forms::dialog<CreateJobDialog>(u"frmCreatJob"_s);
    if (dialog->createJob(currentKey()) != 0)
        showJobsCreated();
}

void frmEstimate::cmdPrintBOM_Click() {
    if (!hasRecord())
        return;
    core::launchReportFile(u"estimate_bom.rpt"_s,
                           u"{estimate.estNo} = "_s + QString::number(currentKey()),
                           u"Estimate BOM Report"_s, this);
}

} // namespace estimating
