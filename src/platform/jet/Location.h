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

/// The password in a server's URI, before the host or among the options, as it stands there; empty
/// if there is none.
QString passwordOf(const QString& uri);

/// A server's URI as it may be shown: without its password. A path stays as it is.
QString withoutPassword(const QString& uri);

/// A text from the server's side in which the URI's password may stand, with *** in its place.
QString withoutPassword(const QString& text, const QString& uri);

} // namespace jet
