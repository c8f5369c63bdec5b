#include "masters/Screens.h"

#include "masters/FindDialogs.h"
#include "masters/NoteDialog.h"
#include "masters/SalaryDialogs.h"
#include "masters/frmCustomer.h"
#include "masters/frmEmployee.h"
#include "masters/frmVendor.h"
#include "platform/screen/Forms.h"

namespace masters {

namespace {

/// The pair of dialogs by which a record module goes to a record.
struct GoTo {
    FindForm::Descriptor find;
    FoundForm::Descriptor found;
};

void add(const GoTo& dialogs) {
    screen::Forms::add(dialogs.find.formName,
                       [find = dialogs.find] { return std::make_unique<FindForm>(find); });
    screen::Forms::add(dialogs.found.formName,
                       [found = dialogs.found] { return std::make_unique<FoundForm>(found); });
}

const controls::GridColumn::Kind number = controls::GridColumn::Kind::Number;

GoTo customers() {
    return {{QStringLiteral("frmCustFind"),
             QStringLiteral("Goto Customers"),
             QStringLiteral("&Enter the Number or Name Here:"),
             {{QStringLiteral("optFind1"), QStringLiteral("List By Customer &Name"),
               QStringLiteral("SELECT * FROM Customer WHERE Company LIKE '")},
              {QStringLiteral("optFind2"), QStringLiteral("List By Customer N&umber"),
               QStringLiteral("SELECT * FROM Customer WHERE CustID LIKE '")}},
             QStringLiteral("frmCustFound"),
             QStringLiteral("frmCustomer")},
            {QStringLiteral("frmCustFound"),
             QStringLiteral("Customer Found"),
             QStringLiteral("sprCustFound"),
             {{.title = QStringLiteral("Cust. #"), .characters = 8, .kind = number},
              {.title = QStringLiteral("Company Name"), .characters = 40}},
             {QStringLiteral("Custid"), QStringLiteral("company")}}};
}

GoTo vendors() {
    return {{QStringLiteral("frmVendFind"),
             QStringLiteral("Goto Vendors"),
             QStringLiteral("&Enter the Number or Name Here:"),
             {{QStringLiteral("optFind1"), QStringLiteral("List By Vendor &Name"),
               QStringLiteral("SELECT * FROM Vendor WHERE Company LIKE '")},
              {QStringLiteral("optFind2"), QStringLiteral("List By Vendor N&umber"),
               QStringLiteral("SELECT * FROM Vendor WHERE VendID LIKE '")}},
             QStringLiteral("frmVendFound"),
             QStringLiteral("frmVendor")},
            {QStringLiteral("frmVendFound"),
             QStringLiteral("Vendor Found"),
             QStringLiteral("sprVendFound"),
             {{.title = QStringLiteral("Vend. #"), .characters = 8, .kind = number},
              {.title = QStringLiteral("Company Name"), .characters = 40}},
             {QStringLiteral("VendID"), QStringLiteral("company")}}};
}

GoTo employees() {
    return {{QStringLiteral("frmEmpFind"),
             QStringLiteral("Goto Employees"),
             QStringLiteral("&Enter the Number or Name Here:"),
             {{QStringLiteral("optFind1"), QStringLiteral("List By Las&t Name"),
               QStringLiteral("SELECT EmpID, FirstName, LastName FROM Employee WHERE LastName "
                              "LIKE '")},
              {QStringLiteral("optFind2"), QStringLiteral("List By &First Name"),
               QStringLiteral("SELECT EmpID, FirstName, LastName FROM Employee WHERE FirstName "
                              "LIKE '")},
              {QStringLiteral("optFind3"), QStringLiteral("List By Employee N&umber"),
               QStringLiteral("SELECT EmpID, FirstName, LastName FROM Employee WHERE EmpID LIKE "
                              "'")}},
             QStringLiteral("frmEmpFound"),
             QStringLiteral("frmEmployee")},
            {QStringLiteral("frmEmpFound"),
             QStringLiteral("Employee Found"),
             QStringLiteral("sprEmpFound"),
             {{.title = QStringLiteral("Emp. #"), .characters = 8, .kind = number},
              {.title = QStringLiteral("First Name"), .characters = 20},
              {.title = QStringLiteral("Last Name"), .characters = 20}},
             {QStringLiteral("EmpID"), QStringLiteral("FirstName"), QStringLiteral("LastName")}}};
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
    for (const auto& [name, title] :
         {std::pair{QStringLiteral("frmSalaryAdd"), QStringLiteral("Add Salary")},
          std::pair{QStringLiteral("frmSalaryEdit"), QStringLiteral("Edit Salary")}})
        Forms::add(name, [name = name, title = title] {
            return std::make_unique<SalaryForm>(name, title);
        });
    Forms::add(QStringLiteral("frmQuoteRemarks"), [] {
        return std::make_unique<NoteForm>(QStringLiteral("frmQuoteRemarks"),
                                          QStringLiteral("Quote Remarks"),
                                          QStringLiteral("txtRemarks"));
    });
    Forms::add(QStringLiteral("frmQuoteNotes"), [] {
        return std::make_unique<NoteForm>(QStringLiteral("frmQuoteNotes"),
                                          QStringLiteral("Quote Notes"),
                                          QStringLiteral("txtNotes"));
    });
}

} // namespace masters
