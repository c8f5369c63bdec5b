#pragma once

#include "estimating/routing/OperNoteForm.h"

namespace estimating {

/// Note of a job's operation.
class frmJobOperNote : public OperNoteForm {
  public:
    static constexpr char formName[] = "frmJobOperNote";
    frmJobOperNote() : OperNoteForm(jobRouting()) {}
};

} // namespace estimating
