#pragma once

#include "platform/controls/Event.h"
#include "platform/jet/Recordset.h"

#include <QGroupBox>

class QLineEdit;
class QRadioButton;

namespace controls {
class DataCombo;
}

namespace scheduling {

/// What a chart is to show: an active job of a customer, or all of them on one of his purchase
/// orders. Reads nothing by itself: who has it answers its events.
class JobSelection : public QGroupBox {
  public:
    explicit JobSelection(QWidget* parent);

    /// Rows of Company and Custid.
    void setCustomers(const jet::Recordset& customers);
    /// Chooses a customer and lists his active jobs and their orders by these selects. One without
    /// active jobs isn't in the list, and leaves nothing chosen.
    void showCustomer(jet::Database& database, qint64 custId);
    static QStringList selects(qint64 custId);
    void chooseJob(qint64 jobNo);

    qint64 customer() const; ///< 0 for none
    qint64 jobNo() const;    ///< 0 for none
    QString order() const;
    bool byOrder() const;
    /// Whether there is a job, or an order where it goes by that.
    bool isChosen() const;

    controls::Event<qint64> customerChosen; ///< his jobs are to be listed
    controls::Event<> chosen;               ///< a job, an order, or which of both

  private:
    void arrange();

    controls::DataCombo* dbcCustomer;
    controls::DataCombo* dbcJobNo;
    controls::DataCombo* dbcJobPO;
    QLineEdit* txtCustomerNo;
    QRadioButton* optJobNo;
    QRadioButton* optJobPO;
};

} // namespace scheduling
