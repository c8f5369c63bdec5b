#pragma once

#include "platform/jet/Database.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace core {

/// What the journal is searched for; what is empty doesn't count.
struct JournalCriteria {
    QString who;                            ///< how the name begins
    std::optional<QStringList> tables = {}; ///< those that may be told of
    std::optional<qint64> record = {};      ///< the number of the record that rows belong to
    QDate from, until;                      ///< days, both included
};

/// One column of a change; nothing where there was, or is, no value.
struct JournalField {
    QString column, before, after;
    bool money = false;
};

/// A row that was added, changed or deleted.
struct JournalChange {
    enum class What { Added, Changed, Deleted };
    QDateTime at;
    QString who;
    QString table; ///< as journalTable() finds it
    QString record;
    What what = What::Changed;
    std::vector<JournalField> fields; ///< those with a value; of a change those that differ
};

/// The changes that meet the criteria, the latest first, at most `most`. One wait on a server.
std::vector<JournalChange> searchJournal(jet::Database& database, const JournalCriteria& criteria,
                                         int most);

/// A line as people read it: when, user, table, record, what, field, before, after.
using JournalLine = QStringList;
/// The lines of changes: one for each changed field, one for a row that was added or deleted. Money
/// is left out, or shown as "(hidden)", for those who may not see it.
std::vector<JournalLine> journalLines(const std::vector<JournalChange>& changes, bool showMoney);

} // namespace core
