#pragma once

#include "core/records/RecordModule.h"
#include "masters/AddressLists.h"
#include "masters/EmployeeChecks.h"
#include "platform/values/Literals.h"

class QCheckBox;
class QTabWidget;

namespace masters {

/// Employees: who signs in on the floor, on what shift, at what pay. One who leaves becomes
/// "Terminated"; none is deleted.
class frmEmployee : public core::RecordModule {
  public:
    static constexpr const char* formName = "frmEmployee";
    frmEmployee();

    void refreshLookup(const QString& table) override;
    void ShowModuleMode(Mode mode) override;

    /// A status was typed or set: the rows in the order of their numbers.
    void cboDisplay_Change();
    /// A status was chosen from the list: the rows in the order of the names.
    void cboDisplay_Click();
    void txtPosition_Change();
    void cboStatus_Change();
    void cmdHistory_Click();

  protected:
    void openLookups() override;
    void newDefaults() override;
    /// The pay of a new employee has gone into his history.
    void showRecord() override;
    void clearFields() override;
    void lockFields(bool locked) override;
    bool validate() override;
    QStringList unboundEntries() const override {
        return isAdding() ? QStringList{u"txtNewSalary"_s, u"cboNewFreq"_s} : QStringList();
    }
    QString recordName() const override;
    void newRowColumns(jet::Recordset& row) override;
    void alsoWrite(qint64 key, bool adding) override;
    void tellNeighbours() override;
    void offerFirstRecord() override;

  private:
    void makeHead(QBoxLayout* inside);
    void makePersonalTab(QWidget* page);
    void makeEmploymentTab(QWidget* page);
    void bindColumns();
    void fillShifts(const jet::Recordset& shifts);
    void showStatus(bool byName);
    bool isAll() const;
    void tellNoRecords();

    QTabWidget* m_tabs;
    controls::DataCombo* cboDisplay;
    QString m_display = u"All"_s; ///< the status that the rows are of
    bool m_displayTyped = false;

    controls::DataCombo* dbcEmployee;
    controls::TextField *txtEmpid, *txtFirstName, *txtLastName, *etxtPhone;
    screen::AddressBlock m_address;
    controls::DataCombo* cboMarried;
    controls::MemoField* txtNotes;
    controls::TextField *mskSSN, *txtCSSN;
    controls::DateField* etxtBday;
    controls::DataCombo* txtPosition;
    controls::TextField* txtTitle;
    controls::ListCombo* cboStatus;
    QCheckBox *chkMJob, *chkLocate;
    controls::DataCombo* dbcShift;
    controls::DateField *etxtHDate, *etxtEDate, *etxtTDate;
    controls::CurrencyField *txtStartPay, *txtCurrPay;
    controls::TextField *txtStartFreq, *txtCurrFreq, *txtNewSalary;
    controls::ListCombo* cboNewFreq;
    controls::TextField *txtEState, *txtEFederal, *txtEOther;
};

} // namespace masters
