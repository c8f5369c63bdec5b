#pragma once

#include "masters/AddressFields.h"
#include "masters/RecordModule.h"

class QCheckBox;
class QTabWidget;

namespace masters {

/// Vendors, and the contractors that outside operations go to.
class frmVendor : public RecordModule {
  public:
    static constexpr const char* formName = "frmVendor";
    frmVendor();

    void refreshLookup(const QString& table) override;

    void cmdSendtoBill_Click();
    void Command3_Click();

  protected:
    void openLookups() override;
    void newDefaults() override;
    bool validate() override;
    void newRowColumns(jet::Recordset& row) override;
    /// Orders and requests hold a copy of the name, which follows.
    void alsoWrite(qint64 key, bool adding) override;
    bool mayDelete() override;
    void deleteRows(qint64 key) override;
    void tellNeighbours() override;

  private:
    void makeMainTab(QWidget* page);
    void makeBillTab(QWidget* page);
    void bindColumns();

    QTabWidget* m_tabs;
    controls::DataCombo* dbcVendor;
    controls::TextField *txtVendID, *txtVendor;
    AddressFields m_main, m_bill;
    controls::TextField *txtContact, *etxtPhone, *etxtFax, *txtEmail;
    controls::TextField *txtAttention, *txtShip, *txtFOB;
    controls::DataCombo* txtTerms;
    QCheckBox* chkCotr;
    controls::MemoField* txtVnote;
    controls::TextField *txtBillContact, *txtBillPhone, *txtBillFax, *txtBillEmail;
    controls::TextField *txtAltContact, *txtAltPhone;
};

} // namespace masters
