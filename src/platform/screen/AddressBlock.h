#pragma once

#include "platform/screen/BoundFields.h"
#include "platform/screen/Layout.h"

#include <QString>

namespace screen {

/// The fields of an address; some have no third line.
struct AddressBlock {
    controls::TextField* line1 = nullptr;
    controls::TextField* line2 = nullptr;
    controls::TextField* line3 = nullptr;
    controls::TextField* city = nullptr;
    controls::DataCombo* state = nullptr;
    controls::TextField* zip = nullptr;
    controls::DataCombo* country = nullptr;

    /// The main address of a record, with `txtAdd1` and so on.
    static AddressBlock main(Fields& fields);
    /// Another address, named by its prefix: `txtBillAddress1`, `dbcBillState`; `zipName` is the
    /// name of the postal code's field behind the prefix.
    static AddressBlock other(Fields& fields, const QString& prefix, const QString& zipName,
                              bool thirdLine);

    /// Binds the columns `Address1` and so on, with the prefix in front.
    void bind(BoundFields& fields, const QString& prefix = {}) const;
    /// Puts this address into another's fields; a third line only where both have one.
    void copyTo(const AddressBlock& other) const;
};

} // namespace screen
