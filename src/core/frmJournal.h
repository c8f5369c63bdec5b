#pragma once

#include "core/journal/JournalForm.h"

namespace controls {
class DateField;
class ListCombo;
class TextField;
} // namespace controls

namespace core {

/// The journal of changes: who changed what, when, from what to what, searched by person, days,
/// table and record. It tells of the modules that its user may use.
class frmJournal : public JournalForm {
  public:
    static constexpr const char* formName = "frmJournal";
    frmJournal();
    void Form_Load() override;

  private:
    void cmdShow_Click();

    controls::TextField* txtWho;
    controls::ListCombo* cboTable;
    controls::TextField* txtRecord;
    controls::DateField* datFrom;
    controls::DateField* datUntil;
    QStringList m_tables; ///< that may be told of, as the combo has them behind its first line
};

} // namespace core
