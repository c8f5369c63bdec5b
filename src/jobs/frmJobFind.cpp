#include "jobs/frmJobFind.h"

namespace jobs {

const estimating::FindKind& jobFind() {
    static const estimating::FindKind kind{
        .find = QStringLiteral("frmJobFind"),
        .numberCaption = QStringLiteral("Find Job"),
        .numberPrompt = QStringLiteral("Enter a Job No. to Find..."),
        .partPrompt = QStringLiteral("Enter a Part No. to Find..."),
        .found = QStringLiteral("frmJobFound"),
        .foundCaption = QStringLiteral("Jobs Found"),
        .table = QStringLiteral("Job"),
        .key = QStringLiteral("JobNo"),
        .columns = {{QStringLiteral("JobNo"), QStringLiteral("Job #")},
                    {QStringLiteral("CustID"), QStringLiteral("Cust. #")},
                    {QStringLiteral("PONo"), QStringLiteral("PO #")},
                    {QStringLiteral("PartNo"), QStringLiteral("Part #")},
                    {QStringLiteral("JobDueDate"), QStringLiteral("Due Date")}},
    };
    return kind;
}

} // namespace jobs
