#pragma once

#include "platform/controls/DataCombo.h"

namespace inventory {

/// Selects the employees who are active, by name.
QString activeEmployeesSelect();
/// Fills a combo with the employees who are active, by name; false if there is none.
bool fillActiveEmployees(controls::DataCombo* combo);

} // namespace inventory
