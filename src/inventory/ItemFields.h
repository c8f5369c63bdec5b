#pragma once

#include "inventory/Items.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"

class QCheckBox;

namespace inventory {

/// The fields of a stock item, for all dialogs that make one or change it.
class ItemFields {
  public:
    ItemFields(screen::Form& form, screen::Fields fields);

    void fillLists();
    /// What fillLists() opens, and show() of an item that is stored; to be expected by who opens
    /// others beside it.
    static std::vector<jet::WantedSet> selects(qint64 itemId);
    void show(const Item& item);
    void showFolder(const View& view, qint64 folder);
    /// What stands on the screen, over what was shown.
    Item typed() const;
    /// For the next new item: the folders and the manufacturer stay.
    void clearForNext();

    /// Whether the item may become one of the fixed cost items too.
    void offerFixedCost(bool offered);
    /// Adds it to them if that is wanted, after a question if there is one of its name.
    void addFixedCost(const Item& item) const;

    controls::TextField* txtDescription;
    controls::TextField* fpQuantity;

  private:
    void pickFolder(const View& view);
    void showPath(const View& view, qint64 folder, const std::vector<Folder>& path);

    controls::TextField* txtPartNumber;
    controls::DataCombo* cboMan;
    controls::DataCombo* dbcUnits;
    controls::CurrencyField* fpCost;
    controls::TextField* txtType;
    controls::TextField* txtLocation;
    QCheckBox* chkFlag;
    controls::TextField* txtFlagQuantity;
    QCheckBox* chkFixedCost;
    Item m_shown;
};

} // namespace inventory
