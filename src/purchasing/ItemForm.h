#pragma once

#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "purchasing/Dialogs.h"

class QLabel;

namespace purchasing {

/// The dialog for one line of a request or an order; four of that family are registered, two to add
/// a line and two to edit one.
class ItemForm : public screen::Form, public ItemDialog {
  public:
    ItemForm(const QString& name, const QString& caption, const OrderKind& kind);
    std::optional<OrderLine> edit(const OrderLine& line, qint64 vendor) override;

    void cmdOK_Click();
    void cmdPartno_Click();
    void cboType_Click();

  private:
    void fillLists();
    void showTotal();
    OrderLine typed() const;
    /// One of several texts that were used with the part: what the user picks, which may be made
    /// the common one. `label` is what is asked for.
    void takeUsed(const QString& column, const QString& what, controls::Field* into);

    const OrderKind& m_kind;
    qint64 m_vendor = 0;
    OrderLine m_line;
    bool m_ok = false;
    controls::TextField* txtPartNumber;
    controls::TextField* txtDescription;
    controls::DataCombo* cboMan;
    controls::TextField* txtQty;
    controls::CurrencyField* txtPrice;
    controls::DataCombo* dbcUnits;
    controls::ListCombo* cboType;
    QLabel* lblNumber;
    controls::DataCombo* dbcNumber;
    controls::MemoField* txtDelivery;
    controls::MemoField* txtNotes;
    controls::TextField* txtTot;
};

} // namespace purchasing
