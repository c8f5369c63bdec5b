#pragma once

#include "masters/CompanyModule.h"

class QCheckBox;

namespace controls {
class MemoField;
} // namespace controls

namespace masters {

/// Vendors, and the contractors that outside operations go to.
class frmVendor : public CompanyModule {
  public:
    static constexpr const char* formName = "frmVendor";
    frmVendor();

    void cmdSendtoBill_Click();
    void Command3_Click();

  protected:
    /// Orders and requests hold a copy of the name, which follows.
    void alsoWrite(qint64 key, bool adding) override;
    bool mayDelete() override;
    void deleteRows(qint64 key) override;
    void tellNeighbours() override;

  private:
    void makeMainTab(QWidget* page);
    void makeBillTab(QWidget* page);
    void bindColumns();

    screen::AddressBlock m_bill;
    ContactFields m_billContact{};
    QCheckBox* chkCotr;
    controls::MemoField* txtVnote;
    controls::TextField *txtAltContact, *txtAltPhone;
};

} // namespace masters
