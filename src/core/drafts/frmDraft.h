#pragma once

#include "core/drafts/DraftOffer.h"
#include "platform/screen/Form.h"

class QLabel;
class QPlainTextEdit;

namespace core {

/// Shows what was typed into a record that has been deleted since.
class frmDraft : public screen::Form, public DraftTextDialog {
  public:
    static constexpr char formName[] = "frmDraft";
    frmDraft();
    bool tell(const QString& why, const QString& text) override;

  private:
    QLabel* lblWhy;
    QPlainTextEdit* txtDraft;
    bool m_thrownAway = false;
};

} // namespace core
