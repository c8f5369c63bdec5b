#pragma once

#include "platform/controls/DateField.h"
#include "platform/controls/TimeField.h"
#include "platform/screen/AddEditForm.h"
#include "timemgmt/SignInEntry.h"
#include "timemgmt/TimeDialogs.h"

namespace timemgmt {

/// Adds an attendance that the floor didn't record, or corrects one. What was left open on it ends
/// with it.
class frmSignAddEdit : public screen::AddEditForm, public SignInDialog {
  public:
    static constexpr char formName[] = "frmSignAddEdit";
    frmSignAddEdit();
    bool ShowForm(const QString& mode, qint64 empId, qint64 signId) override;

  private:
    SignInFields typed() const;
    bool validate();
    bool save() override;
    void startNext() override;
    void followSignIn();

    controls::DateField* fpSigninDate;
    controls::TimeField* fpSigninTime;
    controls::DateField* fpSignoutDate;
    controls::TimeField* fpSignoutTime;
    qint64 m_empId = 0;
    qint64 m_signId = 0; ///< 0 for a new one
    Period m_loaded;
    std::optional<QDate> m_signInDate; ///< when the field was left last
};

} // namespace timemgmt
