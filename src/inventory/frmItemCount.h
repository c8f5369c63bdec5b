#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/StockCount.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/LineGrid.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QLabel;

namespace inventory {

/// A count of what lies at a location: the sheet is printed, the counted quantities are typed in,
/// and the differences are posted together.
class frmItemCount : public screen::Form, public CountScreen {
  public:
    static constexpr char formName[] = "frmItemCount";
    frmItemCount();
    void Form_Load() override;
    bool Form_QueryUnload() override;
    bool countAt(qint64 location) override;
    QSize sizeHint() const override;

  private:
    void pickLocation();
    void read(qint64 location);
    void showSum();
    bool hasCounts() const;
    void cmdPrint_Click();
    void cmdPost_Click();
    /// False after a message; nothing is written then.
    bool post();
    /// Shows what the stock of these is now, and says so.
    void tellChanged(const std::vector<CountChange>& changed);

    controls::TextField* txtLocation;
    controls::DataCombo* dbcEmployee;
    controls::DateField* txtDate;
    QLabel* lblSum;
    std::shared_ptr<controls::LineModel<CountLine>> m_lines =
        std::make_shared<controls::LineModel<CountLine>>();
    controls::LineGrid<CountLine>* sprCount;
    qint64 m_location = 0;
    std::vector<qint64> m_folders;
};

} // namespace inventory
