#pragma once

#include "accounting/Message.h"
#include "platform/jet/Recordset.h"

#include <QString>

#include <vector>

namespace accounting {

/// A list that this program and QuickBooks both keep, as far as messages about one record go.
struct RecordKind {
    QString record;            ///< "Customer": makes CustomerAddRq, CustomerAdd, CustomerRet ...
    QString name;              ///< the name's field among FieldTexts: "company"
    QString words;             ///< "Customer", in front of a complaint
    std::vector<Group> groups; ///< of the add request, in wire order, without the terms
    bool hasTerms = false;     ///< ends with a TermsRef
    /// Fields that no column holds as it stands: bill-to or main address, joined lines.
    void (*derive)(FieldTexts& fields) = nullptr;
    bool tellsActive = false; ///< IsActive goes first, from EmpStatus
};

const RecordKind& customerKind();
const RecordKind& vendorKind();
const RecordKind& employeeKind();
const RecordKind& termsKind();

/// The address blocks that an invoice shares with its customer.
const std::vector<Group>& customerAddresses();

/// All fields of the current row, and what the kind derives from them.
FieldTexts fieldsOf(const RecordKind& kind, const jet::Recordset& row);

/// The request that adds a record.
Message addRequest(const RecordKind& kind, const FieldTexts& fields);
/// The request that adds terms; `netDue` empty if the program doesn't know them.
Message addTermsRequest(const QString& terms, const QString& netDue);

} // namespace accounting
