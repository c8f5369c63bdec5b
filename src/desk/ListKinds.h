#pragma once

#include "platform/rows/Store.h"

#include <QString>

#include <vector>

namespace desk {

/// A column of a module's list.
struct ListColumn {
    QString title;
    int characters = 12;
    rows::Kind kind = rows::Kind::Text;
    /// A column of the table, or an expression in the SQL that both engines know, where it has a
    /// blank or a bracket in it.
    QString field;
    /// Gives the text that the field's number stands for: "SELECT number, text FROM ...".
    QString names = {};
    /// Gives the value for a record's key instead: "SELECT key, value FROM ...".
    QString beside = {};
    bool shown = true; ///< to begin with
    bool summed = false;
};

/// A view that the list comes with: what is typed above columns, and by which one it is sorted.
struct ListView {
    QString name;
    std::vector<std::pair<QString, QString>> filters = {}; ///< of a title
    QString sort = {};                                     ///< "+Due Date", "-Total"
};

/// The list of one module, as data.
struct ListKind {
    QString form;    ///< "frmJobList"
    QString caption; ///< "Jobs"
    QString menu;    ///< whose right it shares: "mnuFileJob"
    QString module;  ///< "frmJob"
    QString table;
    QString key;
    std::vector<ListColumn> columns;
    std::vector<ListView> views = {}; ///< the first one is shown to begin with
};

const std::vector<ListKind>& listKinds();
/// By the name of the list's form or of the module's; nullptr if there is none.
const ListKind* listKind(const QString& form);

} // namespace desk
