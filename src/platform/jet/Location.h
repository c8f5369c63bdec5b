#pragma once

#include "platform/jet/Database.h"

namespace jet {

/// Opens the database of a program folder: the server that the one line of `Mirsa.server` names, if
/// there is that file, else the file `Mirsa.mdb`. Throws as Database::openFile and openServer.
std::unique_ptr<Database> openProgramFolder(const QString& folder);

/// The URI in the `Mirsa.server` of a folder; empty if the folder has none.
QString serverOfFolder(const QString& folder);

/// Whether a text is a server's URI rather than a path.
bool isServerUri(const QString& text);

} // namespace jet
