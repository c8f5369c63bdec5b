#pragma once

#include <QString>
#include <QStringList>

namespace setup {

/// What mirsa-setup does to a program folder. Each throws keeping::Refusal or jet::Error with
/// nothing half done, and returns what to tell, a line each.

/// Makes the folder's Mirsa.mdb with what a delivered database holds. Refuses where one is.
QStringList makeNew(const QString& folder);

/// Sets up the database at a URI, unless it is set up already, and lets the folder use it.
QStringList setUpServer(const QString& uri, const QString& folder);

/// Adds what the folder's database lacks.
QStringList upgradeFolder(const QString& folder);

/// What there is to say about a server's address that holds a password, and about who may read it;
/// empty where it holds none.
QStringList passwordAdvice(const QString& uri, const QString& markerFile);

} // namespace setup
