#pragma once

#include "core/MemoryScreen.h"
#include "estimating/EstimateDialogs.h"
#include "estimating/EstimateStore.h"
#include "estimating/memory/MemoryBeside.h"
#include "estimating/routing/RoutedModule.h"

#include <array>

class QTabWidget;

namespace estimating {

/// The estimate module: header, routing, fixed costs and five price breaks of one estimate. Routing
/// and fixed costs are working copies until the save; operation notes are staged in their table.
class frmEstimate : public RoutedDocument<EstimateDraft, EstimateHeader>,
                    public core::MemoryScreen {
  public:
    static constexpr char formName[] = "frmEstimate";
    frmEstimate();

    QSize sizeHint() const override;
    void Form_Activate() override;
    void ShowModuleMode(Mode mode) override;
    void showMemory() override;

    void cmdNew_Click() override;
    void cmdFind_Click() override;
    void cmdGotoPart_Click();
    void cmdPartno_Click();
    void cmdRfqno_Click();
    void cmdCreateJob_Click();
    void cmdPrintBOM_Click();

  protected:
    void newDefaults() override;
    QStringList partsOf(qint64 key) const override;
    void takeRecord(const jet::Recordset* row) override;
    void lockFields(bool locked) override;
    bool validate() override;
    std::optional<EstimateDraft> load(qint64 estNo) override;
    SaveOutcome store(qint64 estNo, EstimateDraft& draft, const EstimateDraft* before,
                      const QStringList& settled) override;
    void deleteDocument(qint64 estNo) override;
    QJsonObject packedEntry() override;
    void takeEntry(const QJsonObject& entry) override;
    std::vector<core::EntryPart> entryParts() override;
    void restorePart(const QString& key, const jet::Value& value) override;
    bool holdsEntry(const QJsonObject& entry, const jet::Recordset& row) override;
    void reckon() override;
    void customerTaken() override { txtRfqno_LostFocus(); }

  private:
    // Layout
    void makeHead(QBoxLayout* across);
    QTabWidget* notePane();
    QWidget* breakPane();
    QWidget* buttonPane();
    void wire();

    void copyCurrent(const NewEstimate& how);
    void copyJob(const NewEstimate& how, const Carried& customer);

    void showJobsCreated();
    void txtRfqno_LostFocus();
    RfqPair pair();
    QJsonObject packedRfqNotes();
    void takeRfqNotes(const QJsonObject& notes);
    MemoryShown forMemory();

    controls::TextField* txtRfqno = nullptr;
    controls::TextField* txtPartno = nullptr;
    controls::TextField* txtQuantity = nullptr;
    controls::TextField* txtEstShopRate = nullptr;
    controls::DataCombo* dbcJobsCreated = nullptr;
    std::array<controls::MemoField*, 4> txtNotes{}; ///< quote, traveler, RFQ, job
    std::array<controls::TextField*, breakCount> txtQtyBreak{};
    std::array<controls::TextField*, breakCount> txtQtyDiscount{};
    std::array<controls::CurrencyField*, breakCount> fpQtyQP{};
    controls::CurrencyField* fpOutContr = nullptr;
    controls::CurrencyField* fpFixed = nullptr;
    QPushButton* cmdPartno = nullptr;
    QPushButton* cmdRfqno = nullptr;
    QPushButton* cmdCreateJob = nullptr;
    QPushButton* cmdAssembly = nullptr;

    RfqNotesField m_rfqNotes;
    MemoryBeside m_memory;
};

} // namespace estimating
