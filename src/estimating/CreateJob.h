#pragma once

#include <QtGlobal>

namespace estimating {

/// What the dialog "frmCreatJob" offers: asks for what the estimate doesn't know and makes the job.
class CreateJobDialog {
  public:
    virtual ~CreateJobDialog() = default;
    /// Makes it from the estimate as it is stored. Number of the new job; 0 if the user cancelled
    /// or the job could not be made, which the dialog has told.
    virtual qint64 createJob(qint64 estNo) = 0;
};

} // namespace estimating
