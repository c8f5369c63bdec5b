#pragma once

#include "accounting/SendForm.h"

class QRadioButton;

namespace accounting {

/// Turns the jobs of a customer's purchase order into an invoice of QuickBooks.
class frmInvoice : public SendForm {
  public:
    static constexpr char formName[] = "frmInvoice";
    frmInvoice();

    void Option1_Click();

  protected:
    void buildOptions(QBoxLayout* inside) override;
    void buildReports(screen::ButtonBar& bar) override;
    bool mayOpen() override;
    QString partnersSelect() const override;
    QStringList linesSelects(const QString& partner, const QString& order) const override;
    jet::Recordset orders(const QString& partner) override;
    std::vector<Sendable> fillLines(const QString& partner, const QString& order) override;
    bool isChosen() override;
    std::optional<Message> message() override;
    QString termsFirst() const override { return m_customer.value(u"terms"_s); }
    bool addPartner() override;
    QString totals() const override;
    bool isLineRight(const DocumentLine& line, bool optional) const override;

  private:
    bool onlyActive() const;
    QString jobsSql(const QString& partner, const QString& order, bool active) const;

    QRadioButton* Option1[2] = {};
    FieldTexts m_customer; ///< of the message under way
    double m_ordered = 0, m_shipped = 0;
};

} // namespace accounting
