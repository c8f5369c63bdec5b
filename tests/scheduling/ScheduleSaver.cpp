// A station of its own that saves one job's schedule again and again: every entry of a round gets
// the round's number as its text. Arguments: the database, the job. A line of output for each save.

#include "platform/values/Literals.h"
#include "scheduling/ScheduleChart.h"
#include "support/Station.h"

int main(int argc, char* argv[]) {
    return testsupport::runStation(
        argc, argv, [](jet::Database& database, const QStringList& words) {
            const qint64 jobNo = words[0].toLongLong();
            for (int round = 0; round < 100000; ++round) {
                gantt::Model model;
                scheduling::ScheduleChart chart(model);
                const auto job = scheduling::loadJob(database, jobNo);
                model.addColumn(u"Operation"_s);
                chart.showJob(*job);
                for (int row = 1; row <= model.rowCount(); ++row) {
                    for (int number = 1; number <= model.barCount(row); ++number) {
                        gantt::Bar bar = model.bar(row, number);
                        bar.text = QString::number(round);
                        model.setBar(row, number, bar);
                    }
                }
                if (scheduling::saveEntries(database, {jobNo}, chart.changes(),
                                            scheduling::JobDates{jobNo, job->limits.dateIn,
                                                                 job->limits.dueDate, round % 4,
                                                                 1}))
                    return 1;
                testsupport::tell(u"saved"_s);
            }
            return 0;
        });
}
