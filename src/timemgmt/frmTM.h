#pragma once

#include "core/records/RecordScreen.h"
#include "platform/controls/DateField.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"
#include "timemgmt/EmployeeChoice.h"
#include "timemgmt/TimeDialogs.h"
#include "timemgmt/TimeList.h"

#include <memory>

class QCheckBox;
class QGroupBox;
class QRadioButton;
class QTabWidget;

namespace timemgmt {

/// The office's window on the time records: of one employee and some days the work on one page and
/// the attendance on the other, with their corrections, deletion and reports.
class frmTM : public screen::Form, public TimeScreen, public core::LookupUser {
  public:
    static constexpr char formName[] = "frmTM";
    frmTM();

    void Form_Load() override;
    void Form_Activate() override;
    bool opensMaximized() const override { return true; }
    void showRecord(qint64 empId, const QDate& day, TimePage page, qint64 id) override;
    void refreshLookup(const QString& table) override;

  private:
    void makeCriteria(QGroupBox* frame);
    void makePages();
    void makeButtons();
    void fillEmployees();

    /// What the fields ask for; nothing after a message.
    std::optional<TimeCriteria> criteria();
    void chkShow_Click();
    void criteriaChanged();
    void showNothing();
    void load(const TimeCriteria& wanted);
    void showRows(jet::Recordset& work, jet::Recordset& attendance);
    void reload();
    bool isShown() const;
    TimePage page() const;
    controls::ListView* list() const;
    void enableButtons();

    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdEditParts_Click();
    void cmdDelete_Click();
    void cmdPrintAll_Click();
    void cmdPrintScr_Click();

    std::unique_ptr<EmployeeChoice> m_employee;
    QGroupBox* fraMain;
    QRadioButton* optDisplay[2];
    controls::DateField* dbcDate1;
    QCheckBox* chkTO;
    controls::DateField* dbcDate2;
    controls::ListCombo* cboCanned;
    controls::ListCombo* cboType;
    QPushButton* chkShow;
    QTabWidget* tab1;
    controls::ListView* sprMain;
    controls::ListView* sprMain2;
    QPushButton* cmdNew;
    QPushButton* cmdEdit;
    QPushButton* cmdEditParts;
    QPushButton* cmdDelete;
    QPushButton* cmdPrintScr;
    std::optional<TimeCriteria> m_shown; ///< what the pages show
    bool m_setting = false;              ///< the program fills the criteria
};

} // namespace timemgmt
