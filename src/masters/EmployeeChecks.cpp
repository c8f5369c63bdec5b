#include "masters/EmployeeChecks.h"

#include "platform/values/Numbers.h"

#include <cmath>

namespace masters {

namespace {

/// The number of a text in which commas may part the thousands.
double numberOf(QString text) {
    return values::val(text.remove(u','));
}

bool isExemptions(const QString& text) {
    return text.trimmed().isEmpty() ||
           (values::isNumeric(text) && std::abs(numberOf(text)) <= 32767);
}

/// Amounts beyond this are slips of the finger, and would leave the range of money.
constexpr double highestPay = 1e12;

} // namespace

std::optional<Complaint<EmployeeField>> checkEmployee(const EmployeeEntry& entry) {
    using Field = EmployeeField;
    const bool noFirst = entry.firstName.trimmed().isEmpty();
    if (noFirst || entry.lastName.trimmed().isEmpty())
        return {{noFirst ? Field::FirstName : Field::LastName, QStringLiteral("Full name required"),
                 QStringLiteral("Both Name fields must be filled out!")}};
    if (entry.status == u"Terminated" && !entry.terminationDate)
        return {{Field::TerminationDate, QStringLiteral("Termination Date required"),
                 QStringLiteral("A terminated employee must have a Termination Date!")}};
    if (!entry.shift)
        return {{Field::Shift, QStringLiteral("Work Shift required"),
                 QStringLiteral("Work shift must be filled out!")}};
    if (!entry.ssn.isEmpty() && entry.ssn.size() != 9)
        return {{Field::Ssn, QStringLiteral("Erroneous S.S.N."),
                 QStringLiteral("The S.S.N. field must be blank or completely filled out!")}};
    if (!isExemptions(entry.exemptState))
        return {{Field::ExemptState, QStringLiteral("State Exemption Error"),
                 QStringLiteral("The State exemptions must be a number!")}};
    if (!isExemptions(entry.exemptFederal))
        return {{Field::ExemptFederal, QStringLiteral("Federal Exemption Error"),
                 QStringLiteral("The Federal exemptions must be a number!")}};
    if (!isExemptions(entry.exemptOther))
        return {{Field::ExemptOther, QStringLiteral("State Exemption Error"),
                 QStringLiteral("The \"Other\" exemptions must be a number!")}};
    return {};
}

int exemptions(const QString& text) {
    return values::cInt(numberOf(text));
}

std::optional<Complaint<SalaryField>> checkSalary(const SalaryEntry& entry, const QDate& today) {
    using Field = SalaryField;
    const QString missing = QStringLiteral("Data Missing!");
    if (!entry.date)
        return {{Field::Date, {}, QStringLiteral("You must enter a Date!")}};
    if (entry.amount.trimmed().isEmpty())
        return {{Field::Amount, missing, QStringLiteral("You must enter a Dollar Amount!")}};
    if (!values::isNumeric(entry.amount) || std::abs(numberOf(entry.amount)) >= highestPay)
        return {{Field::Amount,
                 {},
                 QStringLiteral("You must enter a Decimal Dollar value for Amount!")}};
    if (entry.frequency.isEmpty())
        return {{Field::Frequency, missing, QStringLiteral("You must enter a Frequency!")}};
    if (*entry.date > today)
        return {{Field::Date, QStringLiteral("Date Error!"),
                 QStringLiteral("You cannot enter a future date!")}};
    return {};
}

} // namespace masters
