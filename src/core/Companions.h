#pragma once

#include <QString>
#include <QStringList>

class QObject;

namespace core {

/// What a menu entry of that name does for a program beside this one: brings its window forward, or
/// starts it from the program folder. False if the entry is none of these.
bool startCompanion(const QString& menu);
/// The entries whose programs don't stand in the program folder.
QStringList companionsMissing();
/// Opens the guide that stands in the program folder on the page of the dialog or screen in front.
void openHelp();
/// F1 in dialogs too, which the menu of the main window doesn't reach; as long as `owner` lives.
void openHelpFromDialogs(QObject* owner);

} // namespace core
