#include "jobs/frmJobFind.h"

#include "platform/values/Literals.h"

namespace jobs {

const estimating::FindKind& jobFind() {
    static const estimating::FindKind kind{
        .find = u"frmJobFind"_s,
        .numberCaption = u"Find Job"_s,
        .numberPrompt = u"Enter a Job No. to Find..."_s,
        .partPrompt = u"Enter a Part No. to Find..."_s,
        .partKeys = {u"*"_s, true, u"|\""_s}, // an apostrophe may be part of a part's number
        .found = u"frmJobFound"_s,
        .foundCaption = u"Jobs Found"_s,
        .table = u"Job"_s,
        .key = u"JobNo"_s,
        .columns = {{u"JobNo"_s, u"Job #"_s},
                    {u"CustID"_s, u"Cust. #"_s},
                    {u"PONo"_s, u"PO #"_s},
                    {u"PartNo"_s, u"Part #"_s},
                    {u"JobDueDate"_s, u"Due Date"_s}},
    };
    return kind;
}

} // namespace jobs
