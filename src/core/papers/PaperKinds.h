#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace core {

/// A kind of record that papers may lie beside.
struct PaperKind {
    QString name;        ///< in Papers.Kind
    QString words;       ///< what people call a record: "Purchase order"
    QString screen;      ///< "frmPO"
    QString right;       ///< the menu entry of its module
    QString table, key;  ///< of the records
    QString parts = {};  ///< the table with the part numbers of the records; empty: they have none
    QString owner = {};  ///< its column with the number of the record
    QString column = {}; ///< its column with the part number
    bool behind = false; ///< they may be printed behind a traveler
};

const std::vector<PaperKind>& paperKinds();
/// By name; nullptr if there is none.
const PaperKind* paperKind(const QString& name);
/// Of the records that a screen shows; nullptr if it shows none with papers.
const PaperKind* paperKindOf(const QString& screen);

} // namespace core
