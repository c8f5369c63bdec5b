#pragma once

#include "platform/jet/Database.h"

namespace timemgmt {

/// A dialog's title with what it is about: "Edit Parts - Hall, Ann, 3/2/2026". The title alone
/// where that can't be said. One wait each.
QString titleForEmployee(jet::Database& database, const QString& title, qint64 empId);
QString titleForAttendance(jet::Database& database, const QString& title, qint64 signId);
QString titleForWork(jet::Database& database, const QString& title, qint64 timeId);

} // namespace timemgmt
