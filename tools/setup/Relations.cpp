#include "setup/Relations.h"

#include "platform/values/Literals.h"

namespace setup {

const std::vector<Reference>& references() {
    static const std::vector<Reference> all = {
        {u"Estimate"_s, u"CustID"_s, u"Customer"_s, u"Custid"_s},
        {u"EstOper"_s, u"EstNo"_s, u"Estimate"_s, u"EstNo"_s},
        {u"EstOper"_s, u"OperNo"_s, u"Operation"_s, u"OperNo"_s},
        {u"EstMiscCost"_s, u"EstNo"_s, u"Estimate"_s, u"EstNo"_s},
        {u"EstOperNote"_s, u"ID"_s, u"EstOper"_s, u"ID"_s},
        {u"Job"_s, u"CustID"_s, u"Customer"_s, u"Custid"_s},
        {u"JobOper"_s, u"JobNo"_s, u"Job"_s, u"JobNo"_s},
        {u"JobOper"_s, u"OperNo"_s, u"Operation"_s, u"OperNo"_s},
        {u"JobMiscCost"_s, u"JobNo"_s, u"Job"_s, u"JobNo"_s},
        {u"JobOperNote"_s, u"ID"_s, u"JobOper"_s, u"ID"_s},
        {u"JobOperSchedule"_s, u"JobNo"_s, u"Job"_s, u"JobNo"_s, true},
        {u"JobShip"_s, u"JobNo"_s, u"Job"_s, u"JobNo"_s, true},
        {u"JobShip"_s, u"ShippedByEmpID"_s, u"Employee"_s, u"EmpID"_s},
        {u"Sign_in"_s, u"EmpID"_s, u"Employee"_s, u"EmpID"_s},
        {u"Timelog"_s, u"EmpID"_s, u"Employee"_s, u"EmpID"_s},
        {u"Timelog"_s, u"JobNo"_s, u"Job"_s, u"JobNo"_s},
        {u"EmployeeSalary"_s, u"EmpID"_s, u"Employee"_s, u"EmpID"_s},
        {u"DefaultSetOper"_s, u"SetNo"_s, u"DefaultSet"_s, u"SetNo"_s},
        {u"DefaultSetOper"_s, u"OperNo"_s, u"Operation"_s, u"OperNo"_s},
        {u"RFQItem"_s, u"VOrderKey"_s, u"RFQVendor"_s, u"VOrderKey"_s},
        {u"RFQVendor"_s, u"OrderNumber"_s, u"RFQ"_s, u"PONumber"_s},
        {u"POVendor"_s, u"OrderNumber"_s, u"PO"_s, u"PONumber"_s},
        {u"POItem"_s, u"PONumber"_s, u"PO"_s, u"PONumber"_s},
        {u"POReceived"_s, u"PONumber"_s, u"PO"_s, u"PONumber"_s},
        {u"Items"_s, u"Type"_s, u"ItemTypes"_s, u"ID"_s},
        {u"Items"_s, u"Location"_s, u"ItemLocations"_s, u"ID"_s},
        {u"ItemTypes"_s, u"Parent"_s, u"ItemTypes"_s, u"ID"_s},
        {u"ItemLocations"_s, u"Parent"_s, u"ItemLocations"_s, u"ID"_s},
        {u"ItemIssue"_s, u"ItemID"_s, u"Items"_s, u"ID"_s},
        {u"ItemReStock"_s, u"ItemID"_s, u"Items"_s, u"ID"_s},
        {u"ShiftsTimer"_s, u"ShiftsID"_s, u"Shifts"_s, u"ID"_s},
        {u"Users"_s, u"usergroupid"_s, u"Groups"_s, u"groupid"_s, true},
        {u"SecurityGroups"_s, u"groupid"_s, u"Groups"_s, u"groupid"_s},
        {u"SecurityGroups"_s, u"objectID"_s, u"SecurityObjects"_s, u"objectid"_s},
        {u"SecurityUsers"_s, u"id"_s, u"Users"_s, u"ID"_s},
        {u"SecurityUsers"_s, u"objectID"_s, u"SecurityObjects"_s, u"objectid"_s},
    };
    return all;
}

const std::vector<UniqueColumns>& uniqueColumns() {
    static const std::vector<UniqueColumns> all = {
        {u"Country"_s, {u"code"_s}},
        {u"DefaultSetOper"_s, {u"SetNo"_s, u"SeqNo"_s}},
        {u"OperNote"_s, {u"OperNo"_s}},
        {u"POItem"_s, {u"ItemKey"_s}},
        {u"RFQItem"_s, {u"ItemKey"_s}},
        {u"Reports"_s, {u"Name"_s}},
        {u"RfqNotes"_s, {u"CustID"_s, u"RFQNo"_s}},
        {u"SecurityGroups"_s, {u"groupid"_s, u"objectID"_s}},
        {u"SecurityObjects"_s, {u"objectid"_s}},
        {u"SecurityUsers"_s, {u"id"_s, u"objectID"_s}},
        {u"Users"_s, {u"UserID"_s}},
    };
    return all;
}

} // namespace setup
