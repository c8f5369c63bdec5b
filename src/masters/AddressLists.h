#pragma once

#include "platform/screen/AddressBlock.h"
#include "platform/screen/Form.h"

#include <QString>

#include <functional>
#include <vector>

namespace masters {

/// Fills the lists of states and countries.
void fillAddressLists(const std::vector<screen::AddressBlock>& addresses);
/// A country or state that is entered and that the shop's tables lack is offered to be added when
/// its field is left. `entering` says whether the record is being entered.
void offerUnknown(screen::Form& form, const screen::AddressBlock& address,
                  const std::function<bool()>& entering);
/// Whether those lists come from that table.
bool isAddressTable(const QString& table);

} // namespace masters
