#include "inventory/StockEmployees.h"

#include "core/MirsaMain.h"
#include "platform/values/Literals.h"

namespace inventory {

QString activeEmployeesSelect() {
    return u"SELECT EmpID AS ID, (LastName + ', ' + FirstName) AS [Name] FROM Employee WHERE "
           "EmpStatus = 'Active' ORDER BY LastName, FirstName"_s;
}

bool fillActiveEmployees(controls::DataCombo* combo) {
    jet::Recordset set =
        core::MainDatabase().openRecordset(activeEmployeesSelect(), jet::RecordsetType::Snapshot);
    combo->setRows(set, u"Name"_s, u"ID"_s);
    return !set.isEmpty();
}

} // namespace inventory
