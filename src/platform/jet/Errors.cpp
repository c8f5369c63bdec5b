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
    return Error(errors::locked, u"Could not update; another station is writing to the database."_s,
                 Failure::LockNotHad);
}

Error overflowError() {
    return Error(errors::overflow, u"Overflow"_s);
}

Error rowDeletedError() {
    return Error(errors::rowDeleted, u"Record is deleted."_s);
}

Error noSuchTableError(const QString& table) {
    return Error(errors::noSuchTable,
                 u"The database engine cannot find the input table or query '%1'. "
                 "Make sure it exists and that its name is spelled correctly."_s.arg(table));
}

Error unknownFieldError(const QString& field) {
    return Error(errors::unknownField, u"The INSERT INTO statement contains the following unknown "
                                       "field name: '%1'. Make sure you have typed the name "
                                       "correctly, and try the operation again."_s.arg(field));
}

Error notUpdatableError() {
    return Error(errors::notUpdatable, u"Cannot update. Database or object is read-only."_s);
}

} // namespace jet
