#pragma once

#include "accounting/Records.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace accounting {

/// A column of the list of what QuickBooks has and the program lacks.
struct ImportColumn {
    enum class Kind { Text, Country, Terms, Date, Whole };
    QString title;
    int characters = 14;
    QString path;        ///< of the element in the answer's record, tags parted by '/'
    QStringList columns; ///< of the table that take it
    Kind kind = Kind::Text;
    QString words = {}; ///< of a country: "Billing address country "
};

/// One of the lists that are kept in step with QuickBooks: what its import/export form says and
/// does.
struct ImportMember {
    QString formName, caption;
    const RecordKind& (*kind)();
    QString table, key;
    QStringList nameColumns;           ///< joined with a blank they are the name
    bool hasMarks = true;              ///< the table has QBSent, which the form keeps
    bool queriesAll = false;           ///< inactive ones too
    QString numberTitle, nameTitle;    ///< "Customer #", "Customer"
    QString one;                       ///< "customer": in "No customer records to export."
    QString exported, imported;        ///< what the success messages name: "customer(s)"
    QString inUse, inUseTitle;         ///< "The company ", "Company already exists"
    std::vector<ImportColumn> columns; ///< the first one is the name
    /// Columns of a new row, and where SystemSettings has what they get.
    std::vector<std::pair<QString, QString>> defaults;
};

/// Customers, vendors, employees and terms.
const std::vector<ImportMember>& importMembers();

} // namespace accounting
