#pragma once

#include "estimating/routing/FindForms.h"

namespace jobs {

const estimating::FindKind& jobFind();

/// Asks for a job number or a part number to go to.
class frmJobFind : public estimating::FindForm {
  public:
    static constexpr char formName[] = "frmJobFind";
    frmJobFind() : FindForm(jobFind()) {}
};

} // namespace jobs
