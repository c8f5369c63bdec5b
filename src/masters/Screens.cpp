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

/// The pair of dialogs by which a record module goes to a record.
struct GoTo {
    core::FindForm::Descriptor find;
    core::FoundForm::Descriptor found;
};

void add(const GoTo& dialogs) {
    screen::Forms::add(dialogs.find.formName,
                       [find = dialogs.find] { return std::make_unique<core::FindForm>(find); });
    screen::Forms::add(dialogs.found.formName, [found = dialogs.found] {
        return std::make_unique<core::FoundForm>(found);
    });
}

const controls::GridColumn::Kind number = controls::GridColumn::Kind::Number;

GoTo customers() {
    return {{u"frmCustFind"_s,
             u"Goto Customers"_s,
             u"&Enter the Number or Name Here:"_s,
             {{u"optFind1"_s, u"List By Customer &Name"_s,
               u"SELECT * FROM Customer WHERE Company LIKE '"_s},
              {u"optFind2"_s, u"List By Customer N&umber"_s,
               u"SELECT * FROM Customer WHERE CustID LIKE '"_s}},
             u"frmCustFound"_s,
             u"frmCustomer"_s},
            {u"frmCustFound"_s,
             u"Customer Found"_s,
             u"sprCustFound"_s,
             {{.title = u"Cust. #"_s, .characters = 8, .kind = number},
              {.title = u"Company Name"_s, .characters = 40}},
             {u"Custid"_s, u"company"_s}}};
}

GoTo vendors() {
    return {{u"frmVendFind"_s,
             u"Goto Vendors"_s,
             u"&Enter the Number or Name Here:"_s,
             {{u"optFind1"_s, u"List By Vendor &Name"_s,
               u"SELECT * FROM Vendor WHERE Company LIKE '"_s},
              {u"optFind2"_s, u"List By Vendor N&umber"_s,
               u"SELECT * FROM Vendor WHERE VendID LIKE '"_s}},
             u"frmVendFound"_s,
             u"frmVendor"_s},
            {u"frmVendFound"_s,
             u"Vendor Found"_s,
             u"sprVendFound"_s,
             {{.title = u"Vend. #"_s, .characters = 8, .kind = number},
              {.title = u"Company Name"_s, .characters = 40}},
             {u"VendID"_s, u"company"_s}}};
}

GoTo employees() {
    return {{u"frmEmpFind"_s,
             u"Goto Employees"_s,
             u"&Enter the Number or Name Here:"_s,
             {{u"optFind1"_s, u"List By Las&t Name"_s,
               u"SELECT EmpID, FirstName, LastName FROM Employee WHERE LastName "
               "LIKE '"_s},
              {u"optFind2"_s, u"List By &First Name"_s,
               u"SELECT EmpID, FirstName, LastName FROM Employee WHERE FirstName "
               "LIKE '"_s},
              {u"optFind3"_s, u"List By Employee N&umber"_s,
               u"SELECT EmpID, FirstName, LastName FROM Employee WHERE EmpID LIKE "
               "'"_s}},
             u"frmEmpFound"_s,
             u"frmEmployee"_s},
            {u"frmEmpFound"_s,
             u"Employee Found"_s,
             u"sprEmpFound"_s,
             {{.title = u"Emp. #"_s, .characters = 8, .kind = number},
              {.title = u"First Name"_s, .characters = 20},
              {.title = u"Last Name"_s, .characters = 20}},
             {u"EmpID"_s, u"FirstName"_s, u"LastName"_s}}};
}

} // namespace

void registerScreens() {
    using screen::Forms;
    Forms::add<frmCustomer>();
    Forms::add<frmVendor>();
    add(customers());
    add(vendors());
    Forms::add<frmEmployee>();
    add(employees());
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
