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

std::optional<screen::Complaint> checkEmployee(const EmployeeEntry& entry) {
    const bool noFirst = entry.firstName.trimmed().isEmpty();
    if (noFirst || entry.lastName.trimmed().isEmpty())
        return screen::Complaint{u"Both Name fields must be filled out!"_s,
                                 noFirst ? u"txtFirstName"_s : u"txtLastName"_s,
                                 u"Full name required"_s};
    if (entry.status == u"Terminated" && !entry.terminationDate)
        return screen::Complaint{u"A terminated employee must have a Termination Date!"_s,
                                 u"etxtTDate"_s, u"Termination Date required"_s};
    if (!entry.shift)
        return screen::Complaint{u"Work shift must be filled out!"_s, u"dbcShift"_s,
                                 u"Work Shift required"_s};
    if (!entry.ssn.isEmpty() && entry.ssn.size() != 9)
        return screen::Complaint{u"The S.S.N. field must be blank or completely filled out!"_s,
                                 u"mskSSN"_s, u"Erroneous S.S.N."_s};
    if (!isExemptions(entry.exemptState))
        return screen::Complaint{u"The State exemptions must be a number!"_s, u"txtEState"_s,
                                 u"State Exemption Error"_s};
    if (!isExemptions(entry.exemptFederal))
        return screen::Complaint{u"The Federal exemptions must be a number!"_s, u"txtEFederal"_s,
                                 u"Federal Exemption Error"_s};
    if (!isExemptions(entry.exemptOther))
        return screen::Complaint{u"The \"Other\" exemptions must be a number!"_s, u"txtEOther"_s,
                                 u"State Exemption Error"_s};
    return {};
}

int exemptions(const QString& text) {
    return values::cInt(numberOf(text));
}

std::optional<screen::Complaint> checkSalary(const SalaryEntry& entry, const QDate& today) {
    const QString missing = u"Data Missing!"_s;
    if (!entry.date)
        return screen::Complaint{u"You must enter a Date!"_s, u"etxtDate"_s, {}};
    if (entry.amount.trimmed().isEmpty())
        return screen::Complaint{u"You must enter a Dollar Amount!"_s, u"txtAmount"_s, missing};
    if (!values::isNumeric(entry.amount) || std::abs(numberOf(entry.amount)) >= highestPay)
        return screen::Complaint{
            u"You must enter a Decimal Dollar value for Amount!"_s, u"txtAmount"_s, {}};
    if (entry.frequency.isEmpty())
        return screen::Complaint{u"You must enter a Frequency!"_s, u"cboFrequency"_s, missing};
    if (*entry.date > today)
        return screen::Complaint{u"You cannot enter a future date!"_s, u"etxtDate"_s,
                                 u"Date Error!"_s};
    return {};
}

} // namespace masters
