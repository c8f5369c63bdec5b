#pragma once

#include "inventory/SpareDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QGroupBox;

namespace inventory {

/// Changes where goods of a customer lie, how many they are, their prices and notes.
class frmSpareEdit : public screen::Form, public EditSpareDialog {
  public:
    static constexpr char formName[] = "frmSpareEdit";
    frmSpareEdit();
    bool edit(qint64 index) override;

  private:
    void cmdOK_Click();

    QGroupBox* fraEntry;
    controls::DataCombo* dbcLocation;
    controls::TextField* mskQty;
    controls::CurrencyField* txtSparePrice;
    controls::CurrencyField* txtSpareTotPrice;
    controls::DataCombo* dbcEmployee;
    controls::MemoField* txtNotes;
    std::vector<QWidget*> m_secured; ///< hidden from those who may not see money
    SparePart m_before;
    bool m_saved = false;
};

} // namespace inventory
