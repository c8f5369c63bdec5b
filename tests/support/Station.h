#pragma once

#include "platform/jet/Database.h"

#include <QStringList>

#include <functional>

namespace testsupport {

/// What main() of a station returns that a test starts beside itself, or kills. Its first word is
/// the database; `work` gets the others. An error goes to standard error and gives 1.
int runStation(int argc, char* argv[],
               const std::function<int(jet::Database&, const QStringList&)>& work);
/// A line on standard output, there at once.
void tell(const QString& line);

} // namespace testsupport
