#pragma once

#include <QString>

namespace estimating {

/// What tells the routing of an estimate from that of a job. Everything else about routings, fixed
/// costs and their notes is the same for both.
struct RoutingKind {
    QString documentTable;
    QString documentKey;     ///< the column that names the document in all its tables
    QString referenceColumn; ///< of documentTable: the customer's own number for it
    QString parentColumn;    ///< of documentTable: the document it is a part of
    QString operTable;
    QString miscTable;
    QString noteTable;
    /// Schedule rows that hang from the routing: renumbered before the notes and parked beside
    /// them, only while a saved document is edited. Empty where there are none.
    QString scheduleTable;
    /// Rows carry location, status and the estimated figure beside the actual one.
    bool hasProgress = false;
    /// The time of an in-house row comes from time records and isn't typed.
    bool inhouseTimeIsBooked = false;
    /// While a new document is being added, the note of a removed row is parked; otherwise it is
    /// deleted outright.
    bool parksNotesOfNewDocument = true;
    /// On save, parked rows are deleted before the notes of a new document are adopted; otherwise
    /// after it.
    bool deletesParkedFirst = false;
    /// Inventory adds to the fixed costs by itself: what two stations changed of a quantity adds
    /// up.
    bool issuedFromStock = false;
    // What a failed save or deletion tells.
    bool stepsTellNumber = false; ///< the error's number in front
    QString insertOperStep;
    QString insertMiscStep;
    QString noteDialog; ///< the dialog's name
    QString noteCaption;
    QString documentLabel;
};

const RoutingKind& estimateRouting();
const RoutingKind& jobRouting();

} // namespace estimating
