#pragma once

#include "platform/screen/Forms.h"

#include <QString>
#include <QStringList>

namespace core {

/// What other screens and the shell may ask of an open record module, found by name through
/// screen::Forms.
class RecordScreen {
  public:
    virtual ~RecordScreen() = default;
    /// "Browse", "Add" or "Edit".
    virtual QString mode() const = 0;
    /// Key of the record on the screen; 0 while there is none or it isn't saved yet.
    virtual qint64 currentKey() const = 0;
    /// Shows the record with that key. False if it isn't among the rows that the screen shows, or
    /// if the screen is not in Browse; the screen then stays as it is.
    virtual bool goToRecord(qint64 key) = 0;
    /// Whether it shows the active records alone, and may show all of them.
    virtual bool showsActiveOnly() const { return false; }
    virtual void showAllRecords() {}
};

/// A record module whose records have parts that are gone to by a text key (the vendors of a
/// request).
class PartScreen {
  public:
    virtual ~PartScreen() = default;
    /// Shows that part of the current record. False if it has none of that key.
    virtual bool goToPart(const QString& key) = 0;
};

struct Draft;

/// What becomes of a draft that its user wants to open.
enum class DraftOpening {
    Opened, ///< it is the entry on the screen
    Gone,   ///< its record has been deleted
    Kept    ///< the module takes no entry just now, which has been told
};

/// A screen whose open entry is kept aside as a draft.
class DraftScreen {
  public:
    virtual ~DraftScreen() = default;
    /// Whether what the draft says is stored. The screen needn't be loaded.
    virtual bool isStored(const Draft& draft) = 0;
    virtual DraftOpening openDraft(const Draft& draft) = 0;
};

/// A screen with lists from a table that other screens change.
class LookupUser {
  public:
    virtual ~LookupUser() = default;
    /// Reads its lists of that table again; tables that it has no list of are passed over.
    virtual void refreshLookup(const QString& table) = 0;
};

/// Lets those of the named screens that are open read their lists of a table again.
inline void refreshNeighbours(const QStringList& screens, const QString& table) {
    for (const QString& name : screens) {
        if (auto* neighbour = screen::Forms::find<LookupUser>(name))
            neighbour->refreshLookup(table);
    }
}

} // namespace core
