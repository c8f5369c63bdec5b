#pragma once

#include "estimating/CatalogueDialogs.h"
#include "estimating/OperationCatalogue.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

#include <functional>

class QGroupBox;
class QWidget;

namespace estimating {

/// Adds or changes an operation of the catalogue with its default note.
class frmOperAddEdit : public screen::AddEditForm, public OperationDialog {
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
    bool save() override;
    void startNext() override;

    bool isInhouse() const;

    controls::TextField* txtDescription;
    QWidget* m_inhouseFields;
    controls::TextField* txtOperShopRate;
    controls::ListCombo* cboDept;
    controls::MemoField* Text1;
    OperationDraft m_draft;
    qint64 m_department = 0; ///< that a new operation starts in
};

} // namespace estimating
