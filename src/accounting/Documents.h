#pragma once

#include "accounting/Message.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace accounting {

/// A line of an invoice or a bill as the screen shows it.
struct DocumentLine {
    QString item;
    QString description;
    QString quantity;
    QString price;  ///< each; plain figure
    QString amount; ///< invoices only; empty: left out
};

/// What an invoice says beside its lines; `customer` as Records' fieldsOf() gives it.
struct Invoice {
    FieldTexts customer;
    QString order;
    std::vector<DocumentLine> lines;
};

struct Bill {
    QString vendor;
    QDate date;
    std::optional<QDate> due; ///< nothing: by the vendor's terms
    QString number;
    std::vector<DocumentLine> lines;
};

Message invoiceRequest(const Invoice& invoice);
Message billRequest(const Bill& bill);

} // namespace accounting
