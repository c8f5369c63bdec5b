#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/jet/Database.h"

#include <vector>

namespace screen {
class Fields;
class Form;
} // namespace screen

namespace timemgmt {

/// An employee by number or by name: two combos that follow each other.
class EmployeeChoice {
  public:
    /// Makes "dbcEmpNum" and "txtEmpName" at the next places of the fields.
    EmployeeChoice(screen::Form& form, screen::Fields& fields, const QString& numberLabel,
                   const QString& nameLabel);

    /// The selects that fill() takes: by number and by name.
    static std::vector<jet::WantedSet> lists(bool onlyActive);
    void fill(const jet::Recordset& byNumber, const jet::Recordset& byName);

    /// The number that is shown, be it on the list or not; 0 for none.
    qint64 empId() const;
    bool isListed() const { return !m_number->boundText().isEmpty(); }
    void choose(qint64 empId);
    controls::DataCombo* number() const { return m_number; }

    controls::Event<> changed; ///< another employee, also while somebody types
    controls::Event<> settled; ///< the employee was chosen, or the field left

  private:
    void follow(const controls::DataCombo& from, controls::DataCombo& to);
    controls::DataCombo* m_number;
    controls::DataCombo* m_name;
    bool m_following = false;
};

} // namespace timemgmt
