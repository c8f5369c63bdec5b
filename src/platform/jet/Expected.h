#pragma once

#include "platform/jet/Recordset.h"
#include "platform/jet/engines/Engine.h"

#include <chrono>
#include <memory>
#include <vector>

namespace jet {

class Connection;
struct WantedSet;

/// The selects that were said to be asked for next: see Database::expect.
class Expected {
  public:
    void set(Connection& connection, const std::vector<WantedSet>& wanted);
    /// The set of a select that was expected; nullptr where it wasn't, or where it may be stale.
    std::shared_ptr<RecordsetData> take(Connection& connection, const QString& select,
                                        RecordsetType type);

    bool has(const WantedSet& wanted) const;

    /// Whether they are to travel with the next select.
    bool isWaiting() const { return m_isWaiting; }
    /// Puts them behind a select; take their outcomes with received(), or give them up. What can't
    /// be read isn't expected any more, and fails where it is opened.
    void addTo(std::vector<Read>& reads);
    void received(const std::vector<Read>& reads);
    void giveUp();

  private:
    struct Entry {
        QString select;
        RecordsetType type;
        std::shared_ptr<RecordsetData> set;
    };

    std::vector<Entry> m_entries;
    bool m_isWaiting = false;
    quint64 m_changes = 0;
    std::chrono::steady_clock::time_point m_since;
};

} // namespace jet
