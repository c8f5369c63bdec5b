#pragma once

#include <QString>

namespace estimating {

/// What "frmOperAddEdit" offers.
class OperationDialog {
  public:
    virtual ~OperationDialog() = default;
    /// `mode` is "New" or "Edit"; an empty `operType` means in-house; a new in-house operation
    /// starts in the department (0 for none). Returns whether anything was saved.
    virtual bool ShowForm(const QString& mode, qint64 operNo, qint64 departmentId,
                          const QString& operType) = 0;
};

/// What "frmOperDeptAddEdit" offers.
class DepartmentDialog {
  public:
    virtual ~DepartmentDialog() = default;
    /// `mode` is "New" or "Edit". Returns whether anything was saved.
    virtual bool ShowForm(const QString& mode, qint64 id) = 0;
};

} // namespace estimating
