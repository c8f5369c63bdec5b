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
class frmJob : public estimating::RoutedDocument<JobDraft, JobHeader> {
  public:
    static constexpr char formName[] = "frmJob";
    frmJob();
    QSize sizeHint() const override;

    void ShowModuleMode(Mode mode) override;

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdFind_Click() override;
    void cmdGotoPart_Click();
    void cmdSchedule_Click();
    void cmdInvoice_Click();
    void cmdTraveler_Click();
    void cmdShippingHistory_Click();

  protected:
    void newDefaults() override;
    void takeRecord(const jet::Recordset* row) override;
    bool validate() override;
    bool mayDelete() override;
    std::optional<JobDraft> load(qint64 jobNo) override;
    estimating::SaveOutcome store(qint64 jobNo, JobDraft& draft, const JobDraft* before,
                                  const QStringList& settled) override;
    void deleteDocument(qint64 jobNo) override;
    void reckon() override;
    void showNoFigures() override;

  private:
    // Layout
    void makeHead(QBoxLayout* across);
    QTabWidget* notePane();
    void makeFigures(QBoxLayout* across);
    QWidget* buttonPane();
    void wire();

    void copyCurrent(const NewJob& how);

    void chkShipped_Click();
    bool mayRemove(const estimating::OperRow& row);
    JobFigures figures();
    void showRouted(const JobFigures& now);

    controls::TextField* txtQuantity = nullptr;
    controls::TextField* txtJobShopRate = nullptr;
    controls::TextField* txtInvoiceEach = nullptr;
    controls::DateField* txtShipDate = nullptr;
    QCheckBox* chkShipped = nullptr;
    QLabel* lblTotalHours = nullptr;
    QLabel* lblJobShopCost = nullptr;
    QLabel* lblInvoiceTotal = nullptr;
    QLabel* lblCalc_OutContr = nullptr;
    QLabel* lblCalc_Fixed = nullptr;

    bool m_wasShipped = false;
};

} // namespace jobs
