#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

class QCheckBox;

namespace inventory {

/// A new stock item, or one to be changed. A quantity that is typed here corrects the stock without
/// a row in its history.
class frmItemNewEdit : public screen::AddEditForm, public ItemDialog {
  public:
    static constexpr char formName[] = "frmItemNewEdit";
    frmItemNewEdit();
    void add(const View& view, qint64 folder) override;
    bool edit(qint64 itemId) override;

  protected:
    bool save() override;
    void startNext() override;

  private:
    void fillLists();
    void show(const Item& item);
    void showFolder(const View& view, qint64 folder);
    void pickFolder(const View& view);
    Item typed() const;
    bool write(const Item& item);
    void addFixedCost(const Item& item);

    controls::TextField* txtDescription;
    controls::TextField* txtPartNumber;
    controls::DataCombo* cboMan;
    controls::DataCombo* dbcUnits;
    controls::TextField* fpQuantity;
    controls::CurrencyField* fpCost;
    controls::TextField* txtType;
    controls::TextField* txtLocation;
    QCheckBox* chkFlag;
    controls::TextField* txtFlagQuantity;
    QCheckBox* chkFixedCost;
    Item m_before; ///< as stored; id 0 for a new item
    qint64 m_type = 0, m_location = 0;
};

} // namespace inventory
