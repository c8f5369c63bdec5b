#pragma once

#include "platform/controls/CheckList.h"
#include "platform/controls/DataCombo.h"
#include "platform/jet/Recordset.h"
#include "platform/screen/Form.h"

class QPushButton;
class QTabWidget;

namespace core {

/// Users, groups, and what each may do. Every change is written at once.
class frmUser_Group : public screen::Form {
  public:
    static constexpr const char* formName = "frmUser_Group";
    frmUser_Group();
    void Form_Load() override;

    void cboUsers_Click();
    void cboUserGroup_Click();
    void ListUserObjects_ItemCheck(int row);
    void cmdUnew_Click();
    void cmdUedit_Click();
    void cmdUdelete_Click();

    void cboGroups_Click();
    void ListGroupObjects_Click();
    void ListUsers_ItemCheck(int row);
    void cmdGnew_Click();
    void cmdGedit_Click();
    void cmdGdelete_Click();

  private:
    void buildUserTab(QWidget* page);
    void buildGroupTab(QWidget* page);
    void fillObjects(controls::CheckList* list, const QString& grants) const;
    void enableUserControls();
    void enableGroupControls();
    void setGroupOf(qint64 user, qint64 group);

    jet::Recordset m_objects; ///< what rights there are
    QTabWidget* SSTab1;
    controls::ListCombo* cboUsers;
    controls::ListCombo* cboUserGroup;
    controls::CheckList* ListUserObjects;
    QPushButton* cmdUnew;
    QPushButton* cmdUedit;
    QPushButton* cmdUdelete;
    controls::ListCombo* cboGroups;
    controls::CheckList* ListGroupObjects;
    controls::CheckList* ListUsers;
    QPushButton* cmdGnew;
    QPushButton* cmdGedit;
    QPushButton* cmdGdelete;
};

} // namespace core
