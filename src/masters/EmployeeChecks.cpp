#include "masters/EmployeeChecks.h"

#include "platform/values/Literals.h"
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
        return {{noFirst ? Field::FirstName : Field::LastName, u"Full name required"_s,
                 u"Both Name fields must be filled out!"_s}};
    if (entry.status == u"Terminated" && !entry.terminationDate)
        return {{Field::TerminationDate, u"Termination Date required"_s,
                 u"A terminated employee must have a Termination Date!"_s}};
    if (!entry.shift)
        return {{Field::Shift, u"Work Shift required"_s, u"Work shift must be filled out!"_s}};
    if (!entry.ssn.isEmpty() && entry.ssn.size() != 9)
        return {{Field::Ssn, u"Erroneous S.S.N."_s,
                 u"The S.S.N. field must be blank or completely filled out!"_s}};
    if (!isExemptions(entry.exemptState))
        return {{Field::ExemptState, u"State Exemption Error"_s,
                 u"The State exemptions must be a number!"_s}};
    if (!isExemptions(entry.exemptFederal))
        return {{Field::ExemptFederal, u"Federal Exemption Error"_s,
                 u"The Federal exemptions must be a number!"_s}};
    if (!isExemptions(entry.exemptOther))
        return {{Field::ExemptOther, u"State Exemption Error"_s,
                 u"The \"Other\" exemptions must be a number!"_s}};
    return {};
}

int exemptions(const QString& text) {
    return values::cInt(numberOf(text));
}

std::optional<Complaint<SalaryField>> checkSalary(const SalaryEntry& entry, const QDate& today) {
    using Field = SalaryField;
    const QString missing = u"Data Missing!"_s;
    if (!entry.date)
        return {{Field::Date, {}, u"You must enter a Date!"_s}};
    if (entry.amount.trimmed().isEmpty())
        return {{Field::Amount, missing, u"You must enter a Dollar Amount!"_s}};
    if (!values::isNumeric(entry.amount) || std::abs(numberOf(entry.amount)) >= highestPay)
        return {{Field::Amount, {}, u"You must enter a Decimal Dollar value for Amount!"_s}};
    if (entry.frequency.isEmpty())
        return {{Field::Frequency, missing, u"You must enter a Frequency!"_s}};
    if (*entry.date > today)
        return {{Field::Date, u"Date Error!"_s, u"You cannot enter a future date!"_s}};
    return {};
}

} // namespace masters
