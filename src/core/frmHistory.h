#pragma once

#include "core/history/HistoryLists.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

class QGroupBox;
class QPushButton;

namespace core {

/// Everything that touched a customer, a part number or both: jobs, estimates, RFQ items and PO
/// items, each a way to its record and to reports.
class frmHistory : public screen::Form, public LookupUser {
  public:
    static constexpr const char* formName = "frmHistory";
    frmHistory();
    void Form_Load() override;
    /// Shows the lists again after another screen has saved or deleted.
    void refreshLookup(const QString& table) override;

  private:
    void dbcCustomer_Click();
    void cmdShow_Click();
    void cmdClear_Click();
    void cmdHistoryPrint_Click();
    void cmdPrint_Click();
    void grid_Click(int list);
    void grid_DblClick(int list, int row);

    void makeGrid(int list, QWidget* parent);
    void showLists();
    void fillGrid(int list);
    QString caption(int list) const;
    QString textOfCriteria() const;
    void goToRecord(int list, int row);

    struct Shown {
        QGroupBox* frame = nullptr;
        controls::Grid* grid = nullptr;
        std::vector<QString> keys; ///< by the number behind each row
    };
    controls::DataCombo* dbcCustomer;
    controls::DataCombo* dbcPart;
    controls::DataCombo* dbcReport;
    QPushButton* cmdPrint;
    std::array<Shown, 4> m_lists;
    HistoryCriteria m_criteria; ///< of what is shown
    QString m_customer;         ///< its name
    int m_active = -1;          ///< the list whose reports are offered
    bool m_showDollar = false;
};

} // namespace core
