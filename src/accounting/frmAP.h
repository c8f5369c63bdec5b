#pragma once

#include "accounting/SendForm.h"
#include "purchasing/VendorPayables.h"

class QCheckBox;
class QRadioButton;

namespace controls {
class DateField;
}

namespace accounting {

/// Sends the received lines of a purchase order to QuickBooks as a bill.
class frmAP : public SendForm, public purchasing::VendorPayables {
  public:
    static constexpr char formName[] = "frmAP";
    frmAP();

    void showVendor(qint64 vendor) override;

  protected:
    void buildOptions(QBoxLayout* inside) override;
    void buildReports(screen::ButtonBar& bar) override;
    QString partnersSelect() const override;
    QStringList linesSelects(const QString& partner, const QString& order) const override;
    jet::Recordset orders(const QString& partner) override;
    std::vector<Sendable> fillLines(const QString& partner, const QString& order) override;
    bool isChosen() override;
    std::optional<Message> message() override;
    bool addPartner() override;
    QString totals() const override;
    void forgetDocument() override;
    bool isLineRight(const DocumentLine& line, bool optional) const override;

  private:
    void showDates();

    controls::TextField* txtInvoiceNum = nullptr;
    QCheckBox* Check1 = nullptr;
    controls::DateField* txtInvoiceDate = nullptr;
    QRadioButton *optDate = nullptr, *optTerm = nullptr;
    controls::DateField* txtBillDate = nullptr;
    double m_ordered = 0, m_received = 0;
};

} // namespace accounting
