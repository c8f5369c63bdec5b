#pragma once

#include "masters/CompanyModule.h"

namespace controls {
class MemoField;
} // namespace controls

namespace masters {

/// Customers: whom the shop quotes to, bills and ships to.
class frmCustomer : public CompanyModule {
  public:
    static constexpr const char* formName = "frmCustomer";
    frmCustomer();

    void cmdSendtoBill_Click();
    void cmdSendtoShip_Click();
    void Command3_Click();

  protected:
    void newDefaults() override;
    void tellNeighbours() override;

  private:
    void makeMainTab(QWidget* page);
    void makeQuoteTab(QWidget* page);
    void makeInvoiceTab(QWidget* page);
    void bindColumns();

    screen::AddressBlock m_bill, m_ship;
    ContactFields m_invoice{};
    controls::TextField *txtInAltContact, *txtInAltPhone;
    controls::TextField *txtQHead, *txtValid;
    controls::MemoField *txtRemarks, *txtNotes;
};

} // namespace masters
