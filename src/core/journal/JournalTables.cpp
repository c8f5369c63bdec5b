#include "core/journal/JournalTables.h"

#include "platform/values/Literals.h"

#include <QMap>

namespace core {

const std::vector<JournalTable>& journalTables() {
    static const QString customers = u"mnuFileCustomer"_s, vendors = u"mnuFileVendor"_s,
                         employees = u"mnuFileEmployee"_s, estimates = u"mnuFileEstimate"_s,
                         jobs = u"mnuFileJob"_s, time = u"mnuFileTimeManagement"_s,
                         requests = u"mnuFileRequest"_s, orders = u"mnuFilePurchaseOrder"_s,
                         inventory = u"mnuInventory"_s;
    static const std::vector<JournalTable> tables = {
        {u"Customer"_s, u"Custid"_s, u"Customers"_s, customers},
        {u"RfqNotes"_s, u"CustID"_s, u"Quotation notes"_s, estimates},
        {u"Vendor"_s, u"VendID"_s, u"Vendors"_s, vendors},
        {u"Employee"_s, u"EmpID"_s, u"Employees"_s, employees},
        {u"EmployeeSalary"_s, u"EmpID"_s, u"Employees' pay"_s, employees},
        {u"Operation"_s, u"OperNo"_s, u"Operations"_s, u"mnuTablesOperations"_s},
        {u"MiscItems"_s, u"ItemNo"_s, u"Fixed cost items"_s, u"mnuTablesFixedCost"_s},
        {u"Estimate"_s, u"EstNo"_s, u"Estimates"_s, estimates},
        {u"EstOper"_s, u"EstNo"_s, u"Estimates' operations"_s, estimates},
        {u"EstMiscCost"_s, u"EstNo"_s, u"Estimates' fixed costs"_s, estimates},
        {u"EstOperNote"_s, u"EstNo"_s, u"Estimates' notes"_s, estimates},
        {u"Job"_s, u"JobNo"_s, u"Jobs"_s, jobs},
        {u"JobOper"_s, u"JobNo"_s, u"Jobs' operations"_s, jobs},
        {u"JobMiscCost"_s, u"JobNo"_s, u"Jobs' fixed costs"_s, jobs},
        {u"JobOperNote"_s, u"JobNo"_s, u"Jobs' notes"_s, jobs},
        {u"JobShip"_s, u"JobNo"_s, u"Shipments"_s, jobs},
        {u"Sign_in"_s, u"EmpID"_s, u"Sign-ins"_s, time},
        {u"Timelog"_s, u"JobNo"_s, u"Time records"_s, time},
        {u"RFQ"_s, u"PONumber"_s, u"Requests"_s, requests},
        {u"RFQVendor"_s, u"OrderNumber"_s, u"Requests' vendors"_s, requests},
        {u"RFQItem"_s, u"OrderNumber"_s, u"Requests' lines"_s, requests},
        {u"PO"_s, u"PONumber"_s, u"Purchase orders"_s, orders},
        {u"POVendor"_s, u"OrderNumber"_s, u"Orders' vendors"_s, orders},
        {u"POItem"_s, u"PONumber"_s, u"Orders' lines"_s, orders},
        {u"POReceived"_s, u"PONumber"_s, u"Receipts"_s, orders, u"ItemID"_s},
        {u"Items"_s, u"ID"_s, u"Items in stock"_s, inventory},
        {u"ItemIssue"_s, u"ItemID"_s, u"Issues"_s, inventory},
        {u"ItemReStock"_s, u"ItemID"_s, u"Restocking"_s, inventory},
        {u"SpareParts"_s, u"Index"_s, u"Spare parts"_s, u"mnuFileSpareParts"_s},
        {u"SentInvoice"_s, u"ID"_s, u"Invoices sent"_s, u"mnuInvoice"_s},
        {u"SentAP"_s, u"ID"_s, u"Payables sent"_s, u"mnuAP"_s},
        {u"Papers"_s, u"Record"_s, u"Papers"_s, u"mnuUtilitiesJournal"_s},
        {u"SystemSettings"_s, QString(), u"Preferences"_s, u"mnuUtilitiesSystemParameters"_s},
    };
    return tables;
}

const JournalTable* journalTable(const QString& name) {
    for (const JournalTable& table : journalTables())
        if (table.name.compare(name, Qt::CaseInsensitive) == 0)
            return &table;
    return nullptr;
}

QStringList journalTablesOf(const QString& screen) {
    static const QMap<QString, QStringList> tables = {
        {u"frmcustomer"_s, {u"Customer"_s, u"RfqNotes"_s}},
        {u"frmvendor"_s, {u"Vendor"_s}},
        {u"frmemployee"_s, {u"Employee"_s, u"EmployeeSalary"_s, u"Sign_in"_s}},
        {u"frmoperation"_s, {u"Operation"_s}},
        {u"frmmiscitems"_s, {u"MiscItems"_s}},
        {u"frmestimate"_s, {u"Estimate"_s, u"EstOper"_s, u"EstMiscCost"_s, u"EstOperNote"_s}},
        {u"frmjob"_s,
         {u"Job"_s, u"JobOper"_s, u"JobMiscCost"_s, u"JobOperNote"_s, u"JobShip"_s, u"Timelog"_s}},
        {u"frmrfq"_s, {u"RFQ"_s, u"RFQVendor"_s, u"RFQItem"_s}},
        {u"frmpo"_s, {u"PO"_s, u"POVendor"_s, u"POItem"_s, u"POReceived"_s}},
        {u"frminventory"_s, {u"Items"_s, u"ItemIssue"_s, u"ItemReStock"_s}},
        {u"frmspareparts"_s, {u"SpareParts"_s}},
    };
    return tables.value(screen.toLower());
}

} // namespace core
