#pragma once

#include "core/reference/ReferenceTables.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

#include <QStringList>

namespace core {

/// The dialog of a reference table, by its descriptor.
class ReferenceDialog : public screen::AddEditForm {
  public:
    explicit ReferenceDialog(const ReferenceTable& table);

    /// Shows the dialog for a new row (key 0) or an existing one. True if something was saved.
    bool ShowForm(qint64 key);

  private:
    bool save() override;
    void startNext() override;
    bool readRow();

    const ReferenceTable& m_table;
    std::vector<controls::TextField*> m_fields;
    qint64 m_key = 0;
    QStringList m_stored;
};

/// The list of a reference table, by its descriptor: New, Edit, Delete, Close.
class ReferenceList : public screen::Form {
  public:
    explicit ReferenceList(const ReferenceTable& table);

    void Form_Load() override;
    /// Other stations change these tables too.
    void Form_Activate() override;

  private:
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void reload();
    void showButtons();
    void changed();
    QStringList selectedTexts() const;

    const ReferenceTable& m_table;
    controls::ListView* lvwMI;
    QPushButton* m_edit;
    QPushButton* m_delete;
};

/// Makes all lists and dialogs known to screen::Forms.
void registerReferenceScreens();

} // namespace core
