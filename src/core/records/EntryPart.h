#pragma once

#include "platform/jet/Value.h"

#include <QString>

#include <vector>

class QWidget;

namespace core {

/// Something of an entry that has one value at a time: a column of its header, a box.
struct EntryPart {
    QString key; ///< tells it from the others
    jet::Value value;
    QWidget* widget = nullptr; ///< where it is entered; nullptr for figures behind the screen
    bool reckoned = false;     ///< comes from the others: changes of it alone are no step
};

/// What an entry is to its history.
class EntrySubject {
  public:
    virtual ~EntrySubject() = default;
    /// All parts as they stand now, in an order in which they can be put back.
    virtual std::vector<EntryPart> entryParts() = 0;
    virtual void restorePart(const QString& key, const jet::Value& value) = 0;
    /// Parts or lines were put back: what hangs on them is to be made anew.
    virtual void entryRestored() {}
    virtual bool isInEntry() const = 0;
};

} // namespace core
