#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"
#include "timemgmt/payroll/PayrollHours.h"

class QLabel;
class QPushButton;

namespace timemgmt {

/// The hours to be paid, from attendance, by employee and day or week between two dates.
class frmPayrollHours : public screen::Form {
  public:
    static constexpr char formName[] = "frmPayrollHours";
    frmPayrollHours();
    void Form_Load() override;
    bool opensMaximized() const override { return true; }

    void cmdShow_Click();
    void cmdPrint_Click();

  private:
    void makeCriteria(QBoxLayout* inside);
    void makeTotals(QBoxLayout* inside);
    /// Reads what the criteria ask for; false after a complaint.
    bool read();
    void showLines();

    controls::DateField* datFrom;
    controls::DateField* datTo;
    controls::DataCombo* dbcEmployee;
    controls::ListCombo* cboBy;
    QPushButton* cmdShow;
    QPushButton* cmdPrint;
    controls::ListView* lvwHours;
    QLabel* lblPresent;
    QLabel* lblOutside;
    QLabel* lblBreaks;
    QLabel* lblPaid;
    QLabel* lblOpen;
    std::vector<PayrollLine> m_days;
};

} // namespace timemgmt
