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
    void newDefaults() override;
    void showParts() override;
    std::vector<OrderLine> storedLines() override;
    void lockFields(bool locked) override;
    bool validate() override;
    std::optional<OrderDocument> load(qint64 key) override;
    core::SaveOutcome store(qint64 key, OrderDocument& document, const OrderDocument* before,
                            const QStringList& settled) override;
    void afterSave(qint64 key, bool adding) override;
    void deleteDocument(qint64 key) override;
    void tellNeighbours() override;
    QStringList unboundEntries() const override { return {u"chkActive"_s}; }
    QString shownFormula() const override;
    bool askDeleteLine(const OrderLine& line) override;
    qint64 vendorNo() const override;

  private:
    void newFromTemplate();
    void dbcVend_Change();
    void ActiveDetect(qint64 key);

    controls::DataCombo* dbcVend = nullptr;
    QLabel* lblVnum = nullptr;
    QCheckBox* chkActive = nullptr;
};

} // namespace purchasing
