#include "accounting/ImportMembers.h"

#include "platform/values/Literals.h"

namespace accounting {

namespace {

using Kind = ImportColumn::Kind;

ImportMember customers() {
    return {
        .formName = u"frmImportCustomer"_s,
        .caption = u"Import/Export Customers"_s,
        .kind = customerKind,
        .table = u"customer"_s,
        .key = u"CustID"_s,
        .nameColumns = {u"Company"_s},
        .numberTitle = u"Customer #"_s,
        .nameTitle = u"Customer"_s,
        .one = u"customer"_s,
        .exported = u"customer(s)"_s,
        .imported = u"customer(s)"_s,
        .inUse = u"The company "_s,
        .inUseTitle = u"Company already exists"_s,
        .columns =
            {{u"Customer"_s, 26, u"Name"_s, {u"Company"_s}},
             {u"Contact"_s, 16, u"Contact"_s, {u"Contact"_s, u"InContact"_s}},
             {u"Phone"_s, 14, u"Phone"_s, {u"Phone"_s, u"InPhone"_s}},
             {u"Fax"_s, 14, u"Fax"_s, {u"Fax"_s, u"InFax"_s}},
             {u"Alt. Phone"_s, 14, u"AltPhone"_s, {u"InAltPhone"_s}},
             {u"Bill Address1"_s, 20, u"BillAddress/Addr2"_s, {u"BillAddress1"_s, u"Address1"_s}},
             {u"Bill Address2"_s, 20, u"BillAddress/Addr3"_s, {u"BillAddress2"_s, u"Address2"_s}},
             {u"BillCity"_s, 14, u"BillAddress/City"_s, {u"BillCity"_s, u"City"_s}},
             {u"BillZip"_s, 9, u"BillAddress/PostalCode"_s, {u"BillZip"_s, u"Zip"_s}},
             {u"BillCountry"_s,
              12,
              u"BillAddress/Country"_s,
              {u"BillCountry"_s, u"Country"_s},
              Kind::Country,
              u"Billing address country "_s},
             {u"Ship Address1"_s, 20, u"ShipAddress/Addr2"_s, {u"ShipAddress1"_s}},
             {u"Ship Address2"_s, 20, u"ShipAddress/Addr3"_s, {u"ShipAddress2"_s}},
             {u"Ship City"_s, 14, u"ShipAddress/City"_s, {u"ShipCity"_s}},
             {u"ShipZip"_s, 9, u"ShipAddress/PostalCode"_s, {u"ShipZip"_s}},
             {u"ShipCountry"_s,
              12,
              u"ShipAddress/Country"_s,
              {u"ShipCountry"_s},
              Kind::Country,
              u"Shipping address country "_s},
             {u"Alt. Contact"_s, 16, u"AltContact"_s, {u"InAltContact"_s}},
             {u"Bill State"_s, 10, u"BillAddress/State"_s, {u"BillState"_s, u"State"_s}},
             {u"Ship State"_s, 10, u"ShipAddress/State"_s, {u"ShipState"_s}},
             {u"Email"_s, 20, u"Email"_s, {u"Email"_s, u"InEmail"_s}},
             {u"Terms"_s, 12, u"TermsRef/FullName"_s, {u"Terms"_s}, Kind::Terms}},
        .defaults = {{u"FOB"_s, u"FOB"_s},
                     {u"Shipping"_s, u"Shipping"_s},
                     {u"QteHeader"_s, u"QteHeader"_s},
                     {u"QteValid"_s, u"QteVMessage"_s}}};
}

ImportMember vendors() {
    const QString address = u"VendorAddress/"_s;
    return {
        .formName = u"frmImportVendor"_s,
        .caption = u"Import/Export Vendors"_s,
        .kind = vendorKind,
        .table = u"vendor"_s,
        .key = u"VendID"_s,
        .nameColumns = {u"Company"_s},
        .numberTitle = u"Vendor #"_s,
        .nameTitle = u"Vendor"_s,
        .one = u"vendor"_s,
        .exported = u"vendor(s)"_s,
        .imported = u"Vendor(s)"_s,
        .inUse = u"The company "_s,
        .inUseTitle = u"Company already exists"_s,
        .columns = {{u"Vendor"_s, 26, u"Name"_s, {u"Company"_s}},
                    {u"Contact"_s, 16, u"Contact"_s, {u"Contact"_s, u"BillContact"_s}},
                    {u"Phone"_s, 14, u"Phone"_s, {u"Phone"_s, u"BillPhone"_s}},
                    {u"Fax"_s, 14, u"Fax"_s, {u"Fax"_s, u"BillFax"_s}},
                    {u"Alt. Phone"_s, 14, u"AltPhone"_s, {u"AltPhone"_s}},
                    {u"Address1"_s, 20, address + u"Addr2"_s, {u"BillAddress1"_s, u"Address1"_s}},
                    {u"Address2"_s, 20, address + u"Addr3"_s, {u"BillAddress2"_s, u"Address2"_s}},
                    {u"City"_s, 14, address + u"City"_s, {u"BillCity"_s, u"City"_s}},
                    {u"State"_s, 10, address + u"State"_s, {u"BillState"_s, u"State"_s}},
                    {u"Zip"_s, 9, address + u"PostalCode"_s, {u"BillZip"_s, u"Zip"_s}},
                    {u"Country"_s,
                     12,
                     address + u"Country"_s,
                     {u"BillCountry"_s, u"Country"_s},
                     Kind::Country,
                     u"Billing address country "_s},
                    {u"Alt. Contact"_s, 16, u"AltContact"_s, {u"AltContact"_s}},
                    {u"Email"_s, 20, u"Email"_s, {u"Email"_s, u"BillEmail"_s}},
                    {u"Terms"_s, 12, u"TermsRef/FullName"_s, {u"Terms"_s}, Kind::Terms}},
        .defaults = {{u"FOB"_s, u"vFOB"_s}, {u"Shipping"_s, u"vShipping"_s}}};
}

ImportMember employees() {
    const QString address = u"EmployeeAddress/"_s;
    return {.formName = u"frmImportEmployee"_s,
            .caption = u"Import/Export Employees"_s,
            .kind = employeeKind,
            .table = u"employee"_s,
            .key = u"EmpID"_s,
            .nameColumns = {u"Firstname"_s, u"Lastname"_s},
            .queriesAll = true,
            .numberTitle = u"Employee #"_s,
            .nameTitle = u"Employee"_s,
            .one = u"employee"_s,
            .exported = u"employee(s)"_s,
            .imported = u"employee(s)"_s,
            .inUse = u"The employee "_s,
            .inUseTitle = u"Employee already exists"_s,
            .columns = {{u"Employee"_s, 26, u"Name"_s, {}},
                        {u"First Name"_s, 14, u"FirstName"_s, {u"Firstname"_s}},
                        {u"Last Name"_s, 16, u"LastName"_s, {u"Lastname"_s}},
                        {u"Address1"_s, 20, address + u"Addr1"_s, {u"Address1"_s}},
                        {u"Address2"_s, 20, address + u"Addr2"_s, {u"Address2"_s}},
                        {u"City"_s, 14, address + u"City"_s, {u"City"_s}},
                        {u"State"_s, 10, address + u"State"_s, {u"State"_s}},
                        {u"Zip"_s, 9, address + u"PostalCode"_s, {u"Zip"_s}},
                        {u"Phone"_s, 14, u"Phone"_s, {u"Phone"_s}},
                        {u"Hire Date"_s, 12, u"HiredDate"_s, {u"HireDate"_s}, Kind::Date},
                        {u"Released"_s, 12, u"ReleasedDate"_s, {u"Terminate"_s}, Kind::Date},
                        {u"Status"_s, 12, u"IsActive"_s, {u"EmpStatus"_s}}},
            .defaults = {}};
}

ImportMember terms() {
    return {.formName = u"frmImportTerm"_s,
            .caption = u"Import/Export Terms"_s,
            .kind = termsKind,
            .table = u"terms"_s,
            .key = u"index"_s,
            .nameColumns = {u"description"_s},
            .hasMarks = false,
            .numberTitle = u"Number"_s,
            .nameTitle = u"Terms"_s,
            .one = u"term"_s,
            .exported = u"Term(s)"_s,
            .imported = u"Term(s)"_s,
            .inUse = u"The term "_s,
            .inUseTitle = u"Term already exists"_s,
            .columns = {{u"Terms"_s, 30, u"Name"_s, {u"description"_s}},
                        {u"Net Due"_s, 10, u"StdDueDays"_s, {u"netdue"_s}, Kind::Whole}},
            .defaults = {}};
}

} // namespace

const std::vector<ImportMember>& importMembers() {
    static const std::vector<ImportMember> members{customers(), vendors(), employees(), terms()};
    return members;
}

} // namespace accounting
