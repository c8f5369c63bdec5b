#pragma once

#include "estimating/routing/RoutedModule.h"
#include "jobs/JobCosting.h"
#include "jobs/JobDialogs.h"
#include "jobs/JobStore.h"

#include <optional>
#include <vector>

class QCheckBox;
class QLabel;
class QRadioButton;
class QTabWidget;

namespace jobs {

/// The job module: header, routing with estimated and actual figures, and fixed costs of one job.
/// Routing and fixed costs are working copies until the save; operation notes and the schedule rows
/// of an edited job are staged in their tables.
class frmJob : public estimating::RoutedModule {
  public:
    static constexpr char formName[] = "frmJob";
    frmJob();
    QSize sizeHint() const override;

    void ShowModuleMode(const QString& mode) override;

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;
    void cmdFind_Click() override;
    void cmdGotoPart_Click();
    void cmdSchedule_Click();
    void cmdInvoice_Click();
    void cmdTraveler_Click();
    void cmdShippingHistory_Click();
    void cmdAssembly_Click();

  protected:
    QString mainSelect() const override;
    void newDefaults() override;
    void showRecord() override;
    void clearFields() override;
    bool validate() override;
    bool writeRecord(bool adding, qint64& key) override;
    void afterSave(qint64 key, bool adding) override;
    bool mayDelete() override;
    void showReadAgain() override;
    void cancelStaged() override;
    void tellNeighbours() override;

  private:
    // Layout
    QWidget* headerPane();
    QTabWidget* notePane();
    QWidget* figuresPane();
    QWidget* buttonPane();
    void bindFigure(const QString& column, QLabel* label, const QString& mask);
    void wire();

    // The three ways to begin a new job
    struct CarriedCustomer {
        QString custId;
        QString poNo;
    };
    void startFrom(const std::vector<estimating::ChosenOperation>& operations, const NewJob& how,
                   const CarriedCustomer& customer);
    void copyCurrent(const NewJob& how);
    void showCarried(const CarriedCustomer& customer);

    bool activeOnly() const;
    void optShow_Click();
    /// A view of active jobs that has become empty gives way to one of all.
    void leaveEmptyView();
    void chkShipped_Click();
    bool mayRemove(const estimating::OperRow& row);
    void showAssembly();
    void calcJob();
    void showRouted(const std::optional<JobFigures>& now);
    /// Nothing where they are too large to be computed.
    std::optional<JobFigures> figures() const;
    JobDraft draft() const;
    values::Currency amount(const QString& text) const;

    QLabel* lblJobNo = nullptr;
    QLabel* lblEstNo = nullptr;
    QLabel* lblAssembly = nullptr;
    controls::TextField* txtPONo = nullptr;
    controls::TextField* txtPartno = nullptr;
    controls::TextField* txtDescription = nullptr;
    controls::MemoField* txtMaterial = nullptr;
    controls::MemoField* txtTravelerNotes = nullptr;
    controls::MemoField* txtJobNotes = nullptr;
    controls::TextField* txtQuantity = nullptr;
    controls::TextField* txtJobShopRate = nullptr;
    controls::TextField* txtInvoiceEach = nullptr;
    controls::DateField* txtJobDateIn = nullptr;
    controls::DateField* txtJobDueDate = nullptr;
    controls::DateField* txtShipDate = nullptr;
    QCheckBox* chkSequential = nullptr;
    QCheckBox* chkShipped = nullptr;
    QLabel* lblQtyQuotedPrice = nullptr;
    QLabel* lblTotalHours = nullptr;
    QLabel* lblJobShopCost = nullptr;
    QLabel* lblInvoiceTotal = nullptr;
    QLabel* lblCalc_OutContr = nullptr;
    QLabel* lblCalc_Fixed = nullptr;
    QRadioButton* optShow[2] = {};
    QWidget* fraShow = nullptr;

    bool m_wasShipped = false;
    bool m_tooLarge = false; ///< the figures, and that has been told
    qint64 m_assemblyJobNo = 0;
    JobDraft m_before; ///< the job as it was when its editing began
};

} // namespace jobs
