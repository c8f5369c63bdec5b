#include "estimating/RoutingKind.h"

#include "platform/values/Literals.h"

namespace estimating {

const RoutingKind& estimateRouting() {
    static const RoutingKind kind{
        .documentKey = u"EstNo"_s,
        .operTable = u"EstOper"_s,
        .miscTable = u"EstMiscCost"_s,
        .noteTable = u"EstOperNote"_s,
        .scheduleTable = QString(),
        .hasProgress = false,
        .inhouseTimeIsBooked = false,
        .parksNotesOfNewDocument = true,
        .deletesParkedFirst = false,
        .noteDialog = u"frmEstOperNote"_s,
        .noteCaption = u"Estimate Operation Notes"_s,
        .documentLabel = u"Estimate No.: "_s,
    };
    return kind;
}

const RoutingKind& jobRouting() {
    static const RoutingKind kind{
        .documentKey = u"JobNo"_s,
        .operTable = u"JobOper"_s,
        .miscTable = u"JobMiscCost"_s,
        .noteTable = u"JobOperNote"_s,
        .scheduleTable = u"JobOperSchedule"_s,
        .hasProgress = true,
        .inhouseTimeIsBooked = true,
        .parksNotesOfNewDocument = false,
        .deletesParkedFirst = true,
        .noteDialog = u"frmJobOperNote"_s,
        .noteCaption = u"Job Operation Notes"_s,
        .documentLabel = u"Job No.: "_s,
    };
    return kind;
}

} // namespace estimating
