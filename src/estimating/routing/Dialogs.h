#pragma once

#include "estimating/Routing.h"

#include <QString>

#include <optional>
#include <vector>

namespace estimating {

/// What "frmSelOper" offers: the operations of a new routing or of a set, in their order.
class SelectOperationsDialog {
  public:
    virtual ~SelectOperationsDialog() = default;
    /// Nothing if the user cancelled.
    virtual std::optional<std::vector<ChosenOperation>> choose() = 0;
};

/// What "frmDefSet" offers to the screens that start a new routing.
class DefaultSetDialog {
  public:
    virtual ~DefaultSetDialog() = default;
    /// Number of the set chosen.
    virtual std::optional<qint64> pickSet() = 0;
};

struct InsertedOperation {
    CatalogueOperation operation;
    bool before = true; ///< of the active row, or after it
    bool useNote = false;
};

/// What "frmInsOper" offers: one operation that is not on the routing yet.
class InsertOperationDialog {
  public:
    virtual ~InsertOperationDialog() = default;
    /// Nothing if the user cancelled or all operations are taken.
    virtual std::optional<InsertedOperation> insert(const std::vector<qint64>& taken) = 0;
};

struct InsertedItems {
    std::vector<MiscRow> rows; ///< quantity and total 0
    bool before = true;
};

/// What "frmInsItem" offers: fixed cost items that are not on the list yet.
class InsertItemsDialog {
  public:
    virtual ~InsertItemsDialog() = default;
    virtual std::optional<InsertedItems> insert(const std::vector<qint64>& taken) = 0;
};

/// The note of one row of a routing.
struct NoteRequest {
    qint64 documentNo = 0; ///< 0 while the document is being added
    int seqNo = 0;
    QString description; ///< of the operation
    bool locked = false; ///< shown only
};

/// What stood in a row's note and what stands there now; empty for no note.
struct WrittenNote {
    QString before, after;
};

/// What "frmEstOperNote" and "frmJobOperNote" offer.
class OperationNoteDialog {
  public:
    virtual ~OperationNoteDialog() = default;
    /// Nothing if the note was left as it was.
    virtual std::optional<WrittenNote> edit(const NoteRequest& request) = 0;
};

} // namespace estimating
