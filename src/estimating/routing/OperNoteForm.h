#pragma once

#include "estimating/routing/Dialogs.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QLabel;
class QPushButton;

namespace estimating {

/// The note of one row of an estimate's or job's routing. It is read and written at once, apart
/// from the document's own save.
class OperNoteForm : public screen::Form, public OperationNoteDialog {
  public:
    explicit OperNoteForm(const RoutingKind& kind);
    std::optional<WrittenNote> edit(const NoteRequest& request) override;

  private:
    void cmdOK_Click();
    void mnuEditInsert_Click();

    const RoutingKind& m_kind;
    NoteRequest m_request;
    QString m_before;
    QString m_shown;
    QString m_defaultNote;
    QLabel* lblDocument;
    QLabel* lblSeqNo;
    controls::MemoField* Text1;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    QAction* mnuEditInsert;
    std::vector<QAction*> m_changing; ///< menu entries that change the text
    std::optional<WrittenNote> m_written;
};

} // namespace estimating
