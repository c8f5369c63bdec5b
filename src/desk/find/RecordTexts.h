#pragma once

#include "desk/find/FileIndex.h"

#include <map>
#include <set>

namespace desk {

// The texts of a kind's records as they are searched, from the shop's database: a file.

/// The highest key of a kind; 0 where there is no record.
qint64 highestKey(jet::Database& shop, int kind);
/// The latest records below a key, downwards.
FileIndex::Texts textsBelow(jet::Database& shop, int kind, qint64 key, int most);
/// In the order of their keys, both ends included.
FileIndex::Texts textsBetween(jet::Database& shop, int kind, qint64 first, qint64 last);
/// Those that meet a condition; none for an empty one.
FileIndex::Texts textsWhere(jet::Database& shop, int kind, const QByteArray& condition);

FileIndex::Texts textsOf(jet::Database& shop, int kind, const std::set<qint64>& keys);

/// What the database's journal says was changed after its entry of that number, the latest first,
/// `most` entries at most.
struct Changes {
    qint64 last = 0; ///< number of the latest entry; as given where there is none
    std::map<int, std::set<qint64>> keys; ///< by kind
};
Changes changesSince(jet::Database& shop, qint64 entry, int most);

} // namespace desk
