#include "reporting/Query.h"

#include "platform/values/Literals.h"

namespace reporting {

namespace {

using Kind = Criterion::Kind;
using Shown = ResultColumn::Kind;

/// The controls of a criterion, named as the screens have them.
Criterion named(const QString& caption, Kind kind, const QString& use, const QString& range,
                const QString& first, const QString& second) {
    Criterion made;
    made.caption = caption;
    made.kind = kind;
    made.useBox = u"chkUse"_s + use;
    made.rangeBox = u"chk"_s + range;
    made.first = first;
    made.second = second;
    return made;
}

Criterion lookup(const QString& caption, Kind kind, const QString& use, const QString& range,
                 const QString& field) {
    return named(caption, kind, use, range, u"dbc"_s + field + u'1', u"dbc"_s + field + u'2');
}

/// A column of texts: `name` gives the controls, `{table.field}` is what the reports call it.
Criterion text(const QString& caption, const QString& name, const QString& column,
               const QString& field, const QString& list) {
    Criterion made = lookup(caption, Kind::Text, name, name, name);
    made.list = list;
    made.one = u" and "_s + column + u" = '%1'"_s;
    made.range = u" and "_s + column + u" between '%1' and '%2'"_s;
    made.oneFormula = u" and {"_s + field + u"} = '%1'"_s;
    made.rangeFormula = u" and {"_s + field + u"} in '%1' to '%2'"_s;
    return made;
}

Criterion number(const QString& caption, const QString& name, const QString& column,
                 const QString& field, const QString& list) {
    Criterion made = lookup(caption, Kind::Number, name, name, name);
    made.list = list;
    made.one = u" and "_s + column + u" = %1"_s;
    made.range = u" and "_s + column + u" between %1 and %2"_s;
    made.oneFormula = u" and {"_s + field + u"} = %1"_s;
    made.rangeFormula = u" and {"_s + field + u"} in %1 to %2"_s;
    return made;
}

/// The first or second date of a query.
Criterion date(const QString& caption, bool second, const QString& column, const QString& field) {
    const QString use = second ? u"Date2"_s : u"Date"_s;
    const QString fields = second ? u"etxt2Date"_s : u"etxtDate"_s;
    Criterion made = named(caption, Kind::Date, use, use, fields + u'1', fields + u'2');
    made.one = u" and "_s + column + u" = #%1#"_s;
    made.range = u" and "_s + column + u" between #%1# and #%2#"_s;
    made.oneFormula = u" and {"_s + field + u"} = date(%1)"_s;
    made.rangeFormula = u" and {"_s + field + u"} in date(%1) to date(%2)"_s;
    return made;
}

/// A company by its name: one by its number in the asked rows, several by their names.
struct Company {
    QString table, key;
};

Criterion company(const Company& of, const QString& caption, const QString& use,
                  const QString& column, const QString& one, const QString& oneFormula) {
    Criterion made = lookup(caption, Kind::Named, use, u"Company"_s, u"Comp"_s);
    made.list = u"SELECT Company, "_s + of.key + u" FROM "_s + of.table + u" ORDER BY Company"_s;
    made.one = one + u" = %1"_s;
    made.range = u" and "_s + column + u" in (Select "_s + of.table + u'.' + of.key + u" from "_s +
                 of.table + u" where company between '%1' and '%2')"_s;
    made.oneFormula = u" AND {"_s + oneFormula + u"} = %1"_s;
    made.rangeFormula = u" and {"_s + of.table + u".company} in '%1' to '%2'"_s;
    return made;
}

/// The customer of an estimate, a job or a spare part.
Criterion customer(const QString& column, const QString& one) {
    return company({u"customer"_s, u"custid"_s}, u"Customer"_s, u"Cust"_s, column, one,
                   u"Customer.CustID"_s);
}

Criterion vendor(const QString& column, const QString& one) {
    return company({u"vendor"_s, u"vendid"_s}, u"Vendor"_s, u"Vend"_s, column, one,
                   u"Vendor.VendID"_s);
}

QString employeeNames() {
    return u"Select (LastName + ' , ' + FirstName) as [Name], EmpId from Employee order by "
           u"lastname, "
           "firstname"_s;
}

/// An employee by number or by a range of joined names.
Criterion employee(const QString& range, const QString& one, const QString& oneFormula) {
    Criterion made = lookup(u"Employee"_s, Kind::Named, u"Emp"_s, u"Emp"_s, u"Emp"_s);
    made.list = employeeNames();
    made.one = one + u" = %1"_s;
    made.range = range;
    made.oneFormula = u" AND {"_s + oneFormula + u"} = %1"_s;
    made.rangeFormula = u" and {Employee.LastName}+' , '+{Employee.FirstName} in '%1' to '%2'"_s;
    return made;
}

/// The texts of a column that occur in a table.
QString occurring(const QString& column, const QString& table) {
    return u"SELECT DISTINCT "_s + column + u" FROM "_s + table + u" WHERE "_s + column +
           u" <> '' ORDER BY "_s + column;
}

/// The latest numbers of a table; older ones are typed.
QString latest(const QString& column, const QString& table) {
    return u"SELECT TOP 1000 "_s + column + u" FROM "_s + table + u" ORDER BY "_s + column +
           u" DESC"_s;
}

/// City, state, zip and country of a table's addresses.
std::vector<Criterion> address(const QString& table) {
    std::vector<Criterion> made;
    for (const QString& column : {u"City"_s, u"State"_s, u"Zip"_s, u"Country"_s}) {
        made.push_back(text(column, column, column.toLower(), table + u'.' + column,
                            occurring(column, table)));
    }
    return made;
}

QString locked(const QString& module) {
    return u"The "_s + module +
           u" Module is currently in 'Edit' or 'Add' mode.  You cannot goto a record unless the "
           "customer module is in 'Browse' mode"_s;
}

QueryDescriptor companyQuery(const QString& stem, const QString& word, const QString& key) {
    QueryDescriptor made;
    made.queryForm = u"frm"_s + stem + u"Query"_s;
    made.queryCaption = word + u" Query"_s;
    made.statement = u"Select * FROM "_s + word;
    made.testsEmptyAnswer = true;
    made.resultsForm = u"frm"_s + stem + u"Qresults"_s;
    made.resultsCaption = word + u" Query Results"_s;
    made.gridName = u"spr"_s + stem + u"Found"_s;
    made.columns = {{stem + u". #"_s, key, 8, Shown::Number},
                    {u"Company Name"_s, u"company"_s, 32},
                    {u"City"_s, u"City"_s, 18},
                    {u"State"_s, u"State"_s, 8},
                    {u"Zip"_s, u"Zip"_s, 10},
                    {u"Country"_s, u"Country"_s, 12},
                    {u"Contact"_s, u"Contact"_s, 20},
                    {u"Phone"_s, u"Phone"_s, 16}};
    made.reportModule = word;
    made.keyField = key;
    made.module = u"frm"_s + word;
    made.moduleKey = key;
    return made;
}

QueryDescriptor customers() {
    QueryDescriptor made = companyQuery(u"Cust"_s, u"Customer"_s, u"CustID"_s);
    made.reportKey = u"Customer.CustID"_s;
    made.criteria = address(u"Customer"_s);
    Criterion name = customer(u"custid"_s, u" AND CustID"_s);
    name.caption = u"Customer Name"_s;
    made.criteria.insert(made.criteria.begin(), name);
    made.lockedTitle = u"Customer Screen Locked!"_s;
    made.lockedText = locked(u"Customer"_s);
    return made;
}

QueryDescriptor vendors() {
    QueryDescriptor made = companyQuery(u"Vend"_s, u"Vendor"_s, u"VendID"_s);
    made.reportKey = u"Vendor.VendID"_s;
    made.criteria = address(u"Vendor"_s);
    Criterion name = vendor(u"Vendid"_s, u" AND VendID"_s);
    name.caption = u"Vendor Name"_s;
    made.criteria.insert(made.criteria.begin(), name);
    return made;
}

QueryDescriptor employees() {
    QueryDescriptor made;
    made.queryForm = u"frmEmpQuery"_s;
    made.queryCaption = u"Employee Query"_s;
    made.statement = u"Select * FROM Employee"_s;
    made.testsEmptyAnswer = true;
    Criterion name =
        employee(u" and Empid in (Select employee.empid from employee where "
                 "(employee.LastName+' , '+employee.FirstName) between '%1' and '%2')"_s,
                 u" AND EmpID"_s, u"Employee.EmpID"_s);
    name.caption = u"Employee Name"_s;
    const auto column = [](const QString& caption, const QString& name, const QString& of) {
        return text(caption, name, of.toLower(), u"Employee."_s + of, occurring(of, u"Employee"_s));
    };
    made.criteria = {name,
                     column(u"Position"_s, u"Position"_s, u"Position"_s),
                     column(u"City"_s, u"City"_s, u"City"_s),
                     column(u"State"_s, u"State"_s, u"State"_s),
                     column(u"Zip"_s, u"Zip"_s, u"Zip"_s),
                     column(u"Status"_s, u"Status"_s, u"EmpStatus"_s),
                     column(u"Country"_s, u"Country"_s, u"Country"_s)};
    made.resultsForm = u"frmEmpQresults"_s;
    made.resultsCaption = u"Employee Query Results"_s;
    made.gridName = u"sprEmpFound"_s;
    made.columns = {{u"Emp. #"_s, u"EmpID"_s, 8, Shown::Number},
                    {u"Last Name"_s, u"lastname"_s, 18},
                    {u"First Name"_s, u"firstname"_s, 16},
                    {u"Position"_s, u"Position"_s, 12},
                    {u"City"_s, u"City"_s, 16},
                    {u"State"_s, u"State"_s, 8},
                    {u"Zip"_s, u"Zip"_s, 10},
                    {u"Status"_s, u"EmpStatus"_s, 11},
                    {u"Country"_s, u"Country"_s, 12}};
    made.reportModule = u"Employee"_s;
    made.reportKey = u"Employee.EmpID"_s;
    made.keyField = u"EmpID"_s;
    made.module = u"frmEmployee"_s;
    made.moduleKey = u"EmpID"_s;
    return made;
}

QueryDescriptor estimates() {
    QueryDescriptor made;
    made.queryForm = u"frmEstQuery"_s;
    made.queryCaption = u"Estimate Query"_s;
    made.statement = u"SELECT * FROM Estimate"_s;
    Criterion whose = customer(u"CustID"_s, u" AND CustID"_s);
    whose.range = u" and CustID IN (SELECT CustID FROM Customer WHERE Company between '%1' and "
                  "'%2')"_s;
    made.criteria = {whose,
                     number(u"Estimate #"_s, u"Est"_s, u"EstNo"_s, u"Estimate.EstNo"_s,
                            latest(u"EstNo"_s, u"Estimate"_s)),
                     text(u"Part #"_s, u"Part"_s, u"PartNo"_s, u"Estimate.PartNo"_s,
                          occurring(u"PartNo"_s, u"Estimate"_s)),
                     text(u"RFQ #"_s, u"RFQ"_s, u"RFQNo"_s, u"Estimate.RFQNo"_s,
                          occurring(u"RFQNo"_s, u"Estimate"_s)),
                     date(u"Estimate Date"_s, false, u"EstDate"_s, u"Estimate.EstDate"_s)};
    made.resultsForm = u"frmEstQresults"_s;
    made.resultsCaption = u"Estimate Query Results"_s;
    made.gridName = u"sprEstFound"_s;
    made.columns = {{u"Est. #"_s, u"EstNo"_s, 8, Shown::Number},
                    {u"Cust. #"_s, u"CustID"_s, 8, Shown::Number},
                    {u"RFQ #"_s, u"RFQNo"_s, 14},
                    {u"Description"_s, u"Description"_s, 30},
                    {u"Part #"_s, u"PartNo"_s, 18},
                    {u"Quantity"_s, u"Quantity"_s, 9, Shown::Number},
                    {u"Est. Date"_s, u"EstDate"_s, 11, Shown::Date},
                    {u"Assy"_s, u"AssemblyEstNo"_s, 8, Shown::Reference}};
    made.reportModule = u"Estimates"_s;
    made.reportKey = u"Estimate.EstNo"_s;
    made.keyField = u"EstNo"_s;
    made.module = u"frmEstimate"_s;
    made.moduleKey = u"EstNo"_s;
    made.lockedTitle = u"Estimate Screen Locked!"_s;
    made.lockedText = locked(u"Estimate"_s);
    return made;
}

QueryDescriptor jobs() {
    QueryDescriptor made;
    made.queryForm = u"frmJobQuery"_s;
    made.queryCaption = u"Job Query"_s;
    made.statement = u"SELECT * FROM Job"_s;
    Criterion purchase =
        text(u"PO #"_s, u"PO"_s, u"PoNo"_s, u"Job.PoNo"_s, occurring(u"PONo"_s, u"Job"_s));
    made.criteria = {
        customer(u"custid"_s, u" AND CustID"_s),
        number(u"Job #"_s, u"Job"_s, u"JobNo"_s, u"Job.JobNo"_s, latest(u"JobNo"_s, u"Job"_s)),
        text(u"Part #"_s, u"Part"_s, u"PartNo"_s, u"Job.PartNo"_s,
             occurring(u"PartNo"_s, u"Job"_s)),
        purchase,
        date(u"Date In"_s, false, u"JobDateIn"_s, u"Job.JobDateIn"_s),
        date(u"Date Due"_s, true, u"JobDueDate"_s, u"Job.JobDueDate"_s)};
    made.resultsForm = u"frmJobQresults"_s;
    made.resultsCaption = u"Job Query Results"_s;
    made.gridName = u"sprJobFound"_s;
    made.columns = {{u"Job #"_s, u"JobNo"_s, 8, Shown::Number},
                    {u"Cust. #"_s, u"CustID"_s, 8, Shown::Number},
                    {u"PO #"_s, u"PONo"_s, 14},
                    {u"Description"_s, u"Description"_s, 30},
                    {u"Part #"_s, u"PartNo"_s, 18},
                    {u"Quantity"_s, u"Quantity"_s, 9, Shown::Number},
                    {u"Date In"_s, u"JobDateIn"_s, 11, Shown::Date},
                    {u"Due Date"_s, u"JobDueDate"_s, 11, Shown::Date},
                    {u"Shipped"_s, u"Shipped"_s, 8, Shown::YesNo},
                    {u"Assy"_s, u"AssemblyJobNo"_s, 8, Shown::Reference}};
    made.reportModule = u"Jobs"_s;
    made.reportKey = u"Job.JobNo"_s;
    made.keyField = u"JobNo"_s;
    made.module = u"frmJob"_s;
    made.moduleKey = u"JobNo"_s;
    made.lockedTitle = u"Job Screen Locked!"_s;
    made.lockedText = locked(u"Job"_s);
    return made;
}

QueryDescriptor requests() {
    QueryDescriptor made;
    made.queryForm = u"frmRfqQuery"_s;
    made.queryCaption = u"RFQ Query"_s;
    made.statement =
        u"SELECT distinctrow rfq.ponumber, rfq.podate, rfq.reqdate, RFQvendor.ordernumber, "
        "RFQvendor.vorderkey, RFQvendor.company, RFQitem.itemkey, RFQitem.partnumber, "
        "RFQitem.description, RFQitem.quantity FROM (rfq INNER JOIN rfqvendor ON rfq.ponumber = "
        "rfqvendor.ordernumber) INNER JOIN RFQitem ON rfqvendor.vorderkey = RFQitem.vorderkey"_s;
    made.testsEmptyAnswer = true;
    Criterion who = vendor(u"rfqvendor.VendorId"_s, u" AND rfqvendor.VendorId"_s);
    who.range = u" and rfqvendor.VendorId in (Select  vendor.vendid from vendor where company "
                "between '%1' and '%2')"_s;
    who.oneFormula = u" AND {RFQVendor.VendorID} = %1"_s;
    Criterion part = text(u"Part #"_s, u"Part"_s, u"RFQitem.PartNumber"_s, u"RFQItem.PartNumber"_s,
                          occurring(u"PartNumber"_s, u"RFQItem"_s));
    part.rangeBox.clear();
    made.criteria = {number(u"RFQ Group #"_s, u"RFQ"_s, u"RFQitem.OrderNumber"_s,
                            u"RFQItem.OrderNumber"_s, latest(u"PONumber"_s, u"RFQ"_s)),
                     text(u"RFQ #"_s, u"VOrder"_s, u"RFQitem.vOrderKey"_s, u"RFQItem.VOrderKey"_s,
                          occurring(u"VOrderKey"_s, u"RFQVendor"_s)),
                     who,
                     part,
                     date(u"Date Issued"_s, false, u"Rfq.PoDate"_s, u"RFQ.PODate"_s),
                     date(u"Response Required by"_s, true, u"Rfq.reqDate"_s, u"RFQ.ReqDate"_s)};
    made.resultsForm = u"frmRfqQresults"_s;
    made.resultsCaption = u"RFQ Query Results"_s;
    made.gridName = u"sprRfqFound"_s;
    made.columns = {{u"RFQ Group #"_s, u"ponumber"_s, 10, Shown::Number},
                    {u"RFQ #"_s, u"vorderkey"_s, 10},
                    {u"Company"_s, u"company"_s, 26},
                    {u"Part #"_s, u"partnumber"_s, 16},
                    {u"Description"_s, u"description"_s, 30},
                    {u"Qty"_s, u"quantity"_s, 8, Shown::Number},
                    {u"Date Issued"_s, u"podate"_s, 11, Shown::Date},
                    {u"Response Required by"_s, u"reqdate"_s, 11, Shown::Date}};
    made.reportModule = u"RFQ"_s;
    made.reportKey = u"RFQItem.ItemKey"_s;
    made.keyField = u"itemkey"_s;
    made.textKey = true;
    made.module = u"frmRFQ"_s;
    made.moduleKey = u"ponumber"_s;
    made.belowKey = u"vorderkey"_s;
    return made;
}

QueryDescriptor orders() {
    QueryDescriptor made;
    made.queryForm = u"frmPOQuery"_s;
    made.queryCaption = u"Purchase Order Query"_s;
    made.statement = u"SELECT * FROM (po INNER JOIN povendor ON po.PONumber = "
                     "povendor.OrderNumber) INNER JOIN poitem ON po.PONumber = poitem.PONumber"_s;
    made.testsEmptyAnswer = true;
    Criterion who = vendor(u"povendor.VendorId"_s, u" AND povendor.VendorId"_s);
    who.oneFormula = u" AND {POVendor.VendorID} = %1"_s;
    Criterion part = text(u"Part #"_s, u"Part"_s, u"poitem.PartNumber"_s, u"POItem.PartNumber"_s,
                          occurring(u"PartNumber"_s, u"POItem"_s));
    part.rangeBox.clear();
    made.criteria = {number(u"PO #"_s, u"PO"_s, u"poitem.poNumber"_s, u"POItem.PONumber"_s,
                            latest(u"PONumber"_s, u"PO"_s)),
                     who, part, date(u"Date Issued"_s, false, u"po.PoDate"_s, u"PO.PODate"_s),
                     date(u"Date Required"_s, true, u"po.reqDate"_s, u"PO.ReqDate"_s)};
    made.resultsForm = u"frmPOQresults"_s;
    made.resultsCaption = u"Purchase Order Query Results"_s;
    made.gridName = u"sprPOFound"_s;
    made.columns = {{u"PO #"_s, u"po.PONumber"_s, 8, Shown::Number},
                    {u"Company"_s, u"Company"_s, 26},
                    {u"Item #"_s, u"ItemNumber"_s, 7, Shown::Number},
                    {u"Part #"_s, u"PartNumber"_s, 16},
                    {u"Description"_s, u"Description"_s, 30},
                    {u"Qty"_s, u"Quantity"_s, 8, Shown::Number},
                    {u"Received"_s, u"ReceivedQuantity"_s, 8, Shown::Number},
                    {u"Date Issued"_s, u"PODate"_s, 11, Shown::Date},
                    {u"Date Required"_s, u"ReqDate"_s, 11, Shown::Date}};
    made.reportModule = u"PO"_s;
    made.reportKey = u"POItem.ItemKey"_s;
    made.keyField = u"ItemKey"_s;
    made.textKey = true;
    made.module = u"frmPO"_s;
    made.moduleKey = u"po.PONumber"_s;
    return made;
}

QueryDescriptor times() {
    QueryDescriptor made;
    made.queryForm = u"frmTimeQuery"_s;
    made.queryCaption = u"Time Management Query"_s;
    made.statement =
        u"SELECT TimeLog.*, Operation.Description, (LastName+', '+FirstName) AS Name FROM "
        u"(Employee "
        "INNER JOIN TimeLog ON Employee.EmpID = TimeLog.EmpID) INNER JOIN Operation ON "
        "TimeLog.OperNo = Operation.OperNo"_s;
    made.testsEmptyAnswer = true;
    const auto chosen = [](const QString& caption, const QString& use, const QString& field) {
        Criterion one;
        one.caption = caption;
        one.kind = Kind::Choice;
        one.useBox = u"chkUse"_s + use;
        one.first = field;
        return one;
    };
    Criterion type = chosen(u"Operation Type"_s, u"OpT"_s, u"cboOpT"_s);
    type.choices = {{u"In-House"_s, u"I"_s}, {u"OverHead"_s, u"O"_s}, {u"Contracted"_s, u"C"_s}};
    type.one = u" and TimeLog.OperNo in (Select Operno from Operation where OperType = '%1')"_s;
    type.oneFormula = u" and {Operation.OperType} = '%1'"_s;
    Criterion status = chosen(u"Status"_s, u"OpS"_s, u"cboOpS"_s);
    status.choices = {{u"Active"_s, u"A"_s}, {u"Suspended"_s, u"D"_s}, {u"Finished"_s, u"F"_s}};
    status.one = u" and Status = '%1'"_s;
    status.oneFormula = u" and {TimeLog.Status} = '%1'"_s;
    made.criteria = {
        employee(u" AND Employee.LastName+' , '+Employee.FirstName BETWEEN '%1' and "
                 "'%2'"_s,
                 u" AND Employee.EmpID"_s, u"Employee.EmpID"_s),
        number(u"Job #"_s, u"Job"_s, u"JobNo"_s, u"TimeLog.JobNo"_s, latest(u"JobNo"_s, u"Job"_s)),
        date(u"Date"_s, false, u"datevalue(Startdate)"_s, u"Sign_in.Sign_in"_s),
        text(u"Operation"_s, u"Oper"_s, u"Operation.Description"_s, u"Operation.Description"_s,
             u"SELECT DISTINCT Description FROM Operation ORDER BY Description"_s),
        type,
        status};
    made.resultsForm = u"frmTimeQresults"_s;
    made.resultsCaption = u"Time Management Query Results"_s;
    made.gridName = u"sprTimeFound"_s;
    made.columns = {{u"Employee"_s, u"Name"_s, 22},
                    {u"Job"_s, u"JobNo"_s, 8, Shown::Reference},
                    {u"Operation"_s, u"Description"_s, 24},
                    {u"Status"_s, u"Status"_s, 11},
                    {u"Start Date"_s, u"StartDate"_s, 20, Shown::Date},
                    {u"Susp. Date"_s, u"SuspDate"_s, 20, Shown::Date},
                    {u"Finish Date"_s, u"FinishDate"_s, 20, Shown::Date},
                    {u"Time"_s, u"AccumTime"_s, 8, Shown::Number},
                    {u"Vendor"_s, u"CotrNo"_s, 8, Shown::Reference}};
    made.reportModule = u"Time Management"_s;
    made.reportKey = u"TimeLog.ID"_s;
    made.keyField = u"ID"_s;
    return made;
}

QueryDescriptor spares() {
    QueryDescriptor made;
    made.queryForm = u"frmSpareQuery"_s;
    made.queryCaption = u"Spare Parts Query"_s;
    made.statement = u"Select * FROM SpareParts"_s;
    made.testsEmptyAnswer = true;
    const QString table = u"SpareParts"_s;
    const auto texts = [&](const QString& caption, const QString& name, const QString& column) {
        return text(caption, name, column, u"Spareparts."_s + column, occurring(column, table));
    };
    const auto numbers = [&](const QString& caption, const QString& name, const QString& column) {
        return number(caption, name, column, u"Spareparts."_s + column,
                      u"SELECT DISTINCT "_s + column + u" FROM SpareParts ORDER BY "_s + column);
    };
    made.criteria = {customer(u"sCustid"_s, u" AND sCustID"_s),
                     numbers(u"Job #"_s, u"Job"_s, u"sJobno"_s),
                     texts(u"Part #"_s, u"Part"_s, u"sPartno"_s),
                     texts(u"PO #"_s, u"PO"_s, u"sPono"_s),
                     texts(u"Location"_s, u"Location"_s, u"sLocation"_s),
                     employee(u" and sEmpid in (Select employee.empid from employee where "
                              "(employee.LastName+' , '+employee.FirstName) between '%1' and "
                              "'%2')"_s,
                              u" AND sEmpid"_s, u"Spareparts.sEmpid"_s),
                     numbers(u"Job Quantity"_s, u"JobQty"_s, u"sJobqty"_s),
                     numbers(u"Spare Quantity"_s, u"SpareQty"_s, u"sSpareqty"_s),
                     date(u"Date"_s, false, u"sdate"_s, u"Spareparts.sDate"_s)};
    made.criteria.front().oneFormula = u" AND {Spareparts.sCustID} = %1"_s;
    made.resultsForm = u"frmSpareQresults"_s;
    made.resultsCaption = u"Spare Parts Query Results"_s;
    made.gridName = u"sprSpareFound"_s;
    made.columns = {{u"Rec #"_s, u"Index"_s, 8, Shown::Number},
                    {u"Cust. #"_s, u"SCustID"_s, 8, Shown::Number},
                    {u"Part #"_s, u"SPartNo"_s, 18},
                    {u"Job #"_s, u"SJobNo"_s, 8, Shown::Reference},
                    {u"PO #"_s, u"SPoNo"_s, 14},
                    {u"Date"_s, u"SDate"_s, 11, Shown::Date},
                    {u"S Qty"_s, u"SSpareQty"_s, 8, Shown::Number},
                    {u"J Qty"_s, u"SJobQty"_s, 8, Shown::Number},
                    {u"Location"_s, u"SLocation"_s, 20},
                    {u"Emp #"_s, u"SEmpID"_s, 8, Shown::Number}};
    made.reportModule = u"Spare Parts"_s;
    made.reportKey = u"Spareparts.Index"_s;
    made.keyField = u"Index"_s;
    made.module = u"frmSpareParts"_s;
    made.moduleKey = u"Index"_s;
    return made;
}

QueryDescriptor schedules() {
    QueryDescriptor made = jobs();
    made.queryForm = u"frmScheduleQuery"_s;
    made.queryCaption = u"Schedule Query"_s;
    made.statement = u"SELECT * FROM Job "_s;
    made.resultsForm = u"frmScheduleQResults"_s;
    made.resultsCaption = u"Schedule Query Results"_s;
    made.reportModule = u"Schedule"_s;
    made.module.clear();
    return made;
}

} // namespace

const std::vector<QueryDescriptor>& queries() {
    static const std::vector<QueryDescriptor> all{customers(), vendors(),  employees(), estimates(),
                                                  jobs(),      requests(), orders(),    times(),
                                                  spares(),    schedules()};
    return all;
}

} // namespace reporting
