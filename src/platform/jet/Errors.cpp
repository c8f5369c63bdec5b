#include "platform/jet/Error.h"
#include "platform/values/Literals.h"

namespace jet {

Error duplicateError() {
    return Error(errors::duplicate,
                 u"The changes you requested to the table were not successful because "
                 "they would create duplicate values in the index, primary key, or "
                 "relationship."_s);
}

Error fieldTooSmallError() {
    return Error(errors::fieldTooSmall,
                 u"The field is too small to accept the amount of data you attempted "
                 "to add. Try inserting or pasting less data."_s);
}

Error requiredFieldError(const QString& field) {
    return Error(errors::requiredField, u"The field '%1' must have a value."_s.arg(field));
}

Error typeMismatchError() {
    return Error(errors::typeMismatch, u"Data type mismatch in criteria expression."_s);
}

Error lockedError() {
    return Error(errors::locked,
                 u"Could not update; another station is writing to the database."_s);
}

Error overflowError() {
    return Error(errors::overflow, u"Overflow"_s);
}

} // namespace jet
