#pragma once

#include <QString>

#include <optional>

namespace estimating {

/// How a new estimate starts.
struct NewEstimate {
    enum class Way { DefaultSet, SelectOperations, CopyCurrent, CopyJob };
    Way way = Way::SelectOperations;
    bool carryCustomer = false;
    bool carryNotes = false;      ///< operation notes of the copied document
    bool useDefaultNotes = false; ///< default notes of the operations
    QString jobNo;                ///< of the job to copy, as typed
};

/// What "frmEstNew" offers.
class NewEstimateDialog {
  public:
    virtual ~NewEstimateDialog() = default;
    /// `hasCurrent`: there is a record to copy. Nothing if the user cancelled.
    virtual std::optional<NewEstimate> choose(bool hasCurrent) = 0;
};

/// What "frmMIAddEdit" offers.
class FixedCostItemDialog {
  public:
    virtual ~FixedCostItemDialog() = default;
    /// Adds an item (`itemNo` 0) or edits one; whether something was saved.
    virtual bool ShowForm(qint64 itemNo) = 0;
};

/// What "frmDefNew" offers.
class DefaultSetEditor {
  public:
    virtual ~DefaultSetEditor() = default;
    /// Makes a set (`setNo` 0) or changes one; the number of the set saved, 0 if the user
    /// cancelled.
    virtual qint64 ShowForm(qint64 setNo) = 0;
};

} // namespace estimating
