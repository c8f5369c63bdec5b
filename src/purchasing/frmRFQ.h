#pragma once

#include "purchasing/OrderModule.h"
#include "purchasing/RfqStore.h"

namespace purchasing {

/// Requests for quotation: a group with its header, and the request to one of its vendors at a
/// time. Groups and vendors are written when they are made; what Cancel and Close take back of them
/// depends on how the entry began.
class frmRFQ : public OrderModule, public core::PartScreen {
  public:
    static constexpr char formName[] = "frmRFQ";
    frmRFQ();

    void ShowModuleMode(Mode mode) override;
    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;
    void cmdCreatePO_Click();
    void cmdMatrix_Click();
    void cmdSendAll_Click();

    /// The request to one of the vendors of the group, by its key.
    bool goToPart(const QString& key) override;
    /// The key of the request that is shown, such as "12-7".
    QString requestKey() const { return m_key; }

  protected:
    void startAdding() override;
    void showParts() override;
    std::vector<OrderLine> storedLines() override;
    void clearFields() override;
    QStringList partsOf(qint64 key) const override;
    bool validate() override;
    std::optional<OrderDocument> load(qint64 key) override;
    core::SaveOutcome store(qint64 key, OrderDocument& document, const OrderDocument* before,
                            const QStringList& settled) override;
    void deleteDocument(qint64 key) override;
    void afterSave(qint64 key, bool adding) override;
    void cancelStaged() override;
    void closeStaged() override;
    void tellNeighbours() override;
    QJsonObject packedEntry() override;
    void takeEntry(const QJsonObject& entry) override;
    bool holdsEntry(const QJsonObject& entry, const jet::Recordset& row) override;
    bool goToEntry(const QJsonObject& entry) override;
    QString shownFormula() const override;
    bool askDeleteLine(const OrderLine& line) override;
    qint64 vendorNo() const override;

  private:
    QString formulaOf(const QString& key) const;
    void newGroup();
    void newGroupCopy();
    void newVendor(bool carryLines);
    void showRequest(const jet::Recordset& row, const QString& lines);
    bool isOfGroup(qint64 group) const;
    void sprVendor_Click(int row);

    controls::Grid* sprVendor;
    controls::TextField* txtRFQNum = nullptr;
    controls::TextField* txtVID = nullptr;
    QString m_key;
    Begun m_begun = Begun::No;
    bool m_filling = false;
};

} // namespace purchasing
