#pragma once

#include "purchasing/OrderModule.h"
#include "purchasing/PoStore.h"

class QCheckBox;
class QLabel;

namespace purchasing {

/// Purchase orders: each to one vendor, with what of its lines was ordered and received. A new
/// order has no rows before it is saved.
class frmPO : public OrderModule {
  public:
    static constexpr char formName[] = "frmPO";
    frmPO();

    void ShowModuleMode(Mode mode) override;
    void cmdNew_Click() override;
    void cmdHistory_Click();
    void cmdAP_Click();

  protected:
    bool mayOpen() override;
    QStringList lookups() const override;
    void openLookups() override;
    QStringList partsOf(qint64 key) const override;
    std::vector<jet::WantedSet> storedParts(qint64 key) const override;
    void readStored(qint64 key) override;
    void newDefaults() override;
    void showRecord() override;
    void clearFields() override;
    void lockFields(bool locked) override;
    bool validate() override;
    bool writeRecord(bool adding, qint64& key) override;
    void newRowColumns(jet::Recordset& row) override;
    void alsoWrite(qint64 key, bool adding) override;
    void afterSave(qint64 key, bool adding) override;
    void deleteRows(qint64 key) override;
    void tellNeighbours() override;
    QString shownFormula() const override;
    bool askDeleteLine(const OrderLine& line) override;
    qint64 vendorNo() const override;

  private:
    void newFromTemplate();
    void dbcVend_Change();
    void showStoredLines();
    void ActiveDetect(qint64 key);

    controls::DataCombo* dbcVend = nullptr;
    QLabel* lblVnum = nullptr;
    QCheckBox* chkActive = nullptr;
    bool m_hasVendor = false;     ///< the order on the screen
    Received m_received;          ///< as a save found it
    std::vector<qint64> m_stored; ///< IDs of the lines that the screen was opened with
};

} // namespace purchasing
