#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/Grid.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace masters {

/// What the employee's screen says to the salary history.
class SalaryHistoryDialog {
  public:
    virtual ~SalaryHistoryDialog() = default;
    virtual void begin(qint64 empId) = 0;
};

/// What the salary history says to the dialogs that add and edit a row.
class SalaryRowDialog {
  public:
    virtual ~SalaryRowDialog() = default;
    /// `index` is the row's key; 0 for a new one. False (after a message) if the row has gone.
    virtual bool begin(qint64 empId, qint64 index) = 0;
};

/// An employee's salary history. Every change of it drives the pay on the employee's own row.
class frmEmpSalary : public screen::Form, public SalaryHistoryDialog {
  public:
    static constexpr const char* formName = "frmEmpSalary";
    frmEmpSalary();

    void begin(qint64 empId) override;
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();

  private:
    void showHistory();
    void showRow(const QString& dialog, qint64 index);
    qint64 selected() const; ///< key of the selected row; 0 if there is none

    controls::Grid* sprSalary;
    qint64 m_empId = 0;
};

/// frmSalaryAdd and frmSalaryEdit, which are alike but for one thing: the one for a new row
/// warns of a date before the last one of the history.
class SalaryForm : public screen::Form, public SalaryRowDialog {
  public:
    SalaryForm(const QString& formName, const QString& title);

    bool begin(qint64 empId, qint64 index) override;
    void cmdSave_Click();

  private:
    bool mayBeEarly(const QDate& date);
    void tellGone();

    controls::DateField* etxtDate;
    controls::TextField* txtAmount;
    controls::ListCombo* cboFrequency;
    qint64 m_empId = 0;
    qint64 m_index = 0;
};

} // namespace masters
