#pragma once

#include "estimating/CatalogueDialogs.h"
#include "estimating/OperationCatalogue.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <functional>

class QGroupBox;
class QPushButton;
class QWidget;

namespace estimating {

/// Adds or changes an operation of the catalogue with its default note.
class frmOperAddEdit : public screen::Form, public OperationDialog {
  public:
    static constexpr char formName[] = "frmOperAddEdit";
    frmOperAddEdit();
    bool ShowForm(const QString& mode, qint64 operNo, qint64 departmentId,
                  const QString& operType) override;

  private:
    void createMenus();
    bool fillDepartments();
    void clearFields();
    bool showOperation(qint64 operNo);
    bool save();
    void cmdOK_Click();
    void cmdOKNew_Click();

    bool isInhouse() const;

    controls::TextField* txtDescription;
    QWidget* m_inhouseFields;
    controls::TextField* txtOperShopRate;
    controls::ListCombo* cboDept;
    controls::MemoField* Text1;
    QPushButton* cmdOKNew;
    OperationDraft m_draft;
    qint64 m_department = 0; ///< that a new operation starts in
    bool m_saved = false;
};

} // namespace estimating
