#include "core/MainMenu.h"

namespace core {

namespace {

using Does = MenuEntry::Does;

MenuEntry menu(const char* name, const char* caption, std::vector<MenuEntry> children) {
    return {QString::fromLatin1(name),
            QString::fromLatin1(caption),
            Does::Menu,
            {},
            std::move(children)};
}

MenuEntry document(const char* name, const char* caption, const char* screen,
                   const char* shortcut = "") {
    return {QString::fromLatin1(name),
            QString::fromLatin1(caption),
            Does::Document,
            QString::fromLatin1(screen),
            {},
            QString::fromLatin1(shortcut)};
}

/// A further screen of a module, for whoever may use that one.
MenuEntry ofModule(const char* module, MenuEntry entry) {
    entry.right = QString::fromLatin1(module);
    return entry;
}

MenuEntry dialog(const char* name, const char* caption, const char* screen,
                 const char* shortcut = "") {
    return {QString::fromLatin1(name),
            QString::fromLatin1(caption),
            Does::Dialog,
            QString::fromLatin1(screen),
            {},
            QString::fromLatin1(shortcut)};
}

MenuEntry handler(const char* name, const char* caption, const char* shortcut = "") {
    return {QString::fromLatin1(name),    QString::fromLatin1(caption), Does::Handler, {}, {},
            QString::fromLatin1(shortcut)};
}

/// The list of a module's records.
MenuEntry listOf(const char* module, const char* name, const char* caption, const char* screen) {
    return ofModule(module, document(name, caption, screen));
}

MenuEntry moduleLists() {
    return ofModule(
        "mnuAddOns",
        menu("mnuLists", "&Lists",
             {ofModule("mnuAddOns", handler("mnuListHere", "Of the Active &Screen", "Ctrl+L")),
              listOf("mnuFileCustomer", "mnuListCustomers", "&Customers", "frmCustomerList"),
              listOf("mnuFileVendor", "mnuListVendors", "&Vendors", "frmVendorList"),
              listOf("mnuFileEmployee", "mnuListEmployees", "E&mployees", "frmEmployeeList"),
              listOf("mnuFileEstimate", "mnuListEstimates", "&Estimates", "frmEstimateList"),
              listOf("mnuFileJob", "mnuListJobs", "&Jobs", "frmJobList"),
              listOf("mnuFileRequest", "mnuListRequests", "&Requests for Quotation", "frmRFQList"),
              listOf("mnuFilePurchaseOrder", "mnuListOrders", "&Purchase Orders", "frmPOList"),
              listOf("mnuInventory", "mnuListItems", "&Items", "frmItemList"),
              listOf("mnuFileSpareParts", "mnuListSpares", "Spare P&arts", "frmSpareList")}));
}

std::vector<MenuEntry> moduleEntries() {
    return {document("mnuHistory", "&History", "frmHistory", "Ctrl+Shift+H"),
            handler("mnuFileBenchline", "Benchline Manager"),
            document("mnuFileEstimate", "&Estimate", "frmEstimate", "Ctrl+Shift+E"),
            document("mnuFileJob", "&Job", "frmJob", "Ctrl+Shift+J"),
            document("mnuSchedule", "&Schedule", "frmSchedule", "Ctrl+Shift+S"),
            document("mnuInvoice", "&Invoice", "frmInvoice", "Ctrl+Shift+I"),
            document("mnuFileTimeManagement", "&Time Management", "frmTM", "Ctrl+Shift+T"),
            ofModule("mnuFileTimeManagement",
                     document("mnuTimeExceptions", "Time Exceptio&ns", "frmTimeExceptions")),
            ofModule("mnuFileTimeManagement",
                     document("mnuPayrollHours", "Pa&yroll Hours", "frmPayrollHours")),
            document("mnuFileRequest", "&Request For Quotation", "frmRFQ", "Ctrl+Shift+R"),
            document("mnuAP", "Accounts Payable", "frmAP", "Ctrl+Shift+A"),
            document("mnuFilePurchaseOrder", "&Purchase Order", "frmPO", "Ctrl+Shift+P"),
            document("mnuFileCustomer", "&Customer", "frmCustomer", "Ctrl+Shift+C"),
            document("mnuFileEmployee", "E&mployee", "frmEmployee", "Ctrl+Shift+M"),
            document("mnuFileVendor", "&Vendor/Contractor", "frmVendor", "Ctrl+Shift+V"),
            document("mnuInventory", "Inventory", "frmInventory", "Ctrl+Shift+Y"),
            document("mnuFileSpareParts", "&Spare Parts", "frmSpareParts", "Ctrl+Shift+B"),
            moduleLists(),
            menu("mnuExternal", "E&xternal",
                 {handler("mnuFileAutoMirsa", "&Auto-Mirsa"),
                  handler("mnuFileBarcode", "&Time Tracking")})};
}

std::vector<MenuEntry> tableEntries() {
    return {
        menu("mnuImport", "Import/Export Quickbooks Data",
             {dialog("mnuImportEmp", "&Employees", "frmImportEmployee"),
              dialog("mnuImportCust", "&Customers", "frmImportCustomer"),
              dialog("mnuVendors", "&Vendors", "frmImportVendor"),
              dialog("mnuImportTerms", "&Terms", "frmImportTerm")}),
        document("mnuTablesOperations", "&Operations", "frmOperation"),
        dialog("mnuTablesDefaultOperations", "&Default Operations for Estimate/Job", "frmDefSet"),
        document("mnuTablesManufacturers", "&Manufacturers", "frmManufacturer"),
        document("mnuTablesFixedCost", "&Fixed Cost Items", "frmMiscItems"),
        document("mnuTablesTypes", "&Line Item Types", "frmLine"),
        document("mnuTablesShifts", "&Shifts", "frmShifts"),
        document("mnuTablesUnits", "&Units of Measure", "frmUnitOfMeasure"),
        document("mnuTablesTerms", "&Terms", "frmTerms"),
        document("mnuCountry", "&Countries", "frmCountry"),
        document("mnuStates", "States / &Provinces", "frmStates"),
        document("mnuScrapReasons", "Scrap &Reasons", "frmScrapReasons")};
}

std::vector<MenuEntry> utilityEntries() {
    return {dialog("mnuUtilitiesChangePassword", "&Change Password", "frmPass"),
            dialog("mnuUtilitiesLoginSetup", "&Security Setup", "frmUser_Group"),
            menu("mnuUtilitiesDatabaseMaintenance", "&Database Maintenance",
                 {dialog("mnuUtilitiesDMCompact", "Compact/Repair Database", "frmDBMaint")}),
            dialog("mnuUtilitiesBackup", "&Backup", "frmBackup"),
            document("mnuUtilitiesJournal", "&Journal of Changes", "frmJournal"),
            handler("mnuUtilitiesRecordHistory", "&History of this Record", "Ctrl+H")};
}

void collectNames(const std::vector<MenuEntry>& entries, QStringList& names) {
    for (const MenuEntry& entry : entries) {
        names << entry.name;
        collectNames(entry.children, names);
    }
}

const MenuEntry* find(const std::vector<MenuEntry>& entries, const QString& name) {
    for (const MenuEntry& entry : entries) {
        if (entry.name.compare(name, Qt::CaseInsensitive) == 0)
            return &entry;
        if (const MenuEntry* below = find(entry.children, name))
            return below;
    }
    return nullptr;
}

} // namespace

const std::vector<MenuEntry>& mainMenu() {
    static const std::vector<MenuEntry> tree{
        menu("mnuFile", "&File",
             {handler("mnuFileLogin", "&Login"), handler("mnuFileExit", "E&xit")}),
        menu("mnuEdit", "&Edit",
             {ofModule("mnuEdit", handler("mnuEditUndo", "&Undo")),
              ofModule("mnuEdit", handler("mnuEditRedo", "&Redo")), handler("mnuEditCut", "&Cut"),
              handler("mnuEditCopy", "&Copy"), handler("mnuEditPaste", "&Paste"),
              handler("mnuEditDelete", "&Delete")}),
        menu("mnuAddOns", "&Modules", moduleEntries()),
        menu("mnuOptionsTables", "&Tables", tableEntries()),
        menu("mnuOptionsUtilities", "&Utilities", utilityEntries()),
        menu("mnuOptions", "&Options",
             {dialog("mnuUtilitiesSystemParameters", "&System Preferences", "frmSystemSettings")}),
        menu("mnuOptionsReports", "&Reports",
             {dialog("mnuOptionsReportsConfigure", "&Configure Reports", "frmConfigReports"),
              dialog("mnuCreports", "C&ommon Reports", "frmCreports")}),
        menu("mnuTools", "&Tools",
             {dialog("mnuFind", "&Find Anything...", "frmFind", "Ctrl+K"),
              ofModule("mnuFileEstimate", handler("mnuMemory", "&Memory of the Shop", "Ctrl+M")),
              handler("mnuPapers", "&Papers of this Record", "Ctrl+O"),
              handler("mnuSpellCheck", "&Spelling...")}),
        menu("mnuWindow", "&Window",
             {document("mnuStartPage", "&Start Page", "frmStart"),
              handler("mnuArrange", "Arrange Icons"), handler("mnuCascade", "Cascade")}),
        menu("mnuHelp", "Hel&p",
             {handler("mnuHelp32", "&Mirsa Help", "F1"), dialog("mnuAbout", "&About", "frmAbout")}),
    };
    return tree;
}

const std::vector<MenuEntry>& popupMenus() {
    static const std::vector<MenuEntry> popups{
        menu("InventoryNewPopup", "",
             {handler("mnuInvNewLoc", "New &Location"), handler("mnuInvNewType", "New &Type"),
              handler("mnuInvNewItem", "New &Item")}),
        menu("mnuTravelPopup", "",
             {handler("mnuTravel", "Traveler"), handler("mnuTravelwNotes", "Traveler with Notes")}),
    };
    return popups;
}

QStringList menuNames() {
    QStringList names;
    collectNames(mainMenu(), names);
    collectNames(popupMenus(), names);
    return names;
}

QStringList menuNamesFrom(const QString& name) {
    QStringList names;
    if (const MenuEntry* entry = menuEntry(name))
        collectNames({*entry}, names);
    return names;
}

const MenuEntry* menuEntry(const QString& name) {
    const MenuEntry* entry = find(mainMenu(), name);
    return entry ? entry : find(popupMenus(), name);
}

} // namespace core
