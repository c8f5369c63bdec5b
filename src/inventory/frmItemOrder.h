#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/Ordering.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"

#include <QHash>

class QGroupBox;
class QLabel;
class QRadioButton;

namespace inventory {

/// Puts an item on a new purchase order or on one that there is.
class frmItemOrder : public screen::Form, public OrderDialog {
  public:
    static constexpr char formName[] = "frmItemOrder";
    frmItemOrder();
    void order(qint64 itemId, qint64 quantity) override;

  private:
    /// What a line needs, for a new order and for one that there is.
    struct Line {
        QGroupBox* frame = nullptr;
        controls::TextField* txtQuantity = nullptr;
        controls::ListCombo* cboType = nullptr;
        controls::DataCombo* dbcNumber = nullptr;
        QLabel* lblNumber = nullptr;
    };
    void addLineFields(Line& line, screen::Fields& fields, const QString& behind);
    void fillLists();
    void option_Click();
    void cboType_Click(Line& line);
    void dbcPONo_Change();
    void cmdOK_Click();
    std::optional<StockOrder> ordered(const Line& line);
    bool refuse(bool missing, const QString& text, QWidget* field);
    void showOrder(qint64 poNumber);

    QLabel* lblItem;
    QRadioButton *Option1, *Option2;
    Line m_new, m_existing;
    controls::DataCombo* dbcVendor;
    controls::DateField* txtReqDate;
    controls::DataCombo* dbcPONo;
    QLabel* lblVendor;
    QHash<QString, QString> m_vendors; ///< by PO number
    Item m_item;
};

} // namespace inventory
