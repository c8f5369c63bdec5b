#pragma once

#include <QString>

namespace desk {

/// What other screens ask of a module's list.
class ListScreen {
  public:
    virtual ~ListScreen() = default;
    /// Chooses a view by its name; nothing where there is none.
    virtual void showView(const QString& view) = 0;
};

} // namespace desk
