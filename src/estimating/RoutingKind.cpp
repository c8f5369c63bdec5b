#include "estimating/RoutingKind.h"

#include "platform/values/Literals.h"

namespace estimating {

const RoutingKind& estimateRouting() {
    static const RoutingKind kind{
        .documentTable = u"Estimate"_s,
        .documentKey = u"EstNo"_s,
        .referenceColumn = u"RFQNo"_s,
        .parentColumn = u"AssemblyEstno"_s,
        .operTable = u"EstOper"_s,
        .miscTable = u"EstMiscCost"_s,
        .noteTable = u"EstOperNote"_s,
        .scheduleTable = QString(),
        .hasProgress = false,
        .inhouseTimeIsBooked = false,
        .parksNotesOfNewDocument = true,
        .deletesParkedFirst = false,
        .issuedFromStock = false,
        .stepsTellNumber = false,
        .insertOperStep = u"Insert EstOper"_s,
        .insertMiscStep = u"Insert EstMiscCost"_s,
        .noteDialog = u"frmEstOperNote"_s,
        .noteCaption = u"Estimate Operation Notes"_s,
        .documentLabel = u"Estimate No.: "_s,
    };
    return kind;
}

const RoutingKind& jobRouting() {
    static const RoutingKind kind{
        .documentTable = u"Job"_s,
        .documentKey = u"JobNo"_s,
        .referenceColumn = u"PONo"_s,
        .parentColumn = u"AssemblyJobNo"_s,
        .operTable = u"JobOper"_s,
        .miscTable = u"JobMiscCost"_s,
        .noteTable = u"JobOperNote"_s,
        .scheduleTable = u"JobOperSchedule"_s,
        .hasProgress = true,
        .inhouseTimeIsBooked = true,
        .parksNotesOfNewDocument = false,
        .deletesParkedFirst = true,
        .issuedFromStock = true,
        .stepsTellNumber = true,
        .insertOperStep = u"Insert joboper"_s,
        .insertMiscStep = u"JobMiscCost"_s,
        .noteDialog = u"frmJobOperNote"_s,
        .noteCaption = u"Job Operation Notes"_s,
        .documentLabel = u"Job No.: "_s,
    };
    return kind;
}

} // namespace estimating
