#pragma once

#include "platform/screen/AddEditForm.h"
#include "timemgmt/EmployeeChoice.h"
#include "timemgmt/TimeDialogs.h"
#include "timemgmt/TimeEntry.h"

#include <memory>

class QCheckBox;
class QLabel;

namespace controls {
class TextField;
}

namespace timemgmt {

/// Hours put on an operation by hand, of a job or overhead, on a day on which the employee signed
/// in.
class frmNewTime : public screen::AddEditForm, public NewTimeDialog {
  public:
    static constexpr char formName[] = "frmNewTime";
    frmNewTime();
    void Form_Load() override;
    bool ShowForm(qint64 empId) override;

  private:
    void refreshLists();
    void employeeSettled();
    void jobSettled();
    void chkOver_Click();
    void operationChosen(const controls::DataCombo& from, controls::DataCombo& to);
    void fillOperations(jet::Recordset byNumber, const jet::Recordset& byName);
    void clearOperations();

    std::optional<screen::Complaint> validate() const;
    bool save() override;
    void startNext() override;

    std::unique_ptr<EmployeeChoice> m_employee;
    controls::DataCombo* dbcJobNo;
    QCheckBox* chkOver;
    controls::DataCombo* dbcOp;
    controls::DataCombo* dbcOpName;
    QLabel* lblType;
    controls::DataCombo* dbcDate;
    controls::TextField* txtAccum;
    qint64 m_datesOf = 0;            ///< the employee whose sign-ins are listed
    QString m_operationsOf;          ///< the job, as typed, whose operations are listed
    bool m_jobFound = false;         ///< there is that job
    QHash<QString, QString> m_types; ///< of the listed operations
    bool m_following = false;
};

} // namespace timemgmt
