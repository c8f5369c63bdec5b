#pragma once

#include "core/TablePopup.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

namespace core {

/// The general lookup dialog.
class frmTblPopup : public screen::Form, public TablePopup {
  public:
    static constexpr char formName[] = "frmTblPopup";
    frmTblPopup();
    std::optional<QString> pick(const QString& caption, const QStringList& items,
                                const QString& emptyMessage) override;

  private:
    void btnsel_Click();
    controls::ListView* lstItems;
    std::optional<QString> m_chosen;
};

} // namespace core
