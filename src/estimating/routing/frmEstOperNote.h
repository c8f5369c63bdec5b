#pragma once

#include "estimating/routing/OperNoteForm.h"

namespace estimating {

/// Note of an estimate's operation.
class frmEstOperNote : public OperNoteForm {
  public:
    static constexpr char formName[] = "frmEstOperNote";
    frmEstOperNote() : OperNoteForm(estimateRouting()) {}
};

} // namespace estimating
