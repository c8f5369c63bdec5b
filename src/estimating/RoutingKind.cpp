#include "estimating/RoutingKind.h"

namespace estimating {

const RoutingKind& estimateRouting() {
    static const RoutingKind kind{
        .documentKey = QStringLiteral("EstNo"),
        .operTable = QStringLiteral("EstOper"),
        .miscTable = QStringLiteral("EstMiscCost"),
        .noteTable = QStringLiteral("EstOperNote"),
        .scheduleTable = QString(),
        .hasProgress = false,
        .inhouseTimeIsBooked = false,
        .parksNotesOfNewDocument = true,
        .deletesParkedFirst = false,
        .noteDialog = QStringLiteral("frmEstOperNote"),
        .noteCaption = QStringLiteral("Estimate Operation Notes"),
        .documentLabel = QStringLiteral("Estimate No.: "),
    };
    return kind;
}

const RoutingKind& jobRouting() {
    static const RoutingKind kind{
        .documentKey = QStringLiteral("JobNo"),
        .operTable = QStringLiteral("JobOper"),
        .miscTable = QStringLiteral("JobMiscCost"),
        .noteTable = QStringLiteral("JobOperNote"),
        .scheduleTable = QStringLiteral("JobOperSchedule"),
        .hasProgress = true,
        .inhouseTimeIsBooked = true,
        .parksNotesOfNewDocument = false,
        .deletesParkedFirst = true,
        .noteDialog = QStringLiteral("frmJobOperNote"),
        .noteCaption = QStringLiteral("Job Operation Notes"),
        .documentLabel = QStringLiteral("Job No.: "),
    };
    return kind;
}

} // namespace estimating
