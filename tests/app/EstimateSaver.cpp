#include "estimating/EstimateStore.h"
#include "platform/values/Literals.h"
#include "support/Station.h"

// A station that saves: EstimateSaver DATABASE FIRST ROUNDS writes estimate after estimate, each
// with a marked number of operations, edits one of them in between, and says so on standard output.
// The test kills it or runs two at once.

using estimating::EstimateDraft;

namespace {

EstimateDraft draftOf(int rows, const QString& partNo) {
    EstimateDraft draft;
    draft.header.custId = 1;
    draft.header.rfqNo = u"R"_s;
    draft.header.partNo = partNo;
    draft.header.quantity = rows; // what the routing must hold
    draft.header.estDate = QDate(2026, 3, 2);
    for (int i = 0; i < rows; ++i) {
        estimating::OperRow row;
        row.operNo = i + 1;
        row.time = i + 0.5;
        draft.operations.push_back(row);
    }
    estimating::MiscRow item;
    item.itemNo = 1;
    item.quantity = values::Currency::fromInteger(rows);
    draft.fixedCosts = {item};
    return draft;
}

} // namespace

int main(int argc, char* argv[]) {
    return testsupport::runStation(
        argc, argv, [](jet::Database& database, const QStringList& words) {
            const int rounds = words[1].toInt();
            qint64 edited = 0;
            for (int i = 0; i < rounds; ++i) {
                EstimateDraft draft = draftOf(20 + i % 7, words[0] + QString::number(i));
                const qint64 estNo = estimating::saveEstimate(database, 0, draft).key;
                if (edited == 0)
                    edited = estNo;
                EstimateDraft change = draftOf(10 + i % 30, words[0] + u"edited"_s);
                estimating::saveEstimate(database, edited, change);
                EstimateDraft passing = draftOf(15, words[0] + u"gone"_s);
                estimating::deleteEstimate(database,
                                           estimating::saveEstimate(database, 0, passing).key);
                testsupport::tell(QString::number(estNo));
            }
            return 0;
        });
}
