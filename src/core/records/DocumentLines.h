#pragma once

#include "core/records/DocumentColumns.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace core {

/// Lines of a document that are told apart by a number which the database gave them; a line that is
/// new on this screen has 0.
template <class Row>
struct DocumentLines {
    const DocumentColumns<Row>& columns;
    qint64 Row::*id;
    std::function<QString(const Row&)> name; ///< how messages call a line: "The item 12-A"

    const Row* find(const std::vector<Row>& rows, qint64 wanted) const {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
            return wanted != 0 && row.*id == wanted;
        });
        return found == rows.end() ? nullptr : &*found;
    }

    /// What others `stored` since `before` was read goes into `mine`; what was changed here stays.
    /// Tells the first thing that both changed; `mine` is of no more use then.
    std::optional<ChangedElsewhere> join(const std::vector<Row>& before,
                                         const std::vector<Row>& stored,
                                         std::vector<Row>& mine) const {
        std::vector<Row> joined;
        for (Row& row : mine) {
            const Row* was = find(before, row.*id);
            const Row* theirs = find(stored, row.*id);
            if (was && theirs) {
                if (auto both = columns.join(*was, *theirs, row))
                    return ChangedElsewhere{name(row) + u": "_s + both->what, both->theirs,
                                            both->mine};
            } else if (was && !columns.same(*was, row)) {
                return ChangedElsewhere{name(row), u"removed"_s, u"changed"_s};
            } else if (was) {
                continue;
            }
            joined.push_back(row);
        }
        for (const Row& theirs : stored) {
            const Row* was = find(before, theirs.*id);
            if (find(mine, theirs.*id) || (was && columns.same(*was, theirs)))
                continue;
            if (was)
                return ChangedElsewhere{name(theirs), u"changed"_s, u"removed"_s};
            joined.push_back(theirs);
        }
        mine = std::move(joined);
        return std::nullopt;
    }
};

} // namespace core
