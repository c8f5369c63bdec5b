#include "masters/Screens.h"

#include "core/records/FindDialogs.h"
#include "masters/NoteDialog.h"
#include "masters/SalaryDialogs.h"
#include "masters/frmCustomer.h"
#include "masters/frmEmployee.h"
#include "masters/frmVendor.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

namespace masters {

namespace {

/// The dialogs by which the masters go to a record.
void addFinds() {
    const QString prompt = u"&Enter the Number or Name Here:"_s;
    core::addFind({u"frmCustFind"_s,
                   u"Goto Customers"_s,
                   prompt,
                   {{u"optFind1"_s, u"List By Customer &Name"_s,
                     u"SELECT * FROM Customer WHERE Company LIKE '"_s},
                    {u"optFind2"_s, u"List By Customer N&umber"_s,
                     u"SELECT * FROM Customer WHERE CustID LIKE '"_s}},
                   u"frmCustFound"_s,
                   u"frmCustomer"_s},
                  {u"frmCustFound"_s,
                   u"Customer Found"_s,
                   u"sprCustFound"_s,
                   {{u"Cust. #"_s, u"Custid"_s, 8}, {u"Company Name"_s, u"company"_s, 40}}});
    core::addFind({u"frmVendFind"_s,
                   u"Goto Vendors"_s,
                   prompt,
                   {{u"optFind1"_s, u"List By Vendor &Name"_s,
                     u"SELECT * FROM Vendor WHERE Company LIKE '"_s},
                    {u"optFind2"_s, u"List By Vendor N&umber"_s,
                     u"SELECT * FROM Vendor WHERE VendID LIKE '"_s}},
                   u"frmVendFound"_s,
                   u"frmVendor"_s},
                  {u"frmVendFound"_s,
                   u"Vendor Found"_s,
                   u"sprVendFound"_s,
                   {{u"Vend. #"_s, u"VendID"_s, 8}, {u"Company Name"_s, u"company"_s, 40}}});
    const QString employees = u"SELECT EmpID, FirstName, LastName FROM Employee WHERE "_s;
    core::addFind({u"frmEmpFind"_s,
                   u"Goto Employees"_s,
                   prompt,
                   {{u"optFind1"_s, u"List By Las&t Name"_s, employees + u"LastName LIKE '"_s},
                    {u"optFind2"_s, u"List By &First Name"_s, employees + u"FirstName LIKE '"_s},
                    {u"optFind3"_s, u"List By Employee N&umber"_s, employees + u"EmpID LIKE '"_s}},
                   u"frmEmpFound"_s,
                   u"frmEmployee"_s},
                  {u"frmEmpFound"_s,
                   u"Employee Found"_s,
                   u"sprEmpFound"_s,
                   {{u"Emp. #"_s, u"EmpID"_s, 8},
                    {u"First Name"_s, u"FirstName"_s, 20},
                    {u"Last Name"_s, u"LastName"_s, 20}}});
}

} // namespace

void registerScreens() {
    using screen::Forms;
    Forms::add<frmCustomer>();
    Forms::add<frmVendor>();
    Forms::add<frmEmployee>();
    addFinds();
    Forms::add<frmEmpSalary>();
    for (const auto& [name, title] : {std::pair{u"frmSalaryAdd"_s, u"Add Salary"_s},
                                      std::pair{u"frmSalaryEdit"_s, u"Edit Salary"_s}})
        Forms::add(name, [name = name, title = title] {
            return std::make_unique<SalaryForm>(name, title);
        });
    Forms::add(u"frmQuoteRemarks"_s, [] {
        return std::make_unique<NoteForm>(u"frmQuoteRemarks"_s, u"Quote Remarks"_s,
                                          u"txtRemarks"_s);
    });
    Forms::add(u"frmQuoteNotes"_s, [] {
        return std::make_unique<NoteForm>(u"frmQuoteNotes"_s, u"Quote Notes"_s, u"txtNotes"_s);
    });
}

} // namespace masters
