#include "estimating/frmEstFind.h"

namespace estimating {

const FindKind& estimateFind() {
    static const FindKind kind{
        .find = QStringLiteral("frmEstFind"),
        .numberCaption = QStringLiteral("Find Estimate"),
        .numberPrompt = QStringLiteral("Enter an Estimate No. to Find"),
        .partPrompt = QStringLiteral("Enter a Part No. to Find"),
        .found = QStringLiteral("frmEstFound"),
        .foundCaption = QStringLiteral("Estimates Found"),
        .table = QStringLiteral("Estimate"),
        .key = QStringLiteral("EstNo"),
        .columns = {{QStringLiteral("EstNo"), QStringLiteral("Est. #")},
                    {QStringLiteral("CustID"), QStringLiteral("Cust. #")},
                    {QStringLiteral("RFQNo"), QStringLiteral("RFQ #")},
                    {QStringLiteral("PartNo"), QStringLiteral("Part #")},
                    {QStringLiteral("EstDate"), QStringLiteral("Est. Date")}},
    };
    return kind;
}

} // namespace estimating
