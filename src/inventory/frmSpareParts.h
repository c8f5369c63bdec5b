#pragma once

#include "core/records/RecordScreen.h"
#include "inventory/SpareDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

class QGroupBox;
class QRadioButton;

namespace inventory {

/// The goods that are kept for a customer, at all his locations or at one. What has lain too long
/// is red.
class frmSpareParts : public screen::Form,
                      public core::RecordScreen,
                      public core::LookupUser,
                      public SpareList {
  public:
    static constexpr char formName[] = "frmSpareParts";
    frmSpareParts();
    void Form_Load() override;
    QSize sizeHint() const override;

    QString mode() const override { return u"Browse"_s; }
    qint64 currentKey() const override;
    bool goToRecord(qint64 key) override;
    void refreshLookup(const QString& table) override;
    void showSpares(qint64 custId, const std::optional<QString>& location) override;

  private:
    QWidget* choice();
    void makeButtons(class QVBoxLayout* outside);
    void fillCustomers();
    void fillLocations();
    qint64 customer() const;
    /// The location that the list is narrowed to; nothing for all of them.
    std::optional<QString> shownLocation() const;
    void showList();
    void showStatus(int row);
    /// The selected records; empty after a message where there are none.
    std::vector<qint64> selected(const QString& complaint);
    void cmdEdit_Click();
    void cmdMove_Click();
    void cmdDelete_Click();
    void cmdFind_Click();
    void cmdPrintScr_Click();
    void cmdReportSelected_Click();

    controls::DataCombo* dbcCompID;
    QRadioButton *optCompany, *optBoth;
    controls::DataCombo* dbcLocation;
    controls::ListCombo* cboMonths;
    QGroupBox* fraMain;
    controls::Grid* sprMain;
    std::vector<SparePart> m_parts; ///< by the rows' keys less one
    qint64 m_customer = -1;
};

} // namespace inventory
