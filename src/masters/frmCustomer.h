#pragma once

#include "masters/AddressFields.h"
#include "masters/RecordModule.h"

namespace controls {
class MemoField;
class TextField;
} // namespace controls

class QTabWidget;

namespace masters {

/// Customers: whom the shop quotes to, bills and ships to.
class frmCustomer : public RecordModule {
  public:
    static constexpr const char* formName = "frmCustomer";
    frmCustomer();

    void refreshLookup(const QString& table) override;

    void cmdSendtoBill_Click();
    void cmdSendtoShip_Click();
    void Command3_Click();

  protected:
    void openLookups() override;
    void newDefaults() override;
    bool validate() override;
    void newRowColumns(jet::Recordset& row) override;
    void tellNeighbours() override;

  private:
    void makeMainTab(QWidget* page);
    void makeQuoteTab(QWidget* page);
    void makeInvoiceTab(QWidget* page);
    void bindColumns();
    void copyMainAddress(const AddressFields& to, const QString& question);

    QTabWidget* m_tabs;
    controls::DataCombo* dbcCustomer;
    controls::TextField* txtCustid;
    controls::TextField* txtCustomer;
    AddressFields m_main, m_bill, m_ship;
    controls::TextField *txtContact, *etxtPhone, *etxtFax, *txtEmail, *txtAttention;
    controls::TextField *txtShip, *txtFOB;
    controls::DataCombo* dbcTerms;
    controls::TextField *txtQHead, *txtValid;
    controls::MemoField *txtRemarks, *txtNotes;
    controls::TextField *txtInContact, *txtInAltContact, *txtInEmail;
    controls::TextField *txtInPhone, *txtInAltPhone, *txtInFax;
};

} // namespace masters
