#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Text.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace core {

/// A field of a reference table's dialog.
struct ReferenceField {
    QString column;
    QString control;      ///< "txtCode"
    QString label;        ///< with its mnemonic
    QString blankMessage; ///< empty: it may be blank
    values::KeyFilter filter = values::keys::description();
    bool unique = false; ///< no other row may have the same text
};

struct ReferenceListColumn {
    QString title;
    QString column;
    int characters = 24;
};

/// What tells one of the small tables that other screens pick from from another: words and SQL. One
/// list and one dialog serve them all.
struct ReferenceTable {
    QString listForm, listCaption;
    QString dialogForm, newTitle, editTitle;
    QString table;
    QString key; ///< column
    QString listSelect;
    std::vector<ReferenceListColumn> listColumns;
    std::vector<ReferenceField> fields; ///< in the order of the checks

    /// The field texts in the order of `fields`, apostrophes not yet doubled.
    std::function<QString(const QStringList& texts)> insert;
    /// `stored`: the texts as they were read.
    std::function<QString(const QStringList& texts, qint64 key, const QStringList& stored)> update;
    /// `row`: the list's texts of the row.
    std::function<QString(qint64 key, const QStringList& row)> remove;

    /// Behind the key of a row that has gone when it is to be edited.
    QString missingMessage;
    /// In place of "<text> already exists!".
    QString duplicateMessage = {};
    /// Why a row can't be deleted or edited, by its first text; empty if it can.
    std::function<QString(jet::Database&, const QString& text)> deleteRefusal = {};
    std::function<QString(const QString& text)> editRefusal = {};
    QString refusalTitle = {};
    /// Screens whose lists are read again after a change.
    QStringList users = {};
};

/// The seven tables.
const std::vector<ReferenceTable>& referenceTables();

/// The select that finds another row with the same text in a field; `key` 0 for a new row.
QString duplicateSelect(const ReferenceTable& table, const ReferenceField& field,
                        const QString& text, qint64 key);

} // namespace core
