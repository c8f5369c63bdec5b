#pragma once

#include <QString>

namespace core {

/// A screen with a history of its entry, as the shell's Edit menu asks for it.
class UndoScreen {
  public:
    virtual ~UndoScreen() = default;
    /// What is being typed is a step too: before they are named.
    virtual void settleEntry() = 0;
    /// What would be taken back or done again: "change of Quantity"; empty where there is nothing.
    virtual QString undoName() const = 0;
    virtual QString redoName() const = 0;
    virtual void undoEntry() = 0;
    virtual void redoEntry() = 0;
};

} // namespace core
