#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace desk {

/// A kind of record that is found by what stands in it. Its texts are told in the SQL that both
/// engines know; see textOf() for lines below a record.
struct FindKind {
    /// Where a key is looked up in an index of the table's own.
    struct Exact {
        QByteArray table, key, column;
    };
    /// What a server searches by its index of the pieces of text: these words stand in server.sql.
    struct Pieces {
        QByteArray table, key, text;
    };
    QString module; ///< "frmJob"; its list says caption and right
    QString word;   ///< in front of the number: "Job"
    QByteArray table, key;
    std::vector<QByteArray> texts; ///< what is searched, the weightiest first; two are shown
    QByteArray beside = {};        ///< shown, not searched
    std::vector<Exact> exact = {};
    std::vector<Pieces> pieces = {};
    QByteArray changing = {}; ///< condition of the records that are likely to be changed
};

const std::vector<FindKind>& findKinds();

/// The texts of a kind's record as one expression, parted by `textMark`; lines within a text are
/// parted by line ends.
QByteArray textOf(const FindKind& kind, bool server);
inline constexpr char textMark = '\x1f';

} // namespace desk
