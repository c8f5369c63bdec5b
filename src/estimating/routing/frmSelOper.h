#pragma once

#include "estimating/routing/Dialogs.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

class QCheckBox;

namespace estimating {

/// Picks the operations of a new routing or set, in their order.
class frmSelOper : public screen::Form, public SelectOperationsDialog {
  public:
    static constexpr char formName[] = "frmSelOper";
    frmSelOper();
    void Form_Load() override;
    std::optional<std::vector<ChosenOperation>> choose() override;

  private:
    struct Entry {
        qint64 operNo = 0;
        QString description;
        bool contractor = false;
        bool hasNote = false;
        bool useNote = false;
    };
    using Entries = std::vector<Entry>;

    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdUpDown_Click(int step);
    void Check1_Click();
    void cmdOK_Click();
    void lvwSel_Click();
    void showLists();
    void showRow(controls::ListView* list, const Entry& entry, bool withNotes);
    void moveAcross(controls::ListView* list, Entries& from, Entries& to);

    controls::ListView* lvwAvail;
    controls::ListView* lvwSel;
    QCheckBox* Check1;
    Entries m_available;
    Entries m_selected;
    bool m_ok = false;
};

} // namespace estimating
