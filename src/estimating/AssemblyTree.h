#pragma once

#include <QString>

namespace estimating {

/// What "frmAssemblyInfo" offers to the estimate and the job screen.
class AssemblyTree {
  public:
    virtual ~AssemblyTree() = default;
    /// Shows the records of a customer's order (RFQ or PO number, or "ALL"); `mode` is "Estimate"
    /// or "Job", `number` the record that the tree is opened from.
    virtual void showTree(qint64 custId, const QString& order, qint64 number,
                          const QString& mode) = 0;
};

} // namespace estimating
