#include "platform/jet/Error.h"

namespace jet {

Error duplicateError() {
    return Error(
        errors::duplicate,
        QStringLiteral("The changes you requested to the table were not successful because "
                       "they would create duplicate values in the index, primary key, or "
                       "relationship."));
}

Error fieldTooSmallError() {
    return Error(errors::fieldTooSmall,
                 QStringLiteral("The field is too small to accept the amount of data you attempted "
                                "to add. Try inserting or pasting less data."));
}

Error requiredFieldError(const QString& field) {
    return Error(errors::requiredField,
                 QStringLiteral("The field '%1' must have a value.").arg(field));
}

Error typeMismatchError() {
    return Error(errors::typeMismatch,
                 QStringLiteral("Data type mismatch in criteria expression."));
}

Error lockedError() {
    return Error(errors::locked,
                 QStringLiteral("Could not update; another station is writing to the database."));
}

Error overflowError() {
    return Error(errors::overflow, QStringLiteral("Overflow"));
}

} // namespace jet
