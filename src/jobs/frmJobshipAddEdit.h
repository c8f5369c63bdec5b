#pragma once

#include "jobs/JobDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace jobs {

/// Adds or edits a consignment of a job.
class frmJobshipAddEdit : public screen::AddEditForm, public ShippingDialog {
  public:
    static constexpr char formName[] = "frmJobshipAddEdit";
    frmJobshipAddEdit();
    bool ShowForm(const QString& mode, qint64 jobNo, qint64 jobShipId) override;

  private:
    void txtQuantity_LostFocus();
    bool fillEmployees();
    bool showShipment();
    void tellMissing();
    void clearFields();
    bool save() override;
    void startNext() override;
    /// False if job, employee or consignment is gone; the user was told.
    bool write(const QDate& date, const QString& quantity, qint64 empId);

    controls::DateField* etShippedDate;
    controls::TextField* txtQuantity;
    controls::ListCombo* cboEmp;
    qint64 m_jobNo = 0;
    qint64 m_jobShipId = 0; ///< 0 for a new one
};

} // namespace jobs
