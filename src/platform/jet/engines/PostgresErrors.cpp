#include "platform/jet/engines/Postgres.h"

#include "platform/values/Literals.h"

namespace jet {

QByteArray serverState(const PGresult* result) {
    return PQresultErrorField(result, PG_DIAG_SQLSTATE);
}

Error serverError(const PGresult* result) {
    const QByteArray state = serverState(result);
    const auto field = [&](int code) {
        return QString::fromUtf8(PQresultErrorField(result, code));
    };
    const QString text = field(PG_DIAG_MESSAGE_PRIMARY);
    if (state == "23505")
        return duplicateError();
    if (state == "23514") {
        if (field(PG_DIAG_CONSTRAINT_NAME).endsWith(u"_width"_s))
            return fieldTooSmallError();
        return Error(errors::prohibitedValue, text);
    }
    if (state == "22001")
        return fieldTooSmallError();
    if (state == "23502")
        return requiredFieldError(field(PG_DIAG_TABLE_NAME) + u'.' + field(PG_DIAG_COLUMN_NAME));
    if (state == "22003")
        return overflowError();
    if (state == "22012")
        return Error(errors::divisionByZero, u"Division by zero"_s);
    if (state == "22P02" || state == "22007" || state == "22008" || state == "42804" ||
        state == "42883")
        return typeMismatchError();
    if (state == "21000")
        return Error(errors::severalRows,
                     u"At most one record can be returned by this subquery."_s);
    if (state == "42601")
        return Error(errors::syntax, text);
    if (state == "42P01")
        return Error(errors::noSuchTable, text);
    if (state == "42703")
        return Error(errors::tooFewParameters, u"Too few parameters. Expected 1."_s);
    if (state == "40P01" || state == "40001" || state == "55P03")
        return lockedError();
    if (state == "42501")
        return Error(errors::noPermission,
                     u"You don't have the rights for this on the database server: %1."_s.arg(text));
    if (state == "25006")
        return Error(errors::notUpdatable, notUpdatableError().text(), Failure::ReadOnly);
    if (state == "53100")
        return Error(errors::other, text, Failure::DiskFull);
    if (state.startsWith("57P") || state.startsWith("08"))
        return Error(errors::connectionFailed, u"The connection to the database server was lost."_s,
                     Failure::ConnectionLost);
    return Error(errors::other, text);
}

} // namespace jet
