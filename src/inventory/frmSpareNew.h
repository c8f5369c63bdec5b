#pragma once

#include "inventory/SpareDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace inventory {

/// Adds goods that are kept for a customer, mostly of one of his jobs.
class frmSpareNew : public screen::AddEditForm, public NewSpareDialog {
  public:
    static constexpr char formName[] = "frmSpareNew";
    frmSpareNew();
    void add(qint64 custId, const QString& location) override;

  protected:
    bool save() override;
    void startNext() override;

  private:
    void customerChosen();
    void jobChosen();
    void clearGoods();
    SparePart typed() const;

    controls::DataCombo* dbcCompID;
    controls::DataCombo* dbcLocation;
    controls::DataCombo* dbcJob;
    controls::TextField* txtJQty;
    controls::TextField* txtSpareQty;
    controls::TextField* txtPart;
    controls::TextField* txtPO;
    controls::CurrencyField* txtSparePrice;
    controls::CurrencyField* txtSpareTotPrice;
    controls::DataCombo* dbcEmployee;
    controls::DateField* txtDate;
    controls::MemoField* txtNotes;
    std::vector<QWidget*> m_secured; ///< hidden from those who may not see money
    QString m_customer, m_job;
};

} // namespace inventory
