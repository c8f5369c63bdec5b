#pragma once

#include <QIcon>

namespace controls::pictures {

/// Under the names that the screens give them. A picture never tells by its colour alone.
QIcon folder();
QIcon openFolder();
QIcon page();        ///< a record
QIcon item();        ///< a stock item
QIcon flaggedItem(); ///< with a flag: below its minimum
QIcon greenLight();  ///< chosen: a tick
QIcon redLight();    ///< dropped: a cross
QIcon running();     ///< going on right now

} // namespace controls::pictures
