#pragma once

#include "platform/values/Text.h"

#include <QString>
#include <QStringList>

namespace controls {

/// A column of a grid.
struct GridColumn {
    enum class Kind {
        Text,
        Number,  ///< right-aligned, sorts by value
        Picture, ///< an icon, answers clicks and the space bar
        Check,   ///< a box; its text is "1" or "0", and any number but 0 or "True" shows as checked
        Combo,   ///< edited through a list of `choices`, typing allowed
    };

    QString title;
    int characters = 12; ///< width to begin with
    Kind kind = Kind::Text;
    bool editable = false;
    values::KeyFilter filter = {};
    QStringList choices = {};
    int limit = 0;
    bool stretches = false; ///< takes the room that the other columns leave, instead of the last
    bool hidden = false;    ///< carries what isn't shown, such as a key
};

} // namespace controls
