#pragma once

#include "estimating/EstimateDialogs.h"
#include "estimating/EstimateStore.h"
#include "estimating/routing/RoutedModule.h"

#include <array>

class QTabWidget;

namespace estimating {

/// The estimate module: header, routing, fixed costs and five price breaks of one estimate. Routing
/// and fixed costs are working copies until the save; operation notes are staged in their table.
class frmEstimate : public RoutedModule {
  public:
    static constexpr char formName[] = "frmEstimate";
    frmEstimate();

    QSize sizeHint() const override;
    void ShowModuleMode(const QString& mode) override;

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;
    void cmdFind_Click() override;
    void cmdGotoPart_Click();
    void cmdPartno_Click();
    void cmdRfqno_Click();
    void cmdCreateJob_Click();
    void cmdAssembly_Click();
    void cmdPrintBOM_Click();

  protected:
    void newDefaults() override;
    void showRecord() override;
    void clearFields() override;
    void lockFields(bool locked) override;
    bool validate() override;
    bool writeRecord(bool adding, qint64& key) override;
    void afterSave(qint64 key, bool adding) override;
    void cancelStaged() override;
    void tellNeighbours() override;

  private:
    // Layout
    QWidget* headerPane();
    QTabWidget* notePane();
    QWidget* breakPane();
    QWidget* buttonPane();
    void wire();

    // The four ways to begin a new estimate
    struct CarriedCustomer {
        QString custId;
        QString company;
        QString rfqNo;
    };
    void startFrom(const std::vector<ChosenOperation>& operations, const NewEstimate& how,
                   const CarriedCustomer& customer);
    void copyCurrent(const NewEstimate& how);
    void copyJob(const NewEstimate& how, const CarriedCustomer& customer);
    void showCarried(const CarriedCustomer& customer, bool carry);

    void showBreaks(const EstimateHeader& header);
    void showAssembly();
    void showJobsCreated();
    void txtRfqno_LostFocus();
    void calcEstimate();
    void calcQuoteTotals();
    void calcBoth();
    EstimateDraft draft() const;
    values::Currency shopRate() const;
    double number(const controls::TextField* field) const;

    QLabel* lblEstno = nullptr;
    QLabel* lblAssembly = nullptr;
    controls::TextField* txtRfqno = nullptr;
    controls::TextField* txtPartno = nullptr;
    controls::TextField* txtDescription = nullptr;
    controls::MemoField* txtMaterial = nullptr;
    controls::TextField* txtQuantity = nullptr;
    controls::DateField* txtEstDate = nullptr;
    controls::TextField* txtEstShopRate = nullptr;
    controls::DataCombo* dbcJobsCreated = nullptr;
    std::array<controls::MemoField*, 4> txtNotes{}; ///< quote, traveler, RFQ, job
    std::array<controls::TextField*, breakCount> txtQtyBreak{};
    std::array<controls::TextField*, breakCount> txtQtyDiscount{};
    std::array<controls::CurrencyField*, breakCount> fpQtyPrice{};
    std::array<controls::CurrencyField*, breakCount> fpQtyQP{};
    std::array<controls::CurrencyField*, breakCount> fpQtyTotal{};
    controls::CurrencyField* fpOutContr = nullptr;
    controls::CurrencyField* fpFixed = nullptr;
    QPushButton* cmdPartno = nullptr;
    QPushButton* cmdRfqno = nullptr;
    QPushButton* cmdCreateJob = nullptr;
    QPushButton* cmdAssembly = nullptr;

    qint64 m_assemblyEstNo = 0;
    QString m_oldRfqNo; ///< the RFQ number before the save
    EstimateBefore m_before;
};

} // namespace estimating
