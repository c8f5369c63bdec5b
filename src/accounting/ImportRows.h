#pragma once

#include "accounting/Answer.h"
#include "accounting/ImportMembers.h"
#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace accounting {

/// A record of the program by its number and name.
struct ListedRecord {
    qint64 number = 0;
    QString name;
    bool sent = false;
};

/// The program's records of a list: all, or those that QuickBooks doesn't know yet.
std::vector<ListedRecord> listedRecords(jet::Database& database, const ImportMember& member,
                                        bool onlyUnsent);

/// The records of an answer that the program lacks: the texts of the member's columns.
std::vector<QStringList> offeredRecords(jet::Database& database, const ImportMember& member,
                                        const std::vector<QDomElement>& records);

/// Distinct texts of the columns of a kind that the table behind it doesn't have: countries, terms.
QStringList unknownTexts(jet::Database& database, const ImportMember& member,
                         ImportColumn::Kind kind, const std::vector<QStringList>& records);

/// The words of the column in which a text stands.
QString wordsFor(const ImportMember& member, const QString& country,
                 const std::vector<QStringList>& records);

/// Texts that don't fit their columns, in words.
QStringList importComplaints(const jet::Database& database, const ImportMember& member,
                             const std::vector<QStringList>& records);

struct NewTerms {
    QString description;
    QString netDue; ///< empty if not known
};

/// Adds the records, and the countries and terms that they need, all or nothing.
void importRecords(jet::Database& database, const ImportMember& member,
                   const std::vector<QStringList>& records, const QStringList& countries,
                   const std::vector<NewTerms>& terms);

} // namespace accounting
