#pragma once

#include "setup/takeover/OldFile.h"
#include "setup/takeover/Remarks.h"
#include "setup/takeover/TableTaker.h"

#include <QDateTime>

namespace takeover {

/// Everything that a report of a takeover tells.
struct ReportFacts {
    QString file, md5;
    QDateTime started;
    qint64 milliseconds = 0;
    OldCatalogue catalogue;
    std::vector<TableResult> tables;
    std::vector<Remarks::Entry> remarks;
    QStringList added, damages;
    bool accepted = true; ///< false: nothing was taken over
    QString valuesFile;   ///< of the values that aren't as they were; empty where there are none
};

/// "20,527 of 20,527 rows, 12 of 57 tables with remarks".
QString summaryOf(const ReportFacts& facts);
QString reportText(const ReportFacts& facts);

} // namespace takeover
