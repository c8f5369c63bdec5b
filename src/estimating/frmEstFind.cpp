#include "estimating/frmEstFind.h"

#include "platform/values/Literals.h"

namespace estimating {

const FindKind& estimateFind() {
    static const FindKind kind{
        .find = u"frmEstFind"_s,
        .numberCaption = u"Find Estimate"_s,
        .numberPrompt = u"Enter an Estimate No. to Find"_s,
        .partPrompt = u"Enter a Part No. to Find"_s,
        .partKeys = values::keys::name(),
        .found = u"frmEstFound"_s,
        .foundCaption = u"Estimates Found"_s,
        .table = u"Estimate"_s,
        .key = u"EstNo"_s,
        .columns = {{u"EstNo"_s, u"Est. #"_s},
                    {u"CustID"_s, u"Cust. #"_s},
                    {u"RFQNo"_s, u"RFQ #"_s},
                    {u"PartNo"_s, u"Part #"_s},
                    {u"EstDate"_s, u"Est. Date"_s}},
    };
    return kind;
}

} // namespace estimating
