#pragma once

#include "estimating/CreateJob.h"
#include "estimating/EstimateStore.h"
#include "jobs/JobFromEstimate.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <vector>

class QCheckBox;

namespace jobs {

/// Asks for what a job adds to its estimate, makes the job and prints its traveler.
class frmCreatJob : public screen::Form, public estimating::CreateJobDialog {
  public:
    static constexpr char formName[] = "frmCreatJob";
    frmCreatJob();
    qint64 createJob(qint64 estNo) override;

  private:
    void showOffers();
    void cmbQuantity_Change();
    void chkPrintTraveler_Click();
    void cmdOK_Click();
    JobOrder order() const;

    controls::DataCombo* cmbQuantity;
    controls::TextField* txtQtyQP;
    controls::DateField* mskDate[2];
    controls::TextField* txtPONo;
    QCheckBox* chkOrderRequired;
    QCheckBox* chkNotes;
    QCheckBox* chkPrintTraveler;
    QCheckBox* chkPrintNotes;
    controls::MemoField* txtTrvNotes;
    controls::MemoField* txtJobNotes;
    std::vector<QWidget*> m_secured; ///< hidden from users who may not see money

    qint64 m_estNo = 0;
    estimating::EstimateHeader m_estimate; ///< as it is stored
    qint64 m_jobNo = 0;
};

} // namespace jobs
