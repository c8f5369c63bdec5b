#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace inventory {

/// Adds folders to a tree or renames one: "frmItemTypeNewEdit" of the types, "frmItemLocNewEdit" of
/// the locations.
class FolderForm : public screen::AddEditForm, public FolderDialog {
  public:
    FolderForm(const QString& name, const View& view);
    void add(qint64 parent, const QString& parentName) override;
    QString rename(qint64 id) override;

  protected:
    bool save() override;
    void startNext() override;

  private:
    const View& m_view;
    controls::TextField* m_text;
    qint64 m_id = 0;
    qint64 m_parent = 0;
};

} // namespace inventory
