#pragma once

#include "platform/screen/BoundFields.h"
#include "platform/screen/Layout.h"

#include <QString>

#include <vector>

namespace masters {

/// The fields of an address; some have no third line.
struct AddressFields {
    controls::TextField* line1 = nullptr;
    controls::TextField* line2 = nullptr;
    controls::TextField* line3 = nullptr;
    controls::TextField* city = nullptr;
    controls::DataCombo* state = nullptr;
    controls::TextField* zip = nullptr;
    controls::DataCombo* country = nullptr;

    /// The main address of a record, with `txtAdd1` and so on.
    static AddressFields main(screen::Fields& fields);
    /// Another address, named by its prefix: `txtBillAddress1`, `dbcBillState`; `zipName` is the
    /// name of the postal code's field behind the prefix.
    static AddressFields other(screen::Fields& fields, const QString& prefix,
                               const QString& zipName, bool thirdLine);

    /// Binds the columns `Address1` and so on, with the prefix in front.
    void bind(screen::BoundFields& fields, const QString& prefix = {}) const;
    /// Puts this address into another's fields; a third line only where both have one.
    void copyTo(const AddressFields& other) const;

    /// Fills the lists of states and countries.
    static void fillLists(const std::vector<AddressFields>& addresses);
    /// Whether those lists come from that table.
    static bool listsFrom(const QString& table);
};

/// A line that is shown that many characters wide.
screen::Line wide(int characters);
/// Leaves spare height below the fields.
void keepTogether(const screen::Fields& fields);
/// Asks before the copy buttons write over what stands in the target.
bool mayOverwrite(const controls::TextField& target, const QString& question);

} // namespace masters
