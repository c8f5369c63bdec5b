#include "desk/ListKinds.h"

#include "platform/values/Literals.h"

#include <algorithm>

namespace desk {

using rows::Kind;

namespace {

// These stand in the SQL that both engines know.
const QString customerNames = u"SELECT Custid, company FROM Customer"_s;
const QString employeeNames =
    u"SELECT EmpID, coalesce(lastname, '') || ', ' || coalesce(firstname, '') FROM Employee"_s;

ListColumn number(const QString& title, const QString& field, int characters = 8) {
    return {title, characters, Kind::Number, field};
}

ListColumn text(const QString& title, const QString& field, int characters) {
    return {title, characters, Kind::Text, field};
}

ListColumn date(const QString& title, const QString& field) {
    return {title, 11, Kind::Date, field};
}

ListColumn yesNo(const QString& title, const QString& field) {
    return {title, 8, Kind::YesNo, field};
}

ListColumn money(const QString& title, const QString& field, int characters = 12) {
    return {title, characters, Kind::Money, field};
}

ListColumn named(const QString& title, const QString& field, const QString& names,
                 int characters = 26) {
    return {title, characters, Kind::Text, field, names};
}

ListColumn beside(const QString& title, Kind kind, const QString& select, int characters = 8) {
    return {title, characters, kind, {}, {}, select};
}

ListColumn summed(ListColumn column) {
    column.summed = true;
    return column;
}

ListColumn hidden(ListColumn column) {
    column.shown = false;
    return column;
}

std::vector<ListColumn> addressColumns() {
    return {text(u"Contact"_s, u"Contact"_s, 18),
            text(u"Phone"_s, u"Phone"_s, 15),
            hidden(text(u"Fax"_s, u"Fax"_s, 15)),
            text(u"Email"_s, u"Email"_s, 24),
            hidden(text(u"Address"_s, u"Address1"_s, 24)),
            text(u"City"_s, u"City"_s, 14),
            text(u"State"_s, u"State"_s, 7),
            hidden(text(u"Zip"_s, u"Zip"_s, 9)),
            hidden(text(u"Country"_s, u"Country"_s, 10)),
            text(u"Terms"_s, u"Terms"_s, 14)};
}

ListKind customers() {
    ListKind kind{u"frmCustomerList"_s, u"Customers"_s, u"mnuFileCustomer"_s, u"frmCustomer"_s,
                  u"Customer"_s,        u"Custid"_s,    addressColumns()};
    kind.columns.insert(kind.columns.begin(),
                        {number(u"Cust. #"_s, u"Custid"_s), text(u"Company"_s, u"company"_s, 28)});
    kind.columns.push_back(
        summed(beside(u"Open Jobs"_s, Kind::Number,
                      u"SELECT CustID, count(*) FROM Job WHERE Shipped = 0 GROUP BY CustID"_s)));
    kind.views = {{u"All customers"_s, {}, u"+Company"_s},
                  {u"With open jobs"_s, {{u"Open Jobs"_s, u"> 0"_s}}, u"-Open Jobs"_s}};
    return kind;
}

ListKind vendors() {
    ListKind kind{u"frmVendorList"_s, u"Vendors and Contractors"_s,
                  u"mnuFileVendor"_s, u"frmVendor"_s,
                  u"Vendor"_s,        u"VendID"_s,
                  addressColumns()};
    kind.columns.insert(kind.columns.begin(),
                        {number(u"Vendor #"_s, u"VendID"_s), text(u"Company"_s, u"company"_s, 28),
                         yesNo(u"Contractor"_s, u"cotr"_s)});
    kind.views = {{u"All vendors"_s, {}, u"+Company"_s},
                  {u"Contractors"_s, {{u"Contractor"_s, u"yes"_s}}, u"+Company"_s}};
    return kind;
}

ListKind employees() {
    return {u"frmEmployeeList"_s,
            u"Employees"_s,
            u"mnuFileEmployee"_s,
            u"frmEmployee"_s,
            u"Employee"_s,
            u"EmpID"_s,
            {number(u"Emp. #"_s, u"EmpID"_s), text(u"Last Name"_s, u"lastname"_s, 18),
             text(u"First Name"_s, u"firstname"_s, 16), text(u"Position"_s, u"Position"_s, 14),
             hidden(text(u"Title"_s, u"Title"_s, 16)), text(u"Status"_s, u"EmpStatus"_s, 11),
             text(u"Phone"_s, u"Phone"_s, 15), text(u"City"_s, u"City"_s, 14),
             hidden(text(u"State"_s, u"State"_s, 7)), date(u"Hired"_s, u"HireDate"_s),
             hidden(date(u"Left"_s, u"Terminate"_s)), yesNo(u"Signed In"_s, u"SignedIn"_s)},
            {{u"Active employees"_s, {{u"Status"_s, u"=Active"_s}}, u"+Last Name"_s},
             {u"Signed in now"_s, {{u"Signed In"_s, u"yes"_s}}, u"+Last Name"_s},
             {u"All employees"_s, {}, u"+Last Name"_s}}};
}

ListKind estimates() {
    return {u"frmEstimateList"_s,
            u"Estimates"_s,
            u"mnuFileEstimate"_s,
            u"frmEstimate"_s,
            u"Estimate"_s,
            u"EstNo"_s,
            {number(u"Est. #"_s, u"EstNo"_s), named(u"Customer"_s, u"CustID"_s, customerNames),
             text(u"RFQ #"_s, u"RFQNo"_s, 14), text(u"Part #"_s, u"PartNo"_s, 16),
             text(u"Description"_s, u"Description"_s, 26), date(u"Est. Date"_s, u"EstDate"_s),
             summed(number(u"Quantity"_s, u"Quantity"_s)),
             money(u"Est. Each"_s, u"QtyPriceA"_s, 11),
             money(u"Quoted Each"_s, u"coalesce(QtyQPA, 0)"_s, 11),
             summed(money(u"Quoted Total"_s, u"QtyTotalA"_s, 13)),
             beside(u"Job #"_s, Kind::Number,
                    u"SELECT EstNo, max(JobNo) FROM Job WHERE EstNo > 0 GROUP BY EstNo"_s),
             hidden(number(u"Assembly"_s, u"AssemblyEstno"_s))},
            {{u"All estimates"_s},
             {u"Without a quoted price"_s, {{u"Quoted Each"_s, u"= 0"_s}, {u"Job #"_s, u"="_s}}},
             {u"Without a job"_s, {{u"Job #"_s, u"="_s}}}}};
}

ListKind jobs() {
    const QString open = u"no"_s;
    return {u"frmJobList"_s,
            u"Jobs"_s,
            u"mnuFileJob"_s,
            u"frmJob"_s,
            u"Job"_s,
            u"JobNo"_s,
            {number(u"Job #"_s, u"JobNo"_s), named(u"Customer"_s, u"CustID"_s, customerNames),
             text(u"PO #"_s, u"PONo"_s, 14), text(u"Part #"_s, u"PartNo"_s, 16),
             text(u"Description"_s, u"Description"_s, 26),
             summed(number(u"Quantity"_s, u"Quantity"_s)), date(u"Date In"_s, u"JobDateIn"_s),
             date(u"Due Date"_s, u"JobDueDate"_s),
             summed({u"Hours"_s, 9, Kind::Hours, u"TotalHours"_s}),
             summed(money(u"Cost"_s, u"JobShopCost"_s)),
             hidden(money(u"Price Each"_s, u"InvoiceEach"_s)),
             summed(money(u"Price"_s, u"InvoiceTotal"_s)), yesNo(u"Shipped"_s, u"Shipped"_s),
             hidden(date(u"Ship Date"_s, u"ShipDate"_s)), hidden(number(u"Est. #"_s, u"EstNo"_s)),
             hidden(number(u"Assembly"_s, u"AssemblyJobNo"_s))},
            {{u"Active jobs"_s, {{u"Shipped"_s, open}}},
             {u"Late or due within a week"_s,
              {{u"Shipped"_s, open}, {u"Due Date"_s, u"<= +7"_s}},
              u"+Due Date"_s},
             {u"Shipped in the last 60 days"_s, {{u"Ship Date"_s, u">= -60"_s}}, u"-Ship Date"_s},
             {u"All jobs"_s}}};
}

ListKind requests() {
    return {u"frmRFQList"_s,
            u"Requests for Quotation"_s,
            u"mnuFileRequest"_s,
            u"frmRFQ"_s,
            u"RFQ"_s,
            u"PONumber"_s,
            {number(u"RFQ Group #"_s, u"PONumber"_s, 11), text(u"Description"_s, u"Title"_s, 34),
             date(u"Date Issued"_s, u"PODate"_s), date(u"Required by"_s, u"ReqDate"_s),
             beside(u"Vendors"_s, Kind::Number,
                    u"SELECT OrderNumber, count(*) FROM RFQVendor GROUP BY OrderNumber"_s),
             beside(u"Items"_s, Kind::Number,
                    u"SELECT OrderNumber, count(DISTINCT ItemNumber) FROM RFQItem GROUP BY "
                    "OrderNumber"_s),
             beside(u"Answered"_s, Kind::Number,
                    u"SELECT OrderNumber, count(DISTINCT VendorID) FROM RFQItem WHERE UnitPrice > "
                    "0 GROUP BY OrderNumber"_s,
                    9),
             yesNo(u"Complete"_s, u"Complete"_s)},
            {{u"All requests"_s},
             {u"Answers overdue"_s,
              {{u"Required by"_s, u"< +0"_s}, {u"Answered"_s, u"="_s}},
              u"-Required by"_s}}};
}

ListKind orders() {
    return {
        u"frmPOList"_s,
        u"Purchase Orders"_s,
        u"mnuFilePurchaseOrder"_s,
        u"frmPO"_s,
        u"PO"_s,
        u"PONumber"_s,
        {number(u"PO #"_s, u"PONumber"_s),
         beside(u"Vendor"_s, Kind::Text,
                u"SELECT OrderNumber, Company FROM POVendor WHERE OrderNumber IS NOT NULL"_s, 28),
         text(u"Description"_s, u"Title"_s, 28), date(u"Date Issued"_s, u"PODate"_s),
         date(u"Required by"_s, u"ReqDate"_s), yesNo(u"Active"_s, u"Active"_s),
         beside(u"Lines"_s, Kind::Number,
                u"SELECT PONumber, count(*) FROM POItem GROUP BY PONumber"_s),
         beside(u"Open Lines"_s, Kind::Number,
                u"SELECT PONumber, count(*) FROM POItem WHERE coalesce(ReceivedQuantity, 0) < "
                "Quantity GROUP BY PONumber"_s,
                10),
         summed(beside(u"Total"_s, Kind::Money,
                       u"SELECT PONumber, sum(ItemTotal) FROM POItem GROUP BY PONumber"_s, 13))},
        {{u"Active orders"_s, {{u"Active"_s, u"yes"_s}}},
         {u"Overdue"_s,
          {{u"Active"_s, u"yes"_s}, {u"Required by"_s, u"< +0"_s}, {u"Open Lines"_s, u"> 0"_s}},
          u"+Required by"_s},
         {u"All orders"_s}}};
}

ListKind items() {
    return {
        u"frmItemList"_s,
        u"Items"_s,
        u"mnuInventory"_s,
        u"frmInventory"_s,
        u"Items"_s,
        u"ID"_s,
        {text(u"Description"_s, u"Description"_s, 28), text(u"Part Number"_s, u"PartNumber"_s, 16),
         text(u"Manufacturer"_s, u"Manufacturer"_s, 16),
         named(u"Type"_s, u"Type"_s, u"SELECT ID, Description FROM ItemTypes"_s, 16),
         named(u"Location"_s, u"Location"_s, u"SELECT ID, Description FROM ItemLocations"_s, 16),
         summed(number(u"Quantity"_s, u"Quantity"_s)), text(u"Units"_s, u"Units"_s, 7),
         number(u"Minimum"_s, u"FlagQuantity"_s),
         yesNo(u"Low"_s, u"CASE WHEN FlagQuantity > Quantity THEN 1 ELSE 0 END"_s),
         money(u"Price"_s, u"PricePer"_s, 11),
         summed(money(u"Value"_s, u"PricePer * Quantity"_s, 13)),
         hidden(number(u"Item #"_s, u"ID"_s))},
        {{u"All items"_s, {}, u"+Description"_s},
         {u"Under their minimum"_s, {{u"Low"_s, u"yes"_s}}, u"+Description"_s}}};
}

ListKind spares() {
    return {u"frmSpareList"_s,
            u"Spare Parts"_s,
            u"mnuFileSpareParts"_s,
            u"frmSpareParts"_s,
            u"SpareParts"_s,
            u"Index"_s,
            {number(u"Rec #"_s, u"Index"_s), named(u"Customer"_s, u"SCustID"_s, customerNames),
             text(u"Part #"_s, u"SPartNo"_s, 18), number(u"Job #"_s, u"SJobNo"_s),
             text(u"PO #"_s, u"SPoNo"_s, 14), text(u"Location"_s, u"SLocation"_s, 18),
             date(u"Date"_s, u"SDate"_s), summed(number(u"Spare Qty"_s, u"SSpareQty"_s, 9)),
             summed(number(u"Job Qty"_s, u"SJobQty"_s)), money(u"Price"_s, u"SparePrice"_s, 11),
             summed(money(u"Total"_s, u"SpareTotPrice"_s)),
             hidden(named(u"Employee"_s, u"SEmpID"_s, employeeNames, 20))},
            {{u"All spare parts"_s}}};
}

} // namespace

const std::vector<ListKind>& listKinds() {
    static const std::vector<ListKind> all{customers(), vendors(), employees(), estimates(), jobs(),
                                           requests(),  orders(),  items(),     spares()};
    return all;
}

const ListKind* listKind(const QString& form) {
    const auto& all = listKinds();
    const auto found = std::find_if(all.begin(), all.end(), [&](const ListKind& kind) {
        return kind.form.compare(form, Qt::CaseInsensitive) == 0 ||
               kind.module.compare(form, Qt::CaseInsensitive) == 0;
    });
    return found == all.end() ? nullptr : &*found;
}

} // namespace desk
