#pragma once

#include "jobs/frmJobFind.h"

namespace jobs {

/// The jobs that a part search found.
class frmJobFound : public estimating::FoundForm {
  public:
    static constexpr char formName[] = "frmJobFound";
    frmJobFound() : FoundForm(jobFind()) {}
};

} // namespace jobs
