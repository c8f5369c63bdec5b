#pragma once

#include "estimating/routing/FindForms.h"

namespace estimating {

const FindKind& estimateFind();

/// Asks for an estimate number or a part number to go to.
class frmEstFind : public FindForm {
  public:
    static constexpr char formName[] = "frmEstFind";
    frmEstFind() : FindForm(estimateFind()) {}
};

} // namespace estimating
