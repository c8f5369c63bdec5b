#pragma once

#include "accounting/SentDocuments.h"
#include "accounting/SentHistory.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

class QGroupBox;

namespace accounting {

/// What was sent to QuickBooks for an order; rows can be deleted here, which leaves QuickBooks as
/// it is. One window for invoices, one for payables.
class SentRecordForm : public screen::Form, public SentHistory {
  public:
    struct Kind {
        QString formName, caption;
        SentKind sent;
        QString deleteQuestion;
        QString deleteFrom; ///< up to the numbers
        QString report, reportTitle;
    };
    explicit SentRecordForm(Kind kind);

    void ShowHistory(const QString& order) override;
    void cmdDelete_Click();
    void cmdReport_Click();

  private:
    void reload();

    Kind m_kind;
    QString m_order;
    QGroupBox* Frame1;
    controls::ListView* sprSent;
};

} // namespace accounting
