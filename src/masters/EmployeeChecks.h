#pragma once

#include "platform/screen/Complaint.h"

#include <QDate>
#include <QString>

#include <optional>

namespace masters {

/// What is looked at before an employee is saved.
struct EmployeeEntry {
    QString firstName, lastName;
    QString status;
    bool terminationDate = false; ///< there is one
    bool shift = false;           ///< one of the list is chosen
    QString ssn;                  ///< digits only
    QString exemptState, exemptFederal, exemptOther;
};

/// The first thing that is wrong, in the order of the checks; nothing if all is well.
std::optional<screen::Complaint> checkEmployee(const EmployeeEntry& entry);

/// A tax exemption as the column takes it; empty is 0. Only for text that passed the check.
int exemptions(const QString& text);

/// What is looked at before a row of the salary history is saved.
struct SalaryEntry {
    std::optional<QDate> date;
    QString amount;
    QString frequency;
};

std::optional<screen::Complaint> checkSalary(const SalaryEntry& entry, const QDate& today);

} // namespace masters
