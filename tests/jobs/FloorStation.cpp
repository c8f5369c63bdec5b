#include "platform/values/Literals.h"
#include "support/Station.h"

#include <poll.h>
#include <unistd.h>

// The shop floor at work on one job: FloorStation DATABASE JOB OPERATION ITEM. Each round begins
// and ends a stretch of a quarter of an hour on the operation, adds the time to it, takes one piece
// of an item from stock for the job, and says so on standard output. The round in which standard
// input ends finishes the operation and is the last.

namespace {

bool inputHasEnded() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, 0) > 0;
}

} // namespace

int main(int argc, char* argv[]) {
    return testsupport::runStation(
        argc, argv, [](jet::Database& database, const QStringList& words) {
            const QString &job = words[0], &operation = words[1], &item = words[2];
            for (bool last = false; !last;) {
                last = inputHasEnded();
                const QString status = last ? u"F"_s : u"D"_s;
                database.execute(
                    u"INSERT INTO Timelog (EmpID, JobNo, OperNo, Status, "
                    "StartDate) VALUES(1,%1,%2,'A',#3/2/2026 8:00 AM#)"_s.arg(job, operation));
                const QString id = QString::number(database.lastCounter());
                database.execute(u"UPDATE Timelog SET SuspDate = #3/2/2026 8:15 AM#, "
                                 "AccumTime = 0.25, Status = '%1' WHERE ID = %2"_s.arg(status, id));
                const QString ofJob = u" WHERE JobNo = "_s + job;
                const int rows =
                    database.execute(
                        u"UPDATE JobOper SET OperTime_Amount = OperTime_Amount "
                        "+ 0.25, Status = '%1'%2 AND OperNo = %3"_s.arg(status, ofJob, operation)) +
                    database.execute(u"UPDATE JobMiscCost SET Quantity = Quantity + 1, "
                                     "CostAmount = UnitPrice * (Quantity + 1)%1 AND "
                                     "ItemNo = %2"_s.arg(ofJob, item));
                if (rows != 2)
                    throw std::runtime_error("the updates met not two rows");
                testsupport::tell(u"booked"_s);
            }
            return 0;
        });
}
