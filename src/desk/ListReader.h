#pragma once

#include "core/Background.h"
#include "desk/ListKinds.h"

#include <functional>
#include <memory>

namespace desk {

/// Reads the rows of a module's list, packed as they are shown.
class ListReader {
  public:
    /// Without money, the columns of money are left out.
    ListReader(const ListKind& kind, bool money);

    const ListKind& kind() const { return m_kind; }
    /// The columns that are read, in the kind's order.
    const std::vector<ListColumn>& columns() const { return m_columns; }

    /// All rows. `goOn` is called now and then, and may throw.
    std::shared_ptr<const rows::Store> read(jet::Database& database,
                                            const std::function<void()>& goOn = {}) const;
    /// The latest ones only, with nothing in the columns that are read beside the table.
    std::shared_ptr<const rows::Store> readLatest(jet::Database& database, int count) const;

  private:
    std::shared_ptr<rows::Store> readTable(jet::Database& database, int count, bool complete,
                                           const std::function<void()>& goOn) const;
    const ListKind& m_kind;
    std::vector<ListColumn> m_columns;
};

} // namespace desk
