#pragma once

#include "scheduling/ScheduleStore.h"

#include <optional>
#include <vector>

namespace scheduling {

/// What "frmScheduleAdd" and "frmScheduleEdit" offer.
class EntryDialog {
  public:
    struct Request {
        qint64 jobNo = 0;
        int seqNo = 0;
        RoutingRow operation;
        Limits limits;        ///< of the job, as they are on the screen
        bool inOrder = false; ///< on the chart of a purchase order
        QString order;        ///< its number
        Entry entry;          ///< to start from
        int number = 0;       ///< of the entry in its row, and of the row, for messages
        int row = 0;
        /// The entries of the same chart, as they are on it, saved or not.
        std::vector<Entry> shown;
    };
    virtual ~EntryDialog() = default;
    /// The entry as it was entered; nothing if the user cancelled.
    virtual std::optional<Entry> ask(const Request& request) = 0;
};

/// How near a chart is shown and in what divisions: the indexes of the lists.
struct ChartLook {
    int zoom = 1;
    int period = 1;
};

} // namespace scheduling
