#pragma once

#include "estimating/frmEstFind.h"

namespace estimating {

/// The estimates that a part search found.
class frmEstFound : public FoundForm {
  public:
    static constexpr char formName[] = "frmEstFound";
    frmEstFound() : FoundForm(estimateFind()) {}
};

} // namespace estimating
