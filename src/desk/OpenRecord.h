#pragma once

#include <QString>

namespace desk {

/// Shows a record in its module: opens that, or brings it forward. A module that is being edited
/// stays as it is, and one that shows the active records alone is asked about before it shows all;
/// both are told in a box. False where the record isn't shown.
/// `part`: a text key within the record, such as a vendor's request.
bool openRecord(const QString& module, qint64 key, const QString& part = {});

} // namespace desk
