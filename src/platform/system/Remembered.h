#pragma once

#include <QString>
#include <QVariant>

namespace platform {

/// What the program remembers from day to day about how somebody works: columns, window places,
/// the last sign-in. It lies in the user's own configuration folder, never in the database, and
/// losing it costs nothing but comfort: a folder that can't be written is passed over in silence.
enum class Whose {
    Person,  ///< of whoever is signed in, see setPerson()
    Station, ///< of everybody who works under this account of the machine
};

/// Keys are paths: "lists/frmjob/sproper/columns". `fallback` where nothing was remembered.
QVariant remembered(const QString& key, const QVariant& fallback = {}, Whose whose = Whose::Person);
void remember(const QString& key, const QVariant& value, Whose whose = Whose::Person);

/// The folder that it lies in, for what has files of its own there.
QString rememberedFolder();

/// The signed-in user's name, as the part of the store that is his; letter case doesn't matter.
void setPerson(const QString& name);

/// Writes what isn't written yet: before the process is ended.
void writeRemembered();

/// Where it is kept from now on; tests give a file of their own. An empty path is the user's
/// configuration folder.
void keepRememberedIn(const QString& file);

} // namespace platform
