#pragma once

#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "timemgmt/TimeDialogs.h"
#include "timemgmt/TimeEntry.h"

namespace timemgmt {

/// Corrects how many parts a stretch of work completed and scrapped.
class frmTimeEdit : public screen::Form, public PartsDialog {
  public:
    static constexpr char formName[] = "frmTimeEdit";
    frmTimeEdit();
    bool ShowForm(qint64 timeId) override;

  private:
    void cmdOK_Click();
    void sayNotFound() const;

    controls::TextField* txtPartsQty;
    controls::TextField* txtPartsScrap;
    qint64 m_timeId = 0;
    Parts m_stored;
    QString m_shownQty, m_shownScrap; ///< before anybody typed
    bool m_saved = false;
};

} // namespace timemgmt
