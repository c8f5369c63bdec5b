#pragma once

#include "platform/controls/Event.h"
#include "platform/jet/Value.h"

#include <QString>

class QWidget;

namespace controls {

/// What every entry field can do, whatever its kind, so that a module can copy a row to its fields
/// and back by a table of column and field.
class Field {
  public:
    virtual ~Field() = default;

    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
    /// The content as it goes into a column; an empty date or number is Null.
    virtual jet::Value value() const { return jet::Value(text()); }
    /// Shows a column's content; Null shows as empty.
    virtual void setValue(const jet::Value& value) { setText(value.toText()); }
    virtual void clear() { setText(QString()); }

    /// A locked field shows and copies its text but takes none.
    virtual void setLocked(bool locked) = 0;
    virtual bool isLocked() const = 0;

    virtual QWidget* widget() = 0;

    Event<> entered; ///< got the focus
    Event<> left;    ///< lost the focus, after its own reformatting
    Event<> changed; ///< the text changed, by the user or the program
};

} // namespace controls
