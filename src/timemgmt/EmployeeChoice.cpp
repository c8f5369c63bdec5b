#include "timemgmt/EmployeeChoice.h"

#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"

#include <QScopedValueRollback>

namespace timemgmt {

EmployeeChoice::EmployeeChoice(screen::Form& form, screen::Fields& fields,
                               const QString& numberLabel, const QString& nameLabel)
    : m_number(fields.dataCombo(u"dbcEmpNum"_s, numberLabel,
                                {.limit = 9, .filter = values::keys::digits(), .characters = 8})),
      m_name(fields.dataCombo(u"txtEmpName"_s, nameLabel, {.characters = 30})) {
    form.on(m_number->changed, [this] { follow(*m_number, *m_name); });
    form.on(m_name->changed, [this] { follow(*m_name, *m_number); });
    for (controls::DataCombo* combo : {m_number, m_name}) {
        form.on(combo->chosen, [this] { settled(); });
        form.on(combo->left, [this] { settled(); });
    }
}

std::vector<jet::WantedSet> EmployeeChoice::lists(bool onlyActive) {
    const QString employees =
        u"Select (LastName + ' , ' + FirstName) as [Name], EmpId, empstatus from Employee"_s +
        (onlyActive ? u" where empstatus = 'Active'"_s : QString());
    return {employees + u" order by empid"_s, employees + u" order by LastName, FirstName"_s};
}

void EmployeeChoice::fill(const jet::Recordset& byNumber, const jet::Recordset& byName) {
    m_number->setRows(byNumber, u"EmpId"_s, u"EmpId"_s);
    m_name->setRows(byName, u"Name"_s, u"EmpId"_s);
}

qint64 EmployeeChoice::empId() const {
    return m_number->text().toLongLong();
}

void EmployeeChoice::choose(qint64 empId) {
    m_number->setText(empId == 0 ? QString() : QString::number(empId));
}

void EmployeeChoice::follow(const controls::DataCombo& from, controls::DataCombo& to) {
    if (m_following)
        return;
    const QScopedValueRollback one(m_following, true);
    if (to.boundText() != from.boundText() || from.boundText().isEmpty())
        to.setBoundText(from.boundText());
    changed();
}

} // namespace timemgmt
