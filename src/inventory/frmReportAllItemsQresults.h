#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/Grid.h"
#include "platform/jet/Recordset.h"
#include "platform/screen/Form.h"

class QGroupBox;

namespace controls {
class DataCombo;
}

namespace inventory {

/// The items that the query over stock found: a report of the catalogue prints all of them or those
/// that are selected, a double click goes to one in the explorer.
class frmReportAllItemsQresults : public screen::Form, public StockResults {
  public:
    static constexpr char formName[] = "frmReportAllItemsQresults";
    frmReportAllItemsQresults();
    void Form_Load() override;
    void showItems(const std::vector<ItemRow>& items) override;

  private:
    void openReports();
    void print(const std::vector<int>& rows, const QString& title, bool all);
    void cmdPrintScr_Click();
    void cmdPrintSel_Click();
    void cmdRedo_Click();
    void cmdCancel_Click();
    void goToRow(int row);

    QGroupBox* fraMain;
    controls::Grid* sprItemFound;
    controls::DataCombo* dbcReport;
    jet::Recordset m_reports;
    StockQuestion m_question;
    bool m_allItems = false; ///< that there are are shown
};

} // namespace inventory
