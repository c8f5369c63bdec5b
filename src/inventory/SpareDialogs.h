#pragma once

#include "inventory/SpareParts.h"

namespace inventory {

/// What the dialogs of spare parts ask of the open list, "frmSpareParts".
class SpareList {
  public:
    virtual ~SpareList() = default;
    /// Shows a customer's records, at one location if that is given.
    virtual void showSpares(qint64 custId, const std::optional<QString>& location) = 0;
};

/// "frmSpareNew".
class NewSpareDialog {
  public:
    virtual ~NewSpareDialog() = default;
    /// Adds records; the list is told of each. Begins with that customer (0: none) and location.
    virtual void add(qint64 custId, const QString& location) = 0;
};

/// "frmSpareEdit": true if it was saved.
class EditSpareDialog {
  public:
    virtual ~EditSpareDialog() = default;
    virtual bool edit(qint64 index) = 0;
};

/// "frmSpareMove": true if the records were moved.
class MoveSpareDialog {
  public:
    virtual ~MoveSpareDialog() = default;
    virtual bool move(qint64 custId, const std::vector<qint64>& indexes) = 0;
};

/// "frmSpareFind": the part number to look for, which may be empty; nothing if the user cancelled.
class FindSpareDialog {
  public:
    virtual ~FindSpareDialog() = default;
    virtual std::optional<QString> ask() = 0;
};

} // namespace inventory
